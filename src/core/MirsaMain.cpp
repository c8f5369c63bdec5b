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

QString moneyMask(const QString& mask) {
    return shared().CurrencySymbol + mask;
}

} // namespace core
