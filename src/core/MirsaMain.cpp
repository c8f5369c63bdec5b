#include "core/MirsaMain.h"

namespace core {

SharedState& shared() {
    static SharedState state;
    return state;
}

jet::Database& MainDatabase() {
    Q_ASSERT_X(shared().MainDatabase, "MainDatabase", "no database is open");
    return *shared().MainDatabase;
}

jet::Workspace MainWorkspace() {
    return jet::Workspace(MainDatabase());
}

QString programFile(const QString& fileName) {
    return shared().ProgramFolder + QLatin1Char('/') + fileName;
}

bool HasAccess(const QString& code) {
    const SharedState& state = shared();
    if (state.CurrentUserName.toUpper() == QStringLiteral("ADMIN"))
        return true;
    const QString sql = QStringLiteral("SELECT securitycode FROM securityobjects a"
                                       " INNER JOIN securityusers b ON a.objectid=b.objectid"
                                       " WHERE b.id=") +
                        QString::number(state.CurrentUserNo) +
                        QStringLiteral(" AND a.securitycode='") + code +
                        QStringLiteral("' UNION SELECT securitycode FROM securityobjects a"
                                       " INNER JOIN securitygroups b ON a.objectid=b.objectid"
                                       " WHERE b.groupid=") +
                        QString::number(state.CurrentGroupNo) +
                        QStringLiteral(" AND a.securitycode='") + code + QStringLiteral("'");
    return MainDatabase().openRecordset(sql, jet::RecordsetType::Snapshot).recordCount() > 0;
}

QString moneyMask(const QString& mask) {
    return shared().CurrencySymbol + mask;
}

} // namespace core
