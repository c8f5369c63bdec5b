#pragma once

#include "platform/controls/ListView.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

#include <QString>

#include <optional>
#include <vector>

class QLabel;
class QRadioButton;

namespace core {

/// A list of found records to choose one from.
class FoundDialog {
  public:
    virtual ~FoundDialog() = default;
    /// Fills the list with the rows of a select; false if there is none.
    virtual bool list(const QString& select) = 0;
    /// Shows it: the record that was chosen, nothing if it was left without one.
    virtual std::optional<qint64> pick() = 0;
};

/// What goes to a document asks for: its number, or a part number, whole or a piece of it. Nothing
/// if the user cancelled or entered nothing.
class DocumentFindDialog {
  public:
    virtual ~DocumentFindDialog() = default;
    virtual std::optional<qint64> askNumber() = 0;
    virtual std::optional<QString> askPart() = 0;
};

class FoundForm : public screen::Form, public FoundDialog {
  public:
    struct Column {
        QString title;
        QString field; ///< of the rows; the first one is the record's number
        int characters = 12;
    };
    struct Descriptor {
        QString formName;
        QString title;
        QString listName;
        std::vector<Column> columns;
    };
    explicit FoundForm(Descriptor descriptor);

    bool list(const QString& select) override;
    std::optional<qint64> pick() override;

    void cmdSelect_Click();

  private:
    Descriptor m_descriptor;
    controls::ListView* m_list;
    std::optional<qint64> m_chosen;
};

/// The find dialog of a master's module: a text, and options that say where it is looked for. It
/// stays until a record was gone to.
class RecordFindForm : public screen::Form {
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
    explicit RecordFindForm(Descriptor descriptor);

    void cmdFind_Click();

  private:
    Descriptor m_descriptor;
    controls::TextField* txtData;
    std::vector<QRadioButton*> m_options;
};

/// The find dialog of a document's module.
class DocumentFindForm : public screen::Form, public DocumentFindDialog {
  public:
    struct Descriptor {
        QString formName;
        QString numberCaption;
        QString numberPrompt;
        QString partPrompt;
        values::KeyFilter partKeys = values::keys::name();
    };
    explicit DocumentFindForm(Descriptor descriptor);

    std::optional<qint64> askNumber() override;
    std::optional<QString> askPart() override;

  private:
    std::optional<QString> ask(const QString& caption, const QString& prompt, int limit,
                               const values::KeyFilter& filter);
    Descriptor m_descriptor;
    QLabel* lblPrompt;
    controls::TextField* txtNo;
    bool m_ok = false;
};

/// Makes a pair of find and found dialogs known by their names.
void addFind(const RecordFindForm::Descriptor& find, const FoundForm::Descriptor& found);
void addFind(const DocumentFindForm::Descriptor& find, const FoundForm::Descriptor& found);

} // namespace core
