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

using screen::Answer;
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

screen::Line wide(int characters) {
    screen::Line line;
    line.characters = characters;
    return line;
}

/// Leaves spare height below the fields.
void keepTogether(const Fields& fields) {
    fields.grid()->setRowStretch(fields.grid()->rowCount(), 1);
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
    m_main.line1 = address.text(QStringLiteral("txtAdd1"), QStringLiteral("Address &1:"), wide(36));
    m_main.line2 = address.text(QStringLiteral("txtAdd2"), QStringLiteral("Address &2:"), wide(36));
    txtAdd3 = address.text(QStringLiteral("txtAdd3"), QStringLiteral("Address &3:"), wide(36));
    m_main.city = address.text(QStringLiteral("txtCity"), QStringLiteral("City:"), wide(24));
    m_main.state = address.dataCombo(QStringLiteral("dbcState"),
                                     QStringLiteral("State / Pro&vince:"), wide(12));
    m_main.zip = address.text(QStringLiteral("txtZip1"), QStringLiteral("&Zip:"), wide(12));
    m_main.country =
        address.dataCombo(QStringLiteral("dbcCountry"), QStringLiteral("Country:"), wide(24));

    keepTogether(address);

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
    const auto address = [&](const QString& title, const QString& prefix,
                             const QString& statePrefix, const char* frameName) {
        Address made;
        auto* box = screen::frame(page, across, QString::fromLatin1(frameName), title);
        Fields fields(box);
        made.line1 = fields.text(prefix + QStringLiteral("Address1"), QStringLiteral("Address 1:"),
                                 wide(24));
        made.line2 = fields.text(prefix + QStringLiteral("Address2"), QStringLiteral("Address 2:"),
                                 wide(24));
        made.city = fields.text(prefix + QStringLiteral("City"), QStringLiteral("City:"), wide(20));
        made.state = fields.dataCombo(statePrefix + QStringLiteral("State"),
                                      QStringLiteral("State:"), wide(12));
        made.zip = fields.text(prefix + QStringLiteral("Postal"), QStringLiteral("Postal Code:"),
                               wide(12));
        made.country = fields.dataCombo(statePrefix + QStringLiteral("Country"),
                                        QStringLiteral("Country:"), wide(20));
        keepTogether(fields);
        return made;
    };
    m_bill = address(QStringLiteral("Bill To"), QStringLiteral("txtBill"),
                     QStringLiteral("dbcBill"), "fraBill");
    m_ship = address(QStringLiteral("Ship To"), QStringLiteral("txtShip"),
                     QStringLiteral("dbcShip"), "fraShip");

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
    bind("Address1", m_main.line1);
    bind("Address2", m_main.line2);
    bind("Address3", txtAdd3);
    bind("City", m_main.city);
    bind("State", m_main.state);
    bind("Zip", m_main.zip);
    bind("Country", m_main.country);
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
    bind("BillAddress1", m_bill.line1);
    bind("BillAddress2", m_bill.line2);
    bind("BillCity", m_bill.city);
    bind("billState", m_bill.state);
    bind("BillZip", m_bill.zip);
    bind("billcountry", m_bill.country);
    bind("shipaddress1", m_ship.line1);
    bind("shipaddress2", m_ship.line2);
    bind("shipcity", m_ship.city);
    bind("shipstate", m_ship.state);
    bind("shipzip", m_ship.zip);
    bind("shipcountry", m_ship.country);
    bind("InContact", txtInContact);
    bind("InAltContact", txtInAltContact);
    bind("InEmail", txtInEmail);
    bind("InPhone", txtInPhone);
    bind("InAltPhone", txtInAltPhone);
    bind("InFax", txtInFax);
}

void frmCustomer::openLookups() {
    const auto rows = [](const char16_t* select) {
        return core::MainDatabase().openRecordset(QString::fromUtf16(select),
                                                  jet::RecordsetType::Snapshot);
    };
    const jet::Recordset states = rows(u"Select * from States order by code");
    const jet::Recordset countries = rows(u"Select * from Country order by Country");
    for (const Address* address : {&m_main, &m_bill, &m_ship}) {
        address->state->setRows(states, QStringLiteral("code"), QStringLiteral("code"));
        address->country->setRows(countries, QStringLiteral("country"), QStringLiteral("country"));
    }
    dbcTerms->setRows(rows(u"Select * from Terms"), QStringLiteral("description"),
                      QStringLiteral("description"));
}

void frmCustomer::refreshLookup(const QString& table) {
    const auto is = [&table](const char16_t* other) {
        return table.compare(QStringView(other), Qt::CaseInsensitive) == 0;
    };
    if (is(u"States") || is(u"Country") || is(u"Terms"))
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

bool frmCustomer::mayOverwrite(const controls::TextField& target, const QString& question) {
    return target.text().isEmpty() ||
           MsgBox(question, Buttons::OkCancel, Icon::Question,
                  QStringLiteral("Overwrite Information?")) == Answer::Ok;
}

void frmCustomer::copyMainAddress(const Address& to, const QString& question) {
    if (to.line1->isLocked() || !mayOverwrite(*to.line1, question))
        return;
    to.line1->setText(m_main.line1->text());
    to.line2->setText(m_main.line2->text());
    to.city->setText(m_main.city->text());
    to.zip->setText(m_main.zip->text());
    to.state->setText(m_main.state->text());
    to.country->setText(m_main.country->text());
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
