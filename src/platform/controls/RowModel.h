#pragma once

#include "platform/rows/Order.h"

#include <QAbstractTableModel>
#include <QString>

#include <vector>

namespace controls {

/// A column of a RowTable.
struct RowColumn {
    QString title;
    rows::Kind kind = rows::Kind::Text;
    int characters = 12; ///< width to begin with
    bool shown = true;   ///< to begin with
    bool summed = false; ///< its sum stands at the foot
};

/// The rows of a RowTable, nothing of which is made before it is seen.
class RowModel : public QAbstractTableModel {
  public:
    explicit RowModel(std::vector<RowColumn> columns) : m_columns(std::move(columns)) {}

    const std::vector<RowColumn>& columns() const { return m_columns; }
    const rows::Order& order() const { return m_order; }
    /// Stands in front of money.
    void setCurrencySymbol(const QString& symbol) { m_symbol = symbol; }

    void setStore(std::shared_ptr<const rows::Store> store);
    void setFilter(int column, const QString& typed);
    void sortBy(int column, bool down);

    /// 0 where there is no such place.
    qint64 keyAt(int place) const;
    int placeOfKey(qint64 key) const; ///< -1 if it isn't shown
    QString textAt(int place, int column) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    std::vector<RowColumn> m_columns;
    rows::Order m_order;
    QString m_symbol;
};

} // namespace controls
