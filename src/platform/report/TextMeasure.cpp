#include "platform/report/TextMeasure.h"

#include "platform/report/Expression.h"
#include "platform/values/Literals.h"

#include <algorithm>

namespace report {

QFont fontOf(const Style& style) {
    QFont font;
    if (style.family.isEmpty())
        font.setFamilies({u"Arial"_s, u"Liberation Sans"_s, u"DejaVu Sans"_s});
    else
        font.setFamily(style.family);
    font.setPixelSize(std::max(1, qRound(style.size * 25.4 / 72 * pixelsPerMm)));
    font.setBold(style.bold);
    font.setItalic(style.italic);
    font.setKerning(false);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

TextMeasure::TextMeasure(const Style& style)
    : m_metrics(fontOf(style)), m_lineHeight(m_metrics.lineSpacing() / pixelsPerMm),
      m_ascent(m_metrics.ascent() / pixelsPerMm) {
    for (std::size_t letter = 0; letter < m_advances.size(); ++letter) {
        const QChar c(static_cast<char16_t>(letter));
        m_advances[letter] =
            c.isPrint() ? static_cast<float>(m_metrics.horizontalAdvance(c) / pixelsPerMm) : 0;
    }
}

double TextMeasure::width(const QString& text) const {
    return width(QStringView(text));
}

double TextMeasure::width(QStringView text) const {
    double sum = 0;
    for (const QChar c : text) {
        if (c.unicode() == pageTotalMark)
            sum += 4.0 * m_advances[u'0'];
        else if (c.unicode() < m_advances.size())
            sum += m_advances[c.unicode()];
        else
            return m_metrics.horizontalAdvance(text.toString()) / pixelsPerMm; // may join letters
    }
    return sum;
}

QStringList TextMeasure::lines(const QString& text, double width) const {
    QStringList result;
    QString clean = text;
    clean.replace(u"\r\n"_s, u"\n"_s);
    clean.replace(u'\r', u'\n');
    clean.replace(u'\t', u"    "_s);
    while (clean.endsWith(u'\n') || clean.endsWith(u' '))
        clean.chop(1);
    for (const auto paragraph : QStringView(clean).split(u'\n'))
        wrap(paragraph, width, result);
    return result;
}

void TextMeasure::wrap(QStringView paragraph, double width, QStringList& lines) const {
    // Widths add up from rounded numbers: what fills its line to the last hair still fits.
    const double room = width + 0.01;
    while (this->width(paragraph) > room) {
        double used = 0;
        qsizetype end = 0;
        qsizetype breakAt = 0; // behind the last place where the line may end
        const bool simple = std::all_of(paragraph.begin(), paragraph.end(), [this](QChar c) {
            return c.unicode() < m_advances.size();
        });
        for (; end < paragraph.size(); ++end) {
            const QChar c = paragraph[end];
            used = simple ? used + m_advances[c.unicode()] : this->width(paragraph.left(end + 1));
            if (used > room && !c.isSpace())
                break;
            const bool mayBreak = c.isSpace() || ((c == u'-' || c == u'/') && end > 0);
            if (mayBreak)
                breakAt = end + 1;
        }
        qsizetype cut = breakAt > 0 ? breakAt : std::max<qsizetype>(1, end);
        if (breakAt == 0 && cut < paragraph.size() && paragraph[cut].isLowSurrogate())
            cut += cut > 1 ? -1 : 1;
        QStringView line = paragraph.left(cut);
        while (!line.isEmpty() && line.back().isSpace())
            line.chop(1);
        if (!line.isEmpty() || lines.isEmpty())
            lines.append(line.toString());
        paragraph = paragraph.mid(cut);
        while (!paragraph.isEmpty() && paragraph.front().isSpace())
            paragraph = paragraph.mid(1);
        if (paragraph.isEmpty())
            return;
    }
    lines.append(paragraph.toString());
}

QString TextMeasure::shortened(const QString& text, double width) const {
    QString line = text;
    line.replace(u'\r', QString());
    line.replace(u'\n', u' ');
    line.replace(u'\t', u' ');
    if (this->width(line) <= width + 0.01)
        return line;
    const QChar ellipsis(0x2026);
    while (!line.isEmpty() && this->width(line + ellipsis) > width)
        line.chop(1);
    return line.trimmed() + ellipsis;
}

} // namespace report
