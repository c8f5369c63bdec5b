#include "estimating/DefaultSets.h"

#include "platform/values/Text.h"

namespace estimating {

namespace {

QString num(qint64 n) {
    return QString::number(n);
}

} // namespace

std::vector<SetOperation> setOperations(jet::Database& database, qint64 setNo) {
    jet::Recordset set = database.openRecordset(
        QStringLiteral("SELECT Operation.Description AS OperDesc, "
                       "IIF(Operation.OperType='C', 'Yes', 'No') AS ContrFlag, Operation.Operno "
                       "FROM DefaultSetOper INNER JOIN Operation ON DefaultSetOper.OperNo = "
                       "Operation.OperNo WHERE DefaultSetOper.SetNo=") +
            num(setNo) + QStringLiteral(" ORDER BY DefaultSetOper.SeqNo"),
        jet::RecordsetType::Snapshot);
    std::vector<SetOperation> operations;
    for (; !set.eof(); set.moveNext()) {
        operations.push_back({set[u"Operno"].toLong(), set.text(u"OperDesc"),
                              set.text(u"ContrFlag") == QStringLiteral("Yes")});
    }
    return operations;
}

bool setNameTaken(jet::Database& database, const QString& name, qint64 setNo) {
    QString select = QStringLiteral("SELECT * FROM defaultset WHERE setdescription='") +
                     values::quoted(name) + QStringLiteral("'");
    if (setNo != 0)
        select += QStringLiteral(" AND setno<>") + num(setNo);
    return database.hasRows(select);
}

qint64 saveSet(jet::Database& database, qint64 setNo, const QString& name,
               const std::vector<qint64>& operations) {
    jet::Transaction transaction(database);
    if (setNo == 0) {
        database.execute(QStringLiteral("INSERT INTO defaultset (setdescription) VALUES ('") +
                         values::quoted(name) + QStringLiteral("')"));
        setNo = database.lastCounter();
    } else {
        database.execute(QStringLiteral("UPDATE defaultset SET setdescription='") +
                         values::quoted(name) + QStringLiteral("' WHERE setno=") + num(setNo));
        database.execute(QStringLiteral("DELETE FROM DefaultSetOper WHERE SetNo=") + num(setNo));
    }
    for (std::size_t i = 0; i < operations.size(); ++i) {
        database.execute(
            QStringLiteral("INSERT INTO defaultsetoper (setno, operno, seqno) VALUES (") +
            num(setNo) + QStringLiteral(", ") + num(operations[i]) + QStringLiteral(", ") +
            num(static_cast<qint64>(i) + 1) + QStringLiteral(")"));
    }
    transaction.commit();
    return setNo;
}

void deleteSet(jet::Database& database, qint64 setNo) {
    jet::Transaction transaction(database);
    database.execute(QStringLiteral("DELETE * FROM DefaultSetOper WHERE SetNo = ") + num(setNo));
    database.execute(QStringLiteral("DELETE * FROM DefaultSet WHERE SetNo = ") + num(setNo));
    transaction.commit();
}

} // namespace estimating
