#include "desk/Rights.h"

#include "core/MirsaMain.h"
#include "core/Security.h"
#include "platform/values/Literals.h"

namespace desk {

Rights Rights::read(jet::Database& database) {
    const core::SharedState& state = core::shared();
    Rights rights;
    if (core::isAdministrator(state.CurrentUserName)) {
        rights.m_money = true;
        return rights;
    }
    const QString granted = u"SELECT a.securitycode FROM securityobjects a INNER JOIN %1 b ON "
                            "a.objectid = b.objectid WHERE b.%2 = %3"_s;
    auto sets = database.together(
        {u"SELECT securitycode FROM securityobjects"_s,
         granted.arg(u"securityusers"_s, u"id"_s, QString::number(state.CurrentUserNo)),
         granted.arg(u"securitygroups"_s, u"groupid"_s, QString::number(state.CurrentGroupNo))});
    QSet<QString> codes[2];
    for (std::size_t i = 0; i < sets.size(); ++i) {
        for (; !sets[i].eof(); sets[i].moveNext())
            codes[i == 0 ? 0 : 1].insert(sets[i].text(u"securitycode").toLower());
    }
    rights.m_refused = codes[0] - codes[1];
    rights.m_money = codes[1].contains(u"showdollar"_s);
    return rights;
}

bool Rights::mayUse(const QString& menu) const {
    return !m_refused.contains(menu.toLower());
}

} // namespace desk
