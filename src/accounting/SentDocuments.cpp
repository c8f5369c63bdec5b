#include "accounting/SentDocuments.h"

#include "accounting/Answer.h"
#include "accounting/Literals.h"
#include "platform/values/Format.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QSaveFile>

namespace accounting {

namespace {

constexpr int lockPatience = 5000; // milliseconds

QJsonObject jsonOf(const SentDocument& document) {
    QJsonArray lines;
    for (const auto& line : document.lines)
        lines.append(
            QJsonObject{{u"description"_s, line.description}, {u"quantity"_s, line.quantity}});
    return {{u"kind"_s, document.kind == SentKind::Invoice ? u"invoice"_s : u"bill"_s},
            {u"number"_s, document.number},
            {u"order"_s, document.order},
            {u"date"_s, document.date.toString(Qt::ISODate)},
            {u"lines"_s, lines}};
}

SentDocument documentOf(const QJsonObject& json) {
    SentDocument document;
    document.kind = json[u"kind"].toString() == u"bill" ? SentKind::Bill : SentKind::Invoice;
    document.number = json[u"number"].toString();
    document.order = json[u"order"].toString();
    document.date = QDate::fromString(json[u"date"].toString(), Qt::ISODate);
    const QJsonArray lines = json[u"lines"].toArray();
    for (const auto& line : lines)
        document.lines.push_back({line[u"description"].toString(), line[u"quantity"].toString()});
    return document;
}

/// Descriptions are compared as the database compares text.
QString key(const QString& description) {
    return values::lowered(description.simplified());
}

} // namespace

SentDocument documentFrom(SentKind kind, const QDomElement& ret, const QString& order,
                          const QDate& date) {
    SentDocument document;
    document.kind = kind;
    document.order = order;
    document.date = date;
    const QString lineTag = kind == SentKind::Invoice ? u"InvoiceLineRet"_s : u"ItemLineRet"_s;
    for (const QDomElement& child : childElements(ret)) {
        if (child.tagName() == u"RefNumber")
            document.number = child.text();
        else if (child.tagName() == lineTag)
            document.lines.push_back({textAt(child, u"Desc"_s), textAt(child, u"Quantity"_s)});
    }
    return document;
}

void record(jet::Database& database, const SentDocument& document) {
    const bool invoice = document.kind == SentKind::Invoice;
    const QString table = invoice ? u"SENTInvoice"_s : u"SENTAP"_s;
    const auto width = [&](const QString& column) { return database.width(table, column); };
    QStringList columns{u"Description"_s, u"Quantity"_s, u"SentDate"_s, u"POID"_s};
    if (invoice)
        columns.prepend(u"InvoiceNo"_s);
    std::vector<std::vector<jet::Value>> rows;
    for (const auto& line : document.lines) {
        const QString description = line.description.left(width(u"Description"_s));
        std::vector<jet::Value> row{description.isEmpty() ? jet::Value() : jet::Value(description),
                                    values::isNumeric(line.quantity)
                                        ? jet::Value(values::val(line.quantity))
                                        : jet::Value(),
                                    values::format(document.date, u"Short Date"),
                                    invoice ? jet::Value(document.order.left(width(u"POID"_s)))
                                            : jet::Value(document.order.toLongLong())};
        if (invoice)
            row.insert(row.begin(), document.number.left(width(u"InvoiceNo"_s)));
        rows.push_back(std::move(row));
    }
    jet::Transaction transaction(database);
    database.insertRows(table, columns, rows);
    transaction.commit();
}

Unrecorded::Unrecorded(const QString& programFolder)
    : m_path(QDir(programFolder).filePath(u"Mirsa.unrecorded"_s)) {}

std::vector<SentDocument> Unrecorded::kept() const {
    std::vector<SentDocument> documents;
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return documents;
    const QJsonArray array = QJsonDocument::fromJson(file.readAll()).array();
    for (const auto& json : array)
        documents.push_back(documentOf(json.toObject()));
    return documents;
}

bool Unrecorded::write(const std::vector<SentDocument>& documents) const {
    if (documents.empty())
        return !QFile::exists(m_path) || QFile::remove(m_path);
    QJsonArray array;
    for (const SentDocument& document : documents)
        array.append(jsonOf(document));
    QSaveFile file(m_path);
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(array).toJson()) > 0 &&
           file.commit();
}

bool Unrecorded::keep(const SentDocument& document) {
    QLockFile lock(m_path + u".lock"_s);
    if (!lock.tryLock(lockPatience))
        return false;
    auto documents = kept();
    documents.push_back(document);
    return write(documents);
}

std::vector<SentDocument> Unrecorded::recordAll(jet::Database& database, QString& reason) {
    std::vector<SentDocument> recorded;
    if (!QFile::exists(m_path))
        return recorded;
    QLockFile lock(m_path + u".lock"_s);
    if (!lock.tryLock(lockPatience)) {
        reason = u"another station is recording them"_s;
        return recorded;
    }
    auto documents = kept();
    while (!documents.empty()) {
        try {
            record(database, documents.front());
        } catch (const jet::Error& error) {
            reason = error.text();
            break;
        }
        recorded.push_back(documents.front());
        documents.erase(documents.begin());
        write(documents);
    }
    return recorded;
}

QString sentSelect(SentKind kind, const QString& order) {
    const QString select =
        kind == SentKind::Invoice
            ? u"SELECT * FROM SentInvoice WHERE POID = "_s + literal(order)
            : u"Select * from SentAP where POID = "_s + QString::number(order.toLongLong());
    return select + u" ORDER BY ID"_s;
}

std::vector<SentRow> sentRows(jet::Database& database, SentKind kind, const QString& order) {
    const bool invoice = kind == SentKind::Invoice;
    std::vector<SentRow> rows;
    jet::Recordset set =
        database.openRecordset(sentSelect(kind, order), jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext())
        rows.push_back({invoice ? set.text(u"InvoiceNo") : QString(), set.text(u"Description"),
                        set[u"Quantity"].toDouble(), set.text(u"SentDate")});
    return rows;
}

QString recordedDescription(const QString& partNo, const QString& description) {
    const QString both =
        partNo.isEmpty() && description.isEmpty() ? QString() : partNo + u' ' + description;
    constexpr int width = 255; // of the column
    return both.left(width);
}

QString sentBefore(const std::vector<SentRow>& sent, const QString& description) {
    QStringList parts;
    for (const SentRow& row : sent) {
        if (key(row.description) != key(description))
            continue;
        parts += values::numberText(row.quantity) + u" on "_s + row.date +
                 (row.number.isEmpty() ? QString() : u" ("_s + row.number + u')');
    }
    return parts.join(u", "_s);
}

std::vector<bool> repeats(const std::vector<SentRow>& sent, const std::vector<Sendable>& all,
                          const std::vector<Sendable>& shown) {
    struct Sum {
        double sent = 0, due = 0, selected = 0;
    };
    QHash<QString, Sum> sums;
    for (const SentRow& row : sent)
        sums[key(row.description)].sent += row.quantity;
    for (const Sendable& line : all)
        sums[key(line.description)].due += line.due;
    for (const Sendable& line : shown) {
        if (line.selected)
            sums[key(line.description)].selected += line.sending;
    }
    std::vector<bool> marks;
    for (const Sendable& line : shown) {
        const Sum sum = sums.value(key(line.description));
        const double now = sum.selected + (line.selected ? 0 : line.sending);
        constexpr double hair = 1e-9;
        marks.push_back(sum.sent > 0 && sum.sent + now > sum.due + hair);
    }
    return marks;
}

} // namespace accounting
