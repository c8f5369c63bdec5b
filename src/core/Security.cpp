#include "core/Security.h"

#include "core/MainMenu.h"
#include "core/MirsaMain.h"
#include "platform/values/Literals.h"

namespace core {

namespace {

struct ToolButton {
    int number;
    const char16_t* menu;
};

constexpr ToolButton toolButtonList[] = {
    {1, u"mnuFileEstimate"},
    {2, u"mnuFileJob"},
    {3, u"mnuSchedule"},
    {4, u"mnuInvoice"},
    {5, u"mnuFileTimeManagement"},
    {7, u"mnuFileRequest"},
    {8, u"mnuAP"},
    {9, u"mnuFilePurchaseOrder"},
    {11, u"mnuFileCustomer"},
    {12, u"mnuFileEmployee"},
    {13, u"mnuFileVendor"},
    {15, u"mnuInventory"},
    {16, u"mnuFileSpareParts"},
    {18, u"mnuFileBarcode"},
    {19, u"mnuFileAutoMirsa"},
    {20, u"mnuFileBenchline"},
    {22, u"mnuHistory"},
};

/// A separator follows the buttons in front of it.
struct Separator {
    int number;
    int first, last;
};

constexpr Separator separators[] = {
    {6, 1, 5}, {10, 7, 9}, {14, 11, 13}, {17, 15, 16}, {21, 18, 20}};

QSet<QString> folded(const QStringList& names) {
    QSet<QString> result;
    for (const QString& name : names)
        result.insert(name.toLower());
    return result;
}

/// The menus that are gone for whoever may not use them; all that is below them carries a right.
const QStringList& securedMenus() {
    static const QStringList menus{u"mnuAddOns"_s, u"mnuOptionsTables"_s, u"mnuOptionsUtilities"_s,
                                   u"mnuOptions"_s, u"mnuOptionsReports"_s};
    return menus;
}

QStringList codes(jet::Recordset rows) {
    QStringList result;
    for (; !rows.eof(); rows.moveNext())
        result << rows.text(u"securitycode");
    return result;
}

} // namespace

bool isAdministrator(const QString& userName) {
    return userName.toUpper() == u"ADMIN"_s;
}

ShellRights::ShellRights(const Input& input) {
    const bool admin = isAdministrator(input.userName);
    const QSet<QString> catalogue = folded(input.catalogueCodes);
    const QSet<QString> granted = folded(input.grantedCodes);
    for (const QString& menu : input.menuNames) {
        const QString right = input.sharedRights.value(menu, menu).toLower();
        if (catalogue.contains(right) && !admin && !granted.contains(right))
            m_disabled.insert(menu.toLower());
    }
    // Setting up security is the administrator's alone, whatever the tables say.
    const QString setup = u"mnuutilitiesloginsetup"_s;
    if (admin)
        m_disabled.remove(setup);
    else
        m_disabled.insert(setup);
    m_disabled += folded(input.unavailableMenus);
}

bool ShellRights::isEnabled(const QString& menu) const {
    return !m_disabled.contains(menu.toLower());
}

bool ShellRights::isVisible(const QString& menu) const {
    static const QSet<QString> vanishing = folded(securedMenus());
    return !vanishing.contains(menu.toLower()) || isEnabled(menu);
}

bool ShellRights::isButtonVisible(int number) const {
    for (const Separator& separator : separators) {
        if (separator.number != number)
            continue;
        for (int button = separator.first; button <= separator.last; ++button) {
            if (isButtonVisible(button))
                return true;
        }
        return false;
    }
    const QString menu = toolButtonMenu(number);
    if (menu.isEmpty() || !isEnabled(menu))
        return false;
    const bool external = number == 18 || number == 19;
    return !external || isEnabled(u"mnuExternal"_s);
}

QString toolButtonMenu(int number) {
    for (const ToolButton& button : toolButtonList) {
        if (button.number == number)
            return QString::fromUtf16(button.menu);
    }
    return {};
}

bool isToolSeparator(int number) {
    return std::any_of(std::begin(separators), std::end(separators),
                       [number](const Separator& each) { return each.number == number; });
}

ShellRights readShellRights(jet::Database& database, const QStringList& menuNames,
                            const QStringList& unavailableMenus) {
    const SharedState& state = shared();
    ShellRights::Input input;
    input.menuNames = menuNames;
    input.userName = state.CurrentUserName;
    input.unavailableMenus = unavailableMenus;
    for (const QString& name : menuNames) {
        const MenuEntry* entry = menuEntry(name);
        if (entry && !entry->right.isEmpty())
            input.sharedRights.insert(name, entry->right);
    }
    if (state.CurrentUserName
            .isEmpty()) { // as the catalogue is delivered: at the start nobody waits
        for (const QString& menu : securedMenus())
            input.catalogueCodes += menuNamesFrom(menu);
        return ShellRights(input);
    }
    const QString catalogue = u"SELECT securitycode, displayorder FROM securityobjects"
                              " WHERE LEFT(securitycode,3)='mnu' ORDER BY displayorder"_s;
    const QString granted = u"SELECT a.securitycode, a.displayorder FROM securityobjects a"
                            " INNER JOIN securityusers b ON a.objectid=b.objectid"
                            " WHERE LEFT(a.securitycode,3)='mnu'"
                            " AND b.id="_s +
                            QString::number(state.CurrentUserNo) +
                            u" UNION "
                            "SELECT securitycode, displayorder FROM securityobjects a"
                            " INNER JOIN securitygroups b ON a.objectid=b.objectid"
                            " WHERE LEFT(a.securitycode,3)='mnu'"
                            " AND b.groupid="_s +
                            QString::number(state.CurrentGroupNo) + u" ORDER BY a.displayorder"_s;
    const bool asksGranted = !isAdministrator(state.CurrentUserName);
    if (asksGranted)
        database.expect({catalogue, granted});
    input.catalogueCodes = codes(database.openRecordset(catalogue, jet::RecordsetType::Snapshot));
    if (!input.catalogueCodes.isEmpty() && asksGranted)
        input.grantedCodes = codes(database.openRecordset(granted, jet::RecordsetType::Snapshot));
    return ShellRights(input);
}

} // namespace core
