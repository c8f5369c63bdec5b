#include "jobs/StatusPicture.h"

#include "platform/values/Literals.h"

#include <QPainter>
#include <QPixmap>

namespace jobs {

namespace {

struct Look {
    const char16_t* words;
    QRgb colour; ///< 0: an outline alone
    const char16_t* mark;
};

Look lookOf(QChar status) {
    switch (status.toUpper().unicode()) {
    case u'A':
        return {u"Active", 0xff2e9e44, u"A"};
    case u'D':
        return {u"Suspended", 0xffc77700, u"D"};
    case u'F':
        return {u"Finished", 0xff2a66c8, u"F"};
    case u'R':
        return {u"Status R", 0xff00838f, u"R"};
    case u'W':
        return {u"Status W", 0xff8a6d00, u"W"};
    case u'Z':
        return {u"Status Z", 0xff7b3fa0, u"Z"};
    default:
        return {u"Not started", 0, u""};
    }
}

QIcon draw(const Look& look, bool round) {
    constexpr int size = 32;
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF place(3, 3, size - 6, size - 6);
    const QColor colour = look.colour == 0 ? QColor(Qt::gray) : QColor::fromRgb(look.colour);
    painter.setPen(QPen(colour, 2.5));
    painter.setBrush(look.colour == 0 ? QBrush(Qt::NoBrush) : QBrush(colour));
    if (round)
        painter.drawEllipse(place);
    else
        painter.drawRect(place);
    QFont font = painter.font();
    font.setPixelSize(18);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(place, Qt::AlignCenter, QString::fromUtf16(look.mark));
    painter.end();
    return QIcon(picture);
}

} // namespace

std::pair<QIcon, QString> statusPicture(const estimating::OperRow& row) {
    const QChar letter = row.status.isEmpty() ? QChar(u' ') : row.status.at(0).toUpper();
    const Look look = lookOf(letter);
    QString words = QString::fromUtf16(look.words);
    if (!row.inhouse)
        words += u", outside contractor"_s;
    return {draw(look, row.inhouse), words};
}

} // namespace jobs
