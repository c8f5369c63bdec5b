#include "accounting/SentDocuments.h"
#include "core/journal/JournalSearch.h"
#include "core/journal/JournalTables.h"
#include "core/journal/JournalTriggers.h"
#include "core/journal/JournalTrim.h"
#include "estimating/EstimateStore.h"
#include "inventory/Issue.h"
#include "inventory/Items.h"
#include "inventory/Restock.h"
#include "jobs/JobFromEstimate.h"
#include "jobs/JobStore.h"
#include "platform/jet/Native.h"
#include "platform/values/Literals.h"
#include "purchasing/PoStore.h"
#include "purchasing/Receiving.h"
#include "purchasing/RfqStore.h"
#include "setup/Check.h"
#include "setup/Setup.h"
#include "support/DatabaseFixture.h"
#include "timemgmt/SignInEntry.h"
#include "timemgmt/TimeEntry.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

class Journal : public testsupport::ShopDatabaseFixture {
  protected:
    /// What stands in the journal, the earliest first: "Anna|Job|1|U|{...}".
    QStringList told(const QString& where = {}) {
        return rows(u"SELECT Who, TableName, RowKey, [Action], Changes FROM Journal "_s + where +
                    u" ORDER BY ID"_s);
    }

    static QByteArray literal(const QJsonValue& value) {
        if (value.isNull() || value.isUndefined())
            return "NULL";
        if (value.isString())
            return '\'' + value.toString().replace(u'\'', u"''"_s).toUtf8() + '\'';
        return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).mid(1).chopped(1);
    }

    /// Does again, in a shop as it is delivered, what the journal tells.
    void replay(jet::Database& into) {
        core::removeJournal(into);
        jet::Native native(into);
        jet::Recordset rows = db().openRecordset(u"SELECT * FROM Journal ORDER BY ID"_s,
                                                 jet::RecordsetType::Snapshot);
        for (; !rows.eof(); rows.moveNext()) {
            const jet::Table* table = into.schema().table(rows.text(u"TableName"));
            const QByteArray on = native.quoted(table->name);
            const QByteArray key = table->key()      ? native.quoted(table->key()->name)
                                   : into.isServer() ? QByteArray("row_identity")
                                                     : QByteArray("rowid");
            const QByteArray rowKey = '\'' + rows.text(u"RowKey").toUtf8() + '\'';
            const QByteArray where = " WHERE CAST(" + key + " AS TEXT) = " + rowKey;
            const QJsonObject changes =
                QJsonDocument::fromJson(rows.text(u"Changes").toUtf8()).object();
            ASSERT_FALSE(changes.isEmpty()) << rows.text(u"Changes").toStdString();
            const QString action = rows.text(u"Action");
            if (action == u"D") {
                native.execute("DELETE FROM " + on + where);
            } else if (action == u"U") {
                QByteArrayList sets;
                for (auto change = changes.begin(); change != changes.end(); ++change)
                    sets += native.quoted(change.key()) + " = " +
                            literal(change.value().toArray().at(1));
                native.execute("UPDATE " + on + " SET " + sets.join(", ") + where);
            } else {
                QByteArrayList names, values;
                for (const jet::Column& column : table->columns) {
                    const QString stored = into.isServer() ? column.name.toLower() : column.name;
                    names += native.quoted(column.name);
                    values += literal(changes[stored]);
                }
                if (!table->key()) {
                    names += key;
                    values += rowKey;
                }
                native.execute("INSERT INTO " + on + " (" + names.join(", ") + ") " +
                               (into.isServer() ? "OVERRIDING SYSTEM VALUE " : "") + "VALUES (" +
                               values.join(", ") + ')');
            }
        }
    }

    /// Every row to the last bit of its numbers.
    static QStringList contents(jet::Database& database, const QString& name) {
        jet::Native native(database);
        QByteArrayList columns;
        for (const jet::Column& column : database.schema().table(name)->columns)
            columns += database.isServer()
                           ? "coalesce(" + native.quoted(column.name) + "::text, 'NULL')"
                           : "quote(" + native.quoted(column.name) + ')';
        QStringList all;
        for (const jet::Native::Row& row :
             native.rows("SELECT " + columns.join("||'|'||") + " FROM " + native.quoted(name)))
            all += row.front().toText();
        all.sort();
        return all;
    }

    quint32 random(quint32 below) {
        m_seed = m_seed * 1664525 + 1013904223;
        return (m_seed >> 8) % below;
    }
    qint64 anyOf(const QString& table, const QString& key) {
        const QStringList keys = rows(u"SELECT %1 FROM %2 ORDER BY %1"_s.arg(key, table));
        return keys.isEmpty() ? 0 : keys[random(static_cast<quint32>(keys.size()))].toLongLong();
    }
    QString text() {
        static const QStringList texts{u""_s,           u"Grüße"_s,    u"5 \\ \" 3"_s,
                                       u"a\r\n\tb"_s,   u"O'Hara 😀"_s, u"\x01\x1f control"_s,
                                       u"{\"x\":[1]}"_s};
        return texts[random(static_cast<quint32>(texts.size()))];
    }

    void saveAnEstimate() {
        const qint64 number = random(3) > 0 ? anyOf(u"Estimate"_s, u"EstNo"_s) : 0;
        estimating::EstimateDraft draft;
        if (number != 0)
            draft = *estimating::loadEstimate(db(), number);
        const estimating::EstimateDraft before = draft;
        draft.header.custId = 1;
        draft.header.partNo = u"AX-%1"_s.arg(random(9));
        draft.header.estNotes = text();
        draft.header.quantity = 1 + random(50);
        while (draft.operations.size() < 4) {
            estimating::OperRow row;
            row.operNo = 1 + random(3);
            row.rate = values::Currency::fromTenThousandths(random(900000));
            draft.operations.push_back(row);
        }
        draft.operations[random(4)].time = random(1000) / 7.0;
        if (random(2) == 0)
            draft.operations.erase(draft.operations.begin());
        estimating::MiscRow cost;
        cost.itemNo = 1;
        cost.price = values::Currency::fromTenThousandths(random(100000));
        cost.quantity = values::Currency::fromTenThousandths(10000);
        cost.retotal();
        draft.fixedCosts = {cost};
        estimating::saveEstimate(db(), number, draft, number != 0 ? &before : nullptr);
        if (random(3) == 0)
            jobs::createJob(db(), draft.documentNo, {.quantity = 5, .poNo = u"P"_s});
    }

    void saveAJob() {
        const qint64 number = anyOf(u"Job"_s, u"JobNo"_s);
        if (number == 0)
            return;
        if (random(6) == 0) {
            jobs::deleteJob(db(), number);
            return;
        }
        jobs::JobDraft draft = *jobs::loadJob(db(), number);
        const jobs::JobDraft before = draft;
        draft.header.jobNotes = text();
        draft.header.shipped = random(2) == 0;
        if (!draft.operations.empty())
            draft.operations.back().estimated = random(100) / 3.0;
        jobs::saveJob(db(), number, draft, &before);
    }

    void workOnTheFloor() {
        const QDateTime in(QDate(2007, 6, 1).addDays(random(60)), QTime(7, 0), Qt::UTC);
        const auto saved = timemgmt::SaveSignIn(
            db(), {.empId = 1, .signIn = in, .signOut = in.addSecs(60 * 60 * 8)});
        timemgmt::AddManualTime(db(), {.empId = 1,
                                       .jobNo = anyOf(u"Job"_s, u"JobNo"_s),
                                       .operNo = 1 + random(3),
                                       .signId = saved.id,
                                       .hours = random(80) / 9.0,
                                       .date = in.date(),
                                       .endsSequence = true});
        // The floor's own programs know nothing of stores.
        const QString id = QString::number(anyOf(u"Timelog"_s, u"ID"_s));
        db().execute(u"UPDATE Timelog SET AccumTime = AccumTime * 1.1, Status = 'd' WHERE ID = "_s +
                     id);
        if (random(4) == 0)
            db().execute(u"DELETE FROM Timelog WHERE ID = "_s + id);
    }

    void buyAndStock() {
        purchasing::OrderDocument order;
        order.header.title = text();
        order.vendor.vendorId = 1;
        order.vendor.company = u"Steel & Sons"_s;
        for (int i = 0; i < 3; ++i) {
            purchasing::OrderLine line;
            line.itemNumber = i + 1;
            line.description = u"Bar"_s;
            line.quantity = 10;
            line.unitPrice = values::Currency::fromTenThousandths(random(90000));
            line.complete();
            order.lines.push_back(line);
        }
        purchasing::storeOrder(db(), 0, order, nullptr);
        auto lines = purchasing::openLines(db(), order.documentNo);
        for (purchasing::ReceiveLine& line : lines) {
            line.selected = true;
            line.quantity = 1 + random(10);
        }
        purchasing::receive(db(), {order.documentNo, QDate(2007, 6, 13), 1}, lines);
        if (random(3) == 0)
            purchasing::deleteOrder(db(), anyOf(u"PO"_s, u"PONumber"_s));
        inventory::Item item;
        item.description = text();
        item.quantity = 20;
        const qint64 id = inventory::addItem(db(), item);
        inventory::issue(db(), {id, 1 + random(9), 1, QDate(2007, 6, 13), 1, u"Job"_s});
        inventory::restock(db(), {id, 4, 1, QDate(2007, 6, 14), u"Manual"_s, 0, 0});
        if (random(3) == 0)
            inventory::deleteItem(db(), anyOf(u"Items"_s, u"ID"_s));
    }

    /// Quotes of two vendors, an order of one of them that is changed once something came in, the
    /// bill for it and the invoice.
    void askOrderAndSend() {
        const qint64 group = purchasing::createGroup(db(), 1);
        purchasing::addVendor(db(), group, 2);
        const QString key = purchasing::vendorKey(group, 1 + random(2));
        for (const bool again : {false, true}) {
            const auto before = *purchasing::loadRequest(db(), group, key);
            purchasing::OrderDocument asked = before;
            if (again)
                asked.lines.erase(asked.lines.begin() + random(4));
            while (asked.lines.size() < 4) {
                purchasing::OrderLine line;
                line.partNumber = u"P-%1"_s.arg(random(99));
                line.notes = text();
                asked.lines.push_back(line);
            }
            asked.lines[2].quantity = 1 + random(9);
            asked.lines[2].complete();
            ASSERT_FALSE(purchasing::storeRequest(db(), group, asked, before).conflict);
        }
        const qint64 order = purchasing::orderFromRequest(
            db(), group, {key, {key + u"-1"_s, key + u"-3"_s}}, QDate(2007, 7, 1));
        auto lines = purchasing::openLines(db(), order);
        for (purchasing::ReceiveLine& line : lines)
            line.selected = line.quantity = 1;
        purchasing::receive(db(), {order, QDate(2007, 6, 13), 1}, lines);
        const auto before = *purchasing::loadOrder(db(), order);
        purchasing::OrderDocument changed = before;
        changed.lines.front().notes = text();
        changed.lines.emplace_back();
        ASSERT_FALSE(purchasing::storeOrder(db(), order, changed, &before).conflict);
        for (const auto kind : {accounting::SentKind::Invoice, accounting::SentKind::Bill})
            accounting::record(db(), {kind,
                                      u"17"_s,
                                      QString::number(order),
                                      QDate(2007, 6, 14),
                                      {{text(), u"2.5"_s}, {u"Bar"_s, u"1"_s}}});
        if (random(3) == 0)
            purchasing::deleteGroup(db(), group);
    }

  private:
    quint32 m_seed = 7;
};
MIRSA_BOTH_ENGINES(Journal);

} // namespace

