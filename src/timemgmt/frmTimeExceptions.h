#pragma once

#include "core/records/RecordScreen.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Form.h"
#include "timemgmt/exceptions/ExceptionWatch.h"

#include <QTimer>

class QLabel;
class QPushButton;

namespace timemgmt {

/// All time records that a person must look at. Each line leads to where it is put right, and goes
/// when that is done.
class frmTimeExceptions : public screen::Form, public core::LookupUser {
  public:
    static constexpr char formName[] = "frmTimeExceptions";
    frmTimeExceptions();
    void Form_Load() override;
    bool opensMaximized() const override { return true; }
    void Form_Activate() override;
    /// Time records were written on another screen.
    void refreshLookup(const QString& table) override;

    void cmdOpen_Click();
    void cmdTime_Click();
    void cmdRefresh_Click();

  private:
    ExceptionWatch& watch() const;
    void tmrWatch_Timer();
    void showLines();
    void fillKinds();
    void showState();
    void enableButtons();
    const TimeException* selected() const;
    void showInTime(const TimeException& line);

    controls::ListCombo* cboKind;
    QLabel* lblState;
    controls::ListView* lvwExceptions;
    QPushButton* cmdOpen;
    QPushButton* cmdTime;
    QPushButton* cmdRefresh;
    QTimer m_timer;
    ExceptionWatch::Lines m_lines;
    std::vector<std::size_t> m_shown; ///< of each number in the list's keys, which line it is
    int m_readings = -1;
};

} // namespace timemgmt
