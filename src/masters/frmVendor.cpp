#include "masters/frmVendor.h"

#include "core/MirsaMain.h"
#include "platform/screen/Pointer.h"
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

ModuleDescriptor vendorModule() {
    ModuleDescriptor module;
    module.formName = QString::fromLatin1(frmVendor::formName);
    module.caption = QStringLiteral("Vendor/Contractor");
    module.moduleWord = QStringLiteral("Vendor");
    module.table = QStringLiteral("Vendor");
    module.keyColumn = QStringLiteral("VendID");
    module.select = QStringLiteral("SELECT * FROM Vendor ORDER BY VendID");
    module.dataControlName = QStringLiteral("datVendor");
    module.modeLabelName = QStringLiteral("lblVendorMode");
    module.numberWord = QStringLiteral("Vendor");
    module.findScreen = QStringLiteral("frmVendFind");
    module.queryScreen = QStringLiteral("frmVendQuery");
    module.reportModule = QStringLiteral("Vendor");
    module.reportTitle = QStringLiteral("Vendor Report");
    module.reportAllTitle = QStringLiteral("Full Vendor Report");
    module.reportKey = QStringLiteral("Vendor.Vendid");
    module.deleteTitle = QStringLiteral("Delete");
    module.deleteText =
        QStringLiteral("Once Deleted, Vendor data will be unrecoverable.  Continue?");
    return module;
}

CompanyWords vendorWords() {
    CompanyWords words;
    words.nameList = QStringLiteral("dbcVendor");
    words.nameListLabel = QStringLiteral("Goto vendor &by name:");
    words.keyField = QStringLiteral("txtVendID");
    words.keyLabel = QStringLiteral("Vendor number:");
    words.tabsName = QStringLiteral("Vendor data");
    words.nameField = QStringLiteral("txtVendor");
    words.deliveryFrame = QStringLiteral("fraPurchasing");
    words.deliveryTitle = QStringLiteral("Purchasing");
    words.termsField = QStringLiteral("txtTerms");
    words.termsLabel = QStringLiteral("&Terms:");
    words.settingsPrefix = QStringLiteral("v");
    words.nameless = QStringLiteral("Vendor Name must be Present!");
    words.namelessTitle = QStringLiteral("Need Vendor Name!");
    return words;
}

} // namespace

frmVendor::frmVendor() : CompanyModule(vendorModule(), vendorWords()) {
    makeLayout([this](QTabWidget* tabs) {
        makeMainTab(screen::tab(tabs, QStringLiteral("&Main")));
        makeBillTab(screen::tab(tabs, QStringLiteral("B&ill To")));
    });
    bindColumns();
}

void frmVendor::makeMainTab(QWidget* page) {
    auto* across = new QHBoxLayout(page);
    auto* left = new QVBoxLayout;
    across->addLayout(left);
    makeMainAddress(page, left);
    chkCotr = screen::named(new QCheckBox(QStringLiteral("O&utside Contractor"), page),
                            QStringLiteral("chkCotr"));
    left->addWidget(chkCotr);
    left->addStretch();

    auto* right = new QVBoxLayout;
    across->addLayout(right, 1);
    makeContact(page, right);
    Fields notes(page, right);
    txtVnote = notes.memo(QStringLiteral("txtVnote"), QStringLiteral("Notes:"), 5);

    auto* copies = new QHBoxLayout;
    right->addLayout(copies);
    makeButtons(
        copies,
        {{Role::EntryOnly, QStringLiteral("cmdSendtoBill"), QStringLiteral("Copy to Bill Address")},
         {Role::EntryOnly, QStringLiteral("Command3"), QStringLiteral("Copy to Bill Contact")}});
    on(control<QPushButton>(QStringLiteral("cmdSendtoBill")), &frmVendor::cmdSendtoBill_Click);
    on(control<QPushButton>(QStringLiteral("Command3")), &frmVendor::Command3_Click);
}

