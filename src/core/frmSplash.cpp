#include "core/frmSplash.h"

#include "core/ToolIcons.h"
#include "platform/values/Literals.h"

#include <QPainter>
#include <QTimer>

namespace core {

frmSplash::frmSplash() : Form(QString::fromLatin1(formName), u"Mirsa"_s) {
    setFixedSize(480, 280);
    setWindowFlag(Qt::FramelessWindowHint);
    setFocusPolicy(Qt::StrongFocus);
    Timer1 = new QTimer(this);
    Timer1->setObjectName(u"Timer1"_s);
    Timer1->setSingleShot(true);
    Timer1->setInterval(2000);
    connect(Timer1, &QTimer::timeout, this, [this] { unload(); });
}

void frmSplash::Form_Activate() {
    setFocus();
    Timer1->start();
}

void frmSplash::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, height());
    sky.setColorAt(0, QColor(0x1f3b57));
    sky.setColorAt(1, QColor(0x3f7196));
    painter.fillRect(rect(), sky);
    painter.drawPixmap(QRect(40, 70, 128, 128), programIcon().pixmap(128, 128));
    painter.setPen(Qt::white);
    QFont title = font();
    title.setPixelSize(44);
    title.setBold(true);
    painter.setFont(title);
    painter.drawText(QRect(196, 80, 270, 60), Qt::AlignLeft | Qt::AlignVCenter, u"Mirsa"_s);
    title.setPixelSize(20);
    title.setBold(false);
    painter.setFont(title);
    painter.drawText(QRect(198, 144, 270, 30), Qt::AlignLeft | Qt::AlignVCenter,
                     u"Project Manager"_s);
}

void frmSplash::keyPressEvent(QKeyEvent*) {
    unload();
}

void frmSplash::mousePressEvent(QMouseEvent*) {
    unload();
}

void frmSplash::mouseReleaseEvent(QMouseEvent*) {
    unload();
}

} // namespace core
