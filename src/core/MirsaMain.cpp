#include "core/MirsaMain.h"

#include "core/Shell.h"
#include "platform/jet/Native.h"
#include "platform/values/Literals.h"

namespace core {

namespace {

Shell*& theShell() {
    static Shell* made = nullptr;
    return made;
}

} // namespace

Shell* shell() {
    return theShell();
}

void setShell(Shell* made) {
    theShell() = made;
}

SharedState& shared() {
    static SharedState state;
    return state;
}

jet::Database& MainDatabase() {
    Q_ASSERT_X(shared().MainDatabase, "MainDatabase", "no database is open");
    return *shared().MainDatabase;
}

void signChanges() {
    jet::Native(MainDatabase()).setWriter(shared().CurrentUserName);
}

jet::Workspace MainWorkspace() {
    return jet::Workspace(MainDatabase());
}

QString programFile(const QString& fileName) {
    return shared().ProgramFolder + QLatin1Char('/') + fileName;
}

bool HasAccess(const QString& code) {
    const SharedState& state = shared();
    if (state.CurrentUserName.toUpper() == u"ADMIN"_s)
        return true;
    const QString sql = u"SELECT securitycode FROM securityobjects a"
                        " INNER JOIN securityusers b ON a.objectid=b.objectid"
                        " WHERE b.id="_s +
                        QString::number(state.CurrentUserNo) + u" AND a.securitycode='"_s + code +
                        u"' UNION SELECT securitycode FROM securityobjects a"
                        " INNER JOIN securitygroups b ON a.objectid=b.objectid"
                        " WHERE b.groupid="_s +
                        QString::number(state.CurrentGroupNo) + u" AND a.securitycode='"_s + code +
                        u"'"_s;
    return MainDatabase().hasRows(sql);
}

Access readAccess() {
    const SharedState& state = shared();
    Access access{state.CurrentUserName.toUpper() == u"ADMIN"_s, {}};
    if (access.all)
        return access;
    jet::Recordset rows = MainDatabase().openRecordset(
        u"SELECT securitycode FROM securityobjects a INNER JOIN securityusers b ON "
        "a.objectid=b.objectid WHERE b.id=%1 UNION SELECT securitycode FROM securityobjects a "
        "INNER JOIN securitygroups b ON a.objectid=b.objectid WHERE b.groupid=%2"_s
            .arg(state.CurrentUserNo)
            .arg(state.CurrentGroupNo),
        jet::RecordsetType::Snapshot);
    for (; !rows.eof(); rows.moveNext())
        access.codes.insert(rows.text(u"securitycode").toLower());
    return access;
}

QString moneyMask(const QString& mask) {
    return shared().CurrencySymbol + mask;
}

} // namespace core
