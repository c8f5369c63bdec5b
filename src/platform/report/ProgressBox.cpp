#include "platform/report/ProgressBox.h"

#include "platform/values/Literals.h"

#include <QApplication>
#include <QProgressDialog>

namespace report {

ProgressBox::ProgressBox(QString text, QString title, QWidget* parent, int total)
    : m_text(std::move(text)), m_title(std::move(title)), m_parent(parent), m_total(total) {
    m_since.start();
}

ProgressBox::~ProgressBox() = default;

bool ProgressBox::goOn(int pages) {
    constexpr int patience = 1000;
    if (!m_dialog) {
        if (m_since.elapsed() < patience)
            return true;
        m_dialog = std::make_unique<QProgressDialog>(m_parent);
        m_dialog->setWindowTitle(m_title);
        m_dialog->setCancelButtonText(u"Cancel"_s);
        m_dialog->setWindowModality(Qt::ApplicationModal);
        m_dialog->setMinimumDuration(0);
        m_dialog->setAutoReset(false);
        m_dialog->setAutoClose(false);
        m_dialog->setRange(0, m_total);
        m_dialog->show();
    }
    m_dialog->setLabelText(m_text.arg(pages));
    m_dialog->setValue(m_total > 0 ? pages : 0);
    // The dialog is modal: nothing but its Cancel is open to the user meanwhile.
    QApplication::processEvents();
    return !m_dialog->wasCanceled();
}

void ProgressBox::close() {
    m_dialog.reset();
}

} // namespace report
