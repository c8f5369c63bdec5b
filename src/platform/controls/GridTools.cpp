#include "platform/controls/GridTools.h"

#include "platform/controls/DropMenu.h"
#include "platform/controls/FindBar.h"
#include "platform/controls/GridModel.h"
#include "platform/controls/Guard.h"
#include "platform/values/Csv.h"
#include "platform/values/Literals.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QTableView>

#include <algorithm>
#include <set>

namespace controls {

namespace {

FileSaver& theSaver() {
    static FileSaver saver;
    return saver;
}

/// The columns that are seen, from left to right.
std::vector<int> shownColumns(const QTableView& view) {
    std::vector<int> columns;
    const QHeaderView* header = view.horizontalHeader();
    for (int place = 0; place < header->count(); ++place) {
        const int column = header->logicalIndex(place);
        if (!header->isSectionHidden(column))
            columns.push_back(column);
    }
    return columns;
}

/// On one line, as the clipboard's rows have no quotes.
QString flat(QString text) {
    return text.replace(u"\r\n"_s, u" "_s).replace(u'\n', u' ').replace(u'\t', u' ');
}

} // namespace

void setFileSaver(FileSaver saver) {
    theSaver() = std::move(saver);
}

const FileSaver& fileSaver() {
    return theSaver();
}

GridTools::GridTools(QTableView& view, GridModel& model) : m_view(view), m_model(model) {}

bool GridTools::isOwn(const QKeyEvent& key) {
    return key.matches(QKeySequence::Copy) || key.matches(QKeySequence::Find) ||
           key.matches(QKeySequence::FindNext) || key.matches(QKeySequence::FindPrevious);
}

bool GridTools::press(const QKeyEvent& key) {
    if (key.matches(QKeySequence::Copy))
        copy();
    else if (key.matches(QKeySequence::Find))
        find();
    else if (key.matches(QKeySequence::FindNext) && m_bar)
        m_bar->next(1);
    else if (key.matches(QKeySequence::FindPrevious) && m_bar)
        m_bar->next(-1);
    else
        return false;
    return true;
}

void GridTools::find() {
    if (!m_bar)
        m_bar = new FindBar(m_view, m_model);
    m_bar->open();
}

void GridTools::openMenu(DropMenu& menu, const QPoint& place) {
    const bool any = m_model.rows() > 0;
    menu.addSeparator();
    menu.add(
        u"&Copy Rows"_s, [this] { copy(); }, m_view.selectionModel()->hasSelection());
    menu.showKey(QKeySequence(QKeySequence::Copy).toString());
    menu.add(
        u"&Find in List..."_s, [this] { find(); }, any);
    menu.showKey(QKeySequence(QKeySequence::Find).toString());
    menu.add(
        u"Save List as CS&V..."_s, [this] { saveCsv(); }, any);
    menu.open(m_view.viewport()->mapToGlobal(place));
}

void GridTools::copy() const {
    const auto chosen = m_view.selectionModel()->selectedIndexes();
    if (chosen.isEmpty())
        return;
    std::set<int> rows;
    std::set<int> inSelection;
    for (const QModelIndex& cell : chosen) {
        rows.insert(cell.row());
        inSelection.insert(cell.column());
    }
    std::vector<int> columns;
    for (const int column : shownColumns(m_view)) {
        if (inSelection.contains(column))
            columns.push_back(column);
    }
    QStringList lines;
    const auto addLine = [&](const auto& textOf) {
        QStringList cells;
        for (const int column : columns)
            cells << flat(textOf(column));
        lines << cells.join(u'\t');
    };
    if (chosen.size() > 1)
        addLine([&](int column) { return m_model.column(column).title; });
    for (const int row : rows) {
        addLine([&](int column) {
            return m_view.selectionModel()->isSelected(m_model.index(row, column))
                       ? m_model.plainText(row, column)
                       : QString();
        });
    }
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

QByteArray GridTools::csv() const {
    using Kind = GridColumn::Kind;
    const std::vector<int> columns = shownColumns(m_view);
    std::vector<bool> dates;
    for (const int column : columns)
        dates.push_back(m_model.holdsDates(column));
    QString text;
    text.reserve(m_model.rows() * qsizetype(columns.size()) * 12);
    text += QChar(QChar::ByteOrderMark);
    const auto addLine = [&](const auto& addCell) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (i > 0)
                text += u',';
            addCell(i);
        }
        text += u"\r\n";
    };
    addLine([&](std::size_t i) { values::appendCsvText(text, m_model.column(columns[i]).title); });
    for (int row = 0; row < m_model.rows(); ++row) {
        addLine([&](std::size_t i) {
            const QString cell = m_model.plainText(row, columns[i]);
            QString plain;
            if (m_model.column(columns[i]).kind == Kind::Number)
                plain = values::plainNumber(cell);
            else if (dates[i])
                plain = values::isoDate(cell);
            if (plain.isEmpty())
                values::appendCsvText(text, cell);
            else
                text += plain;
        });
    }
    return text.toUtf8();
}

void GridTools::saveCsv() const {
    if (!fileSaver())
        return;
    QString name = m_view.accessibleName();
    if (name.isEmpty())
        name = m_view.window()->windowTitle();
    fileSaver()(name.remove(u'&').remove(u':').trimmed() + u".csv"_s, [this] { return csv(); });
}

} // namespace controls