void frmVendor::makeBillTab(QWidget* page) {
    auto* across = new QHBoxLayout(page);
    Fields address(
        screen::frame(page, across, QStringLiteral("fraBill"), QStringLiteral("Bill To")));
    m_bill = AddressFields::other(address, QStringLiteral("Bill"), QStringLiteral("Zip"), true);

    Fields contact(screen::frame(page, across, QStringLiteral("fraBillContact"),
                                 QStringLiteral("Bill To Contact")));
    const auto text = [&contact](const char* name, const QString& label, int width) {
        return contact.text(QString::fromLatin1(name), label, wide(width));
    };
    m_billContact.contact = text("txtBillContact", QStringLiteral("C&ontact:"), 30);
    m_billContact.phone = text("txtBillPhone", QStringLiteral("P&hone:"), 20);
    m_billContact.fax = text("txtBillFax", QStringLiteral("&Fax:"), 20);
    m_billContact.email = text("txtBillEmail", QStringLiteral("Emai&l:"), 30);
    txtAltContact = text("txtAltContact", QStringLiteral("Alternate contact:"), 30);
    txtAltPhone = text("txtAltPhone", QStringLiteral("Alternate phone:"), 20);
    keepTogether(contact);
}

void frmVendor::bindColumns() {
    const auto bind = [this](const char* column, controls::Field* field) {
        fields().bind(QString::fromLatin1(column), field);
    };
    bindCompany();
    bind("OurNotes", txtVnote);
    fields().bind(QStringLiteral("cotr"), chkCotr);
    addAddress(m_bill, QStringLiteral("Bill"));
    bind("BillContact", m_billContact.contact);
    bind("BillPhone", m_billContact.phone);
    bind("BillFax", m_billContact.fax);
    bind("BillEmail", m_billContact.email);
    bind("AltContact", txtAltContact);
    bind("AltPhone", txtAltPhone);
}

void frmVendor::alsoWrite(qint64 key, bool adding) {
    if (adding)
        return;
    const QString name = values::quoted(m_name->text());
    const QString number = QString::number(key);
    core::MainDatabase().execute(QStringLiteral("UPDATE POVendor SET Company = '") + name +
                                 QStringLiteral("' WHERE VendorID = ") + number);
    core::MainDatabase().execute(QStringLiteral("UPDATE RFQVendor SET Company = '") + name +
                                 QStringLiteral("' WHERE VendorID = ") + number);
}

bool frmVendor::mayDelete() {
    {
        const screen::BusyPointer busy;
        jet::Database& database = core::MainDatabase();
        const QString number = QString::number(currentKey());
        const bool related =
            database.hasRows(QStringLiteral("SELECT * FROM timelog WHERE cotrno=") + number) ||
            database.hasRows(QStringLiteral("SELECT * FROM povendor WHERE vendorid=") + number) ||
            database.hasRows(QStringLiteral("SELECT * FROM rfqvendor WHERE vendorid=") + number);
        if (!related)
            return true;
    }
    MsgBox(QStringLiteral("This Vendor has related records in one of the following: RFQ; Job; "
                          "Timelog. It cannot be deleted!"),
           Buttons::Ok, Icon::Exclamation);
    return false;
}

void frmVendor::deleteRows(qint64 key) {
    core::MainDatabase().execute(QStringLiteral("DELETE FROM vendor WHERE vendid =") +
                                 QString::number(key));
}

void frmVendor::tellNeighbours() {
    core::refreshNeighbours({QStringLiteral("frmPO"), QStringLiteral("frmRFQ")},
                            QStringLiteral("Vendor"));
}

void frmVendor::cmdSendtoBill_Click() {
    copyMainAddress(m_bill, QStringLiteral("This will overwrite the bill address information in "
                                           "the Bill To tab. Continue?"));
}

void frmVendor::Command3_Click() {
    copyContact(m_billContact, QStringLiteral("This will overwrite the contact information in the "
                                              "Bill To tab. Continue?"));
}

} // namespace masters
