#include "timemgmt/exceptions/ExceptionMemory.h"

#include "platform/values/Literals.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QIODevice>
#include <QStringList>

namespace timemgmt {

namespace {

/// To be raised with every change of what is written, or of what the rules find.
constexpr quint32 form = 1;
constexpr qint64 sampleRows = 32;

/// Of records at even distances up to the highest one, what nobody changes.
QString sampleSelect(const QString& table, const QString& columns, qint64 last) {
    QStringList numbers;
    for (qint64 i = 1; i <= sampleRows; ++i)
        numbers << QString::number(last * i / sampleRows);
    return u"SELECT ID, %1 FROM %2 WHERE ID IN (%3) ORDER BY ID"_s.arg(columns, table,
                                                                       numbers.join(u", "));
}

template <class Enum>
void readEnum(QDataStream& in, Enum& value) {
    qint32 number = 0;
    in >> number;
    value = static_cast<Enum>(number);
}

void write(QDataStream& out, const TimeException& line) {
    out << static_cast<qint32>(line.kind) << static_cast<qint32>(line.record) << line.id
        << line.empId << line.signId << line.partner << line.jobNo << line.when << line.employee
        << line.text;
}

TimeException readLine(QDataStream& in) {
    TimeException line;
    readEnum(in, line.kind);
    readEnum(in, line.record);
    in >> line.id >> line.empId >> line.signId >> line.partner >> line.jobNo >> line.when >>
        line.employee >> line.text;
    return line;
}

QByteArray seal(const QByteArray& content) {
    return QCryptographicHash::hash(content, QCryptographicHash::Sha256);
}

} // namespace

QByteArray recordSample(jet::Database& database, const KnownExceptions& known) {
    auto sets = database.together(
        {sampleSelect(u"Timelog"_s, u"EmpID, JobNo, OperNo, StartDate"_s, known.lastWork),
         sampleSelect(u"Sign_in"_s, u"EmpID, Sign_in"_s, known.lastAttendance)});
    QCryptographicHash sample(QCryptographicHash::Sha256);
    for (jet::Recordset& set : sets) {
        for (; !set.eof(); set.moveNext()) {
            for (qsizetype i = 0; i < set.fieldNames().size(); ++i)
                sample.addData((set.field(static_cast<int>(i)).toText() + u'|').toUtf8());
        }
        sample.addData("\n");
    }
    return sample.result();
}

QByteArray packed(const KnownExceptions& known, const QByteArray& sample) {
    QByteArray content;
    QDataStream out(&content, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_6_0);
    out << form << sample << known.lastWork << known.lastAttendance << known.nextWork
        << known.nextAttendance << known.readAt << static_cast<quint64>(known.lines.size());
    for (const auto& [key, line] : known.lines)
        write(out, line);
    return seal(content) + content;
}

std::optional<Unpacked> unpacked(const QByteArray& content) {
    const qsizetype sealLength = seal({}).size();
    const QByteArray body = content.mid(sealLength);
    if (body.isEmpty() || seal(body) != content.left(sealLength))
        return {};
    QDataStream in(body);
    in.setVersion(QDataStream::Qt_6_0);
    quint32 itsForm = 0;
    in >> itsForm;
    if (itsForm != form)
        return {};
    Unpacked found;
    quint64 count = 0;
    KnownExceptions& known = found.known;
    in >> found.sample >> known.lastWork >> known.lastAttendance >> known.nextWork >>
        known.nextAttendance >> known.readAt >> count;
    for (quint64 i = 0; i < count && in.status() == QDataStream::Ok; ++i) {
        TimeException line = readLine(in);
        known.lines.insert_or_assign(line.key(), std::move(line));
    }
    return in.status() == QDataStream::Ok ? std::optional(std::move(found)) : std::nullopt;
}

} // namespace timemgmt
