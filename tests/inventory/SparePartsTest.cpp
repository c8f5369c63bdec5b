#include "inventory/SpareParts.h"
#include "inventory/Screens.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"

#include "core/records/RecordScreen.h"

using namespace inventory;
using screen::Answer;

namespace {

class Spares : public testsupport::ShopTest {
  protected:
    void prepare() override {
        values::setNow(QDateTime(QDate(2026, 3, 2), QTime(9, 0)));
        registerScreens();
        m_fjord = run(u"INSERT INTO Customer (Company) VALUES ('Fjord')"_s);
        m_ant = run(u"INSERT INTO Customer (Company) VALUES ('Ant')"_s);
        m_pat = run(u"INSERT INTO Employee (firstname, lastname) VALUES ('Pat', 'Miller')"_s);
        m_job = run(u"INSERT INTO Job (CustID, PartNo, PONo, Quantity, InvoiceTotal) VALUES "
                    "(%1, 'AB-7', 'PO 9', 40, 120)"_s.arg(m_fjord));
    }
    qint64 run(const QString& insert) {
        database().execute(insert);
        return database().lastCounter();
    }
    void spare(qint64 customer, const QString& location, const QString& part,
               const std::optional<QDate>& date) {
        SparePart made;
        made.custId = customer;
        made.location = location;
        made.partNo = part;
        made.spareQty = 2;
        made.employee = m_pat;
        made.date = date;
        addSpare(database(), made);
    }
    void back() { use(screen::Forms::find(u"frmSpareParts"_s)); }

