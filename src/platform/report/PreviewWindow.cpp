#include "platform/report/PreviewWindow.h"

#include "platform/report/Mail.h"
#include "platform/report/PageView.h"
#include "platform/report/ProgressBox.h"
#include "platform/report/ReportError.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Seams.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QSpinBox>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

namespace report {

namespace {

QString zoomText(double percent) {
    return u"%1 %"_s.arg(qRound(percent));
}

} // namespace

PreviewWindow::PreviewWindow(std::shared_ptr<const Document> document, const WindowPlacing& placing)
    : QMainWindow(placing.parent ? placing.parent->window() : nullptr),
      m_document(std::move(document)), m_view(new PageView(m_document, this)),
      m_state(new QLabel(this)), m_message(new QLabel(this)) {
    setObjectName(u"reportPreview"_s);
    setWindowTitle(placing.title);
    setCentralWidget(m_view);
    auto* bar = addToolBar(u"Report"_s);
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    using Standard = QKeySequence;
    bar->addAction(action(u"&Print..."_s, u"print"_s, {Standard::Print}, [this] { print(); }));
    bar->addAction(
        action(u"Save as P&DF..."_s, u"savePdf"_s, {Standard::Save}, [this] { saveAsPdf(); }));
    bar->addAction(action(u"Se&nd..."_s, u"send"_s, {QKeySequence(Qt::CTRL | Qt::Key_E)},
                          [this] { sendByMail(*m_document, this); }));
    bar->addSeparator();
    createNavigation(bar);
    bar->addSeparator();
    createZoom(bar);
    bar->addSeparator();
    createSearch(bar);
    bar->addSeparator();
    bar->addAction(action(u"&Close"_s, u"close"_s, {}, [this] { close(); }));
    statusBar()->addWidget(m_state);
    statusBar()->addWidget(m_message, 1);
    m_view->changed = [this] { showState(); };
    m_view->setFocus();
    if (placing.width > 0 && placing.height > 0)
        setGeometry(placing.left, placing.top, placing.width, placing.height);
    else
        resize(900, 700);
    showState();
}

PreviewWindow* PreviewWindow::open(std::shared_ptr<const Document> document,
                                   const WindowPlacing& placing) {
    auto* window = new PreviewWindow(std::move(document), placing);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->m_behind = QApplication::activeModalWidget() != nullptr;
    window->setAttribute(Qt::WA_ShowWithoutActivating, window->m_behind);
    window->show();
    return window;
}

QAction* PreviewWindow::action(const QString& text, const QString& name, QList<QKeySequence> keys,
                               const std::function<void()>& handler) {
    auto* made = new QAction(text, this);
    made->setObjectName(name);
    made->setShortcuts(keys);
    if (!keys.isEmpty())
        made->setToolTip(u"%1 (%2)"_s.arg(QString(text).remove(u'&'),
                                          keys.front().toString(QKeySequence::NativeText)));
    connect(made, &QAction::triggered, this, handler);
    addAction(made);
    return made;
}

void PreviewWindow::createNavigation(QToolBar* bar) {
    m_backward = {action(u"First"_s, u"firstPage"_s,
                         {QKeySequence(Qt::Key_Home), QKeySequence(Qt::CTRL | Qt::Key_Home)},
                         [this] { m_view->goToPage(0); }),
                  action(u"Previous"_s, u"previousPage"_s, {QKeySequence(Qt::Key_PageUp)},
                         [this] { m_view->goToPage(m_view->currentPage() - 1); })};
    m_forward = {action(u"Next"_s, u"nextPage"_s, {QKeySequence(Qt::Key_PageDown)},
                        [this] { m_view->goToPage(m_view->currentPage() + 1); }),
                 action(u"Last"_s, u"lastPage"_s,
                        {QKeySequence(Qt::Key_End), QKeySequence(Qt::CTRL | Qt::Key_End)},
                        [this] { m_view->goToPage(m_document->pageCount() - 1); })};
    bar->addActions(m_backward);
    m_page = new QSpinBox(bar);
    m_page->setObjectName(u"page"_s);
    m_page->setAccessibleName(u"Page"_s);
    m_page->setRange(1, std::max(1, m_document->pageCount()));
    m_page->setKeyboardTracking(false);
    m_page->setToolTip(u"Go to page"_s);
    connect(m_page, &QSpinBox::valueChanged, this, [this](int page) {
        if (page - 1 != m_view->currentPage())
            m_view->goToPage(page - 1);
    });
    bar->addWidget(m_page);
    bar->addActions(m_forward);
}

void PreviewWindow::createZoom(QToolBar* bar) {
    m_zoom = new QComboBox(bar);
    m_zoom->setObjectName(u"zoom"_s);
    m_zoom->setAccessibleName(u"Zoom"_s);
    m_zoom->setEditable(true);
    m_zoom->setInsertPolicy(QComboBox::NoInsert);
    m_zoom->addItems({u"Fit width"_s, u"Fit page"_s});
    for (const int percent : {50, 75, 100, 125, 150, 200, 300})
        m_zoom->addItem(zoomText(percent));
    connect(m_zoom, &QComboBox::textActivated, this,
            [this](const QString& text) { zoomChosen(text); });
    connect(m_zoom->lineEdit(), &QLineEdit::returnPressed, this, [this] {
        zoomChosen(m_zoom->currentText());
        m_view->setFocus();
    });
    const auto in = [this] { m_view->setZoom(PageView::Zoom::Percent, m_view->percent() * 1.25); };
    const auto out = [this] { m_view->setZoom(PageView::Zoom::Percent, m_view->percent() / 1.25); };
    bar->addAction(action(u"-"_s, u"zoomOut"_s, {QKeySequence::ZoomOut}, out));
    bar->addWidget(m_zoom);
    bar->addAction(action(u"+"_s, u"zoomIn"_s,
                          {QKeySequence::ZoomIn, QKeySequence(Qt::CTRL | Qt::Key_Equal)}, in));
}

void PreviewWindow::createSearch(QToolBar* bar) {
    m_wanted = new QLineEdit(bar);
    m_wanted->setObjectName(u"wanted"_s);
    m_wanted->setAccessibleName(u"Find"_s);
    m_wanted->setPlaceholderText(u"Find"_s);
    m_wanted->setClearButtonEnabled(true);
    m_wanted->setMaximumWidth(200);
    bar->addWidget(m_wanted);
    connect(m_wanted, &QLineEdit::returnPressed, this, [this] { findNext(false); });
    connect(m_wanted, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text.isEmpty()) {
            m_view->clearSearch();
            m_message->clear();
        }
    });
    bar->addAction(action(u"Find &next"_s, u"findNext"_s, {QKeySequence(Qt::Key_F3)},
                          [this] { findNext(false); }));
    action(u"Find previous"_s, u"findPrevious"_s, {QKeySequence(Qt::SHIFT | Qt::Key_F3)},
           [this] { findNext(true); });
    action(u"Find"_s, u"find"_s, {QKeySequence::Find}, [this] {
        m_wanted->setFocus();
        m_wanted->selectAll();
    });
}

