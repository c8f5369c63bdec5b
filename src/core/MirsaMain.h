#pragma once

#include "platform/jet/Database.h"
#include "platform/values/Literals.h"

#include <QSet>
#include <QString>

#include <memory>

namespace core {

/// What the whole process shares: written by the start and by the login only, read by all modules.
struct SharedState {
    QString CurrencySymbol = u"$"_s; ///< of the user's locale; stands in front of money masks
    QString ProgramFolder;           ///< without a slash at its end
    QString DatabasePath;            ///< the file, or the server's URI
    std::unique_ptr<jet::Database> MainDatabase; ///< the one open database
    QString CurrentUserName;                     ///< as typed at the login
    qint64 CurrentUserNo = 0;
    qint64 CurrentGroupNo = 0;       ///< 0: no group
    double PreviewWidthFactor = 0.8; ///< share of the screen that a report preview takes
    double PreviewHeightFactor = 0.8;
};

SharedState& shared();

/// The one open database. Asserts that it is open.
jet::Database& MainDatabase();
/// Lets the one open database know whose changes they are from now on, for its journal: after a
/// login, and where the database was opened anew.
void signChanges();
/// Transactions of the one open database.
jet::Workspace MainWorkspace();

/// Program folder, a slash, and the file's name.
QString programFile(const QString& fileName);

/// Whether the signed-in user may do what the security code names: the administrator may do all,
/// others what they or their group were given.
bool HasAccess(const QString& code);

/// The same for many codes, read in one wait.
struct Access {
    bool all = false;
    QSet<QString> codes; ///< in small letters
    bool has(const QString& code) const { return all || codes.contains(code.toLower()); }
};
Access readAccess();

/// CurrencySymbol in front of a number mask.
QString moneyMask(const QString& mask);

} // namespace core
