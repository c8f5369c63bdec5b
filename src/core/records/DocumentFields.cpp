#include "core/records/DocumentFields.h"

#include "platform/controls/DataCombo.h"
#include "platform/controls/TextField.h"
#include "platform/values/Literals.h"

#include <QCheckBox>
#include <QLabel>

namespace core {

namespace {

DocumentFields::Control of(controls::Field* field, const DocumentColumn& column) {
    DocumentFields::Control made;
    const QString mask = column.numberMask;
    if (auto* list = column.byKey ? dynamic_cast<controls::DataCombo*>(field) : nullptr) {
        made.show = [list](const jet::Value& value) { list->setBoundText(value.toText()); };
        made.read = [list] { return jet::Value(list->boundText()); };
    } else if (mask.isEmpty() || dynamic_cast<controls::CurrencyField*>(field)) {
        made.show = [field](const jet::Value& value) { field->setValue(value); };
        made.read = [field] { return field->value(); };
    } else {
        made.show = [field, mask](const jet::Value& value) {
            field->setText(maskedText(value, mask));
        };
        made.read = [field, mask] { return typedValue(field->text(), mask); };
    }
    made.clear = [field] { field->clear(); };
    made.lock = [field](bool locked) { field->setLocked(locked); };
    made.widget = field->widget();
    return made;
}

} // namespace

DocumentFields::Control DocumentFields::controlOf(const screen::Form& form,
                                                  const DocumentColumn& column) const {
    if (const auto special = m_special.find(column.control); special != m_special.end())
        return special->second;
    QWidget* widget = form.control(column.control);
    if (auto* field = dynamic_cast<controls::Field*>(widget))
        return of(field, column);
    if (auto* box = dynamic_cast<QCheckBox*>(widget)) {
        return {[box](const jet::Value& value) { box->setChecked(value.toBool()); },
                [box] { return jet::Value(box->isChecked()); }, [box] { box->setChecked(false); },
                [box](bool locked) { box->setEnabled(!locked); }, box};
    }
    auto* label = dynamic_cast<QLabel*>(widget);
    Q_ASSERT(label);
    return {[label, mask = column.numberMask](const jet::Value& value) {
                label->setText(maskedText(value, mask));
            },
            {},
            [label] { label->clear(); },
            {},
            label};
}

void DocumentFields::bind(const screen::Form& form, screen::BoundFields& bound,
                          const ColumnTable& table) {
    const auto labels = form.findChildren<QLabel*>();
    for (const DocumentColumn& column : table.columns()) {
        if (column.control.isEmpty())
            continue;
        Control control = controlOf(form, column);
        if (column.shownOnly) {
            if (control.lock) {
                control.lock(true);
                control.widget->setFocusPolicy(Qt::ClickFocus); // to copy from; Tab passes it over
            }
            control.lock = {};
            control.read = {};
        }
        const auto label = std::find_if(labels.begin(), labels.end(), [&](const QLabel* one) {
            return one->buddy() == control.widget;
        });
        // The module shows the document; the row goes through the struct.
        bound.bind({column.name,
                    [](const jet::Value&) {},
                    {},
                    control.clear,
                    control.lock,
                    control.widget});
        m_bound.push_back(
            {&column, std::move(control), {}, label == labels.end() ? nullptr : *label});
    }
}

void DocumentFields::show(Bound& one, const void* document) {
    one.control.show(one.column->get(document));
    if (one.control.read)
        one.shown = one.control.read();
}

void DocumentFields::show(const void* document) {
    for (Bound& one : m_bound)
        show(one, document);
}

void DocumentFields::show(const void* document, QStringView column) {
    for (Bound& one : m_bound) {
        if (one.column->name == column)
            show(one, document);
    }
}

void DocumentFields::read(void* document) {
    for (Bound& one : m_bound) {
        if (!one.control.read)
            continue;
        const jet::Value now = one.control.read();
        if (now.isNull() == one.shown.isNull() && now.toText() == one.shown.toText())
            continue;
        one.column->set(document, now);
        one.shown = now;
    }
}

void DocumentFields::settle() {
    for (Bound& one : m_bound) {
        if (one.control.read)
            one.shown = one.control.read();
    }
}

QWidget* DocumentFields::widgetOf(const DocumentColumn& column) const {
    const auto found = std::find_if(m_bound.begin(), m_bound.end(),
                                    [&](const Bound& one) { return one.column == &column; });
    return found == m_bound.end() ? nullptr : found->control.widget;
}

void DocumentFields::setMoneyShown(bool shown) const {
    for (const Bound& one : m_bound) {
        if (!one.column->hidesMoney)
            continue;
        one.control.widget->setVisible(shown);
        if (one.label)
            one.label->setVisible(shown);
    }
}

} // namespace core
