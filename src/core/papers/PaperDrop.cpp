#include "core/papers/PaperDrop.h"

#include "core/papers/PaperKinds.h"
#include "platform/screen/Form.h"
#include "platform/values/Literals.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QPointer>
#include <QTimer>
#include <QUrl>

namespace core {

namespace {

/// The form below a widget that takes papers; nullptr if there is none.
screen::Form* takerOf(QObject* object) {
    for (QObject* at = object; at; at = at->parent()) {
        auto* form = dynamic_cast<screen::Form*>(at);
        if (form && (paperKindOf(form->name()) || form->name() == u"frmPapers"))
            return form;
    }
    return nullptr;
}

} // namespace

PaperDrop::PaperDrop(QObject* parent, Dropped dropped)
    : QObject(parent), m_dropped(std::move(dropped)) {
    qApp->installEventFilter(this);
}

QStringList PaperDrop::filesOf(const QMimeData* data) {
    QStringList files;
    if (data && data->hasUrls())
        for (const QUrl& url : data->urls())
            if (url.isLocalFile())
                files += url.toLocalFile();
    return files;
}

bool PaperDrop::eventFilter(QObject* object, QEvent* event) {
    const auto type = event->type();
    if ((type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) ||
        !object->isWidgetType())
        return false;
    auto* drop = static_cast<QDropEvent*>(event);
    const QStringList files = filesOf(drop->mimeData());
    screen::Form* form = files.isEmpty() ? nullptr : takerOf(object);
    if (!form)
        return false;
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (type == QEvent::Drop)
        // Where they come from waits for the drop to end.
        QTimer::singleShot(0, this, [this, files, form = QPointer(form)] {
            if (form)
                m_dropped(*form, files);
        });
    return true;
}

} // namespace core
