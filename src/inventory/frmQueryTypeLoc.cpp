#include "inventory/frmQueryTypeLoc.h"

#include "core/MirsaMain.h"
#include "inventory/StockNewItem.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace inventory {

namespace {

const QString results = u"frmReportAllItemsQresults"_s;

QString behind(std::size_t which) {
    return which == 0 ? QString() : u"2"_s;
}

} // namespace

frmQueryTypeLoc::frmQueryTypeLoc() : Form(QString::fromLatin1(formName), u"Inventory Query"_s) {
    using Asked = StockQuestion;
    m_rows = {
        {&Asked::description, u"Description"_s, u"Description"_s,
         u"SELECT DISTINCT description from items order by description"_s},
        {&Asked::part, u"Part Number"_s, u"Part"_s,
         u"SELECT DISTINCT PartNumber from items Where PartNumber <>'' order by PartNumber"_s},
        {&Asked::location, u"Location"_s, u"Location"_s, {}, &locationView()},
        {&Asked::type, u"Type"_s, u"Type"_s, {}, &typeView()},
        {&Asked::manufacturer, u"Manufacturer"_s, u"Man"_s,
         u"SELECT DISTINCT Company FROM Manufacturer ORDER BY Company"_s},
        {&Asked::issued, u"Date Issued"_s, u"Issue"_s, {}},
        {&Asked::stocked, u"Date Stocked"_s, u"Stock"_s, {}}};
    auto* outside = new QVBoxLayout(this);
    auto* inside = screen::frame(this, outside, u"fraCriteria"_s, u"Criteria"_s);
    auto* grid = new QGridLayout(inside);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        makeRow(m_rows[i], grid, static_cast<int>(i));
    outside->addStretch();
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdGenerate = bar.button(u"cmdGenerate"_s, u"&Generate Query"_s);
    QPushButton* cmdCancel = bar.button(u"cmdCancel"_s, u"&Cancel"_s);
    on(cmdGenerate, &frmQueryTypeLoc::cmdGenerate_Click);
    on(cmdCancel, [this] { unload(); });
    setDefaultButton(cmdGenerate);
    setCancelButton(cmdCancel);
}

void frmQueryTypeLoc::makeRow(Row& row, QGridLayout* grid, int line) {
    row.use = screen::named(new QCheckBox(row.caption, this), u"chkUse"_s + row.word);
    row.range = screen::named(new QCheckBox(u"to"_s, this), u"chkRange"_s + row.word,
                              row.caption + u" as a range"_s);
    row.range->setEnabled(false);
    grid->addWidget(row.use, line, 0);
    grid->addWidget(makeField(row, 0), line, 1);
    grid->addWidget(row.range, line, 2);
    grid->addWidget(makeField(row, 1), line, 3);
    QSizePolicy keepsPlace = row.places[1]->sizePolicy();
    keepsPlace.setRetainSizeWhenHidden(true);
    row.places[1]->setSizePolicy(keepsPlace);
    row.places[1]->hide();
    on(row.use, &QCheckBox::toggled, [&row](bool used) {
        row.range->setEnabled(used);
        if (used) {
            if (row.use->hasFocus())
                row.places[0]->setFocus();
            return;
        }
        row.fields[0]->clear();
        row.folders[0] = 0;
        row.range->setChecked(false);
    });
    on(row.range, &QCheckBox::toggled, [&row](bool range) {
        row.places[1]->setVisible(range);
        if (range) {
            row.places[1]->setFocus();
            return;
        }
        row.fields[1]->clear();
        row.folders[1] = 0;
    });
    on(row.fields[0]->changed, [&row] {
        if (!row.fields[0]->text().trimmed().isEmpty())
            row.use->setChecked(true);
    });
}

