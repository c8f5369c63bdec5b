#include "masters/CompanyModule.h"

#include "core/MirsaMain.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/TextField.h"
#include "platform/values/Literals.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QTabWidget>
#include <QVBoxLayout>

namespace masters {

using screen::Fields;

namespace {

/// Asks before the copy buttons write over what stands in the target.
bool mayOverwrite(const controls::TextField& target, const QString& question) {
    return target.text().isEmpty() ||
           screen::MsgBox(question, screen::Buttons::OkCancel, screen::Icon::Question,
                          u"Overwrite Information?"_s) == screen::Answer::Ok;
}

} // namespace

void CompanyModule::makeLayout(const std::function<void(QTabWidget*)>& fill) {
    auto* layout = new QVBoxLayout(this);
    auto* top = new QHBoxLayout;
    layout->addLayout(top);
    Fields head(this, top);
    auto* names = head.dataCombo(m_words.nameList, m_words.nameListLabel, screen::wide(36));
    head.nextColumn();
    bindKey(head.text(m_words.keyField, m_words.keyLabel, screen::wide(8)));
    top->addStretch();
    top->addWidget(modeLabel());
    const core::ModuleDescriptor& module = descriptor();
    bindNameList(names,
                 u"Select Company, "_s + module.keyColumn + u" FROM "_s + module.table +
                     u" ORDER BY Company"_s,
                 u"Company"_s, module.keyColumn);

    m_tabs = screen::named(new QTabWidget(this), u"SSTab1"_s, m_words.tabsName);
    layout->addWidget(m_tabs, 1);
    fill(m_tabs);
    makeFoot(layout, standardButtons());
}

void CompanyModule::makeMainAddress(QWidget* page, QBoxLayout* into) {
    Fields address(screen::frame(page, into, u"fraAddress"_s, u"Main Address"_s));
    m_name = address.text(m_words.nameField, u"Compan&y:"_s, screen::wide(36));
    m_addresses.insert(m_addresses.begin(), screen::AddressBlock::main(address));
}

void CompanyModule::makeContact(QWidget* page, QBoxLayout* into) {
    Fields contact(screen::frame(page, into, u"fraContact"_s, u"Contact"_s));
    m_contact.contact = contact.text(u"txtContact"_s, u"C&ontact:"_s, screen::wide(30));
    m_contact.phone = contact.text(u"etxtPhone"_s, u"P&hone:"_s, screen::wide(20));
    m_contact.fax = contact.text(u"etxtFax"_s, u"&Fax:"_s, screen::wide(20));
    m_contact.email = contact.text(u"txtEmail"_s, u"Emai&l:"_s, screen::wide(30));
    Fields delivery(screen::frame(page, into, m_words.deliveryFrame, m_words.deliveryTitle));
    m_attention = delivery.text(u"txtAttention"_s, u"Attention:"_s, screen::wide(30));
    m_shipping = delivery.text(u"txtShip"_s, u"Shi&pping:"_s, screen::wide(30));
    m_terms = delivery.dataCombo(m_words.termsField, m_words.termsLabel, screen::wide(24));
    m_fob = delivery.text(u"txtFOB"_s, u"FOB:"_s, screen::wide(30));
}

void CompanyModule::bindCompany() {
    fields().bind(u"company"_s, m_name);
    m_addresses.front().bind(fields());
    offerUnknown(*this, m_addresses.front(), [this] { return !isBrowse(); });
    fields().bindAll({{u"Contact", m_contact.contact},
                      {u"Phone", m_contact.phone},
                      {u"Fax", m_contact.fax},
                      {u"Email", m_contact.email},
                      {u"attention", m_attention},
                      {u"Shipping", m_shipping},
                      {u"Terms", m_terms},
                      {u"FOB", m_fob}});
}

void CompanyModule::addAddress(const screen::AddressBlock& address, const QString& prefix) {
    address.bind(fields(), prefix);
    offerUnknown(*this, address, [this] { return !isBrowse(); });
    m_addresses.push_back(address);
}

void CompanyModule::openLookups() {
    const jet::Recordset terms = core::MainDatabase().openLater(u"Select * from Terms"_s);
    fillAddressLists(m_addresses);
    m_terms->setRows(terms, u"description"_s, u"description"_s);
}

void CompanyModule::refreshLookup(const QString& table) {
    if (isAddressTable(table) || table.compare(u"Terms", Qt::CaseInsensitive) == 0)
        openLookups();
    core::RecordModule::refreshLookup(table);
}

void CompanyModule::newDefaults() {
    const jet::Recordset settings = core::MainDatabase().openRecordset(
        u"Select * from SystemSettings"_s, jet::RecordsetType::Snapshot);
    if (settings.isEmpty())
        return;
    const auto preset = [&](const char16_t* column) {
        return settings.text(m_words.settingsPrefix + QString::fromUtf16(column));
    };
    m_shipping->setText(preset(u"Shipping"));
    m_terms->setText(preset(u"Terms"));
    m_fob->setText(preset(u"FOB"));
}

bool CompanyModule::validate() {
    if (!m_name->text().trimmed().isEmpty())
        return true;
    screen::MsgBox(m_words.nameless, screen::Buttons::OkCancel, screen::Icon::Exclamation,
                   m_words.namelessTitle);
    m_tabs->setCurrentIndex(0);
    m_name->setFocus();
    return false;
}

void CompanyModule::newRowColumns(jet::Recordset& row) {
    row.set(u"QBSent", 0);
}

void CompanyModule::copyMainAddress(const screen::AddressBlock& to, const QString& question) {
    if (!to.line1->isLocked() && mayOverwrite(*to.line1, question))
        m_addresses.front().copyTo(to);
}

void CompanyModule::copyContact(const ContactFields& to, const QString& question) {
    if (to.contact->isLocked() || !mayOverwrite(*to.contact, question))
        return;
    to.contact->setText(m_contact.contact->text());
    to.email->setText(m_contact.email->text());
    to.phone->setText(m_contact.phone->text());
    to.fax->setText(m_contact.fax->text());
}

} // namespace masters
