#pragma once

#include "platform/controls/Field.h"
#include "platform/jet/Recordset.h"

#include <QString>

#include <functional>
#include <vector>

class QCheckBox;
class QLabel;

namespace masters {

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
    };

    void bind(const QString& column, controls::Field* field);
    void bind(const QString& column, QCheckBox* box);
    /// Shown, never written and always locked: keys and what others compute.
    void bindShown(const QString& column, controls::Field* field);
    void bindShown(const QString& column, QLabel* label);
    void bind(Column column);

    /// Cuts every line to its column's width in the open database.
    void limitTo(const QString& table);
    /// Null shows as empty.
    void show(const jet::Recordset& row) const;
    void write(jet::Recordset& row) const;
    void clear() const;
    void lock(bool locked) const;
    /// The first field that takes entries; nullptr if there is none.
    QWidget* firstEntry() const;

  private:
    std::vector<Column> m_columns;
};

} // namespace masters
