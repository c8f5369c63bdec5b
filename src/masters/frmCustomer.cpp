#include "masters/frmCustomer.h"

#include "core/MirsaMain.h"
#include "masters/NoteDialog.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/TextField.h"
#include "platform/values/Literals.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace masters {

using screen::Fields;

namespace {

core::ModuleDescriptor customerModule() {
    core::ModuleDescriptor module;
    module.formName = QString::fromLatin1(frmCustomer::formName);
    module.caption = u"Customer"_s;
    module.moduleWord = u"Customer"_s;
    module.table = u"Customer"_s;
    module.keyColumn = u"Custid"_s;
    module.select = u"SELECT * FROM Customer ORDER BY CustID"_s;
    module.dataControlName = u"datCustomer"_s;
    module.modeLabelName = u"lblCustomerMode"_s;
    module.numberWord = u"Customer"_s;
    module.findScreen = u"frmCustFind"_s;
    module.queryScreen = u"frmCustQuery"_s;
    module.reportModule = u"Customer"_s;
    module.reportTitle = u"Customer Report"_s;
    module.reportAllTitle = u"Full Customer Report"_s;
    module.reportKey = u"Customer.Custid"_s;
    module.deleteTitle = u"Deleting Customer"_s;
    module.deleteText = u"Once Deleted, Customer data will be unrecoverable.  Continue?"_s;
    module.deleteButtons = screen::Buttons::OkCancel;
    return module;
}

CompanyWords customerWords() {
    CompanyWords words;
    words.nameList = u"dbcCustomer"_s;
    words.nameListLabel = u"Goto customer &by name:"_s;
    words.keyField = u"txtCustid"_s;
    words.keyLabel = u"Customer number:"_s;
    words.tabsName = u"Customer data"_s;
    words.nameField = u"txtCustomer"_s;
    words.deliveryFrame = u"fraDelivery"_s;
    words.deliveryTitle = u"Delivery"_s;
    words.termsField = u"dbcTerms"_s;
    words.termsLabel = u"Terms:"_s;
    words.nameless = u"Customer Name must be Present!"_s;
    words.namelessTitle = u"Need Customer Name!"_s;
    return words;
}

} // namespace

