#pragma once

#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"
#include "support/ScreenFixture.h"

/// A bare form to try controls on.
class ControlsTest : public testsupport::ScreenFixture {
  protected:
    QWidget* build() {
        m_tried = new screen::Form(u"frmTry"_s, u"Try"_s);
        return m_tried;
    }
    void show() { showInShell(*m_tried); }

  private:
    screen::Form* m_tried = nullptr;
};
