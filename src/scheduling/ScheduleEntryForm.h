#pragma once

#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/TextField.h"
#include "platform/controls/TimeField.h"
#include "scheduling/ChartForm.h"
#include "scheduling/Dialogs.h"
#include "scheduling/LoadChart.h"

#include <QHash>

#include <array>

class QCheckBox;
class QGroupBox;
class QLabel;
class QRadioButton;

namespace scheduling {

/// An entry's dates, times and notes, beside the load that the jobs of the period put on the
/// operations of its department: frmScheduleAdd and frmScheduleEdit. The entry itself stands on the
/// chart as it is typed.
class ScheduleEntryForm : public ChartForm, public EntryDialog {
  public:
    std::optional<Entry> ask(const Request& request) override;
    QSize sizeHint() const override { return {980, 620}; }

  protected:
    /// `frameText` stands in front of the department's name.
    ScheduleEntryForm(const char* name, const QString& caption, const QString& frameText);

  private:
    QWidget* entryPane();
    QWidget* notesPane();
    QWidget* infoPane();
    QString statusSelect() const;
    DepartmentOf departmentWanted() const;
    bool mayContinue() const;
    void readDepartment();
    void gatherLoad(std::vector<LoadEntry> saved);
    void showFields(const Entry& entry);
    std::optional<Entry> typed() const;
    void rebuild();
    void showTyped();
    void barClicked(int row, int bar);
    void cmdOK_Click();

    controls::DateField* txtStartDate = nullptr;
    controls::DateField* txtEndDate = nullptr;
    controls::TimeField* ctStartTime = nullptr;
    controls::TimeField* ctEndTime = nullptr;
    controls::MemoField* txtNotes = nullptr;
    std::array<QRadioButton*, 4> m_alignment{}; ///< in the order of TextAlign
    QLabel* lblCurrentJobNo = nullptr;
    QLabel* lblEstHours = nullptr;
    QLabel* lblJobNo = nullptr;
    QLabel* lblStartDate = nullptr;
    QLabel* lblStartTime = nullptr;
    QLabel* lblEndDate = nullptr;
    QLabel* lblEndTime = nullptr;
    QGroupBox* fraView = nullptr;
    QCheckBox* chkViewUnScheduled = nullptr;

    QString m_frameText;
    Request m_request;
    std::optional<Entry> m_result;
    qint64 m_department = 0;
    LoadTable m_base; ///< the load without the entry of the dialog
    std::vector<LoadRow> m_operations;
    std::vector<LoadEntry> m_entries; ///< saved ones, and those of the schedule's own chart
    QHash<QString, Entry> m_byKey;
    gantt::BarId m_typedBar = 0;
};

class frmScheduleAdd : public ScheduleEntryForm {
  public:
    static constexpr char formName[] = "frmScheduleAdd";
    frmScheduleAdd();
};

class frmScheduleEdit : public ScheduleEntryForm {
  public:
    static constexpr char formName[] = "frmScheduleEdit";
    frmScheduleEdit();
};

} // namespace scheduling
