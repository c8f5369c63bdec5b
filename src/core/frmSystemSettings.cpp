#include "core/frmSystemSettings.h"

#include "core/MirsaMain.h"
#include "core/papers/Papers.h"
#include "core/records/RecordNumbers.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Literals.h"

#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QTabWidget>
#include <QVBoxLayout>

namespace core {

namespace {

const QString table = u"SystemSettings"_s;

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

const QString statesSelect = u"SELECT * FROM States ORDER BY code"_s;
const QString termsSelect = u"SELECT * FROM Terms ORDER BY description"_s;
const QString countriesSelect = u"SELECT * FROM country ORDER BY country"_s;
const QString settingsSelect = u"SELECT * FROM SystemSettings"_s;

} // namespace

frmSystemSettings::frmSystemSettings()
    : Form(QString::fromLatin1(formName), u"System Preferences"_s) {
    auto* layout = new QVBoxLayout(this);
    SSTab1 = screen::named(new QTabWidget(this), u"SSTab1"_s);
    layout->addWidget(SSTab1, 1);
    buildCompany(screen::tab(SSTab1, u"Company"_s));
    buildQuote(screen::tab(SSTab1, u"Quote"_s));
    buildVendor(screen::tab(SSTab1, u"Vendor"_s));
    buildShipTo(screen::tab(SSTab1, u"Ship To"_s));
    buildRates(screen::tab(SSTab1, u"Rates"_s));
    buildSecurity(screen::tab(SSTab1, u"Security"_s));
    buildTime(screen::tab(SSTab1, u"Time"_s));
    buildPapers(screen::tab(SSTab1, u"Papers"_s));
    buildSpelling(screen::tab(SSTab1, u"Spelling"_s));

    PB = screen::named(new QProgressBar(this), u"PB"_s, u"Saving"_s);
    PB->setRange(0, static_cast<int>(m_blocks.size()));
    PB->setTextVisible(false);
    PB->reset();
    layout->addWidget(PB);
    screen::ButtonBar bar(this, layout);
    bar.stretch();
    cmdOK = bar.button(u"cmdOK"_s, u"&OK"_s);
    cmdUpdate = bar.button(u"cmdUpdate"_s, u"&Apply"_s);
    cmdClose = bar.button(u"cmdClose"_s, u"&Cancel"_s);
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
    text(u"CompanyName", u"txtMname"_s, u"Company &Name:"_s, 44);
    text(u"CompanyAddress1", u"txtMAdd1"_s, u"Address &1:"_s, 44);
    text(u"CompanyAddress2", u"txtMAdd2"_s, u"Address &2:"_s, 44);
    text(u"CompanyCity", u"txtMcity"_s, u"C&ity:"_s, 30);
    dbcState = fields.dataCombo(u"dbcState"_s, u"&State / Province:"_s, wide(12));
    block.push_back({u"CompanyState", dbcState});
    dbcCountry = fields.dataCombo(u"dbcCountry"_s, u"Count&ry:"_s, wide(24));
    block.push_back({u"companycountry", dbcCountry});
    text(u"companyzip", u"txtZip1"_s, u"Postal Co&de:"_s, 15);
    text(u"CompanyPhone", u"txtPhone"_s, u"&Phone:"_s, 24);
    text(u"CompanyFax", u"txtFax"_s, u"&Fax:"_s, 24);
    text(u"CompanyEmail", u"txtEm"_s, u"&E-mail:"_s, 44);
    keepTogether(fields);
    m_blocks.push_back(std::move(block));
}

void frmSystemSettings::buildQuote(QWidget* page) {
    screen::Fields fields(page);
    dbcTerms = fields.dataCombo(u"dbcTerms"_s, u"&Terms:"_s, wide(30));
    auto* fob = fields.text(u"txtFob"_s, u"&FOB:"_s, wide(40));
    auto* shipping = fields.text(u"txtShipping"_s, u"&Shipping:"_s, wide(40));
    auto* header = fields.memo(u"txtQH"_s, u"Quote &Header:"_s, 4);
    auto* valid = fields.memo(u"txtQValid"_s, u"Quote &Valid Message:"_s, 4);
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
    dbcVterms = fields.dataCombo(u"dbcVterms"_s, u"&Terms:"_s, wide(30));
    auto* fob = fields.text(u"txtVfob"_s, u"&FOB:"_s, wide(40));
    auto* shipping = fields.text(u"txtVShipping"_s, u"&Shipping:"_s, wide(40));
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
    text(u"poshiptoname", u"txtPname"_s, u"&Name:"_s, 44);
    text(u"poshiptoaddress1", u"txtPadd1"_s, u"Address &1:"_s, 44);
    text(u"poshiptoaddress2", u"txtPadd2"_s, u"Address &2:"_s, 44);
    text(u"poshiptoaddress3", u"txtPadd3"_s, u"Address &3:"_s, 44);
    text(u"poshiptocity", u"txtPcity"_s, u"C&ity:"_s, 30);
    dbcPstate = fields.dataCombo(u"dbcPstate"_s, u"&State / Province:"_s, wide(12));
    block.push_back({u"poshiptostate", dbcPstate});
    text(u"poshiptoemail", u"txtEm2"_s, u"&E-mail:"_s, 44);
    dbcPCountry = fields.dataCombo(u"dbcPCountry"_s, u"Count&ry:"_s, wide(24));
    block.push_back({u"poshiptocountry", dbcPCountry});
    text(u"poshiptozip", u"txtPZip1"_s, u"Postal Co&de:"_s, 15);
    keepTogether(fields);
    m_blocks.push_back(std::move(block));
}

void frmSystemSettings::buildRates(QWidget* page) {
    screen::Fields fields(page);
    fields.note(u"Default Hourly Rate"_s);
    const QString mask = u"#####0.00"_s;
    txtRateEstimate = fields.currency(u"txtRate(0)"_s, u"&Estimate:"_s, mask);
    txtRateJob = fields.currency(u"txtRate(1)"_s, u"&Job:"_s, mask);
    txtArchM = fields.text(u"txtArchM"_s, u"Archive &Months:"_s,
                           {.limit = 4, .filter = values::keys::digits(), .characters = 6});
    txtRateEstimate->setLimit(12);
    txtRateJob->setLimit(12);
    keepTogether(fields);
}

void frmSystemSettings::buildSecurity(QWidget* page) {
    screen::Fields fields(page);
    chkSec = fields.check(u"chkSec"_s, u"&Use Security"_s);
    const auto character = [&](const QString& name) {
        auto* box = screen::named(new controls::TextField(page), name);
        box->setLimit(1);
        box->setFixedWidth(box->fontMetrics().averageCharWidth() * 2 + 24);
        return box;
    };
    txtSec0 = character(u"txtSec(0)"_s);
    txtSec1 = character(u"txtSec(1)"_s);
    txtSec0->setAccessibleName(u"First security character"_s);
    txtSec1->setAccessibleName(u"Second security character"_s);
    auto* pair = new QHBoxLayout;
    auto* caption = new QLabel(u"Security C&haracters:"_s, page);
    caption->setBuddy(txtSec0);
    pair->addWidget(caption);
    pair->addWidget(txtSec0);
    pair->addWidget(txtSec1);
    pair->addStretch();
    fields.add(pair);
    auto* note = fields.note(u"NOTE: Any time you change the security characters you will need to "
                             "print new Employee ID Badges!"_s);
    note->setMinimumWidth(480);
    chkPartsQty = fields.check(u"chkPartsQty"_s, u"&Prompt for Parts Qty Completed"_s);
    chkLargeNumbers = fields.check(u"chkLargeNumbers"_s, u"Allo&w numbers above 32,767"_s);
    fields.note(u"Leave this off while other programs that know no larger numbers work on this "
                "database: requests and orders then stop at 32,767."_s);
    txtJournalDays =
        fields.text(u"txtJournalDays"_s, u"&Days that the journal of changes goes back:"_s,
                    {.limit = 4, .filter = values::keys::digits(), .characters = 6});
    fields.note(u"Empty means a year, 0 for ever."_s);
    keepTogether(fields);
}

void frmSystemSettings::buildTime(QWidget* page) {
    screen::Fields fields(page);
    txtHoursOver = fields.text(u"txtHoursOver"_s, u"&Hours over the estimate that pass (%):"_s,
                               {.limit = 3, .filter = values::keys::digits(), .characters = 6});
    auto* note = fields.note(u"An operation with more hours than its estimate and this share of it "
                             "is listed under Time Exceptions."_s);
    note->setMinimumWidth(480);
    keepTogether(fields);
}

bool frmSystemSettings::keepsHoursOver() const {
    const jet::Table* settings = MainDatabase().schema().table(table);
    return settings && settings->column(u"HoursOverPercent");
}

void frmSystemSettings::buildPapers(QWidget* page) {
    screen::Fields fields(page);
    txtPapersFolder = fields.text(u"txtPapersFolder"_s, u"&Folder for papers:"_s, wide(60));
    auto* note = fields.note(
        u"All stations have to reach it under this name. Empty means the folder Papers beside the "
        "database file; a database on a server has none by itself. Nothing is moved when another "
        "is named: move what stands in the old one yourself."_s);
    note->setMinimumWidth(480);
    keepTogether(fields);
}

void frmSystemSettings::buildSpelling(QWidget* page) {
    screen::Fields fields(page);
    using spelling::Options;
    const auto box = [&](const QString& name, const QString& caption, bool Options::*option) {
        m_spelling.emplace_back(fields.check(name, caption), option);
    };
    box(u"chkCanUndo"_s, u"Can &Undo"_s, &Options::canUndo);
    box(u"chkCaseSensitive"_s, u"Case &Sensitive"_s, &Options::caseSensitive);
    box(u"chkCatchDoubleWords"_s, u"Catch &Double Words"_s, &Options::catchDoubleWords);
    box(u"chkCatchMixedCaseWords"_s, u"Catch &Mixed Case Words"_s, &Options::catchMixedCaseWords);
    box(u"chkCatchWordsWithDigits"_s, u"Catch &Words With Digits"_s,
        &Options::catchWordsWithDigits);
    box(u"chkIgnoreAllCapsWords"_s, u"Ignore All Ca&ps Words"_s, &Options::ignoreAllCapsWords);
    box(u"chkIgnoreCapitalizedWords"_s, u"&Ignore Capitalized Words"_s,
        &Options::ignoreCapitalizedWords);
    box(u"chkIgnoreDomainNames"_s, u"Ig&nore Domain Names"_s, &Options::ignoreDomainNames);
    box(u"chkIgnoreNonAlphaWords"_s, u"I&gnore Non Alpha Words"_s, &Options::ignoreNonAlphaWords);
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
    fill(statesSelect, u"code"_s, {dbcState, dbcPstate});
    fill(termsSelect, u"description"_s, {dbcTerms, dbcVterms});
    fill(countriesSelect, u"country"_s, {dbcCountry, dbcPCountry});
}

void frmSystemSettings::Form_Load() {
    MainDatabase().expect({statesSelect,
                           termsSelect,
                           countriesSelect,
                           {settingsSelect, jet::RecordsetType::Dynaset}});
    limitToColumns();
    fillLists();
    showRow();
}

void frmSystemSettings::showRow() {
    for (const auto& [box, option] : m_spelling)
        box->setChecked(spelling::options().*option);
    const jet::Recordset row = MainDatabase().openRecordset(settingsSelect);
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
    chkLargeNumbers->setEnabled(keepsLargeNumbers(MainDatabase()));
    if (chkLargeNumbers->isEnabled())
        chkLargeNumbers->setChecked(row[u"LargeNumbers"].toBool());
    txtJournalDays->setValue(row[u"JournalDays"]);
    txtPapersFolder->setEnabled(keepsPapers(MainDatabase()));
    if (txtPapersFolder->isEnabled()) {
        txtPapersFolder->setLimit(MainDatabase().width(table, u"PapersFolder"));
        txtPapersFolder->setValue(row[u"PapersFolder"]);
    }
    txtHoursOver->setEnabled(keepsHoursOver());
    if (keepsHoursOver())
        txtHoursOver->setValue(row[u"HoursOverPercent"]);
}

void frmSystemSettings::setButtonsEnabled(bool enabled) {
    for (QPushButton* button : {cmdOK, cmdClose, cmdUpdate})
        button->setEnabled(enabled);
}

void frmSystemSettings::saveRow() {
    jet::Transaction change(MainDatabase());
    jet::Recordset row = MainDatabase().openRecordset(settingsSelect);
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
    const QString days = txtJournalDays->text().trimmed();
    row.set(u"JournalDays", days.isEmpty() ? jet::Value() : jet::Value(days.toInt()));
    if (keepsLargeNumbers(MainDatabase()))
        row.set(u"LargeNumbers", chkLargeNumbers->isChecked());
    if (keepsPapers(MainDatabase()))
        row.set(u"PapersFolder", txtPapersFolder->text().trimmed());
    if (const QString percent = txtHoursOver->text().trimmed(); keepsHoursOver())
        row.set(u"HoursOverPercent",
                percent.isEmpty() ? jet::Value() : jet::Value(percent.toInt()));
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