frmCustomer::frmCustomer() : CompanyModule(customerModule(), customerWords()) {
    makeLayout([this](QTabWidget* tabs) {
        makeMainTab(screen::tab(tabs, u"&Main"_s));
        makeQuoteTab(screen::tab(tabs, u"Quo&te"_s));
        makeInvoiceTab(screen::tab(tabs, u"&Invoice"_s));
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
    makeButtons(copies, {{core::Role::EntryOnly, u"cmdSendtoBill"_s, u"Copy to Bill Address"_s},
                         {core::Role::EntryOnly, u"cmdSendtoShip"_s, u"Copy to Ship Address"_s},
                         {core::Role::EntryOnly, u"Command3"_s, u"Copy to Invoice Tab"_s}});
    on(control<QPushButton>(u"cmdSendtoBill"_s), &frmCustomer::cmdSendtoBill_Click);
    on(control<QPushButton>(u"cmdSendtoShip"_s), &frmCustomer::cmdSendtoShip_Click);
    on(control<QPushButton>(u"Command3"_s), &frmCustomer::Command3_Click);
}

void frmCustomer::makeQuoteTab(QWidget* page) {
    auto* down = new QVBoxLayout(page);
    Fields heads(page, down);
    txtQHead = heads.text(u"txtQHead"_s, u"Quote &Header:"_s, screen::wide(70));
    txtValid = heads.text(u"txtValid"_s, u"&Validity:"_s, screen::wide(70));

    auto* across = new QHBoxLayout;
    down->addLayout(across, 1);
    const auto note = [&](const char* frameName, const QString& title, const char* name,
                          const char* button, const QString& dialog) {
        auto* inside = new QVBoxLayout;
        auto* box = screen::frame(page, across, QString::fromLatin1(frameName), title);
        box->setLayout(inside);
        auto* memo = screen::named(new controls::MemoField(box), QString::fromLatin1(name), title);
        inside->addWidget(memo, 1);
        makeButtons(inside, {{core::Role::Free, QString::fromLatin1(button), u"View/Edit"_s}});
        auto* edit = control<QPushButton>(QString::fromLatin1(button));
        edit->setAccessibleName(u"View/Edit "_s + title);
        on(edit, [memo, dialog] { editNote(dialog, *memo); });
        return memo;
    };
    txtRemarks =
        note("fraRemarks", u"Quote Remarks"_s, "txtRemarks", "Command4", u"frmQuoteRemarks"_s);
    txtNotes = note("fraNotes", u"Quote Notes (internal viewing only)"_s, "txtNotes", "Command5",
                    u"frmQuoteNotes"_s);
}

void frmCustomer::makeInvoiceTab(QWidget* page) {
    auto* across = new QHBoxLayout(page);
    const auto address = [&](const char* frameName, const QString& title, const QString& prefix) {
        Fields inside(screen::frame(page, across, QString::fromLatin1(frameName), title));
        return screen::AddressBlock::other(inside, prefix, u"Postal"_s, false);
    };
    m_bill = address("fraBill", u"Bill To"_s, u"Bill"_s);
    m_ship = address("fraShip", u"Ship To"_s, u"Ship"_s);

    auto* box = screen::frame(page, across, u"fraInvoiceContact"_s, u"Invoice Contact"_s);
    Fields contact(box);
    m_invoice.contact = contact.text(u"txtInContact"_s, u"C&ontact:"_s, screen::wide(24));
    txtInAltContact = contact.text(u"txtInAltContact"_s, u"Alternate contact:"_s, screen::wide(24));
    m_invoice.email = contact.text(u"txtInEmail"_s, u"Emai&l:"_s, screen::wide(24));
    m_invoice.phone = contact.text(u"txtInPhone"_s, u"P&hone:"_s, screen::wide(20));
    txtInAltPhone = contact.text(u"txtInAltPhone"_s, u"Alternate phone:"_s, screen::wide(20));
    m_invoice.fax = contact.text(u"txtInFax"_s, u"&Fax:"_s, screen::wide(20));
    contact.keepTogether();
}

void frmCustomer::bindColumns() {
    bindCompany();
    fields().bindAll({{u"qteHeader", txtQHead},
                      {u"qtevalid", txtValid},
                      {u"QteRemark", txtRemarks},
                      {u"OurNotes", txtNotes}});
    addAddress(m_bill, u"Bill"_s);
    addAddress(m_ship, u"Ship"_s);
    fields().bindAll({{u"InContact", m_invoice.contact},
                      {u"InAltContact", txtInAltContact},
                      {u"InEmail", m_invoice.email},
                      {u"InPhone", m_invoice.phone},
                      {u"InAltPhone", txtInAltPhone},
                      {u"InFax", m_invoice.fax}});
}

void frmCustomer::newDefaults() {
    CompanyModule::newDefaults();
    const jet::Recordset settings = core::MainDatabase().openRecordset(
        u"Select * from SystemSettings"_s, jet::RecordsetType::Snapshot);
    if (settings.isEmpty())
        return;
    txtQHead->setText(settings.text(u"qteHeader"));
    txtValid->setText(settings.text(u"qtevmessage"));
}

void frmCustomer::tellNeighbours() {
    core::refreshNeighbours({u"frmjob"_s, u"frmestimate"_s, u"frmspareparts"_s, u"frmhistory"_s},
                            u"Customer"_s);
}

// Copy buttons

void frmCustomer::cmdSendtoBill_Click() {
    copyMainAddress(m_bill, u"This will overwrite the bill address information in "
                            "the invoice tab. Continue?"_s);
}

void frmCustomer::cmdSendtoShip_Click() {
    copyMainAddress(m_ship, u"This will overwrite the ship address information in "
                            "the invoice tab. Continue?"_s);
}

void frmCustomer::Command3_Click() {
    copyContact(m_invoice, u"This will overwrite the contact information in the "
                           "invoice tab. Continue?"_s);
}

} // namespace masters
