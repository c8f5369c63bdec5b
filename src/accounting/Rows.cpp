#include "accounting/Rows.h"

#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <algorithm>

namespace accounting {

QString literal(const QString& text, int width) {
    return u'\'' + values::quoted(width > 0 ? text.left(width) : text) + u'\'';
}

void insertRows(jet::Database& database, const QString& table, const QStringList& columns,
                const std::vector<QStringList>& rows) {
    constexpr std::size_t atOnce = 200; // as many selects as every engine joins
    const QString into = u"INSERT INTO "_s + table + u" ("_s + columns.join(u", "_s) + u") "_s;
    for (std::size_t from = 0; from < rows.size(); from += atOnce) {
        QStringList selects;
        for (std::size_t i = from; i < std::min(rows.size(), from + atOnce); ++i)
            selects += u"SELECT "_s + rows[i].join(u", "_s);
        // One row is the plain statement, which is the same text for every row.
        if (selects.size() == 1)
            database.execute(into + u"VALUES ("_s + rows[from].join(u", "_s) + u')');
        else
            database.execute(into + selects.join(u" UNION ALL "_s));
    }
}

QString numberList(const std::vector<qint64>& numbers) {
    QStringList texts;
    for (const qint64 number : numbers)
        texts += QString::number(number);
    return texts.join(u',');
}

} // namespace accounting
