#pragma once

#include "platform/screen/Form.h"
#include "purchasing/Dialogs.h"

namespace controls {
class DateField;
class Tree;
} // namespace controls

namespace purchasing {

/// Chooses the lines of a document that go into a new one: a tree of the document, its vendors and
/// their items, in which a click (or Space) takes an item in or leaves it out.
class CopyTreeForm : public screen::Form, public CopyTreeDialog {
  public:
    struct Descriptor {
        QString formName;
        QString caption;
        QString rootWord; ///< in front of the number: "RFQ"
        bool ordered;     ///< the document is an order: one vendor, items by the order's number
        bool oneVendor;   ///< of a request group, only the one whose key is given
        bool asksDate;
    };
    explicit CopyTreeForm(Descriptor descriptor);
    std::optional<Choice> choose(qint64 number, const QString& key) override;

  private:
    void fill(qint64 number, const QString& key);
    void showFolder(const QString& vendor) const;

    Descriptor m_descriptor;
    controls::Tree* tvMain;
    controls::DateField* txtDate = nullptr;
    bool m_ok = false;
};

} // namespace purchasing
