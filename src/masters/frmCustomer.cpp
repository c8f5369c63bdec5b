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

using screen::Buttons;
using screen::Fields;
using screen::Icon;
using screen::MsgBox;

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
    module.deleteButtons = Buttons::OkCancel;
    return module;
}

} // namespace

frmCustomer::frmCustomer() : RecordModule(customerModule()) {
    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    layout->addLayout(top);
    Fields head(this, top);
    dbcCustomer = head.dataCombo(QStringLiteral("dbcCustomer"),
                                 QStringLiteral("Goto customer &by name:"), wide(36));
    head.nextColumn();
    txtCustid = head.text(QStringLiteral("txtCustid"), QStringLiteral("Customer number:"), wide(8));
    top->addStretch();
    top->addWidget(modeLabel());
    bindKey(txtCustid);
    bindNameList(dbcCustomer,
                 QStringLiteral("Select Company, CustID FROM Customer ORDER BY Company"),
                 QStringLiteral("Company"), QStringLiteral("CustID"));

    m_tabs = screen::named(new QTabWidget(this), QStringLiteral("SSTab1"),
                           QStringLiteral("Customer data"));
    layout->addWidget(m_tabs, 1);
    makeMainTab(screen::tab(m_tabs, QStringLiteral("&Main")));
    makeQuoteTab(screen::tab(m_tabs, QStringLiteral("Quo&te")));
    makeInvoiceTab(screen::tab(m_tabs, QStringLiteral("&Invoice")));
    bindColumns();

    auto* move = new QHBoxLayout;
    layout->addLayout(move);
    move->addWidget(datMain());
    move->addStretch();
    auto* row = new QHBoxLayout;
    layout->addLayout(row);
    makeButtons(row, standardButtons());
}

void frmCustomer::makeMainTab(QWidget* page) {
    auto* across = new QHBoxLayout(page);
    auto* left =
        screen::frame(page, across, QStringLiteral("fraAddress"), QStringLiteral("Main Address"));
    Fields address(left);
    txtCustomer =
        address.text(QStringLiteral("txtCustomer"), QStringLiteral("Compan&y:"), wide(36));
    m_main = AddressFields::main(address);

    auto* right = new QVBoxLayout;
    across->addLayout(right, 1);
    Fields contact(
        screen::frame(page, right, QStringLiteral("fraContact"), QStringLiteral("Contact")));
    txtContact = contact.text(QStringLiteral("txtContact"), QStringLiteral("C&ontact:"), wide(30));
    etxtPhone = contact.text(QStringLiteral("etxtPhone"), QStringLiteral("P&hone:"), wide(20));
    etxtFax = contact.text(QStringLiteral("etxtFax"), QStringLiteral("&Fax:"), wide(20));
    txtEmail = contact.text(QStringLiteral("txtEmail"), QStringLiteral("Emai&l:"), wide(30));
    Fields delivery(
        screen::frame(page, right, QStringLiteral("fraDelivery"), QStringLiteral("Delivery")));
    txtAttention =
        delivery.text(QStringLiteral("txtAttention"), QStringLiteral("Attention:"), wide(30));
    txtShip = delivery.text(QStringLiteral("txtShip"), QStringLiteral("Shi&pping:"), wide(30));
    dbcTerms = delivery.dataCombo(QStringLiteral("dbcTerms"), QStringLiteral("Terms:"), wide(24));
    txtFOB = delivery.text(QStringLiteral("txtFOB"), QStringLiteral("FOB:"), wide(30));

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
    txtInContact =
        contact.text(QStringLiteral("txtInContact"), QStringLiteral("C&ontact:"), wide(24));
    txtInAltContact = contact.text(QStringLiteral("txtInAltContact"),
                                   QStringLiteral("Alternate contact:"), wide(24));
    txtInEmail = contact.text(QStringLiteral("txtInEmail"), QStringLiteral("Emai&l:"), wide(24));
    txtInPhone = contact.text(QStringLiteral("txtInPhone"), QStringLiteral("P&hone:"), wide(20));
    txtInAltPhone =
        contact.text(QStringLiteral("txtInAltPhone"), QStringLiteral("Alternate phone:"), wide(20));
    txtInFax = contact.text(QStringLiteral("txtInFax"), QStringLiteral("&Fax:"), wide(20));
    keepTogether(contact);
}