TEST_P(Journal, TellsWhoChangedWhatFromWhatToWhat) {
    execute(u"DELETE FROM Journal");
    jet::Native native(db());
    const QString nobody =
        db().isServer() ? native.value("SELECT session_user::text").toText() : QString();
    native.setWriter(u"Anna O'Hara \\"_s);
    execute(u"INSERT INTO Job (CustID, PartNo, Quantity) VALUES (1, 'AX-10', 5)");
    execute(u"UPDATE Job SET PartNo = 'ax-10', Quantity = 5");
    execute(u"UPDATE Job SET PartNo = 'ax-10', Quantity = 5"); // nothing new
    {
        const jet::Transaction undone(db());
        execute(u"DELETE FROM Job");
    }
    db().insertRows(u"JobMiscCost"_s, {u"JobNo"_s, u"ItemNo"_s}, {{1, 3}, {1, 4}});
    {
        const auto floor = station(); // a program that doesn't say who it is
        floor->execute(u"UPDATE JobMiscCost SET CostAmount = 0.1 WHERE ItemNo = 4"_s);
    }
    native.setWriter(u"Bob"_s);
    {
        jet::Transaction change(db());
        execute(u"DELETE FROM JobMiscCost WHERE ItemNo = 3");
        execute(u"INSERT INTO Terms (description) VALUES ('of which no journal is kept')");
        change.commit();
    }
    native.setWriter({});
    execute(u"UPDATE SystemSettings SET EstOneRate = 62");

    QStringList heads, changes;
    for (const QString& line : told()) {
        heads += line.section(u'|', 0, 1) + u' ' + line.section(u'|', 3, 3);
        changes += line.section(u'|', 4).remove(u' ').toLower();
    }
    EXPECT_EQ(heads, (QStringList{u"Anna O'Hara \\|Job I"_s, u"Anna O'Hara \\|Job U"_s,
                                  u"Anna O'Hara \\|JobMiscCost I"_s,
                                  u"Anna O'Hara \\|JobMiscCost I"_s, nobody + u"|JobMiscCost U"_s,
                                  u"Bob|JobMiscCost D"_s, nobody + u"|SystemSettings U"_s}));
    EXPECT_EQ(changes[1], u"{\"partno\":[\"ax-10\",\"ax-10\"]}"_s);
    EXPECT_TRUE(told()[1].contains(u"\"AX-10\"")) << told()[1].toStdString();
    EXPECT_EQ(QString(changes[4]).replace(u"0.1000"_s, u"0.1"_s), u"{\"costamount\":[null,0.1]}"_s);
    EXPECT_EQ(rows(u"SELECT Record FROM Journal WHERE TableName = 'JobMiscCost'"_s),
              (QStringList{u"1"_s, u"1"_s, u"1"_s, u"1"_s}));
    EXPECT_FALSE(db().hasRows(u"SELECT Who FROM Writer"_s));
    EXPECT_EQ(setup::upgrade(db()), QStringList());
}

