#include "reporting/ResultsForm.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "core/records/RecordScreen.h"
#include "platform/controls/DataCombo.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"
#include "reporting/QueryForm.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <numeric>

namespace reporting {

using screen::Buttons;
using screen::Icon;
using screen::MsgBox;
using Kind = ResultColumn::Kind;

ResultsForm::ResultsForm(const QueryDescriptor& query)
    : Form(query.resultsForm, query.resultsCaption), m_query(query) {
    auto* outside = new QVBoxLayout(this);
    fraMain = screen::frame(this, outside, u"fraMain"_s, u"0 Records Found Matching Query."_s);
    outside->setStretchFactor(fraMain, 1);
    auto* inside = new QVBoxLayout(fraMain);
    m_grid = screen::named(new controls::Grid(fraMain), query.gridName, query.resultsCaption);
    std::vector<controls::GridColumn> columns;
    for (const ResultColumn& column : query.columns) {
        const bool number = column.kind == Kind::Number || column.kind == Kind::Reference;
        columns.push_back({.title = column.title,
                           .characters = column.characters,
                           .kind = number ? controls::GridColumn::Kind::Number
                                   : column.kind == Kind::YesNo
                                       ? controls::GridColumn::Kind::Check
                                       : controls::GridColumn::Kind::Text});
    }
    m_grid->setColumns(std::move(columns));
    m_grid->setSortable(true);
    m_grid->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_grid->setMinimumHeight(240);
    inside->addWidget(m_grid);

    auto* below = new QHBoxLayout;
    outside->addLayout(below);
    screen::Fields report(this, below);
    dbcReport = report.dataCombo(u"dbcReport"_s, u"Repor&t:"_s, screen::wide(30));
    lbldesc = screen::named(new QLabel(this), u"lbldesc"_s, u"What the report shows"_s);
    lbldesc->setTextFormat(Qt::PlainText);
    lbldesc->setWordWrap(true);
    below->addWidget(lbldesc, 1);

    screen::ButtonBar bar(this, outside);
    QPushButton* selected = bar.button(u"cmdPrintSel"_s, u"Report S&elected"_s);
    cmdPrintScr = bar.button(u"cmdPrintScr"_s, u"Report &Shown"_s);
    bar.stretch();
    QPushButton* redo = bar.button(u"cmdRedo"_s, u"&Redo"_s);
    QPushButton* done = bar.button(u"cmdCancel"_s, u"Do&ne"_s);
    cmdPrintScr->setEnabled(false);
    on(selected, &ResultsForm::cmdPrintSel_Click);
    on(cmdPrintScr, &ResultsForm::cmdPrintScr_Click);
    on(redo, &ResultsForm::cmdRedo_Click);
    on(done, &ResultsForm::cmdCancel_Click);
    setCancelButton(done);
    on(m_grid->rowDoubleClicked, [this](int row) { goToRow(row); });
    on(dbcReport->changed, [this] {
        cmdPrintScr->setEnabled(!dbcReport->text().trimmed().isEmpty());
        lbldesc->setText(dbcReport->boundText());
    });
    resize(900, 520);
}

void ResultsForm::Form_Load() {
    openReports();
    if (!showRows()) {
        MsgBox(u"No Records satisfy your Criteria!"_s);
        refuse();
    }
}

void ResultsForm::openReports() {
    m_reports = core::MainDatabase().openRecordset(u"SELECT * FROM Reports WHERE Module = '"_s +
                                                       m_query.reportModule + u"' ORDER BY Name"_s,
                                                   jet::RecordsetType::Snapshot);
    dbcReport->setRows(m_reports, u"Name"_s, u"Description"_s);
    if (!m_reports.isEmpty()) {
        m_reports.moveFirst();
        m_reports.findFirst(u"Default = True"_s);
        if (!m_reports.noMatch()) {
            dbcReport->setText(m_reports.text(u"Name"));
            return;
        }
    }
    MsgBox(u"You do not have a Default Report specified for this Module or the Default Report is "
           "missing!"_s,
           Buttons::Ok, Icon::None, u"No Default Report"_s);
}

QString ResultsForm::cellText(const ResultColumn& column, const jet::Value& value) const {
    switch (column.kind) {
    case Kind::YesNo:
        return value.toBool() ? u"1"_s : u"0"_s;
    case Kind::Reference:
        return value.toLong() == 0 ? QString() : value.toText();
    case Kind::Number:
        if (column.field == u"AccumTime" && !value.isNull())
            return values::format(value.toDouble(), u"##0.00");
        break;
    case Kind::Text:
        if (column.field == u"Status") {
            // As the floor programs write it.
            static const std::pair<QString, QString> words[] = {{u"A"_s, u"Active"_s},
                                                                {u"D"_s, u"Suspended"_s},
                                                                {u"F"_s, u"Finished"_s},
                                                                {u"0"_s, u"Manual"_s}};
            for (const auto& [code, word] : words) {
                if (value.toText() == code)
                    return word;
            }
        }
        break;
    case Kind::Date:
        break;
    }
    return value.toText();
}

/// The statement with the columns that are shown instead of all: a job's notes take longer to read
/// than the rest of it.
QString ResultsForm::shownColumns(const QString& statement) const {
    const QString all = u"SELECT * "_s;
    if (!statement.startsWith(all, Qt::CaseInsensitive))
        return statement;
    QStringList fields;
    const auto take = [&fields](const QString& field) {
        const auto dot = field.indexOf(u'.') + 1;
        const QString name = field.left(dot) + u'[' + field.mid(dot) + u']';
        if (!field.isEmpty() && !fields.contains(name, Qt::CaseInsensitive))
            fields << name;
    };
    for (const ResultColumn& column : m_query.columns)
        take(column.field);
    for (const QString& key : {m_query.keyField, m_query.moduleKey, m_query.belowKey})
        take(key);
    return u"SELECT "_s + fields.join(u", "_s) + u' ' + statement.mid(all.size());
}

bool ResultsForm::showRows() {
    const auto* source = screen::Forms::find<QuerySource>(m_query.queryForm);
    if (!source || source->findsql().isEmpty())
        return true; // nothing has been asked
    const screen::BusyPointer busy;
    m_formula = source->formula();
    jet::Recordset found = core::MainDatabase().openRecordset(shownColumns(source->findsql()),
                                                              jet::RecordsetType::Snapshot);
    if (found.isEmpty())
        return false;

    const QStringList names = found.fieldNames();
    const auto placeOf = [&names](const QString& field) {
        for (int i = 0; i < names.size(); ++i) {
            if (names[i].compare(field, Qt::CaseInsensitive) == 0)
                return i;
        }
        // Of two fields of one name the first goes by its name alone too.
        const QString bare = field.section(u'.', -1);
        for (int i = 0; i < names.size(); ++i) {
            if (names[i].section(u'.', -1).compare(bare, Qt::CaseInsensitive) == 0)
                return i;
        }
        throw jet::Error(jet::errors::itemNotFound, u"Item not found: "_s + field);
    };
    std::vector<int> places;
    for (const ResultColumn& column : m_query.columns)
        places.push_back(placeOf(column.field));
    const int key = placeOf(m_query.keyField);
    const int module = m_query.moduleKey.isEmpty() ? key : placeOf(m_query.moduleKey);
    const int part = m_query.belowKey.isEmpty() ? -1 : placeOf(m_query.belowKey);

    struct Line {
        QStringList texts;
        QString key, below;
        qint64 place = 0;
    };
    std::vector<Line> lines;
    lines.reserve(static_cast<std::size_t>(found.recordCount()));
    for (; !found.eof(); found.moveNext()) {
        Line line;
        line.texts.reserve(static_cast<qsizetype>(places.size()));
        for (std::size_t i = 0; i < places.size(); ++i)
            line.texts << cellText(m_query.columns[i], found.field(places[i]));
        line.key = found.field(key).toText();
        line.place = found.field(module).toText().toLongLong();
        if (part >= 0)
            line.below = found.field(part).toText();
        lines.push_back(std::move(line));
    }
    // The statement says no order: by number, as the modules have them.
    std::stable_sort(lines.begin(), lines.end(), [this](const Line& a, const Line& b) {
        if (a.place != b.place)
            return a.place < b.place;
        return m_query.textKey && a.key < b.key;
    });

    std::vector<QStringList> rows;
    rows.reserve(lines.size());
    m_keys.clear();
    m_places.clear();
    for (Line& line : lines) {
        rows.push_back(std::move(line.texts));
        m_keys << line.key;
        m_places.emplace_back(line.place, line.below);
    }
    m_grid->setRows(std::move(rows));
    // Sorting moves the rows, their numbers stay with them.
    for (int row = 0; row < m_grid->rowCount(); ++row)
        m_grid->setRowKey(row, row);
    m_grid->setActiveRow(0);
    m_grid->clearSelection();
    fraMain->setTitle(QString::number(m_keys.size()) + u" Records Found Matching Query."_s);
    return true;
}

QString ResultsForm::chosenFile() {
    const QString name = dbcReport->text().trimmed();
    if (!m_reports.isEmpty()) {
        m_reports.moveFirst();
        m_reports.findFirst(u"Name = '"_s + values::quoted(name) + u'\'');
        if (!m_reports.noMatch())
            return m_reports.text(u"FileName");
    }
    complain(u"Please choose a report from the list."_s, dbcReport);
    return {};
}

void ResultsForm::cmdPrintScr_Click() {
    const QString file = chosenFile();
    if (!file.isEmpty())
        core::launchReportFile(file, m_formula, u"Query Results"_s, this);
}

void ResultsForm::cmdPrintSel_Click() {
    const QModelIndexList selected = m_grid->selectionModel()->selectedRows();
    if (selected.isEmpty()) {
        MsgBox(u"No Records Selected!"_s, Buttons::Ok, Icon::Exclamation, u"Error"_s);
        return;
    }
    const QString file = chosenFile();
    if (file.isEmpty())
        return;
    std::vector<int> rows;
    for (const QModelIndex& index : selected)
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    QStringList keys;
    for (const int row : rows)
        keys << m_keys[static_cast<qsizetype>(m_grid->rowKey(row))];
    core::launchReportFile(file, selectionOf(m_query, keys), u"Selected Records"_s, this);
}

void ResultsForm::cmdRedo_Click() {
    unload();
    screen::Forms::show(m_query.queryForm);
}

void ResultsForm::cmdCancel_Click() {
    screen::Form* query = screen::Forms::find(m_query.queryForm);
    unload();
    if (query)
        query->unload();
}

void ResultsForm::goToRow(int row) {
    if (m_query.module.isEmpty() || row < 0 || row >= m_grid->rowCount())
        return;
    const auto& [key, below] = m_places[static_cast<std::size_t>(m_grid->rowKey(row))];
    if (key == 0 || !screen::Forms::isKnown(m_query.module))
        return;
    // The rows outlive a module that was closed meanwhile: it opens again.
    screen::Form* form = screen::Forms::find(m_query.module);
    if (!form)
        form = screen::Forms::show(m_query.module);
    auto* module = dynamic_cast<core::RecordScreen*>(form);
    if (!module)
        return;
    if (module->mode().toUpper() != u"BROWSE") {
        if (!m_query.lockedText.isEmpty())
            MsgBox(m_query.lockedText, Buttons::Ok, Icon::Critical, m_query.lockedTitle);
        return;
    }
    bool found = module->goToRecord(key);
    if (auto* parts = dynamic_cast<core::PartScreen*>(form); found && parts && !below.isEmpty())
        found = parts->goToPart(below);
    if (!found) {
        MsgBox(u"That record isn't among those shown at present."_s, Buttons::Ok,
               Icon::Exclamation);
        return;
    }
    screen::Forms::show(m_query.module);
}

} // namespace reporting
