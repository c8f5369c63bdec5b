#include "core/Guide.h"

#include "platform/values/Letters.h"
#include "platform/values/Literals.h"

#include <QRegularExpression>

namespace core {

namespace {

QString first(const QString& html, const QString& pattern) {
    const QRegularExpression expression(pattern, QRegularExpression::DotMatchesEverythingOption);
    return expression.match(html).captured(1);
}

QString plain(QString html) {
    static const QRegularExpression marks(u"<[^>]*>"_s);
    html.replace(marks, u" "_s);
    for (const auto& [entity, sign] :
         {std::pair(u"&lt;"_s, u"<"_s), std::pair(u"&gt;"_s, u">"_s),
          std::pair(u"&nbsp;"_s, u" "_s), std::pair(u"&amp;"_s, u"&"_s)})
        html.replace(entity, sign);
    return html.simplified();
}

/// Some words before and behind the place.
QString excerptAt(const QString& text, qsizetype place) {
    constexpr qsizetype before = 40, length = 120;
    const qsizetype from = place <= before ? 0 : text.lastIndexOf(u' ', place - before) + 1;
    QString excerpt = text.mid(from, length);
    if (from + length < text.size())
        excerpt = excerpt.left(excerpt.lastIndexOf(u' ')) + u" ..."_s;
    return from > 0 ? u"... "_s + excerpt : excerpt;
}

} // namespace

Guide::Guide(const QString& folder) : m_folder(folder) {
    const QDir pages(folder);
    for (const QString& name : pages.entryList({u"*.html"_s}, QDir::Files, QDir::Name)) {
        QFile file(pages.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString html = QString::fromUtf8(file.readAll());
        const QString screens = first(html, u"<meta name=\"screens\" content=\"([^\"]*)\""_s);
        m_pages.push_back({name, plain(first(html, u"<h1>(.*?)</h1>"_s)),
                           plain(first(html, u"</h1>(.*)</body>"_s)),
                           screens.split(u' ', Qt::SkipEmptyParts)});
    }
}

QString Guide::pageOf(const QString& screen) const {
    QString among;
    for (const Page& page : m_pages) {
        if (page.file.compare(screen + u".html"_s, Qt::CaseInsensitive) == 0)
            return page.file;
        if (page.screens.contains(screen, Qt::CaseInsensitive))
            among = page.file;
    }
    return among;
}

std::vector<Guide::Hit> Guide::search(const QString& text) const {
    const QStringList words = text.simplified().split(u' ', Qt::SkipEmptyParts);
    std::vector<Hit> titles, texts;
    if (words.isEmpty())
        return titles;
    for (const Page& page : m_pages) {
        const auto in = [&](const QString& where) {
            return std::all_of(words.begin(), words.end(), [&](const QString& word) {
                return values::containsText(where, word);
            });
        };
        if (!in(page.title + u' ' + page.text))
            continue;
        qsizetype place = -1;
        for (const QString& word : words)
            place = place < 0 ? values::indexOfText(page.text, word) : place;
        Hit hit{page.file, page.title, place < 0 ? QString() : excerptAt(page.text, place)};
        (in(page.title) ? titles : texts).push_back(std::move(hit));
    }
    titles.insert(titles.end(), texts.begin(), texts.end());
    return titles;
}

} // namespace core
