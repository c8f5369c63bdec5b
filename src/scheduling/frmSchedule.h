#pragma once

#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/gantt/LoadStrip.h"
#include "platform/screen/Form.h"
#include "scheduling/Load.h"
#include "scheduling/MultiMove.h"
#include "scheduling/ScheduleChart.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace controls {
class DropMenu;
}

namespace scheduling {

/// The job scheduler: the routing of one job, or of all jobs of a customer's purchase order, with
/// its dated entries on a chart. Nothing reaches the database until the save.
class frmSchedule : public screen::Form {
  public:
    static constexpr char formName[] = "frmSchedule";
    frmSchedule();
    QSize sizeHint() const override { return {1180, 640}; }

    void Form_Load() override;
    bool Form_QueryUnload() override;

    void cmdEdit_Click();
    void cmdSave_Click();
    void cmdCancel_Click();
    void cmdAddEntry_Click();
    void cmdEditEntry_Click();
    void cmdDeleteEntry_Click();
    void cmdFit_Click();
    void cmdViewer_Click();
    void cmdQryRpt_Click();
    void cmdQuery_Click();

  private:
    // Layout
    QWidget* selectionPane();
    QWidget* datesPane();
    QWidget* viewPane();
    QWidget* movePane();
    void makeButtons(QBoxLayout* inside);
    void wire();
    void wireChart();

    // What is chosen
    qint64 customer() const;
    qint64 jobNo() const;
    QString order() const;
    bool isChosen() const;
    bool byOrder() const;
    void showCustomer(qint64 custId);
    void customerChosen();
    void optShow_Click();

    // Showing
    void show();
    void showJob();
    void showOrder();
    void showNothing();
    void showLooks(const ScheduledJob& job);
    void showDates(const Limits& limits);
    void setMode(bool editing);
    void arrange();
    void dateChanged();
    QHash<qint64, Limits> limitsNow() const;
    void readPlanned();
    LoadTable loadOfOthers(qint64 alone) const;
    void showLoad();

    // Entries
    MultiMove multiMove() const;
    bool mayEdit(int row, int bar) const;
    std::vector<Entry> shownEntries() const;
    void editEntry(int row, int bar);
    void openMenu(const QPoint& place);
    bool save();

    QRadioButton* optJobNo = nullptr;
    QRadioButton* optJobPO = nullptr;
    controls::DataCombo* dbcCustomer = nullptr;
    controls::DataCombo* dbcJobNo = nullptr;
    controls::DataCombo* dbcJobPO = nullptr;
    QLineEdit* txtCustomerNo = nullptr;
    QLabel* lblDateIn = nullptr;
    QLabel* lblDueDate = nullptr;
    controls::DateField* txtJobDateIn = nullptr;
    controls::DateField* txtJobDueDate = nullptr;
    controls::DateField* txtLockDateIn = nullptr;
    controls::DateField* txtLockDueDate = nullptr;
    controls::ListCombo* cmbSizes = nullptr;
    controls::ListCombo* cmbRulerDiv = nullptr;
    QRadioButton* optDate = nullptr;
    QRadioButton* optSeq = nullptr;
    QCheckBox* chkMultiMove = nullptr;
    QCheckBox* chkMultiResize = nullptr;
    QWidget* fraSelect = nullptr;
    gantt::ChartView* ctSchedule;
    gantt::LoadStrip* ctLoad;
    controls::DropMenu* ctDropMenu1;

    ScheduleChart m_chart;
    Capacity m_capacity;
    LoadTable m_others; ///< what the jobs that are not on the chart have planned
    std::vector<std::pair<qint64, Limits>> m_limits; ///< as they stand in the jobs
    bool m_editing = false;
    bool m_showing = false;
};

} // namespace scheduling
