#pragma once

#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"
#include "support/ScreenFixture.h"

/// A bare form to try controls on.
class ControlsTest : public testsupport::ScreenFixture {
  protected:
    QWidget* build() {
        m_tried = new screen::Form(QStringLiteral("frmTry"), QStringLiteral("Try"));
        return m_tried;
    }
    void show() { showInShell(*m_tried); }

  private:
    screen::Form* m_tried = nullptr;
};