TEST_P(Journal, DoneAgainInAnEmptyShopGivesTheSameRows) {
    execute(u"INSERT INTO Customer (company) VALUES ('Acme')");
    execute(u"INSERT INTO Vendor (company) VALUES ('Steel & Sons')");
    execute(u"INSERT INTO Employee (lastname, CurrPay) VALUES ('Hara', 21.5)");
    execute(u"INSERT INTO MiscItems (Description) VALUES ('Bar')");
    for (const auto* name : {u"Turning", u"Milling", u"Grinding"})
        db().execute(u"INSERT INTO Operation (Description, OperType) VALUES ('%1', 'I')"_s.arg(
            QString::fromUtf16(name)));
    execute(u"INSERT INTO Vendor (company) VALUES ('O''Brien')");
    for (int i = 0; i < 75; ++i) {
        switch (random(5)) {
        case 0:
            saveAnEstimate();
            break;
        case 1:
            saveAJob();
            break;
        case 2:
            workOnTheFloor();
            break;
        case 3:
            askOrderAndSend();
            break;
        default:
            buyAndStock();
        }
    }
    testsupport::TestDatabase empty(GetParam(), testsupport::TestDatabase::Contents::Shop);
    replay(empty.database());
    int filled = 0;
    for (const core::JournalTable& table : core::journalTables()) {
        const QStringList present = contents(db(), table.name);
        EXPECT_EQ(contents(empty.database(), table.name), present) << table.name.toStdString();
        filled += present.isEmpty() ? 0 : 1;
    }
    EXPECT_GT(filled, 23);
    EXPECT_TRUE(db().hasRows(u"SELECT ID FROM Journal WHERE TableName = 'POItem' AND [Action] = "
                             "'U' AND Changes LIKE '*ItemNotes*'"_s))
        << "a line that stays is not told as gone and come";
    EXPECT_GT(db().lookup(u"SELECT COUNT(*) FROM Journal WHERE [Action] = 'D'"_s).toLong(), 10);
}

