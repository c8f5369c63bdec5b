#include "masters/frmCustomer.h"

#include "core/MirsaMain.h"
#include "masters/NoteDialog.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/TextField.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace masters {

using screen::Fields;

namespace {

ModuleDescriptor customerModule() {
    ModuleDescriptor module;
    module.formName = QString::fromLatin1(frmCustomer::formName);
    module.caption = QStringLiteral("Customer");
    module.moduleWord = QStringLiteral("Customer");
    module.table = QStringLiteral("Customer");
    module.keyColumn = QStringLiteral("Custid");
    module.select = QStringLiteral("SELECT * FROM Customer ORDER BY CustID");
    module.dataControlName = QStringLiteral("datCustomer");
    module.modeLabelName = QStringLiteral("lblCustomerMode");
    module.numberWord = QStringLiteral("Customer");
    module.findScreen = QStringLiteral("frmCustFind");
    module.queryScreen = QStringLiteral("frmCustQuery");
    module.reportModule = QStringLiteral("Customer");
    module.reportTitle = QStringLiteral("Customer Report");
    module.reportAllTitle = QStringLiteral("Full Customer Report");
    module.reportKey = QStringLiteral("Customer.Custid");
    module.deleteTitle = QStringLiteral("Deleting Customer");
    module.deleteText =
        QStringLiteral("Once Deleted, Customer data will be unrecoverable.  Continue?");
    module.deleteButtons = screen::Buttons::OkCancel;
    return module;
}

CompanyWords customerWords() {
    CompanyWords words;
    words.nameList = QStringLiteral("dbcCustomer");
    words.nameListLabel = QStringLiteral("Goto customer &by name:");
    words.keyField = QStringLiteral("txtCustid");
    words.keyLabel = QStringLiteral("Customer number:");
    words.tabsName = QStringLiteral("Customer data");
    words.nameField = QStringLiteral("txtCustomer");
    words.deliveryFrame = QStringLiteral("fraDelivery");
    words.deliveryTitle = QStringLiteral("Delivery");
    words.termsField = QStringLiteral("dbcTerms");
    words.termsLabel = QStringLiteral("Terms:");
    words.nameless = QStringLiteral("Customer Name must be Present!");
    words.namelessTitle = QStringLiteral("Need Customer Name!");
    return words;
}

} // namespace

frmCustomer::frmCustomer() : CompanyModule(customerModule(), customerWords()) {
    makeLayout([this](QTabWidget* tabs) {
        makeMainTab(screen::tab(tabs, QStringLiteral("&Main")));
        makeQuoteTab(screen::tab(tabs, QStringLiteral("Quo&te")));
        makeInvoiceTab(screen::tab(tabs, QStringLiteral("&Invoice")));
    });
    bindColumns();
}

void frmCustomer::makeMainTab(QWidget* page) {
    auto* across = new QHBoxLayout(page);
    makeMainAddress(page, across);
    auto* right = new QVBoxLayout;
    across->addLayout(right, 1);
    makeContact(page, right);

    auto* copies = new QHBoxLayout;
    right->addLayout(copies);
    right->addStretch();
    makeButtons(
        copies,
        {{Role::EntryOnly, QStringLiteral("cmdSendtoBill"), QStringLiteral("Copy to Bill Address")},
         {Role::EntryOnly, QStringLiteral("cmdSendtoShip"), QStringLiteral("Copy to Ship Address")},
         {Role::EntryOnly, QStringLiteral("Command3"), QStringLiteral("Copy to Invoice Tab")}});
    on(control<QPushButton>(QStringLiteral("cmdSendtoBill")), &frmCustomer::cmdSendtoBill_Click);
    on(control<QPushButton>(QStringLiteral("cmdSendtoShip")), &frmCustomer::cmdSendtoShip_Click);
    on(control<QPushButton>(QStringLiteral("Command3")), &frmCustomer::Command3_Click);
}

