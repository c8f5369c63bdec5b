#pragma once

#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/TimeField.h"
#include "scheduling/ChartForm.h"
#include "scheduling/LoadChart.h"

#include <QHash>

class QCheckBox;
class QGroupBox;
class QLabel;

namespace scheduling {

/// The load of the whole shop on a chart that is only read: by job or by department, for a range of
/// dates. Rows are read page by page as they come into sight.
class frmScheduleView : public ChartForm {
  public:
    static constexpr char formName[] = "frmScheduleView";
    frmScheduleView();

    void Form_Load() override;
    bool Form_QueryUnload() override;

    void cmdStartDateGo_Click();
    void cmdEndDateGo_Click();
    void cmdGotoGo_Click();
    void cmdRefresh_Click();

  private:
    QWidget* rangePane();
    QWidget* optionPane();
    QWidget* gotoPane();
    bool takeRange();
    QStringList selects() const;
    void beginAnew();
    void read();
    void readRows();
    bool readPage(qint64 downTo = 0);
    bool readOn(qint64 downTo = 0);
    JobsWanted jobsWanted(qint64 downTo) const;
    DepartmentsWanted departmentsWanted() const;
    void readMore();
    void addGroup(const LoadGroup& group);
    void addEntries(const std::vector<LoadEntry>& entries, bool byJob);
    void goToRow(qint64 key);
    void barClicked(int row, int bar);

    controls::DateField* txtStartDate = nullptr;
    controls::DateField* txtEndDate = nullptr;
    controls::TimeField* ctStartTime = nullptr;
    controls::TimeField* ctEndTime = nullptr;
    QCheckBox* chkGroup = nullptr;
    QCheckBox* chkJobs = nullptr;
    QCheckBox* chkOp = nullptr;
    controls::DataCombo* dbcJob = nullptr;
    controls::DataCombo* dbcDept = nullptr;
    controls::DateField* txtDate = nullptr;
    QGroupBox* fraInfo = nullptr;
    QLabel* lblJobNo = nullptr;

    QHash<qint64, int> m_headerOf;                 ///< row of a job or department
    QHash<std::pair<qint64, qint64>, int> m_rowOf; ///< of an operation; under its job, or under 0
    QHash<QString, qint64> m_jobOf;                ///< of a bar, by its key
    qint64 m_lastJob = 0;                          ///< where the next page begins
    QString m_lastDepartment;
    bool m_atEnd = false;
    bool m_reading = false;
};

} // namespace scheduling
