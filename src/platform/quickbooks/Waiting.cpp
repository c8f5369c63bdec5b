#include "platform/quickbooks/Waiting.h"

#include "platform/quickbooks/Exchange.h"
#include "platform/values/Literals.h"

#include <QApplication>
#include <QEventLoop>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace quickbooks {

namespace {

/// What is done about QuickBooks, with Cancel. Escape and the close box cancel.
class Window : public QWidget {
  public:
    explicit Window(std::function<void()> cancel)
        : QWidget(QApplication::activeWindow(),
                  Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
          m_cancel(std::move(cancel)) {
        setObjectName(u"frmQuickBooksWait"_s);
        setWindowTitle(u"QuickBooks"_s);
        setWindowModality(Qt::ApplicationModal);
        auto* layout = new QVBoxLayout(this);
        m_label = new QLabel(this);
        m_label->setMinimumWidth(320);
        layout->addWidget(m_label);
        auto* bar = new QProgressBar(this);
        bar->setRange(0, 0);
        bar->setTextVisible(false);
        layout->addWidget(bar);
        auto* button = new QPushButton(u"Cancel"_s, this);
        button->setObjectName(u"cmdCancel"_s);
        layout->addWidget(button, 0, Qt::AlignRight);
        QObject::connect(button, &QPushButton::clicked, this, [this] { m_cancel(); });
    }
    void setText(const QString& text) {
        m_label->setText(text);
        setAccessibleName(text);
    }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape)
            m_cancel();
        else
            QWidget::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        m_cancel();
    }

  private:
    std::function<void()> m_cancel;
    QLabel* m_label;
};

} // namespace

/// Swallows keys, clicks and closing everywhere but in the window of the wait.
class Waiting::Blocker : public QObject {
  public:
    explicit Blocker(const Waiting& waiting) : m_waiting(waiting) {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject* object, QEvent* event) override {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
        case QEvent::Drop:
        case QEvent::Close:
            break;
        default:
            return false;
        }
        // A menu's shortcut goes to its action, which is no widget.
        const auto* widget = qobject_cast<QWidget*>(object);
        if (!widget && event->type() != QEvent::Shortcut)
            return false;
        if (widget && m_waiting.m_window && widget->window() == m_waiting.m_window.get())
            return false;
        event->ignore();
        return true;
    }

  private:
    const Waiting& m_waiting;
};

Waiting::Waiting(QString text) : m_text(std::move(text)) {
    m_since.start();
}

Waiting::~Waiting() = default;

void Waiting::setText(const QString& text) {
    m_text = text;
    if (m_window)
        static_cast<Window*>(m_window.get())->setText(text);
}

void Waiting::hide() {
    m_window.reset();
    m_since.restart();
}

void Waiting::showWindow() {
    if (m_window)
        return;
    auto window = std::make_unique<Window>([this] { cancel(); });
    window->setText(m_text);
    window->show();
    m_window = std::move(window);
}

void Waiting::cancel() {
    m_cancelled = true;
    if (m_stop)
        m_stop();
}

Outcome Waiting::exchange(const Door& door, const QByteArray& request) {
    constexpr qint64 patience = 700; // milliseconds until the window comes
    if (m_cancelled)
        return {Outcome::Kind::NotSent, u"You stopped waiting for QuickBooks."_s};
    Exchange exchange(door, request);
    Outcome outcome;
    QEventLoop loop;
    bool ended = false;
    exchange.finished = [&](const Outcome& came) {
        outcome = came;
        ended = true;
        loop.quit();
    };
    QTimer window;
    window.setSingleShot(true);
    QObject::connect(&window, &QTimer::timeout, &window, [this] { showWindow(); });
    window.start(int(std::max<qint64>(0, patience - m_since.elapsed())));
    const Blocker blocker(*this);
    m_stop = [&exchange] { exchange.cancel(); };
    exchange.start();
    if (!ended)
        loop.exec();
    m_stop = {};
    return outcome;
}

} // namespace quickbooks