void PreviewWindow::zoomChosen(const QString& text) {
    if (text == m_zoom->itemText(0))
        m_view->setZoom(PageView::Zoom::Width);
    else if (text == m_zoom->itemText(1))
        m_view->setZoom(PageView::Zoom::Page);
    else if (const double percent = values::val(text); percent > 0)
        m_view->setZoom(PageView::Zoom::Percent, percent);
    else
        showState();
}

void PreviewWindow::findNext(bool backward) {
    const QString text = m_wanted->text();
    if (text.isEmpty()) {
        m_wanted->setFocus();
        return;
    }
    const bool found = m_view->find(text, backward);
    m_message->setText(found ? QString() : u"\"%1\" was not found."_s.arg(text));
    if (!found)
        screen::beep();
}

void PreviewWindow::showState() {
    const int page = m_view->currentPage();
    const int count = m_document->pageCount();
    m_state->setText(u"Page %1 of %2"_s.arg(page + 1).arg(count));
    const QSignalBlocker quiet(m_page);
    m_page->setValue(page + 1);
    for (auto* one : m_backward)
        one->setEnabled(page > 0);
    for (auto* one : m_forward)
        one->setEnabled(page + 1 < count);
    const QString zoom = m_view->zoom() == PageView::Zoom::Width  ? m_zoom->itemText(0)
                         : m_view->zoom() == PageView::Zoom::Page ? m_zoom->itemText(1)
                                                                  : zoomText(m_view->percent());
    m_zoom->setEditText(zoom);
}

