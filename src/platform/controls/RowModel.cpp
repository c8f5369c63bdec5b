#include "platform/controls/RowModel.h"

#include "platform/values/Literals.h"

namespace controls {

void RowModel::setStore(std::shared_ptr<const rows::Store> store) {
    beginResetModel();
    m_order.setStore(std::move(store));
    endResetModel();
}

void RowModel::setFilter(int column, const QString& typed) {
    beginResetModel();
    m_order.setFilter(column, typed);
    endResetModel();
}

void RowModel::sortBy(int column, bool down) {
    beginResetModel();
    m_order.sortBy(column, down);
    endResetModel();
}

qint64 RowModel::keyAt(int place) const {
    return place >= 0 && place < m_order.count() ? m_order.store()->key(m_order.row(place)) : 0;
}

int RowModel::placeOfKey(qint64 key) const {
    const int row = m_order.store() ? m_order.store()->rowOf(key) : -1;
    return row < 0 ? -1 : m_order.placeOf(row);
}

QString RowModel::textAt(int place, int column) const {
    const QString shown = m_order.store()->shown(column, m_order.row(place));
    if (m_columns[static_cast<std::size_t>(column)].kind != rows::Kind::Money || shown.isEmpty())
        return shown;
    return shown.startsWith(u'-') ? u'-' + m_symbol + shown.mid(1) : m_symbol + shown;
}

int RowModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || !m_order.store() ? 0 : m_order.count();
}

int RowModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant RowModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const rows::Kind kind = m_columns[static_cast<std::size_t>(index.column())].kind;
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole) {
        const QString text = textAt(index.row(), index.column());
        return kind == rows::Kind::YesNo && text == u"No" && role == Qt::DisplayRole ? QString()
                                                                                     : text;
    }
    if (role == Qt::TextAlignmentRole) {
        const bool number =
            kind == rows::Kind::Number || kind == rows::Kind::Hours || kind == rows::Kind::Money;
        return QVariant::fromValue(Qt::AlignVCenter | (number ? Qt::AlignRight : Qt::AlignLeft));
    }
    return {};
}

QVariant RowModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return m_columns[static_cast<std::size_t>(section)].title;
    return QAbstractTableModel::headerData(section, orientation, role);
}

} // namespace controls
