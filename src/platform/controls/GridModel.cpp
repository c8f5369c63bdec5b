#include "platform/controls/GridModel.h"

#include "platform/values/Csv.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QApplication>
#include <QHash>
#include <QPalette>

#include <algorithm>
#include <limits>
#include <numeric>

namespace controls {

void GridModel::setColumns(std::vector<GridColumn> columns) {
    beginResetModel();
    m_columns = std::move(columns);
    endResetModel();
}

void GridModel::setChoices(int column, const QStringList& choices) {
    if (column >= 0 && column < columnCount())
        m_columns[size_t(column)].choices = choices;
}

bool GridModel::hasEditableColumn() const {
    return std::any_of(m_columns.begin(), m_columns.end(),
                       [](const GridColumn& c) { return c.editable; });
}

bool GridModel::has(int row, int column) const {
    return row >= 0 && row < rows() && column >= 0 && column < columnCount();
}

void GridModel::insert(int row, GridRow content) {
    row = std::clamp(row, 0, rows());
    beginInsertRows({}, row, row);
    m_rows.insert(m_rows.begin() + row, std::move(content));
    endInsertRows();
}

void GridModel::remove(int row) {
    if (row < 0 || row >= rows())
        return;
    beginRemoveRows({}, row, row);
    m_rows.erase(m_rows.begin() + row);
    endRemoveRows();
}

void GridModel::resize(int count) {
    count = std::max(count, 0);
    if (count > rows()) {
        beginInsertRows({}, rows(), count - 1);
        m_rows.resize(size_t(count));
        endInsertRows();
    } else if (count < rows()) {
        beginRemoveRows({}, count, rows() - 1);
        m_rows.resize(size_t(count));
        endRemoveRows();
    }
}

void GridModel::replace(std::vector<GridRow> rows) {
    beginResetModel();
    m_rows = std::move(rows);
    m_source = {};
    endResetModel();
}

void GridModel::replace(int count, std::function<QString(qint64, int)> source) {
    std::vector<GridRow> rows(size_t(std::max(count, 0)));
    for (size_t i = 0; i < rows.size(); ++i)
        rows[i].key = qint64(i);
    beginResetModel();
    m_rows = std::move(rows);
    m_source = std::move(source);
    endResetModel();
}

QString GridModel::text(int row, int column) const {
    const GridRow& held = m_rows[size_t(row)];
    return held.texts.isEmpty() && m_source ? m_source(held.key, column) : held.texts.value(column);
}

void GridModel::setRow(int row, GridRow content) {
    m_rows[size_t(row)] = std::move(content);
    rowTouched(row);
}

bool GridModel::patch(std::vector<GridRow> rows) {
    QHash<QString, size_t> wanted;
    wanted.reserve(qsizetype(rows.size()));
    for (size_t i = 0; i < rows.size(); ++i)
        wanted.insert(rows[i].tag, i);
    QHash<QString, size_t> there;
    there.reserve(qsizetype(m_rows.size()));
    size_t gone = 0;
    for (size_t i = 0; i < m_rows.size(); ++i) {
        there.insert(m_rows[i].tag, i);
        gone += wanted.contains(m_rows[i].tag) ? 0 : 1;
    }
    // Taking rows out one by one costs a move of all behind them.
    constexpr size_t most = 200;
    if (size_t(wanted.size()) != rows.size() || size_t(there.size()) != m_rows.size() ||
        gone > most) {
        replace(std::move(rows));
        return false;
    }
    for (int row = this->rows() - 1; row >= 0; --row) {
        if (!wanted.contains(m_rows[size_t(row)].tag))
            remove(row);
    }
    const size_t stay = m_rows.size();
    if (rows.size() > stay) {
        beginInsertRows({}, int(stay), int(rows.size()) - 1);
        for (const GridRow& row : rows) {
            if (!there.contains(row.tag)) {
                GridRow fresh;
                fresh.tag = row.tag;
                m_rows.push_back(std::move(fresh));
            }
        }
        endInsertRows();
    }
    std::vector<size_t> places(rows.size()); // where the row stands that belongs here
    bool moved = false;
    for (size_t i = 0; i < m_rows.size(); ++i) {
        const size_t to = wanted.value(m_rows[i].tag);
        places[to] = i;
        moved = moved || to != i;
    }
    if (moved)
        reorder(places);
    for (size_t i = 0; i < rows.size(); ++i) {
        const GridRow& old = m_rows[i];
        const bool same = old.texts == rows[i].texts && old.iconText == rows[i].iconText &&
                          old.icon.cacheKey() == rows[i].icon.cacheKey() &&
                          old.colour == rows[i].colour && !old.extras && !rows[i].extras;
        if (!same)
            setRow(int(i), std::move(rows[i]));
    }
    return true;
}

void GridModel::swapRows(int a, int b) {
    if (a == b || a < 0 || b < 0 || a >= rows() || b >= rows())
        return;
    std::swap(m_rows[size_t(a)], m_rows[size_t(b)]);
    rowTouched(a);
    rowTouched(b);
}

void GridModel::move(int from, int to) {
    if (from == to || !has(from, 0) || !has(to, 0))
        return;
    beginMoveRows({}, from, from, {}, to > from ? to + 1 : to);
    const auto at = m_rows.begin();
    if (from < to)
        std::rotate(at + from, at + from + 1, at + to + 1);
    else
        std::rotate(at + to, at + from, at + from + 1);
    endMoveRows();
}

void GridModel::refuse(int row, int column, const QString& why) {
    const CellExtra* marked = extra(row, column);
    const bool was = marked && !marked->refusal.isEmpty();
    if (!was && why.isEmpty())
        return;
    CellExtra& cell = makeExtra(row, column);
    if (!was)
        cell.before = this->text(row, column);
    cell.refusal = why;
    touched(row, column);
}

void GridModel::giveUp(const QModelIndex& cell) {
    const CellExtra* marked =
        has(cell.row(), cell.column()) ? extra(cell.row(), cell.column()) : nullptr;
    if (!marked || marked->refusal.isEmpty())
        return;
    const QString before = marked->before;
    refuse(cell.row(), cell.column(), {});
    setText(cell.row(), cell.column(), before);
}

const CellExtra* GridModel::extra(int row, int column) const {
    const auto& extras = m_rows[size_t(row)].extras;
    if (!extras)
        return nullptr;
    const auto found = extras->find(column);
    return found == extras->end() ? nullptr : &found->second;
}

CellExtra& GridModel::makeExtra(int row, int column) {
    auto& extras = m_rows[size_t(row)].extras;
    if (!extras)
        extras = std::make_unique<std::map<int, CellExtra>>();
    return (*extras)[column];
}

void GridModel::setText(int row, int column, const QString& text) {
    auto& texts = m_rows[size_t(row)].texts;
    if (m_source && texts.isEmpty()) {
        QStringList all;
        for (int i = 0; i < columnCount(); ++i)
            all << this->text(row, i);
        texts = std::move(all);
    }
    while (texts.size() <= column)
        texts << QString();
    texts[column] = text;
    touched(row, column);
}

QString GridModel::plainText(int row, int column) const {
    const CellExtra* cell = extra(row, column);
    if (cell && cell->hidden)
        return {};
    const QString text = this->text(row, column);
    return text.isEmpty() && cell ? cell->pictureText : text;
}

bool GridModel::holdsDates(int column) const {
    return !valuesOf(column, values::dayNumber).empty();
}

std::vector<double>
GridModel::valuesOf(int column,
                    const std::function<std::optional<double>(QStringView)>& valueOf) const {
    std::vector<double> found(m_rows.size(), std::numeric_limits<double>::lowest());
    bool any = false;
    for (size_t i = 0; i < m_rows.size(); ++i) {
        const QString text = this->text(int(i), column);
        if (QStringView(text).trimmed().isEmpty())
            continue;
        const auto value = valueOf(text);
        if (!value)
            return {};
        found[i] = *value;
        any = true;
    }
    return any ? found : std::vector<double>();
}

bool GridModel::isChecked(int row, int column) const {
    const QString text = this->text(row, column);
    return values::val(text) != 0 || text.compare(u"true", Qt::CaseInsensitive) == 0;
}

bool GridModel::isEditable(int row, int column) const {
    if (m_locked || !has(row, column))
        return false;
    const CellExtra* cell = extra(row, column);
    return cell && cell->locked ? !*cell->locked : m_columns[size_t(column)].editable;
}

void GridModel::touched(int row, int column) {
    const auto cell = index(row, column);
    dataChanged(cell, cell);
}

void GridModel::rowTouched(int row) {
    if (columnCount() > 0)
        dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void GridModel::setLocked(bool locked) {
    m_locked = locked;
    if (rows() > 0 && columnCount() > 0)
        dataChanged(index(0, 0), index(rows() - 1, columnCount() - 1));
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows();
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!has(index.row(), index.column()))
        return {};
    using Kind = GridColumn::Kind;
    const GridRow& row = m_rows[size_t(index.row())];
    const GridColumn& column = m_columns[size_t(index.column())];
    const CellExtra* cell = extra(index.row(), index.column());
    const bool hidden = cell && cell->hidden;
    const bool picture = cell && !cell->picture.isNull();
    const bool refused = cell && !cell->refusal.isEmpty();
    const bool firstIcon = index.column() == 0 && !row.icon.isNull();
    switch (role) {
    case Qt::DisplayRole:
        return hidden || column.kind == Kind::Check ? QString() : text(index.row(), index.column());
    case Qt::EditRole:
        return text(index.row(), index.column());
    case Qt::ToolTipRole:
        if (refused)
            return cell->refusal;
        if (picture)
            return cell->pictureText;
        if (firstIcon && !row.iconText.isEmpty())
            return row.iconText;
        return hidden || column.kind == Kind::Check ? QString() : text(index.row(), index.column());
    case Qt::AccessibleTextRole: {
        QStringList said;
        if (refused)
            said << cell->refusal;
        if (picture)
            said << cell->pictureText;
        if (firstIcon)
            said << row.iconText;
        if (column.kind == Kind::Check)
            said << (isChecked(index.row(), index.column()) ? u"checked"_s : u"not checked"_s);
        else if (!hidden)
            said << text(index.row(), index.column());
        said.removeAll(QString());
        return said.join(u' ');
    }
    case Qt::DecorationRole:
        if (picture)
            return cell->picture;
        return firstIcon ? QVariant(row.icon) : QVariant();
    case Qt::CheckStateRole:
        if (column.kind == Kind::Check)
            return isChecked(index.row(), index.column()) ? Qt::Checked : Qt::Unchecked;
        return {};
    case Qt::TextAlignmentRole:
        return int(column.kind == Kind::Number ? Qt::AlignRight | Qt::AlignVCenter
                                               : Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::ForegroundRole:
        if (refused)
            return QBrush(QColor(
                QApplication::palette().base().color().lightness() < 128 ? 0xff6b6b : 0xc00000));
        return row.colour.isValid() ? QVariant(QBrush(row.colour)) : QVariant();
    case Qt::BackgroundRole:
        // Grey tells that it takes no entry; the text stays as readable as the others.
        if (cell && cell->locked == true)
            return QApplication::palette().window();
        return {};
    default:
        return {};
    }
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!isEditable(index.row(), index.column()))
        return false;
    QString text = value.toString();
    if (role == Qt::CheckStateRole)
        text = value.toInt() == Qt::Checked ? u"1"_s : u"0"_s;
    else if (role != Qt::EditRole)
        return false;
    if (this->text(index.row(), index.column()) == text)
        return true;
    const int row = index.row();
    const int column = index.column();
    if (entering) {
        entering(row, column, text);
        return true;
    }
    setText(row, column, text);
    if (edited)
        edited(row, column);
    return true;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return QAbstractTableModel::headerData(section, orientation, role);
    const GridColumn& column = m_columns[size_t(section)];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return column.title;
    if (role == Qt::TextAlignmentRole)
        return int(column.kind == GridColumn::Kind::Number ? Qt::AlignRight | Qt::AlignVCenter
                                                           : Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
    if (!has(index.row(), index.column()))
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    using Kind = GridColumn::Kind;
    const Kind kind = column(index.column()).kind;
    if (isEditable(index.row(), index.column()) && kind != Kind::Picture)
        flags |= kind == Kind::Check ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable;
    return flags;
}

void GridModel::sort(int column, Qt::SortOrder order) {
    if (column < 0 || column >= columnCount() || rows() < 2)
        return;
    // A column of nothing but numbers sorts by value, one of dates by date, any other as text.
    const bool isNumber = m_columns[size_t(column)].kind == GridColumn::Kind::Number;
    std::vector<double> numbers = valuesOf(column, [isNumber](QStringView text) {
        if (isNumber)
            return std::optional(values::val(values::plainNumber(text)));
        QString plain = text.toString();
        plain.remove(u',').remove(u'$');
        return values::isNumeric(plain) ? std::optional(values::val(plain)) : std::nullopt;
    });
    if (numbers.empty())
        numbers = valuesOf(column, values::dayNumber);
    std::vector<QByteArray> texts;
    if (numbers.empty()) {
        texts.reserve(m_rows.size());
        for (int row = 0; row < rows(); ++row)
            texts.push_back(values::sortKey(text(row, column).trimmed().toUtf8()));
    }

    std::vector<size_t> places(m_rows.size());
    std::iota(places.begin(), places.end(), size_t{0});
    const auto before = [&](size_t a, size_t b) {
        return texts.empty() ? numbers[a] < numbers[b] : texts[a] < texts[b];
    };
    std::stable_sort(places.begin(), places.end(), [&](size_t a, size_t b) {
        return order == Qt::AscendingOrder ? before(a, b) : before(b, a);
    });
    reorder(places);
}

void GridModel::reorder(const std::vector<size_t>& places) {
    layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    std::vector<GridRow> sorted;
    sorted.reserve(places.size());
    std::vector<int> newPlace(places.size());
    for (size_t i = 0; i < places.size(); ++i) {
        newPlace[places[i]] = int(i);
        sorted.push_back(std::move(m_rows[places[i]]));
    }
    m_rows = std::move(sorted);
    const auto from = persistentIndexList();
    QModelIndexList to;
    to.reserve(from.size());
    for (const QModelIndex& old : from)
        to << index(newPlace[size_t(old.row())], old.column());
    changePersistentIndexList(from, to);
    layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

} // namespace controls