void frmCustomer::makeQuoteTab(QWidget* page) {
    auto* down = new QVBoxLayout(page);
    Fields heads(page, down);
    txtQHead = heads.text(QStringLiteral("txtQHead"), QStringLiteral("Quote &Header:"), wide(70));
    txtValid = heads.text(QStringLiteral("txtValid"), QStringLiteral("&Validity:"), wide(70));

    auto* across = new QHBoxLayout;
    down->addLayout(across, 1);
    const auto note = [&](const char* frameName, const QString& title, const char* name,
                          const char* button, const QString& dialog) {
        auto* inside = new QVBoxLayout;
        auto* box = screen::frame(page, across, QString::fromLatin1(frameName), title);
        box->setLayout(inside);
        auto* memo = screen::named(new controls::MemoField(box), QString::fromLatin1(name), title);
        inside->addWidget(memo, 1);
        makeButtons(inside,
                    {{Role::Free, QString::fromLatin1(button), QStringLiteral("View/Edit")}});
        auto* edit = control<QPushButton>(QString::fromLatin1(button));
        edit->setAccessibleName(QStringLiteral("View/Edit ") + title);
        on(edit, [memo, dialog] { editNote(dialog, *memo); });
        return memo;
    };
    txtRemarks = note("fraRemarks", QStringLiteral("Quote Remarks"), "txtRemarks", "Command4",
                      QStringLiteral("frmQuoteRemarks"));
    txtNotes = note("fraNotes", QStringLiteral("Quote Notes (internal viewing only)"), "txtNotes",
                    "Command5", QStringLiteral("frmQuoteNotes"));
}

void frmCustomer::makeInvoiceTab(QWidget* page) {
    auto* across = new QHBoxLayout(page);
    const auto address = [&](const char* frameName, const QString& title, const QString& prefix) {
        Fields inside(screen::frame(page, across, QString::fromLatin1(frameName), title));
        return AddressFields::other(inside, prefix, QStringLiteral("Postal"), false);
    };
    m_bill = address("fraBill", QStringLiteral("Bill To"), QStringLiteral("Bill"));
    m_ship = address("fraShip", QStringLiteral("Ship To"), QStringLiteral("Ship"));

    auto* box = screen::frame(page, across, QStringLiteral("fraInvoiceContact"),
                              QStringLiteral("Invoice Contact"));
    Fields contact(box);
    m_invoice.contact =
        contact.text(QStringLiteral("txtInContact"), QStringLiteral("C&ontact:"), wide(24));
    txtInAltContact = contact.text(QStringLiteral("txtInAltContact"),
                                   QStringLiteral("Alternate contact:"), wide(24));
    m_invoice.email =
        contact.text(QStringLiteral("txtInEmail"), QStringLiteral("Emai&l:"), wide(24));
    m_invoice.phone =
        contact.text(QStringLiteral("txtInPhone"), QStringLiteral("P&hone:"), wide(20));
    txtInAltPhone =
        contact.text(QStringLiteral("txtInAltPhone"), QStringLiteral("Alternate phone:"), wide(20));
    m_invoice.fax = contact.text(QStringLiteral("txtInFax"), QStringLiteral("&Fax:"), wide(20));
    keepTogether(contact);
}

void frmCustomer::bindColumns() {
    const auto bind = [this](const char* column, controls::Field* field) {
        fields().bind(QString::fromLatin1(column), field);
    };
    bindCompany();
    bind("qteHeader", txtQHead);
    bind("qtevalid", txtValid);
    bind("QteRemark", txtRemarks);
    bind("OurNotes", txtNotes);
    addAddress(m_bill, QStringLiteral("Bill"));
    addAddress(m_ship, QStringLiteral("Ship"));
    bind("InContact", m_invoice.contact);
    bind("InAltContact", txtInAltContact);
    bind("InEmail", m_invoice.email);
    bind("InPhone", m_invoice.phone);
    bind("InAltPhone", txtInAltPhone);
    bind("InFax", m_invoice.fax);
}

void frmCustomer::newDefaults() {
    CompanyModule::newDefaults();
    const jet::Recordset settings = core::MainDatabase().openRecordset(
        QStringLiteral("Select * from SystemSettings"), jet::RecordsetType::Snapshot);
    if (settings.isEmpty())
        return;
    txtQHead->setText(settings.text(u"qteHeader"));
    txtValid->setText(settings.text(u"qtevmessage"));
}

void frmCustomer::tellNeighbours() {
    core::refreshNeighbours({QStringLiteral("frmjob"), QStringLiteral("frmestimate"),
                             QStringLiteral("frmspareparts"), QStringLiteral("frmhistory")},
                            QStringLiteral("Customer"));
}

// Copy buttons

void frmCustomer::cmdSendtoBill_Click() {
    copyMainAddress(m_bill, QStringLiteral("This will overwrite the bill address information in "
                                           "the invoice tab. Continue?"));
}

void frmCustomer::cmdSendtoShip_Click() {
    copyMainAddress(m_ship, QStringLiteral("This will overwrite the ship address information in "
                                           "the invoice tab. Continue?"));
}

void frmCustomer::Command3_Click() {
    copyContact(m_invoice, QStringLiteral("This will overwrite the contact information in the "
                                          "invoice tab. Continue?"));
}

} // namespace masters
