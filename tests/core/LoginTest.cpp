#include "core/Login.h"
#include "core/MDIMain.h"
#include "core/MainMenu.h"
#include "core/MirsaMain.h"
#include "core/Screens.h"
#include "platform/values/Literals.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"

#include <QAction>
#include <QMdiArea>

namespace {

using screen::Answer;

class Login : public testsupport::ShopTest {
  protected:
    void prepare() override {
        core::registerScreens();
        database().execute(u"DELETE * FROM Users"_s);
        database().execute(u"INSERT INTO Users (UserID, username, [password], usergroupid) "
                           "VALUES ('Admin', 'Administrator', 'Bolts', 0)"_s);
        database().execute(u"INSERT INTO Users (UserID, username, [password], usergroupid) "
                           "VALUES ('pat', 'Pat Miller', 'Lathe', 3)"_s);
        core::shared().CurrentUserName.clear();
        core::shared().CurrentUserNo = core::shared().CurrentGroupNo = 0;
    }
    void enter(const QString& user, const QString& password) {
        type(u"txtUserId"_s, user);
        type(u"txtUserPassword"_s, password);
        press(u"cmdOk"_s);
    }
    void onLogin(std::function<void()> driver) { whenShown(u"frmLogin"_s, std::move(driver)); }
    qint64 numberOf(const QString& user) {
        return database()
            .lookup(u"SELECT ID FROM Users WHERE UserID = '"_s + user + u"'"_s)
            .toLong();
    }
    void grant(const QString& code, const QString& user) {
        const QString object =
            database()
                .lookup(u"SELECT objectid FROM SecurityObjects WHERE securitycode='"_s + code +
                        u"'"_s)
                .toText();
        database().execute(u"INSERT INTO securityusers (id, objectID) VALUES("_s +
                           QString::number(numberOf(user)) + u","_s + object + u")"_s);
    }
    void signIn(const QString& user, const QString& password) {
        onLogin([=, this] { enter(user, password); });
        ASSERT_TRUE(core::LoginUser());
    }
};

TEST_P(Login, EveryWrongTurnLeavesTheDialogUpAndThenTheRightOneEndsIt) {
    onLogin([this] {
        expectBox(u"Please enter your User Name in the appropriate spot."_s);
        press(u"cmdOk"_s);
        EXPECT_EQ(focusName(), u"txtUserId"_s);
        expectBox(u"Please enter your Password in the appropriate spot."_s);
        type(u"txtUserId"_s, u"PAT"_s);
        press(u"cmdOk"_s);
        expectBox(u"This is not a valid login."_s);
        enter(u"PAT"_s, u"bolts"_s);
        enter(u"PAT"_s, u"lathe"_s);
    });
    EXPECT_TRUE(core::LoginUser());
    EXPECT_EQ(core::shared().CurrentUserName, u"PAT"_s) << "as typed";
    EXPECT_EQ(core::shared().CurrentUserNo, numberOf(u"pat"_s));
    EXPECT_EQ(core::shared().CurrentGroupNo, 3);
}

TEST_P(Login, LettersOfAnyLanguageAreTypedInAnyCase) {
    database().execute(u"INSERT INTO Users (UserID, username, [password], usergroupid) "
                       "VALUES ('Müller', 'Jörg', 'BÄUME', 0)"_s);
    signIn(u"MÜLLER"_s, u"bäume"_s);
    EXPECT_EQ(core::shared().CurrentUserNo, numberOf(u"müller"_s));
    onLogin([this] {
        expectBox(u"This is not a valid login."_s);
        enter(u"Muller"_s, u"bäume"_s);
        press(u"cmdCancel"_s);
    });
    EXPECT_FALSE(core::LoginUser());
}

TEST_P(Login, TheNextSignInBeginsWithWhoWasThereLast) {
    signIn(u"pat"_s, u"Lathe"_s);
    onLogin([this] {
        EXPECT_EQ(text(u"txtUserId"_s), u"pat"_s);
        EXPECT_EQ(focusName(), u"txtUserPassword"_s);
        typeOn(u"Lathe\n"_s);
    });
    EXPECT_TRUE(core::LoginUser());
}

TEST_P(Login, GivingUpLeavesTheUserWhoWasSignedIn) {
    core::shared().CurrentUserName = u"pat"_s;
    onLogin([this] {
        type(u"txtUserId"_s, u"Admin"_s);
        key(Qt::Key_Escape);
    });
    EXPECT_FALSE(core::LoginUser());
    onLogin([this] { form().close(); });
    EXPECT_FALSE(core::LoginUser());
    EXPECT_EQ(core::shared().CurrentUserName, u"pat"_s);
}

TEST_P(Login, AnApostropheSignsNobodyInAndEndsInTheDatabaseError) {
    const auto attempt = [this](const QString& user, const QString& password) {
        expectRunTimeError(jet::errors::syntax);
        onLogin([=, this] {
            enter(user, password);
            press(u"cmdCancel"_s);
        });
        EXPECT_FALSE(core::LoginUser());
    };
    attempt(u"Admin"_s, u"' OR '1'='1"_s);
    attempt(u"' OR UserID='Admin"_s, u"x"_s);
    EXPECT_EQ(core::shared().CurrentUserName, QString());
}

TEST_P(Login, RightsAreTheUsersOwnAndThoseOfTheOneGroup) {
    grant(u"mnuFileJob"_s, u"pat"_s);
    const auto member = [this](int group) {
        database().execute(u"UPDATE Users SET usergroupid = %1 WHERE UserID = 'pat'"_s.arg(group));
    };
    database().execute(u"INSERT INTO securitygroups (groupid, objectID) "
                       "SELECT 3, objectid FROM SecurityObjects "
                       "WHERE securitycode = 'ShowDollar'"_s);
    signIn(u"pat"_s, u"Lathe"_s);
    EXPECT_TRUE(core::HasAccess(u"mnuFileJob"_s));
    EXPECT_TRUE(core::HasAccess(u"ShowDollar"_s));
    EXPECT_FALSE(core::HasAccess(u"mnuFileEstimate"_s));
    member(0);
    signIn(u"pat"_s, u"Lathe"_s);
    EXPECT_FALSE(core::HasAccess(u"ShowDollar"_s)) << "no group";
    signIn(u"aDmin"_s, u"bolts"_s);
    EXPECT_TRUE(core::HasAccess(u"anything"_s));
}

TEST_P(Login, TheMenusFollowTheRights) {
    core::MDIMain shell;
    screen::Forms::add(u"frmJob"_s,
                       [] { return std::make_unique<screen::Form>(u"frmJob"_s, u"Job"_s); });
    const auto enabled = [&shell](const char* name) {
        return shell.menuAction(QString::fromLatin1(name))->isEnabled();
    };
    const quint64 waits = database().waits();
    shell.SecureMenuObjects();
    EXPECT_EQ(database().waits(), waits) << "the start reads no rights before somebody signs in";
    auto listed = database().openRecordset(
        u"SELECT securitycode FROM SecurityObjects WHERE LEFT(securitycode,3)='mnu'"_s,
        jet::RecordsetType::Snapshot);
    for (; !listed.eof(); listed.moveNext())
        EXPECT_FALSE(shell.menuAction(listed.text(u"securitycode"))->isEnabled())
            << listed.text(u"securitycode").toStdString() << " before the login";
    EXPECT_FALSE(shell.menuAction(u"mnuAddOns"_s)->isVisible());
    EXPECT_TRUE(enabled("mnuFileLogin"));

    grant(u"mnuAddOns"_s, u"pat"_s);
    grant(u"mnuFileJob"_s, u"pat"_s);
    signIn(u"pat"_s, u"Lathe"_s);
    shell.SecureMenuObjects();
    EXPECT_TRUE(enabled("mnuFileJob"));
    EXPECT_TRUE(shell.toolButton(2)->isVisible());
    EXPECT_TRUE(shell.toolButton(6)->isVisible());
    EXPECT_FALSE(shell.toolButton(10)->isVisible());
    EXPECT_FALSE(enabled("mnuUtilitiesLoginSetup"));
    shell.openOnlyModule();
    EXPECT_TRUE(screen::Forms::isLoaded(u"frmJob"_s)) << "the only one that this user may use";
    grant(u"mnuHistory"_s, u"pat"_s);
    screen::Forms::find(u"frmJob"_s)->unload();
    shell.SecureMenuObjects();
    shell.openOnlyModule();
    EXPECT_FALSE(screen::Forms::isLoaded(u"frmJob"_s)) << "one of two";

    signIn(u"admin"_s, u"Bolts"_s);
    shell.SecureMenuObjects();
    EXPECT_TRUE(enabled("mnuUtilitiesChangePassword"));
    EXPECT_FALSE(enabled("mnuInvoice")) << "its screen is not installed";
    EXPECT_FALSE(shell.toolButton(4)->isVisible());
    const QStringList companions{u"mnuFileBenchline"_s, u"mnuFileBarcode"_s, u"mnuExternal"_s};
    for (const bool installed : {true, false}) {
        programsStart = installed;
        shell.SecureMenuObjects();
        for (const QString& name : companions)
            EXPECT_EQ(shell.menuAction(name)->isVisible(), installed) << name.toStdString();
    }
}

/// A screen that may be told to refuse to close.
class Stubborn : public screen::Form {
  public:
    Stubborn() : Form(u"frmStubborn"_s, u"Stubborn"_s) {}
    bool Form_QueryUnload() override { return !refuses; }
    static inline bool refuses = true;
};

TEST_P(Login, AnotherUserComesOnlyWhenEveryScreenCloses) {
    screen::Forms::add(u"frmStubborn"_s, [] { return std::make_unique<Stubborn>(); });
    core::MDIMain shell;
    shell.show();
    core::shared().CurrentUserName = u"Admin"_s;
    screen::Forms::show(u"frmStubborn"_s);
    Stubborn::refuses = true;
    core::SwitchUser();
    EXPECT_TRUE(screen::Forms::isLoaded(u"frmStubborn"_s));
    EXPECT_EQ(core::shared().CurrentUserName, u"Admin"_s);

    Stubborn::refuses = false;
    onLogin([this] { press(u"cmdCancel"_s); });
    core::SwitchUser();
    EXPECT_FALSE(screen::Forms::isLoaded(u"frmStubborn"_s));
    EXPECT_EQ(core::shared().CurrentUserName, u"Admin"_s);

    shell.menuAction(u"mnuFileJob"_s)->setEnabled(true);
    onLogin([this] { enter(u"pat"_s, u"Lathe"_s); });
    shell.menuAction(u"mnuFileLogin"_s)->trigger();
    EXPECT_EQ(core::shared().CurrentUserName, u"pat"_s);
    EXPECT_FALSE(shell.menuAction(u"mnuFileJob"_s)->isEnabled());
}

TEST_P(Login, OnesOwnPasswordIsCheckedAndStoredInCapitals) {
    signIn(u"pat"_s, u"Lathe"_s);
    const auto fill = [this](const QString& old, const QString& fresh, const QString& again) {
        type(u"txtOldPassword"_s, old);
        type(u"txtNewPassword"_s, fresh);
        type(u"txtVerify"_s, again);
        press(u"cmdOK"_s);
    };
    whenShown(u"frmAbout"_s, [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        press(u"cmdOK"_s);
    });
    screen::Forms::showModal(u"frmAbout"_s);
    whenShown(u"frmPass"_s, [&] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        expectBox(u"Invalid Old Password. Please try again!"_s);
        fill(u"wrong"_s, u"a"_s, u"b"_s);
        EXPECT_EQ(focusName(), u"txtOldPassword"_s);
        expectBox(u"New Password is not verified correctly. Please try again!"_s);
        fill(u"lathe"_s, u"drill"_s, u"dril"_s);
        EXPECT_EQ(focusName(), u"txtVerify"_s);
        expectBox(u"New Password may not be the same as the old one. Please try again!"_s);
        fill(u"lathe"_s, u"LATHE"_s, u"lathe"_s);
        expectBox(u"A password may not contain an apostrophe. Please try again!"_s);
        fill(u"LATHE"_s, u"o'drill"_s, u"O'Drill"_s); // nobody could sign in with it
        EXPECT_EQ(focusName(), u"txtNewPassword"_s);
        fill(u"LATHE"_s, u"drill"_s, u"Drill"_s);
    });
    screen::Forms::showModal(u"frmPass"_s);
    EXPECT_EQ(rows(u"SELECT [password] FROM Users WHERE UserID = 'pat'"_s),
              QStringList(u"DRILL"_s));
    EXPECT_EQ(rows(u"SELECT [password] FROM Users WHERE UserID = 'Admin'"_s),
              QStringList(u"Bolts"_s));

    database().execute(u"DELETE * FROM Users WHERE UserID = 'pat'"_s);
    expectBox(u"Your UserID has just been deleted!"_s, Answer::Ok, {}, {}, screen::Icon::Critical);
    screen::Forms::showModal(u"frmPass"_s);
}

MIRSA_BOTH_ENGINES(Login);

} // namespace
