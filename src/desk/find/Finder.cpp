#include "desk/find/Finder.h"

#include "desk/find/FindKinds.h"
#include "desk/find/RecordTexts.h"
#include "platform/jet/Native.h"
#include "platform/rows/Fold.h"
#include "platform/values/Literals.h"

#include <QFile>
#include <QStringList>

#include <algorithm>

namespace desk {

namespace {

constexpr int mostCandidates = 40; ///< of a kind and a way of looking
constexpr int mostShown = 12;      ///< of a kind
constexpr int latestRows = 300;    ///< of a kind, read again with each change
constexpr int mostNew = 5000;      ///< beyond what the index has

QByteArray literal(const QString& text) {
    return '\'' + QString(text).replace(u'\'', u"''"_s).toUtf8() + '\'';
}

/// A text for LIKE and ILIKE, its own signs kept from meaning anything.
QByteArray pattern(const QString& text, bool anywhere) {
    QString made = text;
    made.replace(u'\\', u"\\\\"_s).replace(u'%', u"\\%"_s).replace(u'_', u"\\_"_s);
    return literal((anywhere ? u"%"_s : QString()) + made + u'%') + " ESCAPE '\\'";
}

/// The first letters as a range of an index without regard to case: LIKE with ESCAPE has none.
QByteArray beginsWith(const QByteArray& column, const QString& text) {
    return column + " >= " + literal(text) + " AND " + column + " < " +
           literal(text + QChar(0xFFFD));
}

bool holds(const QByteArray& text, const std::vector<QByteArray>& words) {
    return std::all_of(words.begin(), words.end(),
                       [&](const QByteArray& word) { return text.contains(word); });
}

/// How well a record meets what was typed.
int scoreOf(const std::vector<QByteArray>& texts, const QByteArray& typed,
            const std::vector<QByteArray>& words, bool byNumber) {
    if (byNumber)
        return 1000;
    int best = 0;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const QByteArray& text = texts[i];
        int score = 0;
        if (text == typed)
            score = 900;
        else if (text.startsWith(typed))
            score = 700;
        else if (text.contains(' ' + typed) || text.contains('\n' + typed))
            score = 500;
        else if (text.contains(typed))
            score = 400;
        else if (std::any_of(words.begin(), words.end(),
                             [&](const QByteArray& word) { return text.contains(word); }))
            score = 300;
        if (score > 0)
            best = std::max(best, score - 10 * static_cast<int>(i));
    }
    return best;
}

/// The line that holds most of the words.
QString lineWith(const QStringList& texts, const std::vector<QByteArray>& words) {
    QString best;
    std::ptrdiff_t most = 0;
    for (const QString& text : texts) {
        for (const QString& line : text.split(u'\n', Qt::SkipEmptyParts)) {
            const QByteArray searched = rows::folded(line);
            const auto here =
                std::count_if(words.begin(), words.end(),
                              [&](const QByteArray& word) { return searched.contains(word); });
            if (here > most) {
                most = here;
                best = line.simplified();
            }
        }
    }
    constexpr qsizetype longest = 120;
    return best.size() > longest ? best.left(longest) + u"..."_s : best;
}

/// Selects of two numbers as one, each with its own most rows.
QByteArray joined(const std::vector<QByteArray>& selects) {
    QByteArray all;
    for (std::size_t i = 0; i < selects.size(); ++i)
        all += (i == 0 ? "SELECT * FROM (" : " UNION ALL SELECT * FROM (") + selects[i] + ") AS s" +
               QByteArray::number(static_cast<int>(i));
    return all;
}

} // namespace

Finder::Keys Finder::candidates(const QString& text, const std::vector<QByteArray>& words,
                                const QSet<int>& kinds) {
    const bool server = m_shop.isServer();
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    const QByteArray most = " LIMIT " + QByteArray::number(mostCandidates);
    const QStringList plain = text.split(u' ', Qt::SkipEmptyParts);
    const bool hasPieces = std::any_of(plain.begin(), plain.end(),
                                       [](const QString& word) { return word.size() >= 3; });
    std::vector<QByteArray> selects;
    for (const int at : kinds) {
        const FindKind& kind = findKinds()[static_cast<std::size_t>(at)];
        const QByteArray head = "SELECT " + QByteArray::number(at) + " AS kind, ";
        if (isNumber && number > 0 && number <= std::numeric_limits<qint32>::max())
            selects.push_back(head + kind.key + " AS id FROM " + kind.table + " WHERE " + kind.key +
                              " = " + QByteArray::number(number));
        for (const FindKind::Exact& exact : kind.exact)
            selects.push_back(
                head + exact.key + " AS id FROM " + exact.table + " WHERE " +
                (server ? exact.column + " = " + literal(text) : beginsWith(exact.column, text)) +
                " ORDER BY " + exact.column + most);
        if (!server)
            continue;
        for (const FindKind::Pieces& pieces : kind.pieces) {
            QByteArray where;
            for (const QString& word : hasPieces ? plain : QStringList{text})
                where += (where.isEmpty() ? " WHERE (" : " AND (") + pieces.text + ") ILIKE " +
                         pattern(word, hasPieces);
            selects.push_back(head + pieces.key + " AS id FROM " + pieces.table + where +
                              " ORDER BY " + pieces.key + " DESC" + most);
        }
    }
    Keys keys;
    if (!selects.empty())
        jet::Native(m_shop).each(joined(selects), [&](const std::vector<jet::Cell>& cells) {
            if (!cells[1].isNull())
                keys[static_cast<int>(cells[0].integer)].push_back(cells[1].integer);
        });
    if (!server && !words.empty()) {
        addIndexed(keys, words, kinds);
        addLatest(keys, words, kinds);
    }
    return keys;
}

