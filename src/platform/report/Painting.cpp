#include "platform/report/Painting.h"

#include "platform/report/ReportError.h"
#include "platform/report/TextMeasure.h"
#include "platform/values/Literals.h"

#include <QFontMetricsF>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

namespace report {

PagePainter::PagePainter(const Document& document) : m_document(document) {
    for (const auto& style : document.styles) {
        m_fonts.push_back(fontOf(style));
        m_ascents.push_back(QFontMetricsF(m_fonts.back()).ascent() / pixelsPerMm);
    }
}

double PagePainter::textX(const PageItem& item) const {
    if (item.align == Align::Left)
        return item.x;
    const double width =
        QFontMetricsF(m_fonts[item.style]).horizontalAdvance(item.text) / pixelsPerMm;
    return item.x + (item.w - width) * (item.align == Align::Center ? 0.5 : 1);
}

QRectF PagePainter::textRect(const PageItem& item, qsizetype from, qsizetype length) const {
    const QFontMetricsF metrics(m_fonts[item.style]);
    const double before = metrics.horizontalAdvance(item.text.left(from)) / pixelsPerMm;
    const double width = metrics.horizontalAdvance(item.text.mid(from, length)) / pixelsPerMm;
    return {textX(item) + before, item.y, width, item.h};
}

void PagePainter::paint(QPainter& painter, const Page& page, double unitsPerMm) const {
    painter.save();
    painter.scale(unitsPerMm / pixelsPerMm, unitsPerMm / pixelsPerMm);
    painter.setBrush(Qt::NoBrush);
    const auto px = [](double mm) { return mm * pixelsPerMm; };
    int style = -1;
    QRgb ink = 0;
    const auto useInk = [&](const QColor& color) {
        if (ink != color.rgba())
            painter.setPen(color);
        ink = color.rgba();
    };
    for (const auto& item : page.items) {
        const QRectF place(px(item.x), px(item.y), px(item.w), px(item.h));
        switch (item.kind) {
        case PageItem::Kind::Text:
            if (style != item.style) {
                style = item.style;
                painter.setFont(m_fonts[item.style]);
            }
            useInk(m_document.styles[item.style].color);
            painter.drawText(QPointF(px(textX(item)), px(item.y + m_ascents[item.style])),
                             item.text);
            break;
        case PageItem::Kind::Line:
            // As a filled strip: all devices agree on where it lies.
            painter.fillRect(QRectF(px(item.x), px(item.y), px(std::max(item.w, item.thickness)),
                                    px(std::max(item.h, item.thickness))),
                             QColor::fromRgba(item.color));
            break;
        case PageItem::Kind::Box:
            if (item.fill != 0)
                painter.fillRect(place, QColor::fromRgba(item.fill));
            if (item.thickness > 0) {
                painter.setPen(QPen(QColor::fromRgba(item.color), px(item.thickness), Qt::SolidLine,
                                    Qt::SquareCap, Qt::MiterJoin));
                painter.drawRect(place);
                ink = 0;
            }
            break;
        case PageItem::Kind::Picture:
            painter.drawImage(place, m_document.pictures[item.style]);
            break;
        case PageItem::Kind::Scan:
            painter.drawImage(place, scan(item.picture));
            break;
        case PageItem::Kind::Bars:
            for (std::size_t index = 0; index + 3 < item.rectangles.size(); index += 4) {
                const float* bar = &item.rectangles[index];
                painter.fillRect(
                    QRectF(px(item.x + bar[0]), px(item.y + bar[1]), px(bar[2]), px(bar[3])),
                    Qt::black);
            }
            break;
        }
    }
    painter.restore();
}

/// What was painted last is likely painted again, while somebody scrolls.
QImage PagePainter::scan(const QByteArray& picture) const {
    if (const QImage* known = m_scans.object(picture))
        return *known;
    QImage made = QImage::fromData(picture);
    m_scans.insert(picture, new QImage(made), made.sizeInBytes());
    return made;
}

void writePdf(const Document& document, QIODevice& device,
              const std::function<bool(int pages)>& progress) {
    QPdfWriter writer(&device);
    writer.setTitle(document.title);
    writer.setCreator(u"Mirsa Project Manager"_s);
    writer.setPageLayout(QPageLayout(QPageSize(document.paper.size, QPageSize::Millimeter),
                                     QPageLayout::Portrait, QMarginsF()));
    constexpr int dotsPerInch = 600;
    writer.setResolution(dotsPerInch);
    QPainter painter;
    if (!painter.begin(&writer))
        throw ReportError(codes::fileError, device.errorString());
    const PagePainter pages(document);
    for (int index = 0; index < document.pageCount(); ++index) {
        if (index > 0 && !writer.newPage())
            throw ReportError(codes::fileError, device.errorString());
        pages.paint(painter, document.page(index), dotsPerInch / 25.4);
        if (progress && index % 20 == 19 && !progress(index + 1))
            throw ReportError(codes::cancelled, u"Cancelled"_s);
    }
    painter.end();
}

void writePdf(const Document& document, const QString& path,
              const std::function<bool(int pages)>& progress) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw ReportError(codes::fileError, file.errorString());
    writePdf(document, file, progress);
    if (!file.commit())
        throw ReportError(codes::fileError, file.errorString());
}

} // namespace report
