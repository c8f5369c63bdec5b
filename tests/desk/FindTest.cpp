#include "core/MirsaMain.h"
#include "core/journal/JournalTriggers.h"
#include "core/records/RecordScreen.h"
#include "desk/find/FindKinds.h"
#include "desk/find/Finder.h"
#include "desk/find/Indexer.h"
#include "platform/values/Literals.h"
#include "support/Paths.h"
#include "support/SampleFixture.h"

#include <QFile>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTest>
#include <QTreeWidget>

namespace {

using desk::Finder;
using desk::FoundRecord;
using screen::Forms;
using testsupport::EngineKind;

class FindTest : public testsupport::SampleTest {
  protected:
    void prepare() override {
        SampleTest::prepare();
        database().execute(u"UPDATE Job SET JobNotes = 'Ship with Łódź crate' WHERE JobNo = 7"_s);
        m_shop = anotherStation();
        m_indexer = desk::Indexer::on(database().name());
        m_finder = std::make_unique<Finder>(*m_shop, m_indexer ? m_indexer->path() : QString());
        waitForLook();
    }
    void TearDown() override {
        m_finder.reset();
        m_shop.reset();
        SampleTest::TearDown();
    }
    /// Until the index has been compared with the database once more.
    void waitForLook() {
        if (!m_indexer)
            return;
        const int before = m_indexer->looks();
        m_indexer->look();
        ASSERT_TRUE(QTest::qWaitFor([&] { return m_indexer->looks() > before; }, 20000));
    }
    /// "Job 12" and so on, in the order given.
    QStringList find(const QString& text, const QStringList& modules = {}) {
        QSet<int> kinds;
        const auto& all = desk::findKinds();
        for (std::size_t i = 0; i < all.size(); ++i) {
            if (modules.isEmpty() || modules.contains(all[i].module))
                kinds.insert(static_cast<int>(i));
        }
        QStringList names;
        for (const FoundRecord& record : m_finder->find(text, kinds))
            names << all[static_cast<std::size_t>(record.kind)].word + u' ' +
                         QString::number(record.key);
        return names;
    }
    /// The latest twelve of a kind by a select of the test's own.
    QStringList named(const QString& word, const QString& select) {
        QStringList names;
        for (const QString& key : rows(select))
            names << word + u' ' + key;
        names.removeDuplicates();
        return names;
    }

