#pragma once

#include "platform/controls/ListView.h"
#include "platform/screen/Form.h"

#include <QTimer>

class QLabel;
class QProgressBar;
class QPushButton;

namespace core {

/// The good backups of the database, and a new one at a press. The work goes on beside everything
/// else, also when the screen is closed.
class frmBackup : public screen::Form {
  public:
    static constexpr const char* formName = "frmBackup";
    frmBackup();
    void Form_Load() override;

  private:
    void cmdBackup_Click();
    void tmrBackup_Timer();
    void fill();
    void showRunning(bool running);

    QLabel* lblFolder;
    controls::ListView* lvwBackups;
    QProgressBar* PB;
    QPushButton* cmdBackup;
    QTimer m_timer;
};

} // namespace core