bool PreviewWindow::event(QEvent* event) {
    if (event->type() == QEvent::WindowUnblocked && std::exchange(m_behind, false)) {
        // Behind the dialog's own last word, which brings the window below it forward.
        QTimer::singleShot(0, this, [this] {
            raise();
            activateWindow();
        });
    }
    return QMainWindow::event(event);
}

void PreviewWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape) {
        QMainWindow::keyPressEvent(event);
        return;
    }
    if (!m_view->hasFocus())
        m_view->setFocus();
    else
        close();
}

QString PreviewWindow::suggestedFile() const {
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    return (documents.exists() ? documents : QDir::home())
        .filePath(pdfName(*m_document, windowTitle()));
}

void PreviewWindow::saveAsPdf() {
    QString path =
        screen::seams().saveFile(u"Save as PDF"_s, suggestedFile(), u"PDF files (*.pdf)"_s);
    if (path.isEmpty())
        return;
    if (!path.endsWith(u".pdf"_s, Qt::CaseInsensitive))
        path += u".pdf"_s;
    try {
        ProgressBox progress(u"Saving page %1 ..."_s, windowTitle(), this, m_document->pageCount());
        writePdf(*m_document, path, [&](int pages) { return progress.goOn(pages); });
        m_message->setText(u"Saved as %1"_s.arg(path));
    } catch (const ReportError& error) {
        if (error.code() != codes::cancelled)
            screen::MsgBox(u"The report could not be saved as %1: %2"_s.arg(path, error.detail()),
                           screen::Buttons::Ok, screen::Icon::Critical, windowTitle());
    }
}

void PreviewWindow::print() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(windowTitle());
    const auto& paper = m_document->paper;
    printer.setPageLayout(QPageLayout(QPageSize(paper.size, QPageSize::Millimeter),
                                      QPageLayout::Portrait, QMarginsF()));
    printer.setFullPage(true);
    QPrintDialog dialog(&printer, this);
    dialog.setMinMax(1, m_document->pageCount());
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintPageRange |
                      QAbstractPrintDialog::PrintCollateCopies |
                      QAbstractPrintDialog::PrintShowPageSize);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const int from = printer.fromPage() > 0 ? printer.fromPage() - 1 : 0;
    const int to = printer.toPage() > 0 ? std::min(printer.toPage(), m_document->pageCount())
                                        : m_document->pageCount();
    QPainter painter;
    if (!painter.begin(&printer)) {
        screen::MsgBox(u"The printer could not be started."_s, screen::Buttons::Ok,
                       screen::Icon::Critical, windowTitle());
        return;
    }
    const PagePainter pages(*m_document);
    ProgressBox progress(u"Printing page %1 ..."_s, windowTitle(), this, m_document->pageCount());
    for (int index = from; index < to; ++index) {
        if (index > from)
            printer.newPage();
        pages.paint(painter, m_document->page(index), printer.resolution() / 25.4);
        if (!progress.goOn(index + 1)) {
            printer.abort();
            break;
        }
    }
}

} // namespace report
