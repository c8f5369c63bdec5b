#pragma once

#include "platform/controls/DateField.h"
#include "scheduling/ChartForm.h"
#include "scheduling/ChartLoad.h"
#include "scheduling/JobSelection.h"
#include "scheduling/MultiMove.h"
#include "scheduling/ScheduleChart.h"

#include <memory>

class QCheckBox;
class QLabel;
class QRadioButton;

namespace controls {
class DropMenu;
}

namespace scheduling {

/// The job scheduler: the routing of one job, or of all jobs of a customer's purchase order, with
/// its dated entries on a chart. Nothing reaches the database until the save.
class frmSchedule : public ChartForm {
  public:
    static constexpr char formName[] = "frmSchedule";
    frmSchedule();

    void Form_Load() override;
    bool Form_QueryUnload() override;

    void cmdEdit_Click();
    void cmdSave_Click();
    void cmdCancel_Click();
    void cmdAddEntry_Click();
    void cmdEditEntry_Click();
    void cmdDeleteEntry_Click();
    void cmdFit_Click();
    void cmdUndo_Click();
    void cmdRedo_Click();
    void cmdViewer_Click();
    void cmdQryRpt_Click();
    void cmdQuery_Click();

  protected:
    /// Undo and redo in the date fields are those of the chart.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    // Layout
    QWidget* datesPane();
    QWidget* viewPane();
    QWidget* movePane();
    void makeButtons(QBoxLayout* inside);
    void wire();
    void wireChart();

    // Showing
    void show();
    void show(const std::vector<ScheduledJob>& jobs);
    void showLooks(const ScheduledJob& job);
    void showDates(const Limits& limits);
    void showRange(const Limits& limits);
    void setMode(bool editing);
    void arrange();
    void dateChanged();
    void setDates(const Limits& dates);
    QHash<qint64, Limits> limitsNow() const;
    void followLoad();

    // Entries
    MultiMove multiMove() const;
    bool mayEdit(int row, int bar) const;
    std::vector<Entry> shownEntries() const;
    void editEntry(int row, int bar);
    void openMenu(const QPoint& place);
    bool save();

    JobSelection* fraSelect;
    QLabel* lblDateIn = nullptr;
    QLabel* lblDueDate = nullptr;
    controls::DateField* txtJobDateIn = nullptr;
    controls::DateField* txtJobDueDate = nullptr;
    controls::DateField* txtLockDateIn = nullptr;
    controls::DateField* txtLockDueDate = nullptr;
    QRadioButton* optDate = nullptr;
    QRadioButton* optSeq = nullptr;
    QCheckBox* chkMultiMove = nullptr;
    QCheckBox* chkMultiResize = nullptr;
    controls::DropMenu* ctDropMenu1;

    /// A visit to a date field is one step of the history, whatever is typed in it.
    struct DateStep {
        Limits before, after;
    };

    ScheduleChart m_chart;
    ChartLoad m_load;
    std::vector<std::pair<qint64, Limits>> m_limits; ///< as they stand in the jobs
    Limits m_dates;                                  ///< of the fields
    std::shared_ptr<DateStep> m_typing;              ///< while somebody is in one of them
    bool m_editing = false;
    bool m_showing = false;
};

} // namespace scheduling
