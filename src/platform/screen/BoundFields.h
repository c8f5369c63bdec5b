#pragma once

#include "platform/controls/Field.h"
#include "platform/jet/Recordset.h"

#include <QString>

#include <functional>
#include <initializer_list>
#include <utility>
#include <vector>

class QCheckBox;
class QLabel;

namespace screen {

/// The columns of a table and the fields that stand for them, in the order in which they are
/// written.
class BoundFields {
  public:
    /// A column of any kind of control.
    struct Column {
        QString name;
        std::function<void(const jet::Value&)> show;
        std::function<jet::Value()> read; ///< none: the column is shown and never written
        std::function<void()> clear;
        std::function<void(bool locked)> lock; ///< none: nothing to lock
        QWidget* widget = nullptr;
        jet::Value shown = {}; ///< what read() gave when the row was shown
    };

    void bind(const QString& column, controls::Field* field);
    void bind(const QString& column, QCheckBox* box);
    /// Several at once, in their order.
    void bindAll(std::initializer_list<std::pair<const char16_t*, controls::Field*>> columns);
    /// A column whose content is not what its field shows.
    void bindAs(const QString& column, controls::Field* field,
                std::function<void(const jet::Value&)> show, std::function<jet::Value()> read);
    /// Shown, never written and always locked: keys and what others compute.
    void bindShown(const QString& column, controls::Field* field);
    void bindShown(const QString& column, QLabel* label);
    void bind(Column column);

    /// Cuts every line to its column's width in the database.
    void limitTo(const jet::Database& database, const QString& table);
    /// Null shows as empty.
    void show(const jet::Recordset& row);
    /// Shows the columns that the row has as if they had been typed: they count as changed.
    void fill(const jet::Recordset& row) const;
    void fill(const QString& column, const jet::Value& value) const;
    /// All columns that are written and what they hold now; or those that were changed alone.
    std::vector<std::pair<QString, jet::Value>> contents(bool changedOnly) const;
    /// All columns, for a new row.
    void write(jet::Recordset& row) const;
    /// The columns whose fields were changed since the row was shown, so that what another station
    /// wrote to the others meanwhile stays.
    void writeChanges(jet::Recordset& row) const;
    void clear() const;
    void lock(bool locked) const;
    const std::vector<Column>& columns() const { return m_columns; }
    /// The first field that takes entries; nullptr if there is none.
    QWidget* firstEntry() const;

  private:
    std::vector<Column> m_columns;
};

} // namespace screen
