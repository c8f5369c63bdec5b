#pragma once

#include "core/journal/JournalSearch.h"
#include "platform/screen/Form.h"

class QBoxLayout;
class QLabel;

namespace controls {
class Grid;
}

namespace core {

/// Changes of records in a grid, the latest first, and their report: what the search of the journal
/// and the history of one record share.
class JournalForm : public screen::Form {
  protected:
    JournalForm(const QString& name, const QString& caption);
    /// The grid, and below it Print and Close; a member puts what it has above.
    void makeList(QBoxLayout* outside, QPushButton* first = nullptr);
    /// Looks for changes and shows them.
    void showChanges(const JournalCriteria& criteria);

    /// What is printed above them.
    QString m_heading;
    bool m_showMoney = false;

  private:
    void cmdPrint_Click();

    controls::Grid* sprJournal;
    QLabel* lblShown;
    std::vector<JournalLine> m_lines;
};

} // namespace core
