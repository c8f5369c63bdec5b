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

namespace reporting {

namespace {

qint64 numberOf(const jet::Value& key) {
    return key.kind() == jet::Value::Kind::Integer ? key.toInteger() : key.toText().toLongLong();
}

} // namespace

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

jet::Value ResultsForm::valueAt(qint64 row, int field) {
    const int place = m_order[static_cast<std::size_t>(row)];
    if (m_found.absolutePosition() != place)
        m_found.moveTo(place);
    return m_found.field(field);
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
    m_key = placeOf(m_query.keyField);
    m_module = m_query.moduleKey.isEmpty() ? m_key : placeOf(m_query.moduleKey);
    m_below = m_query.belowKey.isEmpty() ? -1 : placeOf(m_query.belowKey);

    // The statement says no order: by number, as the modules have them.
    struct Line {
        qint64 number;
        QString key;
        int place;
    };
    std::vector<Line> lines;
    lines.reserve(static_cast<std::size_t>(found.recordCount()));
    for (int place = 0; !found.eof(); found.moveNext(), ++place)
        lines.push_back({numberOf(found.field(m_module)),
                         m_query.textKey ? found.field(m_key).toText() : QString(), place});
    std::stable_sort(lines.begin(), lines.end(), [](const Line& a, const Line& b) {
        return a.number != b.number ? a.number < b.number : a.key < b.key;
    });
    std::vector<int> order;
    order.reserve(lines.size());
    for (const Line& line : lines)
        order.push_back(line.place);

    m_found = std::move(found);
    m_order = std::move(order);
    // Of many rows few are ever looked at: their texts are made when they are.
    m_grid->setRows(static_cast<int>(m_order.size()), [this, places](qint64 row, int column) {
        const auto at = static_cast<std::size_t>(column);
        return cellText(m_query.columns[at], valueAt(row, places[at]));
    });
    m_grid->setActiveRow(0);
    m_grid->clearSelection();
    fraMain->setTitle(QString::number(m_order.size()) + u" Records Found Matching Query."_s);
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
        keys << valueAt(m_grid->rowKey(row), m_key).toText();
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
    const qint64 line = m_grid->rowKey(row);
    const qint64 key = numberOf(valueAt(line, m_module));
    const QString below = m_below < 0 ? QString() : valueAt(line, m_below).toText();
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
