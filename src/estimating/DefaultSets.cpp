#include "estimating/DefaultSets.h"

#include "platform/values/Literals.h"
#include "platform/values/Text.h"

namespace estimating {

namespace {

QString num(qint64 n) {
    return QString::number(n);
}

} // namespace

std::vector<SetOperation> setOperations(jet::Database& database, qint64 setNo) {
    jet::Recordset set = database.openRecordset(
        u"SELECT Operation.Description AS OperDesc, "
        "IIF(Operation.OperType='C', 'Yes', 'No') AS ContrFlag, Operation.Operno "
        "FROM DefaultSetOper INNER JOIN Operation ON DefaultSetOper.OperNo = "
        "Operation.OperNo WHERE DefaultSetOper.SetNo="_s +
            num(setNo) + u" ORDER BY DefaultSetOper.SeqNo"_s,
        jet::RecordsetType::Snapshot);
    std::vector<SetOperation> operations;
    for (; !set.eof(); set.moveNext()) {
        operations.push_back(
            {set[u"Operno"].toLong(), set.text(u"OperDesc"), set.text(u"ContrFlag") == u"Yes"_s});
    }
    return operations;
}

bool setNameTaken(jet::Database& database, const QString& name, qint64 setNo) {
    QString select =
        u"SELECT * FROM defaultset WHERE setdescription='"_s + values::quoted(name) + u"'"_s;
    if (setNo != 0)
        select += u" AND setno<>"_s + num(setNo);
    return database.hasRows(select);
}

qint64 saveSet(jet::Database& database, qint64 setNo, const QString& name,
               const std::vector<qint64>& operations) {
    jet::Transaction transaction(database);
    if (setNo == 0) {
        database.execute(u"INSERT INTO defaultset (setdescription) VALUES ('"_s +
                         values::quoted(name) + u"')"_s);
        setNo = database.lastCounter();
    } else {
        database.execute(u"UPDATE defaultset SET setdescription='"_s + values::quoted(name) +
                         u"' WHERE setno="_s + num(setNo));
        database.execute(u"DELETE FROM DefaultSetOper WHERE SetNo="_s + num(setNo));
    }
    std::vector<std::vector<jet::Value>> rows;
    for (const qint64 operation : operations)
        rows.push_back({setNo, operation, static_cast<qint64>(rows.size()) + 1});
    database.insertRows(u"DefaultSetOper"_s, {u"SetNo"_s, u"OperNo"_s, u"SeqNo"_s}, rows);
    transaction.commit();
    return setNo;
}

void deleteSet(jet::Database& database, qint64 setNo) {
    jet::Transaction transaction(database);
    database.execute(u"DELETE * FROM DefaultSetOper WHERE SetNo = "_s + num(setNo));
    database.execute(u"DELETE * FROM DefaultSet WHERE SetNo = "_s + num(setNo));
    transaction.commit();
}

} // namespace estimating
