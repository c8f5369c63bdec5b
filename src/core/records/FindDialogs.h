#pragma once

#include "platform/controls/Grid.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

#include <QString>
#include <QStringList>

#include <vector>

class QRadioButton;

namespace core {

/// What the find dialog asks of the found dialog.
class FoundDialog {
  public:
    virtual ~FoundDialog() = default;
    /// Fills the list; false if there is no row.
    virtual bool list(const QString& select) = 0;
    /// The record that was chosen; 0 if the dialog was left without one.
    virtual qint64 chosen() const = 0;
};

/// The find dialog of a record module: a text, and options that say where it is looked for.
class FindForm : public screen::Form {
  public:
    struct Option {
        QString name;
        QString caption;
        QString select; ///< up to the text, which goes in as typed; "*'" ends it
    };
    struct Descriptor {
        QString formName;
        QString title;
        QString prompt;
        std::vector<Option> options;
        QString foundScreen;
        QString moduleScreen;
    };
    explicit FindForm(Descriptor descriptor);

    void cmdFind_Click();

  private:
    Descriptor m_descriptor;
    controls::TextField* txtData;
    std::vector<QRadioButton*> m_options;
};

/// The list of what was found; its first column is the record's number.
class FoundForm : public screen::Form, public FoundDialog {
  public:
    struct Descriptor {
        QString formName;
        QString title;
        QString gridName;
        std::vector<controls::GridColumn> columns;
        QStringList fields; ///< column of the rows for each column of the grid
    };
    explicit FoundForm(Descriptor descriptor);

    bool list(const QString& select) override;
    qint64 chosen() const override { return m_chosen; }

    void cmdSelect_Click();

  private:
    Descriptor m_descriptor;
    controls::Grid* m_grid;
    qint64 m_chosen = 0;
};

} // namespace core
