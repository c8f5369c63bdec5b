#include "estimating/Routing.h"

#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

#include <QSet>

namespace estimating {

using values::Currency;

OperRow newRow(const CatalogueOperation& operation) {
    OperRow row;
    row.operNo = operation.operNo;
    row.description = operation.description;
    row.inhouse = operation.inhouse;
    row.rate = operation.rate;
    return row;
}

int insertPlace(int rows, int activeRow, bool before) {
    if (activeRow < 0 || activeRow >= rows)
        return rows;
    return before ? activeRow : activeRow + 1;
}

namespace {

QString noteSelect(const RoutingKind& kind, qint64 documentNo) {
    return u"SELECT SeqNo FROM "_s + kind.noteTable + u" WHERE "_s + kind.documentKey + u" = "_s +
           QString::number(documentNo);
}

QString operSelect(const RoutingKind& kind, qint64 documentNo) {
    const QString& table = kind.operTable;
    return u"SELECT "_s + table + u".*, Operation.Description, Operation.OperType FROM "_s + table +
           u" INNER JOIN Operation ON "_s + table + u".OperNo = Operation.OperNo WHERE "_s + table +
           u"."_s + kind.documentKey + u"="_s + QString::number(documentNo) + u" ORDER BY "_s +
           table + u".SeqNo"_s;
}

QString miscSelect(const RoutingKind& kind, qint64 documentNo) {
    const QString of = kind.miscTable + u"."_s;
    return u"Select "_s + of + u"CostAmount, MiscItems.Description, MiscItems.Itemno, "_s + of +
           u"unitofmeasure, "_s + of + u"unitprice, "_s + of + u"quantity from "_s +
           kind.miscTable + u", MiscItems where "_s + kind.documentKey + u"="_s +
           QString::number(documentNo) + u" and "_s + of + u"Itemno=MiscItems.Itemno"_s;
}

jet::Recordset read(jet::Database& database, const QString& select) {
    return database.openRecordset(select, jet::RecordsetType::Snapshot);
}

} // namespace

QStringList lineSelects(const RoutingKind& kind, qint64 documentNo) {
    return {noteSelect(kind, documentNo), operSelect(kind, documentNo),
            miscSelect(kind, documentNo)};
}

std::vector<OperRow> loadOperRows(jet::Database& database, const RoutingKind& kind,
                                  qint64 documentNo) {
    jet::Recordset noted = read(database, noteSelect(kind, documentNo));
    QSet<qint64> notes;
    for (; !noted.eof(); noted.moveNext())
        notes.insert(noted[u"SeqNo"].toLong());
    jet::Recordset set = read(database, operSelect(kind, documentNo));

    std::vector<OperRow> rows;
    for (; !set.eof(); set.moveNext()) {
        OperRow row;
        row.id = set[u"ID"].toLong();
        row.operNo = set[u"OperNo"].toLong();
        row.description = set.text(u"Description");
        row.inhouse = set.text(u"OperType") == u"I"_s;
        row.time = set[u"OperTime_Amount"].toDouble();
        row.rate = set[u"OperShopRate"].toCurrency();
        row.place = static_cast<int>(set[u"SeqNo"].toLong());
        row.hasNote = notes.contains(row.place);
        if (kind.hasProgress) {
            row.located = static_cast<int>(set[u"OperLocated"].toLong());
            row.status = set.text(u"Status");
            row.estimated = set[u"EstOper"].toDouble();
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<MiscRow> loadMiscRows(jet::Database& database, const RoutingKind& kind,
                                  qint64 documentNo) {
    jet::Recordset set = read(database, miscSelect(kind, documentNo));
    std::vector<MiscRow> rows;
    for (; !set.eof(); set.moveNext()) {
        rows.push_back({set[u"Itemno"].toLong(), set.text(u"Description"),
                        set.text(u"unitofmeasure"), set[u"unitprice"].toCurrency(),
                        set[u"quantity"].toCurrency(), set[u"CostAmount"].toCurrency()});
    }
    return rows;
}

RoutedLines loadLines(jet::Database& database, const RoutingKind& kind, qint64 documentNo) {
    return {documentNo, loadOperRows(database, kind, documentNo),
            loadMiscRows(database, kind, documentNo)};
}

std::vector<OperRow> rowsFor(jet::Database& database,
                             const std::vector<ChosenOperation>& operations) {
    jet::Recordset catalogue =
        database.openRecordset(u"SELECT * FROM Operation"_s, jet::RecordsetType::Snapshot);
    std::vector<OperRow> rows;
    for (const ChosenOperation& chosen : operations) {
        catalogue.findFirst(u"OperNo="_s + QString::number(chosen.operNo));
        if (catalogue.noMatch())
            continue;
        rows.push_back(newRow({chosen.operNo, catalogue.text(u"Description"),
                               catalogue.text(u"OperType") == u"I"_s,
                               catalogue[u"OperShopRate"].toCurrency()}));
    }
    return rows;
}

std::vector<ChosenOperation> operationsOfSet(jet::Database& database, qint64 setNo, bool useNotes) {
    jet::Recordset set =
        database.openRecordset(u"SELECT OperNo FROM DefaultSetOper WHERE SetNo="_s +
                                   QString::number(setNo) + u" ORDER BY SeqNo"_s,
                               jet::RecordsetType::Snapshot);
    std::vector<ChosenOperation> operations;
    for (; !set.eof(); set.moveNext())
        operations.push_back({set[u"OperNo"].toLong(), useNotes});
    return operations;
}

QString defaultNote(jet::Database& database, qint64 operNo) {
    return database
        .lookup(u"Select [Note] from OperNote where OperNo = "_s + QString::number(operNo))
        .toText();
}

QString defaultNote(jet::Database& database, const QString& description) {
    return database
        .lookup(u"Select [Note] from OperNote where OperNo = (Select OperNo from "
                "Operation where description = '"_s +
                values::quoted(description) + u"')"_s)
        .toText();
}

QString partPattern(const QString& typed) {
    QString pattern = QString(typed).replace(QLatin1Char('-'), QLatin1Char('?'));
    // A bracket that nothing closes is no set of characters: it means itself.
    const auto closed = pattern.lastIndexOf(QLatin1Char(']')) + 1;
    const QString tail = pattern.mid(closed).replace(u"["_s, u"[[]"_s);
    return u"*"_s + pattern.left(closed) + tail + u"*"_s;
}

} // namespace estimating
