#pragma once

#include "core/Guide.h"

#include <QMainWindow>

class QLineEdit;
class QTextBrowser;

namespace core {

/// The user's guide beside the work: its pages, the way back, and a search over all of them. One
/// window; it stays usable while a dialog is open.
class HelpWindow : public QMainWindow {
  public:
    explicit HelpWindow(const QString& folder);

    /// Shows the page of a screen, the contents where it has none, in the one window.
    static HelpWindow* open(const QString& folder, const QString& screen);

    void showPage(const QString& file);
    QTextBrowser* browser() const { return m_browser; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void search();

    Guide m_guide;
    QTextBrowser* m_browser;
    QLineEdit* m_wanted;
};

} // namespace core
