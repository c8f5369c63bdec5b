#pragma once

#include "platform/screen/Form.h"

class QTimer;

namespace core {

/// A picture for the first two seconds; any key or click closes it sooner.
class frmSplash : public screen::Form {
  public:
    static constexpr const char* formName = "frmSplash";
    frmSplash();
    void Form_Activate() override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    QTimer* Timer1;
};

} // namespace core
