#include "platform/controls/Splitter.h"

#include "platform/controls/Look.h"
#include "platform/system/Remembered.h"
#include "platform/values/Literals.h"

namespace controls {

Splitter::Splitter(Qt::Orientation orientation, QWidget* parent) : QSplitter(orientation, parent) {
    setChildrenCollapsible(false);
    connect(this, &QSplitter::splitterMoved, this, [this] {
        const QString name = place();
        if (!name.isEmpty())
            platform::remember(name, saveState());
    });
}

QString Splitter::place() const {
    const QString screen = screenName(this);
    return screen.isEmpty() ? QString() : u"splitters/"_s + screen + u'/' + objectName().toLower();
}

void Splitter::showEvent(QShowEvent* event) {
    QSplitter::showEvent(event);
    if (m_restored)
        return;
    m_restored = true;
    const QByteArray kept = platform::remembered(place()).toByteArray();
    if (!kept.isEmpty())
        restoreState(kept);
}

} // namespace controls
