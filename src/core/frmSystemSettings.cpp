#include "core/frmSystemSettings.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"

#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QTabWidget>
#include <QVBoxLayout>

namespace core {

namespace {

const QString table = QStringLiteral("SystemSettings");

screen::Line wide(int characters) {
    screen::Line line;
    line.characters = characters;
    return line;
}

/// Leaves spare room below and beside the fields.
void keepTogether(const screen::Fields& fields) {
    fields.grid()->setRowStretch(fields.grid()->rowCount(), 1);
    fields.grid()->setColumnStretch(fields.grid()->columnCount(), 1);
}

} // namespace

frmSystemSettings::frmSystemSettings()
    : Form(QString::fromLatin1(formName), QStringLiteral("System Preferences")) {
    auto* layout = new QVBoxLayout(this);
    SSTab1 = screen::named(new QTabWidget(this), QStringLiteral("SSTab1"));
    layout->addWidget(SSTab1, 1);
    buildCompany(screen::tab(SSTab1, QStringLiteral("Company")));
    buildQuote(screen::tab(SSTab1, QStringLiteral("Quote")));
    buildVendor(screen::tab(SSTab1, QStringLiteral("Vendor")));
    buildShipTo(screen::tab(SSTab1, QStringLiteral("Ship To")));
    buildRates(screen::tab(SSTab1, QStringLiteral("Rates")));
    buildSecurity(screen::tab(SSTab1, QStringLiteral("Security")));
    buildSpelling(screen::tab(SSTab1, QStringLiteral("Spelling")));

    PB = screen::named(new QProgressBar(this), QStringLiteral("PB"), QStringLiteral("Saving"));
    PB->setRange(0, static_cast<int>(m_blocks.size()));
    PB->setTextVisible(false);
    PB->reset();
    layout->addWidget(PB);
    screen::ButtonBar bar(this, layout);
    bar.stretch();
    cmdOK = bar.button(QStringLiteral("cmdOK"), QStringLiteral("&OK"));
    cmdUpdate = bar.button(QStringLiteral("cmdUpdate"), QStringLiteral("&Apply"));
    cmdClose = bar.button(QStringLiteral("cmdClose"), QStringLiteral("&Cancel"));
    on(cmdOK, &frmSystemSettings::cmdOK_Click);
    on(cmdUpdate, &frmSystemSettings::cmdUpdate_Click);
    on(cmdClose, [this] { unload(); });
    setDefaultButton(cmdOK);
    setCancelButton(cmdClose);
}

void frmSystemSettings::buildCompany(QWidget* page) {
    screen::Fields fields(page);
    Block block;
    const auto text = [&](const char16_t* column, const QString& name, const QString& label,
                          int characters) {
        block.push_back({column, fields.text(name, label, wide(characters))});
    };
    text(u"CompanyName", QStringLiteral("txtMname"), QStringLiteral("Company &Name:"), 44);
    text(u"CompanyAddress1", QStringLiteral("txtMAdd1"), QStringLiteral("Address &1:"), 44);
    text(u"CompanyAddress2", QStringLiteral("txtMAdd2"), QStringLiteral("Address &2:"), 44);
    text(u"CompanyCity", QStringLiteral("txtMcity"), QStringLiteral("C&ity:"), 30);
    dbcState = fields.dataCombo(QStringLiteral("dbcState"), QStringLiteral("&State / Province:"),
                                wide(12));
    block.push_back({u"CompanyState", dbcState});
    dbcCountry =
        fields.dataCombo(QStringLiteral("dbcCountry"), QStringLiteral("Count&ry:"), wide(24));
    block.push_back({u"companycountry", dbcCountry});
    text(u"companyzip", QStringLiteral("txtZip1"), QStringLiteral("Postal Co&de:"), 15);
    text(u"CompanyPhone", QStringLiteral("txtPhone"), QStringLiteral("&Phone:"), 24);
    text(u"CompanyFax", QStringLiteral("txtFax"), QStringLiteral("&Fax:"), 24);
    text(u"CompanyEmail", QStringLiteral("txtEm"), QStringLiteral("&E-mail:"), 44);
    keepTogether(fields);
    m_blocks.push_back(std::move(block));
}

void frmSystemSettings::buildQuote(QWidget* page) {
    screen::Fields fields(page);
    dbcTerms = fields.dataCombo(QStringLiteral("dbcTerms"), QStringLiteral("&Terms:"), wide(30));
    auto* fob = fields.text(QStringLiteral("txtFob"), QStringLiteral("&FOB:"), wide(40));
    auto* shipping =
        fields.text(QStringLiteral("txtShipping"), QStringLiteral("&Shipping:"), wide(40));
    auto* header = fields.memo(QStringLiteral("txtQH"), QStringLiteral("Quote &Header:"), 4);
    auto* valid =
        fields.memo(QStringLiteral("txtQValid"), QStringLiteral("Quote &Valid Message:"), 4);
    header->setMinimumWidth(480);
    keepTogether(fields);
    m_blocks.push_back({{u"Terms", dbcTerms},
                        {u"FOB", fob},
                        {u"Shipping", shipping},
                        {u"qteHeader", header},
                        {u"qtevmessage", valid}});
}

void frmSystemSettings::buildVendor(QWidget* page) {
    screen::Fields fields(page);
    dbcVterms = fields.dataCombo(QStringLiteral("dbcVterms"), QStringLiteral("&Terms:"), wide(30));
    auto* fob = fields.text(QStringLiteral("txtVfob"), QStringLiteral("&FOB:"), wide(40));
    auto* shipping =
        fields.text(QStringLiteral("txtVShipping"), QStringLiteral("&Shipping:"), wide(40));
    keepTogether(fields);
    m_blocks.push_back({{u"vTerms", dbcVterms}, {u"vFOB", fob}, {u"vShipping", shipping}});
}

void frmSystemSettings::buildShipTo(QWidget* page) {
    screen::Fields fields(page);
    Block block;
    const auto text = [&](const char16_t* column, const QString& name, const QString& label,
                          int characters) {
        block.push_back({column, fields.text(name, label, wide(characters))});
    };
    text(u"poshiptoname", QStringLiteral("txtPname"), QStringLiteral("&Name:"), 44);
    text(u"poshiptoaddress1", QStringLiteral("txtPadd1"), QStringLiteral("Address &1:"), 44);
    text(u"poshiptoaddress2", QStringLiteral("txtPadd2"), QStringLiteral("Address &2:"), 44);
    text(u"poshiptoaddress3", QStringLiteral("txtPadd3"), QStringLiteral("Address &3:"), 44);
    text(u"poshiptocity", QStringLiteral("txtPcity"), QStringLiteral("C&ity:"), 30);
    dbcPstate = fields.dataCombo(QStringLiteral("dbcPstate"), QStringLiteral("&State / Province:"),
                                 wide(12));
    block.push_back({u"poshiptostate", dbcPstate});
    text(u"poshiptoemail", QStringLiteral("txtEm2"), QStringLiteral("&E-mail:"), 44);
    dbcPCountry =
        fields.dataCombo(QStringLiteral("dbcPCountry"), QStringLiteral("Count&ry:"), wide(24));
    block.push_back({u"poshiptocountry", dbcPCountry});
    text(u"poshiptozip", QStringLiteral("txtPZip1"), QStringLiteral("Postal Co&de:"), 15);
    keepTogether(fields);
    m_blocks.push_back(std::move(block));
}

void frmSystemSettings::buildRates(QWidget* page) {
    screen::Fields fields(page);
    fields.note(QStringLiteral("Default Hourly Rate"));
    const QString mask = QStringLiteral("#####0.00");
    txtRateEstimate =
        fields.currency(QStringLiteral("txtRate(0)"), QStringLiteral("&Estimate:"), mask);
    txtRateJob = fields.currency(QStringLiteral("txtRate(1)"), QStringLiteral("&Job:"), mask);
    txtArchM = fields.text(QStringLiteral("txtArchM"), QStringLiteral("Archive &Months:"),
                           {.limit = 4, .filter = values::keys::digits(), .characters = 6});
    txtRateEstimate->setLimit(12);
    txtRateJob->setLimit(12);
    keepTogether(fields);
}

void frmSystemSettings::buildSecurity(QWidget* page) {
    screen::Fields fields(page);
    chkSec = fields.check(QStringLiteral("chkSec"), QStringLiteral("&Use Security"));
    const auto character = [&](const QString& name) {
        auto* box = screen::named(new controls::TextField(page), name);
        box->setLimit(1);
        box->setFixedWidth(box->fontMetrics().averageCharWidth() * 2 + 24);
        return box;
    };
    txtSec0 = character(QStringLiteral("txtSec(0)"));
    txtSec1 = character(QStringLiteral("txtSec(1)"));
    txtSec0->setAccessibleName(QStringLiteral("First security character"));
    txtSec1->setAccessibleName(QStringLiteral("Second security character"));
    auto* pair = new QHBoxLayout;
    auto* caption = new QLabel(QStringLiteral("Security C&haracters:"), page);
    caption->setBuddy(txtSec0);
    pair->addWidget(caption);
    pair->addWidget(txtSec0);
    pair->addWidget(txtSec1);
    pair->addStretch();
    fields.add(pair);
    auto* note = fields.note(
        QStringLiteral("NOTE: Any time you change the security characters you will need to "
                       "print new Employee ID Badges!"));
    note->setMinimumWidth(480);
    chkPartsQty = fields.check(QStringLiteral("chkPartsQty"),
                               QStringLiteral("&Prompt for Parts Qty Completed"));
    keepTogether(fields);
}

void frmSystemSettings::buildSpelling(QWidget* page) {
    screen::Fields fields(page);
    using spelling::Options;
    const auto box = [&](const QString& name, const QString& caption, bool Options::*option) {
        m_spelling.emplace_back(fields.check(name, caption), option);
    };
    box(QStringLiteral("chkCanUndo"), QStringLiteral("Can &Undo"), &Options::canUndo);
    box(QStringLiteral("chkCaseSensitive"), QStringLiteral("Case &Sensitive"),
        &Options::caseSensitive);
    box(QStringLiteral("chkCatchDoubleWords"), QStringLiteral("Catch &Double Words"),
        &Options::catchDoubleWords);
    box(QStringLiteral("chkCatchMixedCaseWords"), QStringLiteral("Catch &Mixed Case Words"),
        &Options::catchMixedCaseWords);
    box(QStringLiteral("chkCatchWordsWithDigits"), QStringLiteral("Catch &Words With Digits"),
        &Options::catchWordsWithDigits);
    box(QStringLiteral("chkIgnoreAllCapsWords"), QStringLiteral("Ignore All Ca&ps Words"),
        &Options::ignoreAllCapsWords);
    box(QStringLiteral("chkIgnoreCapitalizedWords"), QStringLiteral("&Ignore Capitalized Words"),
        &Options::ignoreCapitalizedWords);
    box(QStringLiteral("chkIgnoreDomainNames"), QStringLiteral("Ig&nore Domain Names"),
        &Options::ignoreDomainNames);
    box(QStringLiteral("chkIgnoreNonAlphaWords"), QStringLiteral("I&gnore Non Alpha Words"),
        &Options::ignoreNonAlphaWords);
    keepTogether(fields);
}

void frmSystemSettings::limitToColumns() {
    for (const Block& block : m_blocks) {
        for (const Column& column : block) {
            const int width = MainDatabase().width(table, column.name);
            if (auto* line = dynamic_cast<controls::TextField*>(column.field))
                line->setLimit(width);
            else if (auto* memo = dynamic_cast<controls::MemoField*>(column.field))
                memo->setLimit(width);
            else if (auto* combo = dynamic_cast<controls::DataCombo*>(column.field))
                combo->setLimit(width);
        }
    }
}

void frmSystemSettings::fillLists() {
    const auto fill = [](const QString& select, const QString& column,
                         std::initializer_list<controls::DataCombo*> combos) {
        const jet::Recordset rows =
            MainDatabase().openRecordset(select, jet::RecordsetType::Snapshot);
        for (controls::DataCombo* combo : combos)
            combo->setRows(rows, column, column);
    };
    fill(QStringLiteral("SELECT * FROM States ORDER BY code"), QStringLiteral("code"),
         {dbcState, dbcPstate});
    fill(QStringLiteral("SELECT * FROM Terms ORDER BY description"), QStringLiteral("description"),
         {dbcTerms, dbcVterms});
    fill(QStringLiteral("SELECT * FROM country ORDER BY country"), QStringLiteral("country"),
         {dbcCountry, dbcPCountry});
}

void frmSystemSettings::Form_Load() {
    limitToColumns();
    fillLists();
    showRow();
}

void frmSystemSettings::showRow() {
    for (const auto& [box, option] : m_spelling)
        box->setChecked(spelling::options().*option);
    const jet::Recordset row =
        MainDatabase().openRecordset(QStringLiteral("SELECT * FROM SystemSettings"));
    if (row.isEmpty())
        return;
    for (const Block& block : m_blocks) {
        for (const Column& column : block)
            column.field->setValue(row[column.name]);
    }
    txtRateEstimate->setValue(row[u"EstOneRate"]);
    txtRateJob->setValue(row[u"jobonerate"]);
    txtArchM->setValue(row[u"ArchiveMonths"]);
    chkSec->setChecked(row[u"Securityon"].toBool());
    const QString code = row.text(u"SecurityCode");
    txtSec0->setText(code.left(1));
    txtSec1->setText(code.mid(1, 1));
    chkPartsQty->setChecked(row[u"partsqtyon"].toBool());
}

void frmSystemSettings::setButtonsEnabled(bool enabled) {
    for (QPushButton* button : {cmdOK, cmdClose, cmdUpdate})
        button->setEnabled(enabled);
}

void frmSystemSettings::saveRow() {
    jet::Transaction change(MainDatabase());
    jet::Recordset row =
        MainDatabase().openRecordset(QStringLiteral("SELECT * FROM SystemSettings"));
    if (row.isEmpty())
        row.addNew();
    else
        row.edit();
    PB->setValue(0);
    for (const Block& block : m_blocks) {
        for (const Column& column : block)
            row.set(column.name, column.field->text());
        PB->setValue(PB->value() + 1);
    }
    row.set(u"EstOneRate", txtRateEstimate->value());
    row.set(u"jobonerate", txtRateJob->value());
    const QString months = txtArchM->text().trimmed();
    row.set(u"ArchiveMonths", months.isEmpty() ? jet::Value() : jet::Value(months.toInt()));
    row.set(u"Securityon", chkSec->isChecked());
    row.set(u"SecurityCode", txtSec0->text() + txtSec1->text());
    row.set(u"partsqtyon", chkPartsQty->isChecked());
    row.update();
    change.commit();
}

void frmSystemSettings::cmdUpdate_Click() {
    const screen::BusyPointer busy;
    setButtonsEnabled(false);
    const auto enableAgain = qScopeGuard([this] {
        setButtonsEnabled(true);
        PB->reset();
    });
    saveRow();
    for (const auto& [box, option] : m_spelling)
        spelling::options().*option = box->isChecked();
}

void frmSystemSettings::cmdOK_Click() {
    cmdUpdate_Click();
    unload();
}

} // namespace core
