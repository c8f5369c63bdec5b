#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <memory>

class QProgressDialog;

namespace report {

/// A box with Cancel over work on pages that takes longer than a second.
class ProgressBox {
  public:
    /// `text` with %1 for the number of pages; `total` of them, or 0 where that isn't known.
    ProgressBox(QString text, QString title, QWidget* parent, int total = 0);
    ~ProgressBox();
    /// To be called now and then; false when the user has pressed Cancel.
    bool goOn(int pages);
    void close();

  private:
    QString m_text, m_title;
    QPointer<QWidget> m_parent;
    int m_total;
    QElapsedTimer m_since;
    std::unique_ptr<QProgressDialog> m_dialog;
};

} // namespace report