    qint64 m_fjord = 0, m_ant = 0, m_pat = 0, m_job = 0;
};

TEST_P(Spares, TheListIsOfOneCustomerRedByMonthsOfThirtyDays) {
    const QDate today(2026, 3, 2);
    spare(m_fjord, u"Shelf 1"_s, u"A"_s, today.addDays(-60));
    spare(m_fjord, u"Shelf 2"_s, u"B"_s, today.addDays(-59));
    spare(m_fjord, u"Shelf 2"_s, u"C"_s, std::nullopt);
    spare(m_ant, u"Shelf 9"_s, u"D"_s, today);
    open(u"frmSpareParts"_s);
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    EXPECT_EQ(text(u"fraMain"_s), u"Record Selection - 0 records currently displayed."_s);
    expectBox(u"There Are No Records Showing To Print!"_s, Answer::Ok, u"Nothing to Print!"_s);
    press(u"cmdPrintScr"_s);
    type(u"dbcCompID"_s, u"Fjord"_s);
    leave();
    EXPECT_EQ(rowCount(u"sprMain"_s), 3);
    const auto* grid = control<controls::Grid>(u"sprMain"_s);
    const auto status = [&] {
        QStringList words;
        for (int row = 0; row < 3; ++row)
            words << grid->model()->index(row, 1).data(Qt::AccessibleTextRole).toString();
        return words.join(u'|');
    };
    choose(u"cboMonths"_s, u"2"_s);
    EXPECT_EQ(status(), u"Older than 2 months|Not older than 2 months|"_s);
    choose(u"cboMonths"_s, u"1"_s);
    EXPECT_EQ(status(), u"Older than 1 months|Older than 1 months|"_s);
    check(u"optBoth"_s);
    EXPECT_EQ(text(u"fraMain"_s), u"Record Selection - 0 records currently displayed."_s);
    choose(u"dbcLocation"_s, u"Shelf 2"_s);
    EXPECT_EQ(text(u"fraMain"_s), u"Record Selection - 2 records currently displayed."_s);
    for (const auto& [button, message, title] :
         {std::tuple(u"cmdDelete"_s, u"Nothing Selected To Delete!"_s, u"Nothing Selected."_s),
          std::tuple(u"cmdReportSelected"_s, u"Nothing Selected To Print!"_s,
                     u"Nothing Selected."_s)}) {
        expectBox(message, Answer::Ok, title);
        press(button);
    }
    // The last rows that move away take their location along.
    clickCell(u"sprMain"_s, 0, 2);
    key(Qt::Key_A, Qt::ControlModifier);
    whenShown(u"frmSpareMove"_s, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        type(u"dbcLocation"_s, u"O'Shelf"_s);
        expectBox(u"Are you sure you want to move the selected Record(s)?"_s, Answer::Yes,
                  u"Moving Records!"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdMove"_s);
    back();
    EXPECT_EQ(rows(spareLocations(m_fjord)), QStringList({u"O'Shelf"_s, u"Shelf 1"_s}));
    check(u"optCompany"_s);
    clickCell(u"sprMain"_s, 1, 2);
    const QString sure = u"Once Deleted, data will be unrecoverable.  Continue?"_s;
    expectBox(sure, Answer::No, u"Deleting Selected"_s);
    press(u"cmdDelete"_s);
    expectBox(sure, Answer::Yes, u"Deleting Selected"_s);
    press(u"cmdDelete"_s);
    EXPECT_EQ(rows(u"SELECT SPartNo FROM SpareParts ORDER BY [Index]"_s),
              QStringList({u"A"_s, u"C"_s, u"D"_s}));
    EXPECT_EQ(spareFormula(m_fjord, u"O'Shelf"_s),
              u"{SpareParts.sCustid} = %1 and {SpareParts.sLocation} = 'O''Shelf'"_s.arg(m_fjord));
}

TEST_P(Spares, RecordsAreAddedOfAJobEditedAndFound) {
    open(u"frmSpareParts"_s);
    whenShown(u"frmSpareNew"_s, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        const auto refused = [this](const QString& message, const QString& title) {
            expectBox(message, Answer::Ok, title);
            press(u"cmdOK"_s);
        };
        refused(u"You must enter a Company!"_s, u"Must have Company!"_s);
        type(u"dbcCompID"_s, u"Fjord"_s);
        refused(u"You must enter a Location!"_s, u"Must have location!"_s);
        type(u"dbcLocation"_s, u"Shelf 1"_s);
        refused(u"You must enter a Spare Quantity!"_s, u"Must have Spare Quantity!"_s);
        type(u"txtSpareQty"_s, u"3"_s);
        refused(u"You must enter an Employee ID!"_s, u"Must Have ID!"_s);
        type(u"dbcEmployee"_s, u"Miller , Pat"_s);
        refused(u"You must enter a Part Number!"_s, u"Must Have Part Number!"_s);
        choose(u"dbcJob"_s, QString::number(m_job));
        EXPECT_EQ(text(u"txtPart"_s) + text(u"txtPO"_s) + text(u"txtJQty"_s), u"AB-7PO 940"_s);
        type(u"txtSparePrice"_s, u"2.5"_s);
        press(u"cmdOKNew"_s);
        EXPECT_EQ(text(u"txtPart"_s), QString());
        EXPECT_EQ(text(u"dbcCompID"_s) + text(u"dbcLocation"_s), u"FjordShelf 1"_s);
        type(u"txtPart"_s, u"AB.9"_s);
        type(u"txtSpareQty"_s, u"1"_s);
        type(u"txtDate"_s, {});
        press(u"cmdOK"_s);
    });
    press(u"cmdNew"_s);
    back();
    EXPECT_EQ(
        rows(u"SELECT SCustID, SLocation, SPartNo, SJobNo, SPoNo, SSpareQty, SJobQty, "
             "SparePrice, SpareTotPrice, SEmpID, SDate FROM SpareParts ORDER BY [Index]"_s),
        QStringList(
            {u"%1|Shelf 1|AB-7|%2|PO 9|3|40|2.5|120|%3|3/2/2026"_s.arg(m_fjord).arg(m_job).arg(
                 m_pat),
             u"%1|Shelf 1|AB.9|0||1|0|0|0|%2|"_s.arg(m_fjord).arg(m_pat)}));
    EXPECT_EQ(rowCount(u"sprMain"_s), 2) << "the list shows them";
    selectRow(u"sprMain"_s, 0);
    whenShown(u"frmSpareEdit"_s, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(text(u"fraEntry"_s), u"Spare Parts Entry for Part Number AB-7"_s);
        // Another station's change of another column stays.
        anotherStation()->execute(u"UPDATE SpareParts SET SLocation = 'Shelf 5'"_s);
        type(u"mskQty"_s, u"0"_s);
        expectBox(u"You must enter a Quantity. You cannot have a Quantity of 0!"_s);
        press(u"cmdOK"_s);
        type(u"mskQty"_s, u"7"_s);
        type(u"txtNotes"_s, u"oiled"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdEdit"_s);
    back();
    EXPECT_EQ(rows(u"SELECT SSpareQty, SLocation, Notes FROM SpareParts ORDER BY [Index]"_s),
              QStringList({u"7|Shelf 5|oiled"_s, u"1|Shelf 5|"_s}));
    const auto find = [this](const QString& part) {
        whenShown(u"frmSpareFind"_s, [this, part] {
            type(u"txtPart"_s, part);
            if (part.isEmpty())
                expectBox(u"Finding With Blank Criteria Will Return All Records! Are You Sure?"_s,
                          Answer::Yes, u"Blank Criteria"_s);
            press(u"cmdFind"_s);
        });
    };
    type(u"dbcCompID"_s, u"Ant"_s);
    find(u"b-9"_s);
    whenShown(u"frmSpareFound"_s, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(rowCount(u"sprPartFound"_s), 1) << "the dash is any letter";
        press(u"cmdSelect"_s);
    });
    press(u"cmdFind"_s);
    back();
    EXPECT_EQ(text(u"dbcCompID"_s), u"Fjord"_s);
    EXPECT_EQ(screen::Forms::find<core::RecordScreen>(u"frmSpareParts"_s)->currentKey(), 2);
    find(u"none'"_s);
    expectBox(u"No Part Numbers Match Your Query!"_s, Answer::Ok, u"No Match!"_s);
    press(u"cmdFind"_s);
    find({});
    whenShown(u"frmSpareFound"_s, [this] {
        EXPECT_EQ(rowCount(u"sprPartFound"_s), 2);
        press(u"cmdCancel"_s);
    });
    press(u"cmdFind"_s);
}

MIRSA_BOTH_ENGINES(Spares);

} // namespace
