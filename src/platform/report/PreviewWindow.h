#pragma once

#include "platform/report/Report.h"

#include <QMainWindow>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;
class QToolBar;

namespace report {

class PageView;

/// A finished report on the screen: pages, zoom, search, printing, PDF. Modeless; it belongs to the
/// main window of the window that called for it and goes with it.
class PreviewWindow : public QMainWindow {
  public:
    PreviewWindow(std::shared_ptr<const Document> document, const WindowPlacing& placing);
    /// Makes and shows one, which deletes itself when it is closed. Behind a dialog it waits and
    /// comes to the front when that has gone.
    static PreviewWindow* open(std::shared_ptr<const Document> document,
                               const WindowPlacing& placing);

    /// Asks for a file and saves the pages as a PDF.
    void saveAsPdf();
    /// What the PDF is called until the user says otherwise: the document's name, in his documents.
    QString suggestedFile() const;
    /// Asks for a printer and prints the pages chosen there.
    void print();
    PageView* view() const { return m_view; }

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QAction* action(const QString& text, const QString& name, QList<QKeySequence> keys,
                    const std::function<void()>& handler);
    void createNavigation(QToolBar* bar);
    void createZoom(QToolBar* bar);
    void createSearch(QToolBar* bar);
    void zoomChosen(const QString& text);
    void findNext(bool backward);
    void showState();

    std::shared_ptr<const Document> m_document;
    PageView* m_view;
    QSpinBox* m_page = nullptr;
    QComboBox* m_zoom = nullptr;
    QLineEdit* m_wanted = nullptr;
    QLabel* m_state;
    QLabel* m_message;
    QList<QAction*> m_backward, m_forward;
    bool m_behind = false; ///< opened while a dialog was in front
};

} // namespace report