    std::unique_ptr<jet::Database> m_shop;
    desk::Indexer* m_indexer = nullptr;
    std::unique_ptr<Finder> m_finder;
};

TEST_P(FindTest, WhatASelectFindsIsFoundInEveryKind) {
    const struct {
        const char16_t *module, *word, *key, *from, *column;
    } places[] = {{u"frmCustomer", u"Customer", u"Custid", u"Customer", u"company"},
                  {u"frmVendor", u"Vendor", u"VendID", u"Vendor", u"City"},
                  {u"frmEmployee", u"Employee", u"EmpID", u"Employee", u"lastname"},
                  {u"frmJob", u"Job", u"JobNo", u"Job", u"PONo"},
                  {u"frmJob", u"Job", u"JobNo", u"Job", u"Description"},
                  {u"frmEstimate", u"Estimate", u"EstNo", u"Estimate", u"RFQNo"},
                  {u"frmPO", u"PO", u"PONumber", u"POItem", u"Description"},
                  {u"frmPO", u"PO", u"OrderNumber", u"POVendor", u"Company"},
                  {u"frmRFQ", u"RFQ", u"OrderNumber", u"RFQItem", u"PartNumber"},
                  {u"frmInventory", u"Item", u"ID", u"Items", u"PartNumber"},
                  {u"frmSpareParts", u"Spare", u"Index", u"SpareParts", u"SPartNo"}};
    for (const auto& place : places) {
        const QString column = QString::fromUtf16(place.column),
                      from = QString::fromUtf16(place.from);
        const QStringList some = rows(u"SELECT TOP 1 %1 FROM %2 WHERE Len(%1) > 4 ORDER BY "
                                      "%1"_s.arg(column, from));
        ASSERT_FALSE(some.isEmpty()) << from.toStdString();
        // A piece out of its middle, too.
        for (const QString& text : {some.front(), some.front().mid(1, 4).trimmed().toUpper()}) {
            if (text.size() < 3 || text.contains(u'\''))
                continue;
            QStringList wanted =
                named(QString::fromUtf16(place.word),
                      u"SELECT DISTINCT [%1] FROM %2 WHERE %3 LIKE '*%4*' ORDER BY [%1] DESC"_s.arg(
                          QString::fromUtf16(place.key), from, column, text));
            const QStringList found = find(text, {QString::fromUtf16(place.module)});
            SCOPED_TRACE((from + u'.' + column + u": "_s + text).toStdString());
            EXPECT_FALSE(found.isEmpty());
            EXPECT_LE(found.size(), 12);
            // Other columns may hold it as well; of few, none is left out.
            if (found.size() < 12)
                for (const QString& name : wanted)
                    EXPECT_TRUE(found.contains(name)) << name.toStdString();
        }
    }
}

TEST_P(FindTest, TheBestStandsFirst) {
    const QString job = rows(u"SELECT MIN(JobNo) FROM Job WHERE JobNo > 20"_s).front();
    EXPECT_EQ(find(job, {u"frmJob"_s}).value(0), u"Job "_s + job);
    database().execute(u"UPDATE Job SET PONo = 'ZQ-77' WHERE JobNo = 9"_s);
    database().execute(u"UPDATE Job SET PartNo = 'ZQ-77-B' WHERE JobNo = 11"_s);
    database().execute(u"UPDATE Job SET TravelerNotes = 'as for ZQ-77' WHERE JobNo = 13"_s);
    EXPECT_EQ(find(u"zq-77"_s, {u"frmJob"_s}), (QStringList{u"Job 9"_s, u"Job 11"_s, u"Job 13"_s}));
    // Words in any order, from several columns.
    database().execute(u"UPDATE Job SET Description = 'Fancy bracket' WHERE JobNo = 11"_s);
    EXPECT_EQ(find(u"bracket zq-77"_s, {u"frmJob"_s}), QStringList{u"Job 11"_s});
    EXPECT_EQ(find(u"Ship with Łódź"_s, {u"frmJob"_s}), QStringList{u"Job 7"_s});
    EXPECT_EQ(find(u"100% o'_"_s), QStringList());
}

TEST_P(FindTest, WhatAnotherStationWritesIsFoundRightAway) {
    const auto other = anotherStation();
    other->execute(u"INSERT INTO Customer (company) VALUES ('Quetzal Tooling')"_s);
    EXPECT_EQ(find(u"quetzal"_s).size(), 1);
    other->execute(u"INSERT INTO PO (Title) VALUES ('Steel')"_s);
    const QString order = QString::number(other->lastCounter());
    other->execute(u"INSERT INTO POItem (PONumber, ItemNumber, PartNumber, Description) VALUES "
                   "(%1, 1, 'QX', 'Okapi grinder')"_s.arg(order));
    EXPECT_EQ(find(u"okapi"_s), QStringList{u"PO "_s + order});
    other->execute(u"UPDATE Customer SET company = 'Quokka Tooling' WHERE company = 'Quetzal "
                   "Tooling'"_s);
    EXPECT_EQ(find(u"quetzal"_s), QStringList());
    EXPECT_EQ(find(u"quokka"_s).size(), 1);
    other->execute(u"DELETE FROM POItem WHERE PartNumber = 'QX'"_s);
    EXPECT_EQ(find(u"okapi"_s), QStringList());
}

/// Beyond the latest of a kind, what is changed is taken into the index.
TEST_P(FindTest, OldRecordsAreFoundAfterTheNextLook) {
    core::installJournal(database());
    std::vector<std::vector<jet::Value>> many;
    for (int i = 0; i < 7000; ++i)
        many.push_back({u"Filler %1"_s.arg(i), 1});
    database().insertRows(u"Items"_s, {u"Description"_s, u"Quantity"_s}, many);
    waitForLook();
    database().execute(u"UPDATE Items SET Description = 'Axolotl vise' WHERE Description = 'Filler "
                       "40'"_s);
    database().execute(u"DELETE FROM Items WHERE Description = 'Filler 41'"_s);
    EXPECT_EQ(find(u"axolotl"_s).size(), 1) << "by the journal, at once";
    waitForLook();
    EXPECT_EQ(find(u"axolotl"_s).size(), 1);
    EXPECT_EQ(find(u"iller 41"_s).size(), 12); // 410 to 419 and so on
    EXPECT_FALSE(find(u"filler 41"_s).isEmpty());
    database().execute(u"DELETE FROM Items WHERE Description LIKE 'Filler*'"_s);
    EXPECT_EQ(find(u"filler"_s), QStringList());
}

TEST_P(FindTest, AnIndexThatIsSpoiledOrGoneIsMadeAgain) {
    if (!m_indexer)
        GTEST_SKIP() << "a server keeps its indexes itself";
    const QString path = m_indexer->path();
    m_finder.reset();
    desk::Indexer::end();
    for (const QByteArray& content : {QByteArray(5000, 'x'), QByteArray()}) {
        for (const char* part : {"", "-wal", "-shm"})
            QFile::remove(path + QLatin1String(part));
        if (!content.isEmpty()) {
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(content);
        }
        m_finder = std::make_unique<Finder>(*m_shop, path);
        EXPECT_FALSE(find(u"crate"_s, {u"frmJob"_s}).isEmpty()); // of the latest, without it
        m_finder.reset();
        m_indexer = desk::Indexer::on(database().name());
        ASSERT_TRUE(QTest::qWaitFor(
            [&] {
                m_indexer->look();
                return m_indexer->looks() > 0;
            },
            20000));
        m_finder = std::make_unique<Finder>(*m_shop, path);
        EXPECT_FALSE(find(u"crate"_s, {u"frmJob"_s}).isEmpty());
        m_finder.reset();
        desk::Indexer::end();
    }
}

TEST_P(FindTest, ANewUserFindsAJobByTheCustomersOrderWithFewKeys) {
    database().execute(u"UPDATE Job SET PONo = 'KX-40817' WHERE JobNo = (SELECT MAX(JobNo) FROM "
                       "Job WHERE Shipped = False)"_s);
    const qint64 job =
        database().lookup(u"SELECT JobNo FROM Job WHERE PONo = 'KX-40817'"_s).toLong();
    open(u"frmCustomer"_s); // where he is
    int keys = 2;           // Ctrl+K and Enter
    whenShown(u"frmFind"_s, [&] {
        EXPECT_EQ(focusName(), u"txtFind"_s);
        for (const QChar letter : u"kx-408"_s) {
            typeOn(QString(letter));
            ++keys;
        }
        key(Qt::Key_Return); // without waiting for the list
        EXPECT_TRUE(QTest::qWaitFor([] { return !Forms::isLoaded(u"frmFind"_s); }));
    });
    Forms::showModal(u"frmFind"_s);
    core::RecordScreen* jobs = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        jobs = Forms::find<core::RecordScreen>(u"frmJob"_s);
        return jobs && jobs->currentKey() == job;
    }));
    EXPECT_EQ(Forms::active()->name(), u"frmJob"_s);
    EXPECT_EQ(shellArea().activeSubWindow()->widget(), Forms::find(u"frmJob"_s));
    EXPECT_LE(keys, 8);
}

