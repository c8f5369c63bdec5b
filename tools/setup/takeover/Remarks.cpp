#include "setup/takeover/Remarks.h"

#include "core/keeping/Files.h"
#include "platform/values/Literals.h"

namespace takeover {

namespace {

constexpr int mostExamples = 20;

QByteArray escaped(const QString& text) {
    QString line = text;
    line.replace(u'\\', u"\\\\"_s).replace(u'\t', u"\\t"_s).replace(u'\r', u"\\r"_s);
    return line.replace(u'\n', u"\\n"_s).toUtf8();
}

} // namespace

Remarks::Remarks(const QString& valuesFile) : m_values(valuesFile) {
    if (!m_values.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw keeping::Refusal(valuesFile + u" can't be written."_s);
    m_values.write("what\ttable\tcolumn\trecord\tbefore\tnow\n");
}

void Remarks::count(const QString& kind, const QString& table, const QString& column, qint64 rows,
                    const QString& example) {
    if (rows == 0)
        return;
    Entry& entry = m_entries[kind + u'\t' + table + u'\t' + column];
    entry.kind = kind;
    entry.table = table;
    entry.column = column;
    entry.count += rows;
    if (!example.isEmpty() && entry.examples.size() < mostExamples)
        entry.examples += example;
}

void Remarks::changed(const QString& kind, const Place& place, const QString& before,
                      const QString& after) {
    const QString shown = before.size() > 60 ? before.left(60) + u"..."_s : before;
    count(kind, place.table, place.column, 1, place.key + u": "_s + shown);
    ++m_changed;
    QByteArray line;
    for (const QString& field : {kind, place.table, place.column, place.key, before, after})
        line += (line.isEmpty() ? "" : "\t") + escaped(field);
    m_values.write(line + '\n');
}

std::vector<Remarks::Entry> Remarks::entries() const {
    return {m_entries.cbegin(), m_entries.cend()};
}

void Remarks::finish() {
    const bool written = m_values.flush() && m_values.error() == QFileDevice::NoError;
    m_values.close();
    if (!written)
        throw keeping::Refusal(m_values.fileName() + u" can't be written; the disk may be full."_s);
}

} // namespace takeover
