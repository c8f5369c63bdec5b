#pragma once

#include "platform/values/Literals.h"

#include <QByteArray>
#include <QRegularExpression>
#include <QStringList>

#include <vector>

namespace testsupport {

/// Reads a CSV file as RFC 4180 has it, and takes the apostrophe off again that stands in front of
/// what a spreadsheet would take for a formula.
inline std::vector<QStringList> readCsv(const QByteArray& bytes) {
    static const QRegularExpression defused(u"^'+[=+\\-@\\t\\r]"_s);
    QString text = QString::fromUtf8(bytes);
    if (text.startsWith(QChar(QChar::ByteOrderMark)))
        text.remove(0, 1);
    std::vector<QStringList> rows;
    QStringList row;
    QString field;
    bool quoted = false;
    const auto endField = [&] {
        row << (defused.match(field).hasMatch() ? field.mid(1) : field);
        field.clear();
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (quoted && c == u'"' && i + 1 < text.size() && text[i + 1] == u'"') {
            field += c;
            ++i;
        } else if (c == u'"') {
            quoted = !quoted;
        } else if (!quoted && c == u',') {
            endField();
        } else if (!quoted && c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
            endField();
            rows.push_back(std::exchange(row, {}));
            ++i;
        } else {
            field += c;
        }
    }
    return rows;
}

} // namespace testsupport
