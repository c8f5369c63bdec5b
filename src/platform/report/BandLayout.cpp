#include "platform/report/BandLayout.h"

#include "platform/report/Barcode.h"

#include <QFileInfo>
#include <QImageReader>

#include <algorithm>

namespace report {

namespace {

constexpr double hair = 0.01; // sums of millimetres are no exact numbers

/// Narrower bars can't be read back from paper.
constexpr double narrowestModule = 0.15;

double bottomOf(const PageItem& item) {
    return item.y + item.h;
}

} // namespace

BandLayout::BandLayout(const ReportFile& file, Document& document)
    : m_file(file), m_document(document) {
    document.title = file.title;
    document.paper = file.paper;
    document.styles = file.styles;
    for (const auto& style : file.styles)
        m_measures.push_back(std::make_unique<TextMeasure>(style));
}

PlacedBand BandLayout::place(const Band& band, const Scope& scope) {
    PlacedBand placed;
    placed.keepTogether = band.keepTogether;
    placed.keepWithNext =
        band.keepWithNext || (band.keepWithNextIf && band.keepWithNextIf->isTrue(scope));
    placed.newPage = band.newPage;
    std::vector<const Element*> order;
    for (const auto& element : band.elements)
        order.push_back(&element);
    std::stable_sort(order.begin(), order.end(),
                     [](const Element* a, const Element* b) { return a->y < b->y; });

    // What an element takes beyond its own height pushes down what begins below it, as far as the
    // white space between them doesn't take it up.
    struct Moved {
        double y;              // as designed
        double designedBottom; // without growth
        double bottom;
        double shift;
    };
    std::vector<Moved> moved;
    double bottom = 0;
    double growth = 0;
    for (const auto* element : order) {
        if (element->showIf && !element->showIf->isTrue(scope))
            continue;
        double shift = 0;
        for (const auto& above : moved) {
            constexpr double sameRow = 2; // a label and its value stay in line
            constexpr double leastGap = 1;
            const double gap = element->y - above.designedBottom;
            if (gap >= -hair)
                shift = std::max(shift, above.bottom + std::min(gap, leastGap) - element->y);
            if (element->y - above.y < sameRow)
                shift = std::max(shift, above.shift);
        }
        Grown grown;
        double designed = element->h;
        switch (element->kind) {
        case Element::Kind::Text: {
            const auto& measure = *m_measures[static_cast<std::size_t>(element->style)];
            if (designed <= 0)
                designed = measure.lineHeight();
            grown = text(*element, element->text.text(scope), designed);
            break;
        }
        case Element::Kind::Barcode:
            grown = bars(*element, element->text.text(scope));
            break;
        case Element::Kind::Picture:
            grown = picture(*element);
            break;
        case Element::Kind::Line:
        case Element::Kind::Box: {
            PageItem item;
            item.kind =
                element->kind == Element::Kind::Line ? PageItem::Kind::Line : PageItem::Kind::Box;
            const auto share = [&](const std::optional<Expression>& of, double otherwise) {
                return of ? std::clamp(of->value(scope).toDouble(), 0.0, 1.0) : otherwise;
            };
            const double from = share(element->from, 0);
            item.x = static_cast<float>(element->w * from);
            item.w = static_cast<float>(element->w * std::max(0.0, share(element->to, 1) - from));
            item.h = static_cast<float>(element->h);
            item.thickness = static_cast<float>(element->thickness);
            item.color = element->color.rgba();
            item.fill = element->fill.isValid() ? element->fill.rgba() : 0;
            item.stretch = element->stretch;
            grown.items.push_back(std::move(item));
            grown.height = element->h;
            break;
        }
        }
        const double taken = std::max(designed, grown.height);
        if (!element->stretch && (shift > 0 || taken > designed + hair)) {
            moved.push_back({element->y, element->y + designed, element->y + shift + taken, shift});
            growth = std::max(growth, shift + taken - designed);
        }
        for (auto& item : grown.items) {
            item.x += static_cast<float>(element->x);
            item.y += static_cast<float>(element->y + shift);
            if (!item.stretch)
                bottom = std::max(bottom, static_cast<double>(bottomOf(item)));
            placed.items.push_back(std::move(item));
        }
    }
    // The designed white space below the last element stays below it.
    double designedBottom = 0;
    for (const auto* element : order) {
        if (!element->stretch)
            designedBottom = std::max(designedBottom, element->y + element->h);
    }
    const double space = growth > 0 ? std::max(0.0, band.height - designedBottom) : 0.0;
    placed.height = std::max(band.height, bottom + std::min(space, 2.0));
    stretch(placed);
    return placed;
}

void BandLayout::stretch(PlacedBand& band) const {
    for (auto& item : band.items) {
        if (item.stretch)
            item.h = static_cast<float>(std::max(0.0, band.height - item.y));
    }
}

BandLayout::Grown BandLayout::text(const Element& element, const QString& text,
                                   double height) const {
    Grown grown;
    if (text.trimmed().isEmpty())
        return grown;
    const auto& measure = *m_measures[static_cast<std::size_t>(element.style)];
    QStringList lines = element.grow ? measure.lines(text, element.w)
                                     : QStringList{measure.shortened(text, element.w)};
    if (element.skipEmptyLines)
        lines.removeIf([](const QString& line) { return line.trimmed().isEmpty(); });
    const double needed = static_cast<double>(lines.size()) * measure.lineHeight();
    double y = std::max(0.0, (height - needed) * element.verticalShare);
    grown.height = needed;
    for (const auto& line : lines) {
        if (!line.isEmpty()) {
            PageItem item;
            item.style = static_cast<quint16>(element.style);
            item.align = element.align;
            item.y = static_cast<float>(y);
            item.h = static_cast<float>(measure.lineHeight());
            const double width = measure.width(line);
            if (line.contains(QChar(pageTotalMark))) {
                item.w = static_cast<float>(element.w);
            } else {
                const double share = element.align == Align::Left     ? 0
                                     : element.align == Align::Center ? 0.5
                                                                      : 1;
                item.x = static_cast<float>((element.w - width) * share);
                item.w = static_cast<float>(width);
            }
            item.text = line;
            grown.items.push_back(std::move(item));
        }
        y += measure.lineHeight();
    }
    return grown;
}

BandLayout::Grown BandLayout::bars(const Element& element, const QString& text) {
    Grown grown;
    if (text.isEmpty())
        return grown;
    const auto pattern = encodeBars(element.symbology, text);
    const bool square = element.symbology == Symbology::Qr;
    // Readers need blank space of ten modules on both sides of bars, of four around a square.
    const double quiet = square ? 4 : 10;
    double module =
        pattern ? std::min(element.module, element.w / (pattern->width + 2 * quiet)) : 0;
    const auto& measure = *m_measures[static_cast<std::size_t>(element.style)];
    const double textHeight = element.showText ? measure.lineHeight() : 0;
    const double barHeight = element.h - textHeight;
    if (pattern && square)
        module = std::min(module, barHeight / pattern->height);
    if (!pattern || module < narrowestModule || barHeight <= 0)
        return this->text(element, text, element.h);

    const double width = pattern->width * module;
    const double share = element.align == Align::Left     ? 0
                         : element.align == Align::Center ? 0.5
                                                          : 1;
    const double x = quiet * module + (element.w - width - 2 * quiet * module) * share;
    PageItem item;
    item.kind = PageItem::Kind::Bars;
    item.text = text;
    item.x = static_cast<float>(x);
    item.w = static_cast<float>(width);
    item.h = static_cast<float>(square ? pattern->height * module : barHeight);
    const double unit = square ? module : barHeight;
    for (const auto& bar : pattern->bars) {
        for (const double value :
             {bar.x() * module, bar.y() * unit, bar.width() * module, bar.height() * unit})
            item.rectangles.push_back(static_cast<float>(value));
    }
    const double barBottom = item.h;
    grown.items.push_back(std::move(item));
    if (element.showText) {
        PageItem label;
        label.style = static_cast<quint16>(element.style);
        label.text = measure.shortened(text, element.w);
        const double labelWidth = measure.width(label.text);
        label.x = static_cast<float>(
            std::clamp(x + (width - labelWidth) / 2, 0.0, std::max(0.0, element.w - labelWidth)));
        label.y = static_cast<float>(barBottom);
        label.w = static_cast<float>(labelWidth);
        label.h = static_cast<float>(measure.lineHeight());
        grown.items.push_back(std::move(label));
    }
    grown.height = element.h;
    return grown;
}

BandLayout::Grown BandLayout::picture(const Element& element) {
    Grown grown;
    auto known = m_pictures.constFind(element.file);
    if (known == m_pictures.constEnd()) {
        QImage image;
        QImageReader reader(QFileInfo(m_file.path).dir().filePath(element.file));
        if (reader.read(&image))
            m_document.pictures.push_back(image);
        // A logo that nobody has put there leaves its place empty.
        const int index = image.isNull() ? -1 : static_cast<int>(m_document.pictures.size()) - 1;
        known = m_pictures.insert(element.file, index);
    }
    if (*known < 0)
        return grown;
    const QSizeF size = QSizeF(m_document.pictures[static_cast<std::size_t>(*known)].size())
                            .scaled(element.w, element.h, Qt::KeepAspectRatio);
    PageItem item;
    item.kind = PageItem::Kind::Picture;
    item.style = static_cast<quint16>(*known);
    item.w = static_cast<float>(size.width());
    item.h = static_cast<float>(size.height());
    grown.items.push_back(std::move(item));
    grown.height = element.h;
    return grown;
}

double PlacedBand::firstPart() const {
    double least = height;
    for (const auto& item : items) {
        if (!item.stretch)
            least = std::min(least, static_cast<double>(bottomOf(item)));
    }
    return least;
}

PlacedBand PlacedBand::split(double room) {
    PlacedBand first;
    PlacedBand rest;
    double top = height;
    for (const auto& item : items) {
        if (!item.stretch && bottomOf(item) > room + hair)
            top = std::min(top, static_cast<double>(item.y));
    }
    if (top >= height) // only blank space lies beyond
        top = room;
    for (auto& item : items) {
        if (item.stretch) {
            PageItem upper = item;
            upper.h = static_cast<float>(std::max(0.0, std::min<double>(item.h, top - item.y)));
            if (item.y < top)
                first.items.push_back(upper);
            item.h =
                static_cast<float>(std::max(0.0, bottomOf(item) - std::max<double>(top, item.y)));
            item.y = static_cast<float>(std::max(0.0, item.y - top));
            rest.items.push_back(std::move(item));
        } else if (bottomOf(item) <= room + hair) {
            first.height = std::max(first.height, static_cast<double>(bottomOf(item)));
            first.items.push_back(std::move(item));
        } else {
            item.y -= static_cast<float>(top);
            rest.items.push_back(std::move(item));
        }
    }
    const bool nothing = std::none_of(first.items.begin(), first.items.end(),
                                      [](const PageItem& item) { return !item.stretch; });
    if (nothing)
        first.items.clear();
    first.height = room;
    rest.height = height - top;
    rest.keepTogether = keepTogether;
    *this = std::move(rest);
    return first;
}

} // namespace report
