#include "accounting/Literals.h"

#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QStringList>

namespace accounting {

QString literal(const QString& text) {
    return u'\'' + values::quoted(text) + u'\'';
}

QString numberList(const std::vector<qint64>& numbers) {
    QStringList texts;
    for (const qint64 number : numbers)
        texts += QString::number(number);
    return texts.join(u',');
}

} // namespace accounting