void Finder::addIndexed(Keys& keys, const std::vector<QByteArray>& words, const QSet<int>& kinds) {
    try {
        if (!m_index && !QFile::exists(m_path))
            return;
        if (!m_index)
            m_index.emplace(m_path);
        for (const int kind : kinds) {
            const auto found = m_index->candidates(kind, words, mostCandidates);
            keys[kind].insert(keys[kind].end(), found.begin(), found.end());
        }
    } catch (const jet::Error&) { // what is found without it is better than nothing
        m_index.reset();
    }
}

void Finder::readLatest(int kind) {
    const qint64 highest = highestKey(m_shop, kind);
    qint64 from = highest - latestRows;
    if (m_index) {
        if (const auto known = m_index->range(kind))
            from = std::min(from, known->high);
    }
    m_latest[kind] = textsBetween(m_shop, kind, std::max(from, highest - mostNew), highest);
}

/// By the journal, what was changed since the index took changes in.
void Finder::readChanges() {
    const qint64 entry = m_index ? m_index->journalEntry() : 0;
    for (const auto& [kind, keys] : changesSince(m_shop, entry, mostNew).keys)
        m_changes[kind] = textsOf(m_shop, kind, keys);
}

void Finder::addLatest(Keys& keys, const std::vector<QByteArray>& words, const QSet<int>& kinds) {
    const qint64 version = jet::Native(m_shop).value("PRAGMA data_version").toInteger();
    if (version != m_version) {
        m_latest.clear();
        m_changes.clear();
        m_version = version;
        readChanges();
    }
    for (const int kind : kinds) {
        if (!m_latest.contains(kind))
            readLatest(kind);
        for (const auto* texts : {&m_latest[kind], &m_changes[kind]}) {
            for (const auto& [key, text] : *texts) {
                if (holds(text, words))
                    keys[kind].push_back(key);
            }
        }
    }
}

std::vector<FoundRecord> Finder::find(const QString& typed, const QSet<int>& kinds) {
    const QString text = typed.simplified();
    std::vector<FoundRecord> found;
    if (text.isEmpty())
        return found;
    const QByteArray searched = rows::folded(text);
    std::vector<QByteArray> words;
    for (const QByteArray& word : searched.split(' ')) {
        if (!word.isEmpty())
            words.push_back(word);
    }
    Keys keys = candidates(text, words, kinds);
    std::vector<QByteArray> selects;
    for (auto& [at, ids] : keys) {
        std::sort(ids.begin(), ids.end(), std::greater<>());
        ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
        if (ids.empty())
            continue;
        QByteArrayList list;
        for (const qint64 id : ids)
            list << QByteArray::number(id);
        const FindKind& kind = findKinds()[static_cast<std::size_t>(at)];
        selects.push_back("SELECT " + QByteArray::number(at) + " AS kind, " + kind.key +
                          " AS id, " + textOf(kind, m_shop.isServer()) + " AS texts, " +
                          (kind.beside.isEmpty()
                               ? QByteArray("''")
                               : "coalesce(CAST(" + kind.beside + " AS text), '')") +
                          " AS beside FROM " + kind.table + " WHERE " + kind.key + " IN (" +
                          list.join(',') + ")");
    }
    if (selects.empty())
        return found;
    const auto textAt = [](const jet::Cell& cell) {
        return cell.kind == jet::Cell::Kind::Text ? QString::fromUtf8(cell.text, cell.size)
                                                  : QString();
    };
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    jet::Native(m_shop).each(joined(selects), [&](const std::vector<jet::Cell>& cells) {
        FoundRecord record;
        record.kind = static_cast<int>(cells[0].integer);
        record.key = cells[1].integer;
        const QStringList texts = textAt(cells[2]).split(QLatin1Char(textMark));
        const bool byNumber = isNumber && record.key == number;
        std::vector<QByteArray> folded;
        QByteArray all;
        for (const QString& each : texts) {
            folded.push_back(rows::folded(each));
            all += folded.back() + textMark;
        }
        if (!byNumber && !holds(all, words))
            return;
        record.name = texts.value(0).section(u'\n', 0, 0).simplified();
        record.detail = texts.value(1).section(u'\n', 0, 0).simplified();
        record.beside = textAt(cells[3]);
        record.score = scoreOf(folded, searched, words, byNumber);
        if (!byNumber && !holds(folded[0] + (folded.size() > 1 ? folded[1] : QByteArray()), words))
            record.line = lineWith(texts.mid(2), words);
        found.push_back(std::move(record));
    });

    std::map<int, int> best;
    for (const FoundRecord& record : found)
        best[record.kind] = std::max(best[record.kind], record.score);
    std::sort(found.begin(), found.end(), [&](const FoundRecord& a, const FoundRecord& b) {
        if (a.kind != b.kind)
            return best[a.kind] != best[b.kind] ? best[a.kind] > best[b.kind] : a.kind < b.kind;
        return a.score != b.score ? a.score > b.score : a.key > b.key;
    });
    std::map<int, int> shown;
    std::erase_if(found,
                  [&](const FoundRecord& record) { return ++shown[record.kind] > mostShown; });
    return found;
}

} // namespace desk