TEST_P(FindTest, AKindWhoseModuleMayNotBeOpenedIsNotShown) {
    core::SharedState& state = core::shared();
    state.CurrentUserName = u"floor"_s;
    state.CurrentUserNo = 77;
    database().execute(u"INSERT INTO SecurityUsers (id, objectID) SELECT 77, objectid FROM "
                       "SecurityObjects WHERE securitycode = 'mnuFileEstimate'"_s);
    const QString part = rows(u"SELECT TOP 1 e.PartNo FROM Estimate e INNER JOIN Job j ON "
                              "e.EstNo = j.EstNo WHERE Len(e.PartNo) > 3 ORDER BY e.EstNo"_s)
                             .value(0);
    ASSERT_FALSE(part.isEmpty());
    whenShown(u"frmFind"_s, [&] {
        auto* tree = control<QTreeWidget>(u"tvwFound"_s);
        type(u"txtFind"_s, part);
        EXPECT_TRUE(QTest::qWaitFor([&] { return tree->topLevelItemCount() > 0; }));
        ASSERT_EQ(tree->topLevelItemCount(), 1);
        EXPECT_EQ(tree->topLevelItem(0)->text(0), u"Estimates"_s);
        type(u"txtFind"_s, u"nothing has this in it"_s);
        EXPECT_TRUE(QTest::qWaitFor(
            [&] { return control<QLabel>(u"lblState"_s)->text().startsWith(u"Nothing"); }));
        press(u"cmdClose"_s);
    });
    Forms::showModal(u"frmFind"_s);
}

/// In the words that are asked: in others it would be of no use.
TEST(FindKinds, AServerHasAnIndexOverEachText) {
    QFile file(testsupport::sourceFile(u"src/desk/server.sql"_s));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray indexes = file.readAll();
    for (const desk::FindKind& kind : desk::findKinds()) {
        for (const desk::FindKind::Pieces& pieces : kind.pieces)
            EXPECT_TRUE(indexes.contains(" ON " + pieces.table + " USING gin ((" + pieces.text +
                                         ") gin_trgm_ops)"))
                << pieces.table.toStdString();
    }
}

MIRSA_BOTH_ENGINES(FindTest);

} // namespace
