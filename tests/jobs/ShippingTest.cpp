#include "JobModules.h"
#include "platform/values/Literals.h"

#include "jobs/JobDialogs.h"
#include "support/Gallery.h"

#include <QLineEdit>

using screen::Answer;

namespace {

class Shipping : public JobModules {
  protected:
    void prepare() override {
        JobModules::prepare();
        m_job = job(customer(s(u"Acme")), s(u"12-34"), 10);
    }
    qint64 employee(const char16_t* first, const char16_t* last) {
        return insert(s(u"Employee"), s(u"firstname, lastname"),
                      u"'%1','%2'"_s.arg(s(first), s(last)));
    }
    qint64 shipment(const char16_t* date, int quantity, qint64 empId) {
        return insert(s(u"JobShip"), s(u"JobNo, ShippedDate, Quantity, ShippedByEmpID"),
                      u"%1,#%2#,%3,%4"_s.arg(m_job).arg(s(date)).arg(quantity).arg(empId));
    }
    /// Opens the shipping history from the job and works on it.
    void onHistory(const std::function<void()>& driver) {
        open(s(u"frmJob"));
        whenShown(s(u"frmJobShip"), [this, driver] {
            screen::Form* history = &form();
            driver();
            use(history);
            press(s(u"cmdClose"));
        });
        press(s(u"cmdShippingHistory"));
    }
    void onDialog(const char16_t* button, const std::function<void()>& driver) {
        screen::Form* history = &form();
        whenShown(s(u"frmJobshipAddEdit"), driver);
        press(s(button));
        use(history);
    }
    QStringList stored() const {
        return rows(s(u"SELECT JobNo, ShippedDate, Quantity, ShippedByEmpID FROM JobShip ORDER BY "
                      u"JobShipID"));
    }