void frmCustomer::bindColumns() {
    const auto bind = [this](const char* column, controls::Field* field) {
        fields().bind(QString::fromLatin1(column), field);
    };
    bind("company", txtCustomer);
    m_main.bind(fields());
    bind("Contact", txtContact);
    bind("Phone", etxtPhone);
    bind("Fax", etxtFax);
    bind("Email", txtEmail);
    bind("attention", txtAttention);
    bind("Shipping", txtShip);
    bind("Terms", dbcTerms);
    bind("FOB", txtFOB);
    bind("qteHeader", txtQHead);
    bind("qtevalid", txtValid);
    bind("QteRemark", txtRemarks);
    bind("OurNotes", txtNotes);
    m_bill.bind(fields(), QStringLiteral("Bill"));
    m_ship.bind(fields(), QStringLiteral("Ship"));
    bind("InContact", txtInContact);
    bind("InAltContact", txtInAltContact);
    bind("InEmail", txtInEmail);
    bind("InPhone", txtInPhone);
    bind("InAltPhone", txtInAltPhone);
    bind("InFax", txtInFax);
}

void frmCustomer::openLookups() {
    AddressFields::fillLists({m_main, m_bill, m_ship});
    dbcTerms->setRows(core::MainDatabase().openRecordset(QStringLiteral("Select * from Terms"),
                                                         jet::RecordsetType::Snapshot),
                      QStringLiteral("description"), QStringLiteral("description"));
}

void frmCustomer::refreshLookup(const QString& table) {
    if (AddressFields::listsFrom(table) || table.compare(u"Terms", Qt::CaseInsensitive) == 0)
        openLookups();
    RecordModule::refreshLookup(table);
}

void frmCustomer::newDefaults() {
    const jet::Recordset settings = core::MainDatabase().openRecordset(
        QStringLiteral("Select * from SystemSettings"), jet::RecordsetType::Snapshot);
    if (settings.isEmpty())
        return;
    txtShip->setText(settings.text(u"Shipping"));
    dbcTerms->setText(settings.text(u"Terms"));
    txtFOB->setText(settings.text(u"FOB"));
    txtQHead->setText(settings.text(u"qteHeader"));
    txtValid->setText(settings.text(u"qtevmessage"));
}

bool frmCustomer::validate() {
    if (!txtCustomer->text().trimmed().isEmpty())
        return true;
    MsgBox(QStringLiteral("Customer Name must be Present!"), Buttons::OkCancel, Icon::Exclamation,
           QStringLiteral("Need Customer Name!"));
    m_tabs->setCurrentIndex(0);
    txtCustomer->setFocus();
    return false;
}

void frmCustomer::newRowColumns(jet::Recordset& row) {
    row.set(u"QBSent", 0);
}

void frmCustomer::tellNeighbours() {
    core::refreshNeighbours({QStringLiteral("frmjob"), QStringLiteral("frmestimate"),
                             QStringLiteral("frmspareparts"), QStringLiteral("frmhistory")},
                            QStringLiteral("Customer"));
}

// Copy buttons

void frmCustomer::copyMainAddress(const AddressFields& to, const QString& question) {
    if (!to.line1->isLocked() && mayOverwrite(*to.line1, question))
        m_main.copyTo(to);
}

void frmCustomer::cmdSendtoBill_Click() {
    copyMainAddress(m_bill, QStringLiteral("This will overwrite the bill address information in "
                                           "the invoice tab. Continue?"));
}

void frmCustomer::cmdSendtoShip_Click() {
    copyMainAddress(m_ship, QStringLiteral("This will overwrite the ship address information in "
                                           "the invoice tab. Continue?"));
}

void frmCustomer::Command3_Click() {
    if (txtInContact->isLocked() ||
        !mayOverwrite(*txtInContact,
                      QStringLiteral("This will overwrite the contact information in the invoice "
                                     "tab. Continue?")))
        return;
    txtInContact->setText(txtContact->text());
    txtInEmail->setText(txtEmail->text());
    txtInPhone->setText(etxtPhone->text());
    txtInFax->setText(etxtFax->text());
}

} // namespace masters
