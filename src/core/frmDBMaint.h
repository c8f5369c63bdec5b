#pragma once

#include "platform/screen/Form.h"

class QAction;
class QLabel;
class QPushButton;

namespace core {

/// What others ask of the maintenance screen.
class Maintenance {
  public:
    virtual ~Maintenance() = default;
    /// "Compact" or "Repair"; shows the dialog.
    virtual void ShowForm(const QString& mode) = 0;
};

/// Compacts or repairs the one database while the program runs. On a server it does what that
/// engine offers for the same purpose.
class frmDBMaint : public screen::Form, public Maintenance {
  public:
    static constexpr const char* formName = "frmDBMaint";
    frmDBMaint();
    void Form_Load() override;
    void ShowForm(const QString& mode) override;

  private:
    void setMode(const QString& mode);
    void cmdRun_Click();
    bool closeModules();
    void showWaiting(bool waiting);
    void runOnFile();
    void runOnServer() const;

    QString m_mode;
    QLabel* lblProcess;
    QLabel* picWait;
    QPushButton* cmdRun;
    QPushButton* cmdCancel;
    QAction* mnuCompact;
    QAction* mnuRepair;
};

} // namespace core
