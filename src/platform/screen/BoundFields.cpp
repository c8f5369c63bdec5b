#include "platform/screen/BoundFields.h"

#include "platform/controls/DataCombo.h"
#include "platform/controls/TextField.h"
#include "platform/jet/Database.h"

#include <QCheckBox>
#include <QLabel>

namespace screen {

void BoundFields::bind(const QString& column, controls::Field* field) {
    bindAs(
        column, field, [field](const jet::Value& value) { field->setValue(value); },
        [field] { return field->value(); });
}

void BoundFields::bindAll(
    std::initializer_list<std::pair<const char16_t*, controls::Field*>> columns) {
    for (const auto& [column, field] : columns)
        bind(QString::fromUtf16(column), field);
}

void BoundFields::bindAs(const QString& column, controls::Field* field,
                         std::function<void(const jet::Value&)> show,
                         std::function<jet::Value()> read) {
    bind({column, std::move(show), std::move(read), [field] { field->clear(); },
          [field](bool locked) { field->setLocked(locked); }, field->widget()});
}

void BoundFields::bind(const QString& column, QCheckBox* box) {
    bind({column, [box](const jet::Value& value) { box->setChecked(value.toBool()); },
          [box] { return jet::Value(box->isChecked()); }, [box] { box->setChecked(false); },
          [box](bool locked) { box->setEnabled(!locked); }, box});
}

void BoundFields::bindShown(const QString& column, controls::Field* field) {
    field->setLocked(true);
    field->widget()->setFocusPolicy(Qt::ClickFocus); // to copy from; Tab passes it over
    bind({column,
          [field](const jet::Value& value) { field->setValue(value); },
          {},
          [field] { field->clear(); },
          {},
          field->widget()});
}

void BoundFields::bindShown(const QString& column, QLabel* label) {
    bind({column,
          [label](const jet::Value& value) { label->setText(value.toText()); },
          {},
          [label] { label->clear(); },
          {},
          label});
}

void BoundFields::bind(Column column) {
    m_columns.push_back(std::move(column));
}

void BoundFields::limitTo(const jet::Database& database, const QString& table) {
    for (const Column& column : m_columns) {
        const int width = database.width(table, column.name);
        if (width == 0)
            continue;
        if (auto* line = dynamic_cast<controls::TextField*>(column.widget))
            line->setLimit(width);
        else if (auto* combo = dynamic_cast<controls::DataCombo*>(column.widget))
            combo->setLimit(width);
        else if (auto* memo = dynamic_cast<controls::MemoField*>(column.widget))
            memo->setLimit(width);
    }
}

void BoundFields::show(const jet::Recordset& row) {
    for (Column& column : m_columns) {
        column.show(row[column.name]);
        if (column.read)
            column.shown = column.read();
    }
}

void BoundFields::fill(const jet::Recordset& row) const {
    const QStringList names = row.fieldNames();
    for (const Column& column : m_columns) {
        if (names.contains(column.name, Qt::CaseInsensitive))
            column.show(row[column.name]);
    }
}

void BoundFields::fill(const QString& column, const jet::Value& value) const {
    for (const Column& one : m_columns) {
        if (one.read && one.name.compare(column, Qt::CaseInsensitive) == 0)
            one.show(value);
    }
}

std::vector<std::pair<QString, jet::Value>> BoundFields::contents(bool changedOnly) const {
    std::vector<std::pair<QString, jet::Value>> found;
    for (const Column& column : m_columns) {
        if (!column.read)
            continue;
        // Not by the database's comparison: a change of case is one.
        const jet::Value now = column.read();
        if (!changedOnly || now.isNull() != column.shown.isNull() ||
            now.toText() != column.shown.toText())
            found.emplace_back(column.name, now);
    }
    return found;
}

void BoundFields::write(jet::Recordset& row) const {
    for (const auto& [name, value] : contents(false))
        row.set(name, value);
}

void BoundFields::writeChanges(jet::Recordset& row) const {
    for (const auto& [name, value] : contents(true))
        row.set(name, value);
}

void BoundFields::clear() const {
    for (const Column& column : m_columns)
        column.clear();
}

void BoundFields::lock(bool locked) const {
    for (const Column& column : m_columns) {
        if (column.lock)
            column.lock(locked);
    }
}

QWidget* BoundFields::firstEntry() const {
    for (const Column& column : m_columns) {
        if (column.lock && column.widget)
            return column.widget;
    }
    return nullptr;
}

} // namespace screen
