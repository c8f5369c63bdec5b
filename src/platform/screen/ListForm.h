#pragma once

#include "platform/controls/ListView.h"
#include "platform/screen/Form.h"

class QBoxLayout;

namespace screen {

/// A list of a table's rows with New, Edit, Delete and Close below it, and the same in its context
/// menu. A double click edits.
class ListForm : public Form {
  public:
    void Form_Load() override { reload(); }

    virtual void cmdNew_Click() = 0;
    virtual void cmdEdit_Click() = 0;
    virtual void cmdDelete_Click() = 0;

  protected:
    /// What is selected when the rows were read again: what stands at the same place of the order
    /// on the screen (the last row where the list has become shorter), or the same row if it is
    /// still there.
    enum class Reselect { Place, Row };

    /// `spoken` tells a screen reader what is listed.
    ListForm(const QString& name, const QString& caption, const QString& listName,
             const QString& spoken, std::vector<controls::GridColumn> columns,
             Reselect reselect = Reselect::Place);
    /// A further button behind Delete.
    QPushButton* addButton(const QString& name, const QString& caption);

    /// Shows rows() again.
    void reload();
    /// The rows as they stand; their keys are a letter and the row's number.
    virtual std::vector<controls::ListRow> rows() = 0;
    /// Number of the selected row; 0 if none is selected.
    qint64 selectedNumber() const;
    bool askDelete() const;

  private:
    controls::ListView* m_list;
    QBoxLayout* m_buttons;
    std::vector<QPushButton*> m_commands; ///< in the context menu
    Reselect m_reselect;
};

} // namespace screen
