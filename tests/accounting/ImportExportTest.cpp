#include "AccountingShop.h"

using screen::Answer;

namespace {

class ImportExportTest : public AccountingShop {
  protected:
    /// Opens the form, which is a dialog, and works on it.
    void on(const QString& name, const std::function<void()>& driver) {
        whenShown(name, [this, driver] {
            driver();
            press(u"cmdClose"_s);
        });
        screen::Forms::showModal(name);
    }
    void expectSuccess(const QString& text) { expectBox(text, Answer::Ok, u"Success"_s); }
};

const QString customerColumns =
    u"Company, BillAddress1, BillAddress2, BillCity, BillState, BillZip, BillCountry, "
    "ShipAddress1, ShipAddress2, ShipCity, ShipState, ShipZip, ShipCountry, InPhone, InAltPhone, "
    "InFax, InEmail, InContact, InAltContact, Terms, QBSent"_s;

TEST_P(ImportExportTest, AHundredCustomersGoOutAndComeBackEqual) {
    for (int i = 0; i < 100; ++i) {
        const QString n = QString::number(i);
        insert(u"Customer"_s, customerColumns,
               (u"'Kunde Nr. "_s + n + u" & O''Brien','Straße "_s + n +
                u"','','Łódź','NY','1000"_s + n + u"','Polska','','Dock <"_s + n +
                u">','Šibenik','','','Polska','1-"_s + n + u"','','9-"_s + n +
                u"','k@x.example','Ann','','Net 45 Tage',0"_s));
    }
    const QString select = u"SELECT "_s + customerColumns + u" FROM Customer ORDER BY Company"_s;
    const QStringList before = rows(select);
    expectEmptyList();
    on(u"frmImportCustomer"_s, [this] {
        expectBox(u"No records were selected."_s, Answer::Ok, u"Nothing Selected"_s);
        press(u"cmdExport"_s);
        press(u"cmdSelAll"_s);
        expectSuccess(u"Successfully added customer(s) to Quickbooks."_s);
        press(u"cmdExport"_s);
        EXPECT_EQ(rowCount(u"vaSpread1"_s), 0);
        expectBox(u"No customer records to export."_s, Answer::Ok, u"Nothing to Export"_s);
        press(u"cmdExport"_s);
    });
    EXPECT_EQ(inCompany(u"CustomerRet"_s).size(), 100);
    EXPECT_EQ(inCompany(u"StandardTermsRet"_s), QStringList(u"Net 45 Tage"_s));
    EXPECT_EQ(rows(u"SELECT COUNT(*) FROM Customer WHERE QBSent=1"_s), QStringList(u"100"_s));

    database().execute(u"DELETE * FROM Customer"_s);
    on(u"frmImportCustomer"_s, [this] {
        EXPECT_EQ(rowCount(u"vaSpread2"_s), 100);
        press(u"cmdImpAll"_s);
        expectBox(u"Billing address country Polska does not exist in the Mirsa country table. "
                  "Add?"_s,
                  Answer::Yes, u"Country not Found"_s);
        expectSuccess(u"Successfully imported customer(s) from Quickbooks."_s);
        press(u"Command3"_s);
        expectBox(u"No customer records to import."_s, Answer::Ok, u"Nothing to Import"_s);
        press(u"Command3"_s);
    });
    QStringList expected = before;
    for (QString& row : expected)
        row.replace(row.size() - 1, 1, u"1"_s); // known to QuickBooks now
    EXPECT_EQ(rows(select), expected);
    EXPECT_EQ(rows(u"SELECT DISTINCT FOB, Shipping, QteHeader, Phone, Address1 <> '' FROM Customer "
                   "WHERE Company LIKE '* 7 *'"_s)
                  .size(),
              1);
    EXPECT_EQ(rows(u"SELECT code, country FROM Country WHERE country='Polska'"_s),
              QStringList(u"Polska|Polska"_s));
    EXPECT_EQ(rows(u"SELECT netdue FROM Terms WHERE description='Net 45 Tage'"_s).size(), 1);
}

TEST_P(ImportExportTest, ANameInUseIsPassedOverAndStaysUnsent) {
    for (const char16_t* company : {u"Acme", u"Birch", u"Cedar"})
        insert(u"Customer"_s, u"Company, QBSent"_s, u"'%1',0"_s.arg(QString::fromUtf16(company)));
    insert(u"Vendor"_s, u"Company, QBSent"_s, u"'Birch',0"_s);
    expectEmptyList();
    on(u"frmImportVendor"_s, [this] {
        press(u"cmdSelAll"_s);
        expectSuccess(u"Successfully added vendor(s) to Quickbooks."_s);
        press(u"cmdExport"_s);
    });
    expectEmptyList();
    on(u"frmImportCustomer"_s, [this] {
        press(u"cmdSelAll"_s);
        const QString question =
            u"The company Birch already exists in Quickbooks and will not be added. Continue?"_s;
        expectBox(question, Answer::Cancel, u"Company already exists"_s);
        press(u"cmdExport"_s);
        EXPECT_EQ(rowCount(u"vaSpread1"_s), 2) << "Acme went out, Cedar waits";
        press(u"cmdSelAll"_s);
        expectBox(question, Answer::Ok, u"Company already exists"_s);
        expectSuccess(u"Successfully added customer(s) to Quickbooks."_s);
        press(u"cmdExport"_s);
        EXPECT_EQ(cells(u"vaSpread1"_s), QStringList(u"0|2|Birch"_s));
        press(u"cmdSelAll"_s);
        expectBox(question, Answer::Ok);
        expectBox(u"No new customer records were selected."_s, Answer::Ok, u"Nothing Selected"_s);
        press(u"cmdExport"_s);
        // By hand, then.
        EXPECT_EQ(cells(u"vaSpread3"_s),
                  (QStringList{u"1|1|Acme"_s, u"0|2|Birch"_s, u"1|3|Cedar"_s}));
        tick(u"vaSpread3"_s, 1);
        tick(u"vaSpread3"_s, 2);
        expectSuccess(u"Successfully updated customer records."_s);
        press(u"Command8"_s);
    });
    EXPECT_EQ(rows(u"SELECT QBSent FROM Customer ORDER BY CustID"_s),
              (QStringList{u"1"_s, u"1"_s, u"0"_s}));
}

TEST_P(ImportExportTest, EmployeesAndTermsTravelBothWays) {
    insert(
        u"Employee"_s,
        u"Firstname, Lastname, Address1, City, SSN, HireDate, Terminate, EmpStatus, QBSent"_s,
        u"'Ann','O''Hara','2 Elm','Cork','123456789',#03/02/2020#,#02/27/2026#,'Terminated',0"_s);
    insert(u"Employee"_s, u"Firstname, Lastname, EmpStatus, QBSent"_s, u"'Bo','Lee','Active',0"_s);
    expectEmptyList();
    on(u"frmImportEmployee"_s, [this] {
        press(u"cmdSelAll"_s);
        expectSuccess(u"Successfully added employee(s) to Quickbooks."_s);
        press(u"cmdExport"_s);
    });
    EXPECT_EQ(inCompany(u"EmployeeRet"_s), (QStringList{u"Ann O'Hara"_s, u"Bo Lee"_s}));
    EXPECT_EQ(inCompany(u"EmployeeRet"_s, u"IsActive"_s), (QStringList{u"false"_s, u"true"_s}));
    const QString select =
        u"SELECT Firstname, Lastname, Address1, City, HireDate, Terminate, EmpStatus, QBSent "
        "FROM Employee ORDER BY Lastname"_s;
    const QStringList before = rows(select);
    database().execute(u"DELETE * FROM Employee"_s);
    on(u"frmImportEmployee"_s, [this] {
        press(u"cmdImpAll"_s);
        expectSuccess(u"Successfully imported employee(s) from Quickbooks."_s);
        press(u"Command3"_s);
    });
    QStringList after = rows(select);
    EXPECT_EQ(after.size(), 2);
    EXPECT_EQ(after, before);

    const int terms = rows(u"SELECT description FROM Terms"_s).size();
    expectEmptyList();
    on(u"frmImportTerm"_s, [this, terms] {
        EXPECT_EQ(rowCount(u"vaSpread1"_s), terms);
        press(u"cmdSelAll"_s);
        expectSuccess(u"Successfully added Term(s) to Quickbooks."_s);
        press(u"cmdExport"_s);
    });
    database().execute(u"DELETE * FROM Terms WHERE netdue > 20"_s);
    on(u"frmImportTerm"_s, [this] {
        EXPECT_EQ(rowCount(u"vaSpread2"_s), 3);
        tick(u"vaSpread2"_s, 0);
        expectSuccess(u"Successfully imported Term(s) from Quickbooks."_s);
        press(u"Command3"_s);
        EXPECT_EQ(rowCount(u"vaSpread2"_s), 2);
    });
    EXPECT_EQ(rows(u"SELECT netdue, QBSent FROM Terms WHERE description='Net 30'"_s),
              QStringList(u"30|0"_s));
}

TEST_P(ImportExportTest, WithoutQuickBooksTheFormStaysClosedAndAFaultStopsTheRun) {
    trouble(u"closed"_s);
    expectBox(u"Quickbooks must be running for this module to function."_s, Answer::Ok,
              u"Quickbooks not Open"_s);
    screen::Forms::showModal(u"frmImportVendor"_s);
    for (const char16_t* company : {u"Acme", u"Birch"})
        insert(u"Vendor"_s, u"Company, QBSent"_s, u"'%1',0"_s.arg(QString::fromUtf16(company)));
    insert(u"Vendor"_s, u"Company, QBSent"_s, u"'%1',0"_s.arg(QString(42, u'x')));
    expectEmptyList();
    on(u"frmImportVendor"_s, [this] {
        press(u"cmdSelAll"_s);
        expectBoxContaining(u"The name has 42 letters, and QuickBooks takes 41"_s);
        press(u"cmdExport"_s);
        EXPECT_EQ(inCompany(u"VendorRet"_s), QStringList()) << "nothing at all was sent";
        tick(u"vaSpread1"_s, 2);
        trouble(u"death"_s);
        expectBoxContaining(u"It isn't known whether QuickBooks took the vendor."_s);
        press(u"cmdExport"_s);
        EXPECT_EQ(inCompany(u"VendorRet"_s), QStringList(u"Acme"_s))
            << "Birch isn't tried any more";
    });
    EXPECT_EQ(rows(u"SELECT QBSent FROM Vendor ORDER BY VendID"_s),
              (QStringList{u"0"_s, u"0"_s, u"0"_s}));
}

TEST_P(ImportExportTest, EveryWayOfGoingWrongMarksNothingAndTellsWhatToDo) {
    insert(u"Employee"_s, u"Firstname, Lastname, EmpStatus, QBSent"_s, u"'Bo','Lee','Active',0"_s);
    insert(u"Employee"_s, u"Firstname, Lastname, EmpStatus, QBSent"_s,
           u"'%1','%1','Active',0"_s.arg(QString(25, u'x')));
    const QString marks = u"SELECT QBSent FROM Employee ORDER BY EmpID"_s;
    const QString unsure = u"so it isn't known whether it took the employee."_s;
    expectEmptyList();
    on(u"frmImportEmployee"_s, [&] {
        press(u"cmdSelAll"_s);
        expectBoxContaining(u"The name has 51 letters, and QuickBooks takes 41"_s);
        press(u"cmdExport"_s);
        tick(u"vaSpread1"_s, 1);
        const auto meets = [&](const QString& what, const QString& box) {
            trouble(what);
            expectBoxContaining(box);
            press(u"cmdExport"_s);
            EXPECT_EQ(rows(marks), (QStringList{u"0"_s, u"0"_s})) << what.toStdString();
            tick(u"vaSpread1"_s, 0);
        };
        tick(u"vaSpread1"_s, 0);
        tick(u"vaSpread1"_s, 0);
        meets(u"closed"_s, u"Quickbooks must be running"_s);
        meets(u"3180"_s, u"This list has been modified by another user."_s);
        meets(u"rubbish"_s, unsure);
        QFile::remove(inFolder(u"Practice.company"_s)); // it has taken him
        ask({u"make"_s});
        usualDoor(1);
        meets(u"late 5"_s, u"There was no answer within 1 seconds."_s);
        usualDoor();
        QFile::remove(inFolder(u"Practice.company"_s));
        ask({u"make"_s});
        trouble(u"warning"_s);
        expectBoxContaining(u"a part of it was not used"_s);
        expectSuccess(u"Successfully added employee(s) to Quickbooks."_s);
        press(u"cmdExport"_s);
        EXPECT_EQ(rows(marks), (QStringList{u"1"_s, u"0"_s}));
        // The list can't be read again: what is shown stays.
        for (const char16_t* what : {u"closed", u"rubbish"}) {
            trouble(QString::fromUtf16(what));
            expectBoxContaining(*what == u'c' ? u"Quickbooks must be running"_s
                                              : u"loadXML failed, reason: "_s);
            press(u"Command6"_s);
        }
    });
}

} // namespace

MIRSA_BOTH_ENGINES(ImportExportTest);
