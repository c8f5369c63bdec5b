#pragma once

#include "core/records/DocumentColumns.h"
#include "core/records/EntryPart.h"
#include "platform/screen/BoundFields.h"
#include "platform/screen/Form.h"

#include <map>
#include <vector>

class QLabel;

namespace core {

/// The controls of a screen that show a document by its column table. The struct is the document: a
/// field gives only what was typed into it since it was last shown, so that figures which are shown
/// rounded, or hidden, keep their decimals.
class DocumentFields {
  public:
    /// How a control shows and gives a column, where it isn't a plain field, box or label.
    struct Control {
        std::function<void(const jet::Value&)> show;
        std::function<jet::Value()> read = {}; ///< none: the column is only shown
        std::function<void()> clear = {};
        std::function<void(bool locked)> lock = {};
        QWidget* widget = nullptr;
    };

    /// Must be said before bind() comes to that control.
    void use(const QString& control, Control how) { m_special[control] = std::move(how); }
    /// Takes the named controls of the form. `bound` is told of each column, for widths, locking
    /// and emptying, in the table's order.
    void bind(const screen::Form& form, screen::BoundFields& bound, const ColumnTable& table);

    void show(const void* document);
    void show(const void* document, QStringView column);
    /// Puts what was typed since the last time into the document.
    void read(void* document);
    /// What stands in the fields was not typed: after they were emptied.
    void settle();
    /// The control of a column; nullptr if there is none.
    QWidget* widgetOf(const DocumentColumn& column) const;
    /// Shows or hides the secured columns with their labels.
    void setMoneyShown(bool shown) const;

  private:
    struct Bound {
        const DocumentColumn* column;
        Control control;
        jet::Value shown;
        QLabel* label; ///< whose buddy the control is
    };
    Control controlOf(const screen::Form& form, const DocumentColumn& column) const;
    void show(Bound& one, const void* document);
    std::map<QString, Control> m_special;
    std::vector<Bound> m_bound;
};

/// A document on a screen: as it stands now, and as it was when its editing began.
template <class Doc>
class ShownDocument {
  public:
    explicit ShownDocument(const DocumentColumns<Doc>& columns) : m_columns(columns) {}
    const DocumentColumns<Doc>& columns() const { return m_columns; }
    DocumentFields& fields() { return m_fields; }
    void bind(const screen::Form& form, screen::BoundFields& bound) {
        m_fields.bind(form, bound, m_columns);
    }

    /// With what was typed since it was shown.
    Doc& now() {
        m_fields.read(&m_now);
        return m_now;
    }
    void show(Doc document) {
        m_now = std::move(document);
        m_fields.show(&m_now);
    }
    /// The columns as parts of an entry, each key with that word in front; and one put back. False
    /// if the key isn't of this document.
    void addParts(std::vector<EntryPart>& parts, const QString& word) {
        now();
        for (const DocumentColumn& column : m_columns.columns())
            parts.push_back({word + column.name, column.get(&m_now), m_fields.widgetOf(column),
                             column.reckoned || column.shownOnly || column.control.isEmpty()});
    }
    bool restorePart(const QString& key, const QString& word, const jet::Value& value) {
        if (!key.startsWith(word))
            return false;
        const QString name = key.mid(word.size());
        m_columns.column(name).set(&now(), value);
        show(name);
        return true;
    }
    /// Shows one column again, after it was set in now().
    void show(QStringView column) { m_fields.show(&m_now, column); }
    /// After the module has emptied the fields.
    void clear() {
        m_now = {};
        m_fields.settle();
    }

    Doc before; ///< what the entry on the screen began with

  private:
    const DocumentColumns<Doc>& m_columns;
    DocumentFields m_fields;
    Doc m_now;
};

} // namespace core
