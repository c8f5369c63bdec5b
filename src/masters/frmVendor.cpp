#include "masters/frmVendor.h"

#include "core/MirsaMain.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace masters {

using screen::Buttons;
using screen::Fields;
using screen::Icon;
using screen::MsgBox;

namespace {

core::ModuleDescriptor vendorModule() {
    core::ModuleDescriptor module;
    module.formName = QString::fromLatin1(frmVendor::formName);
    module.caption = u"Vendor/Contractor"_s;
    module.moduleWord = u"Vendor"_s;
    module.table = u"Vendor"_s;
    module.keyColumn = u"VendID"_s;
    module.select = u"SELECT * FROM Vendor ORDER BY VendID"_s;
    module.dataControlName = u"datVendor"_s;
    module.modeLabelName = u"lblVendorMode"_s;
    module.numberWord = u"Vendor"_s;
    module.findScreen = u"frmVendFind"_s;
    module.queryScreen = u"frmVendQuery"_s;
    module.reportModule = u"Vendor"_s;
    module.reportTitle = u"Vendor Report"_s;
    module.reportAllTitle = u"Full Vendor Report"_s;
    module.reportKey = u"Vendor.Vendid"_s;
    module.deleteTitle = u"Delete"_s;
    module.deleteText = u"Once Deleted, Vendor data will be unrecoverable.  Continue?"_s;
    return module;
}

CompanyWords vendorWords() {
    CompanyWords words;
    words.nameList = u"dbcVendor"_s;
    words.nameListLabel = u"Goto vendor &by name:"_s;
    words.keyField = u"txtVendID"_s;
    words.keyLabel = u"Vendor number:"_s;
    words.tabsName = u"Vendor data"_s;
    words.nameField = u"txtVendor"_s;
    words.deliveryFrame = u"fraPurchasing"_s;
    words.deliveryTitle = u"Purchasing"_s;
    words.termsField = u"txtTerms"_s;
    words.termsLabel = u"&Terms:"_s;
    words.settingsPrefix = u"v"_s;
    words.nameless = u"Vendor Name must be Present!"_s;
    words.namelessTitle = u"Need Vendor Name!"_s;
    return words;
}

} // namespace

frmVendor::frmVendor() : CompanyModule(vendorModule(), vendorWords()) {
    makeLayout([this](QTabWidget* tabs) {
        makeMainTab(screen::tab(tabs, u"&Main"_s));
        makeBillTab(screen::tab(tabs, u"B&ill To"_s));
    });
    bindColumns();
}

void frmVendor::makeMainTab(QWidget* page) {
    auto* across = new QHBoxLayout(page);
    auto* left = new QVBoxLayout;
    across->addLayout(left);
    makeMainAddress(page, left);
    chkCotr = screen::named(new QCheckBox(u"O&utside Contractor"_s, page), u"chkCotr"_s);
    left->addWidget(chkCotr);
    left->addStretch();

    auto* right = new QVBoxLayout;
    across->addLayout(right, 1);
    makeContact(page, right);
    Fields notes(page, right);
    txtVnote = notes.memo(u"txtVnote"_s, u"Notes:"_s, 5);

    auto* copies = new QHBoxLayout;
    right->addLayout(copies);
    makeButtons(copies, {{core::Role::EntryOnly, u"cmdSendtoBill"_s, u"Copy to Bill Address"_s},
                         {core::Role::EntryOnly, u"Command3"_s, u"Copy to Bill Contact"_s}});
    on(control<QPushButton>(u"cmdSendtoBill"_s), &frmVendor::cmdSendtoBill_Click);
    on(control<QPushButton>(u"Command3"_s), &frmVendor::Command3_Click);
}

void frmVendor::makeBillTab(QWidget* page) {
    auto* across = new QHBoxLayout(page);
    Fields address(screen::frame(page, across, u"fraBill"_s, u"Bill To"_s));
    m_bill = screen::AddressBlock::other(address, u"Bill"_s, u"Zip"_s, true);

    Fields contact(screen::frame(page, across, u"fraBillContact"_s, u"Bill To Contact"_s));
    const auto text = [&contact](const char* name, const QString& label, int width) {
        return contact.text(QString::fromLatin1(name), label, screen::wide(width));
    };
    m_billContact.contact = text("txtBillContact", u"C&ontact:"_s, 30);
    m_billContact.phone = text("txtBillPhone", u"P&hone:"_s, 20);
    m_billContact.fax = text("txtBillFax", u"&Fax:"_s, 20);
    m_billContact.email = text("txtBillEmail", u"Emai&l:"_s, 30);
    txtAltContact = text("txtAltContact", u"Alternate contact:"_s, 30);
    txtAltPhone = text("txtAltPhone", u"Alternate phone:"_s, 20);
    contact.keepTogether();
}

void frmVendor::bindColumns() {
    bindCompany();
    fields().bind(u"OurNotes"_s, txtVnote);
    fields().bind(u"cotr"_s, chkCotr);
    addAddress(m_bill, u"Bill"_s);
    fields().bindAll({{u"BillContact", m_billContact.contact},
                      {u"BillPhone", m_billContact.phone},
                      {u"BillFax", m_billContact.fax},
                      {u"BillEmail", m_billContact.email},
                      {u"AltContact", txtAltContact},
                      {u"AltPhone", txtAltPhone}});
}

void frmVendor::alsoWrite(qint64 key, bool adding) {
    if (adding)
        return;
    const QString name = values::quoted(m_name->text());
    const QString number = QString::number(key);
    core::MainDatabase().execute(u"UPDATE POVendor SET Company = '"_s + name +
                                 u"' WHERE VendorID = "_s + number);
    core::MainDatabase().execute(u"UPDATE RFQVendor SET Company = '"_s + name +
                                 u"' WHERE VendorID = "_s + number);
}

bool frmVendor::mayDelete() {
    {
        const screen::BusyPointer busy;
        jet::Database& database = core::MainDatabase();
        const QString number = QString::number(currentKey());
        const bool related =
            database.hasRows(u"SELECT * FROM timelog WHERE cotrno="_s + number) ||
            database.hasRows(u"SELECT * FROM povendor WHERE vendorid="_s + number) ||
            database.hasRows(u"SELECT * FROM rfqvendor WHERE vendorid="_s + number);
        if (!related)
            return true;
    }
    MsgBox(u"This Vendor has related records in one of the following: RFQ; Job; "
           "Timelog. It cannot be deleted!"_s,
           Buttons::Ok, Icon::Exclamation);
    return false;
}

void frmVendor::deleteRows(qint64 key) {
    core::MainDatabase().execute(u"DELETE FROM vendor WHERE vendid ="_s + QString::number(key));
}

void frmVendor::tellNeighbours() {
    core::refreshNeighbours({u"frmPO"_s, u"frmRFQ"_s}, u"Vendor"_s);
}

void frmVendor::cmdSendtoBill_Click() {
    copyMainAddress(m_bill, u"This will overwrite the bill address information in "
                            "the Bill To tab. Continue?"_s);
}

void frmVendor::Command3_Click() {
    copyContact(m_billContact, u"This will overwrite the contact information in the "
                               "Bill To tab. Continue?"_s);
}

} // namespace masters
