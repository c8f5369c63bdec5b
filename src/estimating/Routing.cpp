#include "estimating/Routing.h"

#include "estimating/NoteStaging.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

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

std::vector<OperRow> loadOperRows(jet::Database& database, const RoutingKind& kind,
                                  qint64 documentNo, const QString& currencySymbol) {
    const QString& table = kind.operTable;
    jet::Recordset set = database.openRecordset(
        QStringLiteral("SELECT ") + table +
            QStringLiteral(".*, Operation.Description, Operation.OperType, "
                           "IIf([OperType]='I','Inhouse','Out Contr') AS OpType, "
                           "IIf([OperType]='I','hrs','") +
            values::quoted(currencySymbol) + QStringLiteral("') AS HrsOrAmt FROM ") + table +
            QStringLiteral(" INNER JOIN Operation ON ") + table +
            QStringLiteral(".OperNo = Operation.OperNo WHERE ") + table + QStringLiteral(".") +
            kind.documentKey + QStringLiteral("=") + QString::number(documentNo) +
            QStringLiteral(" ORDER BY ") + table + QStringLiteral(".SeqNo"),
        jet::RecordsetType::Snapshot);

    const NoteStaging notes(database, kind, documentNo);
    std::vector<OperRow> rows;
    for (; !set.eof(); set.moveNext()) {
        OperRow row;
        row.operNo = set[u"OperNo"].toLong();
        row.description = set.text(u"Description");
        row.inhouse = set.text(u"OpType") == QStringLiteral("Inhouse");
        row.time = set[u"OperTime_Amount"].toDouble();
        row.rate = set[u"OperShopRate"].toCurrency();
        row.hasNote = notes.note(set[u"SeqNo"].toLong()).has_value();
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
    const QString& table = kind.miscTable;
    const QString of = table + QStringLiteral(".");
    jet::Recordset set = database.openRecordset(
        QStringLiteral("Select ") + of +
            QStringLiteral("CostAmount, MiscItems.Description, "
                           "MiscItems.Itemno, ") +
            of + QStringLiteral("unitofmeasure, ") + of + QStringLiteral("unitprice, ") + of +
            QStringLiteral("quantity from ") + table + QStringLiteral(", MiscItems where ") +
            kind.documentKey + QStringLiteral("=") + QString::number(documentNo) +
            QStringLiteral(" and ") + of + QStringLiteral("Itemno=MiscItems.Itemno"),
        jet::RecordsetType::Snapshot);
    std::vector<MiscRow> rows;
    for (; !set.eof(); set.moveNext()) {
        rows.push_back({set[u"Itemno"].toLong(), set.text(u"Description"),
                        set.text(u"unitofmeasure"), set[u"unitprice"].toCurrency(),
                        set[u"quantity"].toCurrency(), set[u"CostAmount"].toCurrency()});
    }
    return rows;
}

std::vector<OperRow> rowsFor(jet::Database& database,
                             const std::vector<ChosenOperation>& operations) {
    jet::Recordset catalogue = database.openRecordset(QStringLiteral("SELECT * FROM Operation"),
                                                      jet::RecordsetType::Snapshot);
    std::vector<OperRow> rows;
    for (const ChosenOperation& chosen : operations) {
        catalogue.findFirst(QStringLiteral("OperNo=") + QString::number(chosen.operNo));
        if (catalogue.noMatch())
            continue;
        rows.push_back(newRow({chosen.operNo, catalogue.text(u"Description"),
                               catalogue.text(u"OperType") == QStringLiteral("I"),
                               catalogue[u"OperShopRate"].toCurrency()}));
    }
    return rows;
}

std::vector<ChosenOperation> operationsOfSet(jet::Database& database, qint64 setNo, bool useNotes) {
    jet::Recordset set =
        database.openRecordset(QStringLiteral("SELECT OperNo FROM DefaultSetOper WHERE SetNo=") +
                                   QString::number(setNo) + QStringLiteral(" ORDER BY SeqNo"),
                               jet::RecordsetType::Snapshot);
    std::vector<ChosenOperation> operations;
    for (; !set.eof(); set.moveNext())
        operations.push_back({set[u"OperNo"].toLong(), useNotes});
    return operations;
}

void insertOperRows(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                    std::vector<OperRow>& rows) {
    for (OperRow& row : rows) {
        if (!row.inhouse)
            row.rate = Currency();
    }
    const QString comma = QStringLiteral(",");
    const QString head =
        QStringLiteral("INSERT INTO ") + kind.operTable + QStringLiteral(" (") + kind.documentKey +
        QStringLiteral(", SeqNo, OperNo, OperTime_Amount, OperShopRate") +
        (kind.hasProgress ? QStringLiteral(", OperLocated, Status, Estoper") : QString()) +
        QStringLiteral(") VALUES(") + QString::number(documentNo) + comma;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const OperRow& row = rows[i];
        QString sql = head + QString::number(i + 1) + comma + QString::number(row.operNo) + comma +
                      values::numberText(row.time.value_or(0)) + comma + row.rate.toText();
        if (kind.hasProgress) {
            sql += comma + QString::number(row.located) + QStringLiteral(",'") +
                   values::quoted(row.status) + QStringLiteral("',") +
                   values::numberText(row.estimated.value_or(0));
        }
        database.execute(sql + QStringLiteral(")"));
    }
}

void insertMiscRows(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                    const std::vector<MiscRow>& rows) {
    const QString comma = QStringLiteral(",");
    for (const MiscRow& row : rows) {
        database.execute(QStringLiteral("INSERT INTO ") + kind.miscTable + QStringLiteral(" (") +
                         kind.documentKey +
                         QStringLiteral(", UnitofMeasure, Unitprice, Quantity, CostAmount, "
                                        "ItemNo) VALUES(") +
                         QString::number(documentNo) + QStringLiteral(",'") +
                         values::quoted(row.unit) + QStringLiteral("',") + row.price.toText() +
                         comma + row.quantity.toText() + comma + row.total.toText() + comma +
                         QString::number(row.itemNo) + QStringLiteral(")"));
    }
}

QString defaultNote(jet::Database& database, qint64 operNo) {
    return database
        .lookup(QStringLiteral("Select [Note] from OperNote where OperNo = ") +
                QString::number(operNo))
        .toText();
}

QString defaultNote(jet::Database& database, const QString& description) {
    return database
        .lookup(QStringLiteral("Select [Note] from OperNote where OperNo = (Select OperNo from "
                               "Operation where description = '") +
                values::quoted(description) + QStringLiteral("')"))
        .toText();
}

QString partPattern(const QString& typed) {
    QString pattern = QString(typed).replace(QLatin1Char('-'), QLatin1Char('?'));
    // A bracket that nothing closes is no set of characters: it means itself.
    const auto closed = pattern.lastIndexOf(QLatin1Char(']')) + 1;
    const QString tail = pattern.mid(closed).replace(QStringLiteral("["), QStringLiteral("[[]"));
    return QStringLiteral("*") + pattern.left(closed) + tail + QStringLiteral("*");
}

} // namespace estimating