    qint64 m_job = 0;
};

TEST_P(Shipping, ConsignmentsAreListedLatestFirstAndDeletedOnYes) {
    const qint64 ann = employee(u"Ann", u"Smith");
    shipment(u"03/02/2026", 4, ann);
    const qint64 later = shipment(u"03/05/2026", 6, ann);
    shipment(u"03/06/2026", 1, 98765);
    onHistory([&] {
        EXPECT_EQ(form().windowTitle(), s(u"Shipping History for Job No. %1").arg(m_job));
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(cells(s(u"lvwShip")), QStringList({s(u"Thursday, March 5, 2026|6|Smith, Ann"),
                                                     s(u"Monday, March 2, 2026|4|Smith, Ann")}));
        selectRow(s(u"lvwShip"), 0);
        expectBox(s(u"Delete this item?"), Answer::No, s(u"Delete"));
        press(s(u"cmdDelete"));
        EXPECT_EQ(rowCount(s(u"lvwShip")), 2);
        expectBox(s(u"Delete this item?"), Answer::Yes, s(u"Delete"));
        press(s(u"cmdDelete"));
        EXPECT_EQ(cells(s(u"lvwShip")), QStringList(s(u"Monday, March 2, 2026|4|Smith, Ann")));
        EXPECT_FALSE(database().hasRows(u"SELECT * FROM JobShip WHERE JobShipID=%1"_s.arg(later)));
        expectBox(s(u"Delete this item?"), Answer::Yes);
        press(s(u"cmdDelete"));
        EXPECT_FALSE(isEnabled(s(u"cmdEdit")));
        EXPECT_FALSE(isEnabled(s(u"cmdDelete")));
    });
    EXPECT_EQ(stored().size(), 1);
}

TEST_P(Shipping, NewConsignmentsAreCheckedAndMayExceedTheJob) {
    employee(u"Zoe", u"Adams");
    const qint64 ann = employee(u"Ann", u"Smith");
    onHistory([&] {
        onDialog(u"cmdNew", [&] {
            EXPECT_EQ(form().windowTitle(), s(u"New Shipping"));
            EXPECT_EQ(testsupport::gallery(form()), QStringList());
            EXPECT_EQ(focusName(), s(u"etShippedDate"));
            EXPECT_EQ(text(s(u"etShippedDate")), s(u"3/9/2026"));
            // To be typed over, as if it had been entered by Tab.
            EXPECT_EQ(control<QLineEdit>(s(u"etShippedDate"))->selectedText(), s(u"3/9/2026"));
            const auto refused = [&](const char16_t* message, const char16_t* field) {
                expectBox(s(message));
                press(s(u"cmdOK"));
                EXPECT_EQ(focusName(), s(field));
            };
            type(s(u"etShippedDate"), s(u"2/30/2026"));
            refused(u"Please enter a valid Shipped Date!", u"etShippedDate");
            type(s(u"etShippedDate"), s(u"3/8/2026"));
            go(s(u"txtQuantity"));
            leave();
            refused(u"Quantity may not be blank", u"txtQuantity");
            type(s(u"txtQuantity"), s(u"-1x2.5"));
            leave();
            EXPECT_EQ(text(s(u"txtQuantity")), s(u"13"));
            type(s(u"txtQuantity"), s(u"1.2.3"));
            leave();
            EXPECT_EQ(text(s(u"txtQuantity")), s(u"0"));
            type(s(u"txtQuantity"), s(u"12.5"));
            refused(u"Employee may not be blank!", u"cboEmp");
            choose(s(u"cboEmp"), s(u"Smith, Ann"));
            press(s(u"cmdOKNew"));
            EXPECT_EQ(text(s(u"etShippedDate")), s(u"3/9/2026"));
            EXPECT_EQ(text(s(u"txtQuantity")), QString());
            choose(s(u"cboEmp"), s(u"Smith, Ann"));
            type(s(u"txtQuantity"), s(u"7.6\n")); // Return saves from within the field
        });
        EXPECT_EQ(cells(s(u"lvwShip")), QStringList({s(u"Monday, March 9, 2026|8|Smith, Ann"),
                                                     s(u"Sunday, March 8, 2026|13|Smith, Ann")}));
    });
    EXPECT_EQ(stored(), QStringList({u"%1|3/8/2026|13|%2"_s.arg(m_job).arg(ann),
                                     u"%1|3/9/2026|8|%2"_s.arg(m_job).arg(ann)}));
    EXPECT_EQ(rows(s(u"SELECT Shipped FROM Job")), QStringList(s(u"False")));
}

TEST_P(Shipping, AConsignmentIsEditedOrToldToBeGone) {
    const qint64 ann = employee(u"Ann", u"Smith");
    const qint64 id = shipment(u"03/02/2026", 4, ann);
    const QString missing =
        QString::number(id) + s(u" shipping no. not found! Jobship table may need to be fixed!");
    onHistory([&] {
        selectRow(s(u"lvwShip"), 0);
        onDialog(u"cmdEdit", [&] {
            EXPECT_EQ(form().windowTitle(), s(u"Edit Shipping"));
            EXPECT_FALSE(isEnabled(s(u"cmdOKNew")));
            EXPECT_EQ(text(s(u"cboEmp")), s(u"Smith, Ann"));
            EXPECT_EQ(text(s(u"txtQuantity")), s(u"4"));
            type(s(u"etShippedDate"), s(u"3/4/2026"));
            type(s(u"txtQuantity"), s(u"5"));
            press(s(u"cmdOK"));
        });
        EXPECT_EQ(cells(s(u"lvwShip")), QStringList(s(u"Wednesday, March 4, 2026|5|Smith, Ann")));
        onDialog(u"cmdEdit", [&] {
            type(s(u"txtQuantity"), s(u"6"));
            press(s(u"cmdCancel"));
        });
        EXPECT_EQ(stored(), QStringList(u"%1|3/4/2026|5|%2"_s.arg(m_job).arg(ann)));

        onDialog(u"cmdEdit", [&] {
            anotherStation()->execute(s(u"DELETE FROM JobShip"));
            expectBox(missing);
            press(s(u"cmdOK"));
            press(s(u"cmdCancel"));
        });
        EXPECT_EQ(rowCount(s(u"lvwShip")), 0);
        const qint64 another = shipment(u"03/02/2026", 4, ann);
        use(screen::Forms::find(s(u"frmJobShip")));
        onDialog(u"cmdNew", [&] { press(s(u"cmdCancel")); });
        EXPECT_EQ(rowCount(s(u"lvwShip")), 1);
        anotherStation()->execute(s(u"DELETE FROM JobShip"));
        expectBox(QString(missing).replace(QString::number(id), QString::number(another)));
        press(s(u"cmdEdit"));
        EXPECT_FALSE(isEnabled(s(u"cmdEdit")));
    });
    EXPECT_EQ(stored(), QStringList());
}

TEST_P(Shipping, NothingIsStoredForAnEmployeeOrAJobThatIsGone) {
    const qint64 ann = employee(u"Ann", u"Smith");
    employee(u"Zoe", u"Adams");
    onHistory([&] {
        onDialog(u"cmdNew", [&] {
            choose(s(u"cboEmp"), s(u"Smith, Ann"));
            type(s(u"txtQuantity"), s(u"5"));
            anotherStation()->execute(u"DELETE FROM Employee WHERE EmpID=%1"_s.arg(ann));
            expectBox(u"The Employee ID (%1) for this record does not exist in the "
                      "employee table!"_s.arg(ann));
            press(s(u"cmdOK"));
            EXPECT_EQ(focusName(), s(u"cboEmp"));
            EXPECT_EQ(text(s(u"txtQuantity")), s(u"5"));
            expectBox(s(u"Employee may not be blank!"));
            press(s(u"cmdOK"));
            choose(s(u"cboEmp"), s(u"Adams, Zoe"));
            anotherStation()->execute(s(u"DELETE FROM Job"));
            expectBox(u"Job No. %1 does not exist!"_s.arg(m_job));
            press(s(u"cmdOKNew"));
            EXPECT_EQ(text(s(u"txtQuantity")), s(u"5"));
            press(s(u"cmdCancel"));
        });
    });
    EXPECT_EQ(stored(), QStringList());
}

TEST_P(Shipping, TheChosenConsignmentStaysChosen) {
    const qint64 ann = employee(u"Ann", u"Smith");
    shipment(u"03/02/2026", 4, ann);
    onHistory([&] {
        selectRow(s(u"lvwShip"), 0);
        onDialog(u"cmdNew", [&] {
            choose(s(u"cboEmp"), s(u"Smith, Ann"));
            type(s(u"txtQuantity"), s(u"5"));
            press(s(u"cmdOK"));
        });
        EXPECT_EQ(rowCount(s(u"lvwShip")), 2);
        expectBox(s(u"Delete this item?"), Answer::Yes, s(u"Delete"));
        press(s(u"cmdDelete"));
    });
    EXPECT_EQ(stored(), QStringList(u"%1|3/9/2026|5|%2"_s.arg(m_job).arg(ann)));
}

TEST_P(Shipping, WithoutItsEmployeeAConsignmentCannotBeSaved) {
    const auto show = [&](const char16_t* mode, qint64 id) {
        return screen::Forms::dialog<jobs::ShippingDialog>(s(u"frmJobshipAddEdit"))
            ->ShowForm(s(mode), m_job, id);
    };
    expectBox(s(u"You may not add an item without any employee defined!. Please add the employees "
                u"first."));
    EXPECT_FALSE(show(u"New", 0));
    employee(u"Ann", u"Smith");
    expectBox(s(u"The Employee ID (98765) for this record does not exist in the employee table!"));
    whenShown(s(u"frmJobshipAddEdit"), [&] {
        expectBox(s(u"Employee may not be blank!"));
        press(s(u"cmdOK"));
        choose(s(u"cboEmp"), s(u"Smith, Ann"));
        press(s(u"cmdOK"));
    });
    EXPECT_TRUE(show(u"Edit", shipment(u"03/02/2026", 4, 98765)));
    EXPECT_EQ(rows(s(u"SELECT lastname FROM jobship INNER JOIN employee ON "
                     u"jobship.shippedbyempid=employee.empid")),
              QStringList(s(u"Smith")));
}

MIRSA_BOTH_ENGINES(Shipping);

} // namespace
