#pragma once

#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace inventory {

/// A number, a text between quotes and a list of numbers, as SQL has them.
inline QString num(qint64 number) {
    return QString::number(number);
}
inline QString sqlText(const QString& text) {
    return u"'"_s + values::quoted(text) + u"'"_s;
}
inline QString listOf(const std::vector<qint64>& numbers) {
    QStringList texts;
    for (const qint64 number : numbers)
        texts << num(number);
    return texts.join(u", "_s);
}

} // namespace inventory
