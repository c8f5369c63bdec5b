#include "setup/takeover/Report.h"

#include "platform/values/Literals.h"

#include <QFileInfo>
#include <QSet>

namespace takeover {

namespace {

QString grouped(qint64 number) {
    return QLocale(QLocale::English).toString(number);
}

QString fileLines(const ReportFacts& facts) {
    const QFileInfo file(facts.file);
    QString text = u"File %1, %2 bytes, last changed %3, MD5 %4\n"_s.arg(
        file.absoluteFilePath(), grouped(file.size()),
        file.lastModified().toString(u"yyyy-MM-dd HH:mm"_s), facts.md5);
    text += u"%1, code page %2. Taken over %3 in %4 s, with version %5 of mirsa-setup.\n"_s
                .arg(facts.catalogue.format)
                .arg(facts.catalogue.codePage)
                .arg(facts.started.toString(u"yyyy-MM-dd HH:mm"_s))
                .arg(static_cast<double>(facts.milliseconds) / 1000, 0, 'f', 1)
                .arg(QStringLiteral(MIRSA_VERSION));
    return text;
}

QString tableLines(const ReportFacts& facts) {
    QString text = u"\nTables: rows that the file tells of, read, written\n"_s;
    for (const TableResult& table : facts.tables) {
        if (table.oldName.isEmpty()) {
            text += u"  %1: not in the old file\n"_s.arg(table.name);
            continue;
        }
        text += u"  %1: %2, %3, %4"_s.arg(table.name, grouped(table.told), grouped(table.read),
                                          grouped(table.written));
        if (table.name != table.oldName)
            text += u"; in the old file "_s + table.oldName;
        if (!table.counter.isEmpty())
            text += u"; goes on behind %1 %2"_s.arg(table.counter, grouped(table.lastGiven));
        if (!table.missing.isEmpty())
            text += u"; new column "_s + table.missing.join(u", "_s);
        if (!table.unknown.isEmpty())
            text += u"; unknown today and kept in %1: %2"_s.arg(table.kept,
                                                                table.unknown.join(u", "_s));
        text += u'\n';
    }
    return text;
}

QString remarkLines(const ReportFacts& facts) {
    if (facts.remarks.empty())
        return {};
    QString text = u"\nRemarks, with the first records of each\n"_s;
    for (const Remarks::Entry& entry : facts.remarks) {
        text += u"  %1: %2%3, %4\n"_s.arg(entry.kind, entry.table,
                                          entry.column.isEmpty() ? QString() : u'.' + entry.column,
                                          grouped(entry.count));
        for (QString example : entry.examples) {
            example.replace(u'\n', u' ').replace(u'\r', u' ');
            text += u"      "_s + example + u'\n';
        }
    }
    return text;
}

QString list(const QString& title, const QStringList& lines) {
    return lines.isEmpty() ? QString()
                           : u"\n"_s + title + u"\n  "_s + lines.join(u"\n  "_s) + u'\n';
}

} // namespace

QString summaryOf(const ReportFacts& facts) {
    qint64 told = 0, written = 0;
    QSet<QString> remarked;
    for (const TableResult& table : facts.tables) {
        told += std::max(table.told, table.written);
        written += table.written;
    }
    for (const Remarks::Entry& entry : facts.remarks)
        remarked.insert(entry.table);
    return u"%1 of %2 rows, %3 of %4 tables with remarks."_s.arg(grouped(written), grouped(told))
        .arg(remarked.size())
        .arg(facts.tables.size());
}

QString reportText(const ReportFacts& facts) {
    QString text = facts.accepted ? u"Taken over: "_s + summaryOf(facts) + u"\n\n"_s
                                  : u"Nothing was taken over: the file is damaged.\n\n"_s;
    text += fileLines(facts);
    text += list(u"Damages of the file"_s, facts.damages);
    text += tableLines(facts);
    text += remarkLines(facts);
    QStringList left = facts.catalogue.others;
    for (const QString& linked : facts.catalogue.linked)
        left += u"table "_s + linked + u", whose rows stand in another file"_s;
    text += list(u"Not taken over"_s, left);
    text += list(u"Added to what was taken over"_s, facts.added);
    if (!facts.valuesFile.isEmpty())
        text += u"\nEvery value that isn't as it was stands in "_s + facts.valuesFile +
                u", before and now.\n"_s;
    return text;
}

} // namespace takeover
