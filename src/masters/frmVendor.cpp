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

} // namespace

frmVendor::frmVendor() : RecordModule(vendorModule()) {
    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    layout->addLayout(top);
    Fields head(this, top);
    dbcVendor = head.dataCombo(QStringLiteral("dbcVendor"), QStringLiteral("Goto vendor &by name:"),
                               wide(36));
    head.nextColumn();
    txtVendID = head.text(QStringLiteral("txtVendID"), QStringLiteral("Vendor number:"), wide(8));
    top->addStretch();
    top->addWidget(modeLabel());
    bindKey(txtVendID);
    bindNameList(dbcVendor, QStringLiteral("Select Company, VendID FROM Vendor ORDER BY Company"),
                 QStringLiteral("Company"), QStringLiteral("VendID"));

    m_tabs = screen::named(new QTabWidget(this), QStringLiteral("SSTab1"),
                           QStringLiteral("Vendor data"));
    layout->addWidget(m_tabs, 1);
    makeMainTab(screen::tab(m_tabs, QStringLiteral("&Main")));
    makeBillTab(screen::tab(m_tabs, QStringLiteral("B&ill To")));
    bindColumns();

    auto* move = new QHBoxLayout;
    layout->addLayout(move);
    move->addWidget(datMain());
    move->addStretch();
    auto* row = new QHBoxLayout;
    layout->addLayout(row);
    makeButtons(row, standardButtons());
}

void frmVendor::makeMainTab(QWidget* page) {
    auto* across = new QHBoxLayout(page);
    auto* left = new QVBoxLayout;
    across->addLayout(left);
    Fields address(
        screen::frame(page, left, QStringLiteral("fraAddress"), QStringLiteral("Main Address")));
    txtVendor = address.text(QStringLiteral("txtVendor"), QStringLiteral("Compan&y:"), wide(36));
    m_main = AddressFields::main(address);
    chkCotr = screen::named(new QCheckBox(QStringLiteral("O&utside Contractor"), page),
                            QStringLiteral("chkCotr"));
    left->addWidget(chkCotr);
    left->addStretch();

    auto* right = new QVBoxLayout;
    across->addLayout(right, 1);
    Fields contact(
        screen::frame(page, right, QStringLiteral("fraContact"), QStringLiteral("Contact")));
    txtContact = contact.text(QStringLiteral("txtContact"), QStringLiteral("C&ontact:"), wide(30));
    etxtPhone = contact.text(QStringLiteral("etxtPhone"), QStringLiteral("P&hone:"), wide(20));
    etxtFax = contact.text(QStringLiteral("etxtFax"), QStringLiteral("&Fax:"), wide(20));
    txtEmail = contact.text(QStringLiteral("txtEmail"), QStringLiteral("Emai&l:"), wide(30));
    Fields buying(
        screen::frame(page, right, QStringLiteral("fraPurchasing"), QStringLiteral("Purchasing")));
    txtAttention =
        buying.text(QStringLiteral("txtAttention"), QStringLiteral("Attention:"), wide(30));
    txtShip = buying.text(QStringLiteral("txtShip"), QStringLiteral("Shi&pping:"), wide(30));
    txtTerms = buying.dataCombo(QStringLiteral("txtTerms"), QStringLiteral("&Terms:"), wide(24));
    txtFOB = buying.text(QStringLiteral("txtFOB"), QStringLiteral("FOB:"), wide(30));
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
    txtBillContact = text("txtBillContact", QStringLiteral("C&ontact:"), 30);
    txtBillPhone = text("txtBillPhone", QStringLiteral("P&hone:"), 20);
    txtBillFax = text("txtBillFax", QStringLiteral("&Fax:"), 20);
    txtBillEmail = text("txtBillEmail", QStringLiteral("Emai&l:"), 30);
    txtAltContact = text("txtAltContact", QStringLiteral("Alternate contact:"), 30);
    txtAltPhone = text("txtAltPhone", QStringLiteral("Alternate phone:"), 20);
    keepTogether(contact);
}

void frmVendor::bindColumns() {
    const auto bind = [this](const char* column, controls::Field* field) {
        fields().bind(QString::fromLatin1(column), field);
    };
    bind("company", txtVendor);
    m_main.bind(fields());
    bind("Contact", txtContact);
    bind("Phone", etxtPhone);
    bind("Fax", etxtFax);
    bind("Email", txtEmail);
    bind("attention", txtAttention);
    bind("Shipping", txtShip);
    bind("Terms", txtTerms);
    bind("FOB", txtFOB);
    bind("OurNotes", txtVnote);
    fields().bind(QStringLiteral("cotr"), chkCotr);
    m_bill.bind(fields(), QStringLiteral("Bill"));
    bind("BillContact", txtBillContact);
    bind("BillPhone", txtBillPhone);
    bind("BillFax", txtBillFax);
    bind("BillEmail", txtBillEmail);
    bind("AltContact", txtAltContact);
    bind("AltPhone", txtAltPhone);
}

void frmVendor::openLookups() {
    AddressFields::fillLists({m_main, m_bill});
    txtTerms->setRows(core::MainDatabase().openRecordset(QStringLiteral("Select * from Terms"),
                                                         jet::RecordsetType::Snapshot),
                      QStringLiteral("description"), QStringLiteral("description"));
}

void frmVendor::refreshLookup(const QString& table) {
    if (AddressFields::listsFrom(table) || table.compare(u"Terms", Qt::CaseInsensitive) == 0)
        openLookups();
    RecordModule::refreshLookup(table);
}

void frmVendor::newDefaults() {
    const jet::Recordset settings = core::MainDatabase().openRecordset(
        QStringLiteral("Select * from SystemSettings"), jet::RecordsetType::Snapshot);
    if (settings.isEmpty())
        return;
    txtShip->setText(settings.text(u"vShipping"));
    txtTerms->setText(settings.text(u"vTerms"));
    txtFOB->setText(settings.text(u"vFOB"));
}

bool frmVendor::validate() {
    if (!txtVendor->text().trimmed().isEmpty())
        return true;
    MsgBox(QStringLiteral("Vendor Name must be Present!"), Buttons::OkCancel, Icon::Exclamation,
           QStringLiteral("Need Vendor Name!"));
    m_tabs->setCurrentIndex(0);
    txtVendor->setFocus();
    return false;
}

void frmVendor::newRowColumns(jet::Recordset& row) {
    row.set(u"QBSent", 0);
}

void frmVendor::alsoWrite(qint64 key, bool adding) {
    if (adding)
        return;
    const QString name = values::quoted(txtVendor->text());
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
    if (!m_bill.line1->isLocked() &&
        mayOverwrite(*m_bill.line1,
                     QStringLiteral("This will overwrite the bill address information in the Bill "
                                    "To tab. Continue?")))
        m_main.copyTo(m_bill);
}

void frmVendor::Command3_Click() {
    if (txtBillContact->isLocked() ||
        !mayOverwrite(*txtBillContact, QStringLiteral("This will overwrite the contact information "
                                                      "in the Bill To tab. Continue?")))
        return;
    txtBillContact->setText(txtContact->text());
    txtBillEmail->setText(txtEmail->text());
    txtBillPhone->setText(etxtPhone->text());
    txtBillFax->setText(etxtFax->text());
}

} // namespace masters
