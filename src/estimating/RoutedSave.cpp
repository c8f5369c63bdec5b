#include "estimating/RoutedSave.h"

#include "platform/values/Literals.h"

namespace estimating {

void runStep(jet::Database& database, const RoutingKind& kind, const QString& name,
             const std::function<void()>& work) {
    try {
        jet::step(database, name, work);
    } catch (const jet::Error& error) {
        // Empty: the lock was not had. Else it may be an earlier step's, sent with this one.
        const QString failed = error.step().value_or(name);
        if (failed.isEmpty())
            throw;
        const QString number =
            kind.stepsTellNumber ? QString::number(error.number()) + u" "_s : QString();
        throw jet::Error(error.number(), number + error.text() + u"\r\n"_s + failed,
                         error.failure());
    }
}

jet::Recordset openDocument(jet::Database& database, const RoutingKind& kind, qint64 documentNo) {
    jet::Recordset row =
        database.openRecordset(u"SELECT * FROM "_s + kind.documentTable + u" WHERE "_s +
                               kind.documentKey + u" = "_s + QString::number(documentNo));
    if (documentNo != 0 && row.isEmpty())
        throw jet::Error(jet::errors::rowDeleted, u"Record is deleted."_s);
    return row;
}

namespace {

void hold(jet::Database& database, const RoutingKind& kind, const QString& table,
          const QStringList& figures, qint64 documentNo) {
    // No other program writes to an estimate's rows.
    if (!kind.hasProgress)
        return;
    QStringList set;
    for (const QString& figure : figures)
        set << figure + u" = Nz("_s + figure + u", 0)"_s;
    database.execute(u"UPDATE "_s + table + u" SET "_s + set.join(u", ") + u" WHERE "_s +
                     kind.documentKey + u" = "_s + QString::number(documentNo));
}

} // namespace

void holdOperations(jet::Database& database, const RoutingKind& kind, qint64 documentNo) {
    hold(database, kind, kind.operTable,
         {u"OperTime_Amount"_s, u"OperShopRate"_s, u"OperLocated"_s, u"EstOper"_s}, documentNo);
}

void holdFixedCosts(jet::Database& database, const RoutingKind& kind, qint64 documentNo) {
    hold(database, kind, kind.miscTable, {u"Quantity"_s, u"CostAmount"_s}, documentNo);
}

void expectLines(jet::Database& database, const RoutingKind& kind, qint64 documentNo) {
    const QStringList selects = lineSelects(kind, documentNo);
    database.expect({selects.cbegin(), selects.cend()});
}

void deleteRouted(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                  const std::function<void()>& deleteFirst) {
    const QString ofDocument =
        u" WHERE "_s + kind.documentKey + u"="_s + QString::number(documentNo);
    jet::Transaction transaction(database);
    if (deleteFirst)
        deleteFirst();
    for (const QString& table :
         {kind.noteTable, kind.operTable, kind.miscTable, kind.documentTable}) {
        runStep(database, kind, u"Delete "_s + table,
                [&] { database.execute(u"DELETE FROM "_s + table + ofDocument); });
    }
    runStep(database, kind, u"Commit Trans"_s, [&] { transaction.commit(); });
}

} // namespace estimating