QWidget* frmQueryTypeLoc::makeField(Row& row, std::size_t which) {
    const QString spoken = which == 0 ? row.caption : row.caption + u" to"_s;
    const QString name = row.word + behind(which);
    if (row.view) {
        auto* place = new QWidget(this);
        auto* across = new QHBoxLayout(place);
        across->setContentsMargins(0, 0, 0, 0);
        auto* path = screen::named(new controls::TextField(place), u"txt"_s + name, spoken);
        path->setLocked(true);
        path->setMinimumWidth(path->fontMetrics().averageCharWidth() * 26);
        auto* pick =
            screen::named(new QPushButton(u"..."_s, place), u"cmd"_s + name, u"Select "_s + spoken);
        pick->setAutoDefault(false);
        pick->setMaximumWidth(32);
        across->addWidget(path, 1);
        across->addWidget(pick);
        place->setFocusProxy(pick);
        on(pick, [this, &row, which] { pickFolder(row, which); });
        row.fields[which] = path;
        return row.places[which] = place;
    }
    if (row.isDate()) {
        auto* date = screen::named(new controls::DateField(this), u"txt"_s + name, spoken);
        date->setMinimumWidth(date->fontMetrics().averageCharWidth() * 15 + 16);
        row.fields[which] = date;
        return row.places[which] = date;
    }
    auto* combo = screen::named(new controls::DataCombo(this), u"dbc"_s + name, spoken);
    combo->setMinimumContentsLength(24);
    on(combo->entered, [this, &row] { readList(row); });
    row.fields[which] = combo;
    return row.places[which] = combo;
}

// Not before somebody wants to choose: a large stock has many descriptions.
void frmQueryTypeLoc::readList(Row& row) {
    if (row.listed)
        return;
    row.listed = true;
    const screen::BusyPointer busy;
    const jet::Recordset rows =
        core::MainDatabase().openRecordset(row.list, jet::RecordsetType::Snapshot);
    const QString column = rows.fieldNames().value(0);
    for (controls::Field* field : row.fields)
        static_cast<controls::DataCombo*>(field)->setRows(rows, column, column);
}

void frmQueryTypeLoc::pickFolder(Row& row, std::size_t which) {
    const auto picked =
        screen::Forms::dialog<FolderPicker>(u"frmItemQueryTree"_s)->pickFolder(row.view->word);
    if (!picked)
        return;
    row.folders[which] = picked->folder;
    row.fields[which]->setText(picked->path);
    row.use->setChecked(true);
}

bool frmQueryTypeLoc::take(Row& row, StockCriterion& criterion) {
    for (controls::Field* field : row.fields) {
        const auto* date = dynamic_cast<controls::DateField*>(field);
        if (date && !date->isValid()) {
            complain(row.caption + u": this is not a date."_s, field->widget());
            return false;
        }
    }
    if (row.fields[0]->text().trimmed().isEmpty())
        row.use->setChecked(false);
    if (row.range->isChecked() && row.fields[1]->text().trimmed().isEmpty())
        row.range->setChecked(false);
    criterion = {};
    criterion.used = row.use->isChecked();
    criterion.range = row.range->isChecked();
    criterion.folder = row.folders[0];
    criterion.first = row.fields[0]->text().trimmed();
    criterion.second = row.fields[1]->text().trimmed();
    if (row.view) {
        // A range goes by the folders' own names.
        criterion.first = criterion.first.section(u'\\', -1);
        criterion.second = criterion.second.section(u'\\', -1);
    }
    if (row.isDate()) {
        criterion.from = static_cast<controls::DateField*>(row.fields[0])->date();
        criterion.to = static_cast<controls::DateField*>(row.fields[1])->date();
    }
    return true;
}

void frmQueryTypeLoc::cmdGenerate_Click() {
    StockQuestion question;
    for (Row& row : m_rows) {
        if (!take(row, question.*row.criterion))
            return;
    }
    {
        const screen::BusyPointer busy;
        m_found = findStock(core::MainDatabase(), question);
    }
    m_question = question;
    if (m_found.empty()) {
        complain(u"No Records satisfy your Criteria!"_s, m_rows.front().use,
                 screen::Icon::Exclamation, u"No Records Found"_s);
        return;
    }
    if (screen::Form* earlier = screen::Forms::find(results))
        earlier->unload();
    screen::Forms::show(results);
}

bool frmQueryTypeLoc::Form_QueryUnload() {
    forgetQuery(core::MainDatabase());
    return true;
}

} // namespace inventory
