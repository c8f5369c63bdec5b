#include "core/HelpWindow.h"

#include "platform/values/Literals.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPointer>
#include <QTextBrowser>
#include <QToolBar>
#include <QWindow>

namespace core {

namespace {

/// Pictures no wider than the page.
class PageBrowser : public QTextBrowser {
  public:
    using QTextBrowser::QTextBrowser;
    QVariant loadResource(int type, const QUrl& name) override {
        const QVariant loaded = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource)
            return loaded;
        QImage picture;
        picture.loadFromData(loaded.toByteArray());
        const int room =
            std::max(200, viewport()->width() - 2 * qRound(document()->documentMargin()));
        return picture.width() > room ? picture.scaledToWidth(room, Qt::SmoothTransformation)
                                      : picture;
    }
};

} // namespace

HelpWindow::HelpWindow(const QString& folder)
    : m_guide(folder), m_browser(new PageBrowser(this)), m_wanted(new QLineEdit(this)) {
    setObjectName(u"helpWindow"_s);
    setWindowTitle(u"Mirsa Help"_s);
    m_browser->setObjectName(u"helpPage"_s);
    m_browser->setAccessibleName(u"Page"_s);
    m_browser->setSearchPaths({folder});
    // The pages' own style is made for browsers; here the palette of the program gives the colours.
    m_browser->document()->setDefaultStyleSheet(u"kbd { font-weight: bold; }"_s);
    m_browser->document()->setDocumentMargin(16);
    setCentralWidget(m_browser);

    auto* bar = addToolBar(u"Help"_s);
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    auto* back = bar->addAction(u"&Back"_s, m_browser, &QTextBrowser::backward);
    back->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Left));
    auto* forward = bar->addAction(u"&Forward"_s, m_browser, &QTextBrowser::forward);
    forward->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Right));
    for (auto* action : {back, forward})
        action->setEnabled(false);
    connect(m_browser, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(m_browser, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    bar->addAction(u"&Contents"_s, this, [this] { showPage(u"index.html"_s); });
    bar->addSeparator();
    m_wanted->setObjectName(u"wanted"_s);
    m_wanted->setAccessibleName(u"Search the guide"_s);
    m_wanted->setPlaceholderText(u"Search the guide"_s);
    m_wanted->setClearButtonEnabled(true);
    bar->addWidget(m_wanted);
    connect(m_wanted, &QLineEdit::returnPressed, this, [this] { search(); });
    auto* find = new QAction(u"Search"_s, this);
    find->setShortcut(QKeySequence::Find);
    connect(find, &QAction::triggered, this, [this] {
        m_wanted->setFocus();
        m_wanted->selectAll();
    });
    addAction(find);
    resize(760, 640);
}

HelpWindow* HelpWindow::open(const QString& folder, const QString& screen) {
    static QPointer<HelpWindow> window;
    if (!window || window->m_guide.folder() != folder) {
        delete window;
        window = new HelpWindow(folder);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->setAttribute(Qt::WA_QuitOnClose, false);
    }
    const QString page = window->m_guide.pageOf(screen);
    window->showPage(page.isEmpty() ? u"index.html"_s : page);
    // A dialog lets only the windows above itself take entries.
    if (!window->isVisible() && QApplication::activeWindow()) {
        QRect place(QPoint(), window->size());
        place.moveCenter(QApplication::activeWindow()->frameGeometry().center());
        window->move(place.topLeft());
    }
    window->winId();
    QWidget* dialog = QApplication::activeModalWidget();
    window->windowHandle()->setTransientParent(dialog ? dialog->windowHandle() : nullptr);
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

void HelpWindow::showPage(const QString& file) {
    m_browser->setSource(QUrl::fromLocalFile(QDir(m_guide.folder()).filePath(file)));
    m_browser->setFocus();
}

void HelpWindow::search() {
    const QString text = m_wanted->text().simplified();
    if (text.isEmpty())
        return;
    const std::vector<Guide::Hit> hits = m_guide.search(text);
    QString html =
        u"<h1>%1</h1>"_s.arg(hits.empty() ? u"Nothing was found for %1"_s.arg(text.toHtmlEscaped())
                                          : u"Pages with %1"_s.arg(text.toHtmlEscaped()));
    for (const Guide::Hit& hit : hits)
        html += u"<p><a href=\"%1\">%2</a><br>%3</p>"_s.arg(hit.file, hit.title.toHtmlEscaped(),
                                                            hit.excerpt.toHtmlEscaped());
    m_browser->setHtml(html);
    m_browser->setFocus();
    // Enter follows the first.
    m_browser->moveCursor(QTextCursor::Start);
    if (!hits.empty()) {
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QApplication::sendEvent(m_browser, &tab);
    }
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QMainWindow::keyPressEvent(event);
}

} // namespace core