TEST_P(Journal, IsSearchedByPersonDayTableAndRecordAndTrimmed) {
    jet::Native native(db());
    native.setWriter(u"Anna"_s);
    execute(u"INSERT INTO Job (PartNo, QtyQuotedPrice) VALUES ('AX', 12.5)");
    execute(u"INSERT INTO JobOper (JobNo, OperTime_Amount, Status) VALUES (1, 0.1, 'A')");
    native.setWriter(u"Bob"_s);
    execute(u"UPDATE Job SET Shipped = True, JobDueDate = #6/13/2007#, QtyQuotedPrice = 13");
    execute(u"DELETE FROM JobOper");
    const auto found = [this](const core::JournalCriteria& criteria, bool money = true) {
        QStringList lines;
        for (const core::JournalLine& line :
             core::journalLines(core::searchJournal(db(), criteria, 100), money))
            lines += line.mid(1).join(u'|');
        return lines;
    };
    QStringList wanted{
        u"Bob|Jobs' operations|1|Deleted||ID 1, JobNo 1, OperTime_Amount 0.1, OperLocated 0, "
        u"Status "
        "A|"_s,
        u"Bob|Jobs|1|Changed|QtyQuotedPrice|12.5|13"_s,
        u"Bob|Jobs|1|Changed|JobDueDate||6/13/2007"_s,
        u"Bob|Jobs|1|Changed|Shipped|No|Yes"_s,
        u"Anna|Jobs' operations|1|Added|||ID 1, JobNo 1, OperTime_Amount 0.1, OperLocated 0, "
        u"Status "
        "A"_s,
        u"Anna|Jobs|1|Added|||JobNo 1, PartNo AX, OneShopRate No, OrderRequired No, QtyQuotedPrice "
        "12.5, Shipped No, EstNo 0, AssemblyJobNo 0"_s};
    QStringList all = found({.tables = core::journalTablesOf(u"frmJob"_s), .record = 1});
    for (QStringList* lines : {&wanted, &all}) // a server has its columns' names in small letters
        for (QString& line : *lines)
            line = line.toLower();
    EXPECT_EQ(all, wanted);
    const QStringList secret = found({.tables = QStringList{u"Job"_s}}, false);
    EXPECT_TRUE(secret[0].endsWith(u"|(hidden)|(hidden)")) << secret[0].toStdString();
    EXPECT_FALSE(secret.last().contains(u"12.5"));
    const QDate today = QDate::currentDate();
    EXPECT_EQ(found({.who = u"an"_s, .from = today.addDays(-1), .until = today.addDays(1)}).size(),
              2);
    EXPECT_EQ(found({.until = today.addDays(-2)}).size(), 0);
    EXPECT_EQ(found({.tables = QStringList{}}).size(), 0) << "somebody without a right";

    const QDateTime now = QDateTime::currentDateTime();
    EXPECT_FALSE(core::trimJournal(db(), now.addDays(360)));
    EXPECT_EQ(told().size(), 4);
    execute(u"UPDATE SystemSettings SET JournalDays = 0");
    core::trimJournal(db(), now.addDays(9999));
    EXPECT_EQ(told().size(), 5) << "for ever";
    execute(u"UPDATE SystemSettings SET JournalDays = 30");
    core::JournalTrim(testDatabase().location(), now.addDays(31));
    core::trimJournal(db(), now.addDays(31));
    EXPECT_EQ(told().size(), 1) << "by the last row the next ones are numbered";

    execute(u"INSERT INTO POReceived (PONumber, ItemID, QtyRecvd) VALUES (7, 200, 3)");
    execute(u"UPDATE POReceived SET ItemID = 204");
    execute(u"UPDATE POReceived SET ItemID = 208, QtyRecvd = 5");
    const QStringList receipts = found({.tables = QStringList{u"POReceived"_s}});
    EXPECT_EQ(receipts.size(), 2) << "nobody sees how its order's lines are numbered";
    EXPECT_TRUE(receipts.first().endsWith(u"|3|5"_s)) << receipts.first().toStdString();
}

TEST_P(Journal, IsMendedWhereItIsNoLongerKept) {
    core::removeJournal(db());
    execute(u"UPDATE SystemSettings SET EstOneRate = 1");
    EXPECT_FALSE(setup::check(db(), {}).empty());
    const auto seenAtTheStart = [this] {
        const core::JournalTrim look(testDatabase().location(), QDateTime::currentDateTime());
        while (look.kept() == core::JournalTrim::Kept::Unknown)
            std::this_thread::yield();
        return look.kept() == core::JournalTrim::Kept::Yes;
    };
    EXPECT_FALSE(seenAtTheStart());
    EXPECT_EQ(setup::upgrade(db()).size(), 1);
    EXPECT_TRUE(setup::check(db(), {}).empty());
    EXPECT_TRUE(seenAtTheStart());
    execute(u"ALTER TABLE Job ADD COLUMN Colour TEXT(20)");
    EXPECT_EQ(setup::upgrade(db()).size(), 1);
    execute(u"INSERT INTO Job (Colour) VALUES ('blue')");
    EXPECT_TRUE(told().last().contains(u"blue"));
    execute(u"UPDATE Job SET Colour = 'red'");
    EXPECT_TRUE(told().last().contains(u"red"));
}
