#include "core/Login.h"
#include "core/MDIMain.h"
#include "core/MainMenu.h"
#include "core/MirsaMain.h"
#include "core/Screens.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"

#include <QAction>
#include <QMdiArea>

namespace {

using screen::Answer;

class Login : public testsupport::ShopTest {
  protected:
    void SetUp() override {
        ShopTest::SetUp();
        if (IsSkipped())
            return;
        core::registerScreens();
        database().execute(QStringLiteral("DELETE * FROM Users"));
        database().execute(
            QStringLiteral("INSERT INTO Users (UserID, username, [password], usergroupid) "
                           "VALUES ('Admin', 'Administrator', 'Bolts', 0)"));
        database().execute(
            QStringLiteral("INSERT INTO Users (UserID, username, [password], usergroupid) "
                           "VALUES ('pat', 'Pat Miller', 'Lathe', 3)"));
        core::shared().CurrentUserName.clear();
        core::shared().CurrentUserNo = core::shared().CurrentGroupNo = 0;
    }
    void enter(const QString& user, const QString& password) {
        type(QStringLiteral("txtUserId"), user);
        type(QStringLiteral("txtUserPassword"), password);
        press(QStringLiteral("cmdOk"));
    }
    void onLogin(std::function<void()> driver) {
        whenShown(QStringLiteral("frmLogin"), std::move(driver));
    }
    qint64 numberOf(const QString& user) {
        return database()
            .lookup(QStringLiteral("SELECT ID FROM Users WHERE UserID = '") + user +
                    QStringLiteral("'"))
            .toLong();
    }
    void grant(const QString& code, const QString& user) {
        const QString object =
            database()
                .lookup(
                    QStringLiteral("SELECT objectid FROM SecurityObjects WHERE securitycode='") +
                    code + QStringLiteral("'"))
                .toText();
        database().execute(QStringLiteral("INSERT INTO securityusers (id, objectID) VALUES(") +
                           QString::number(numberOf(user)) + QStringLiteral(",") + object +
                           QStringLiteral(")"));
    }
    void signIn(const QString& user, const QString& password) {
        onLogin([=, this] { enter(user, password); });
        ASSERT_TRUE(core::LoginUser());
    }
};

TEST_P(Login, EveryWrongTurnLeavesTheDialogUpAndThenTheRightOneEndsIt) {
    onLogin([this] {
        expectBox(QStringLiteral("Please enter your User Name in the appropriate spot."));
        press(QStringLiteral("cmdOk"));
        EXPECT_EQ(focusName(), QStringLiteral("txtUserId"));
        expectBox(QStringLiteral("Please enter your Password in the appropriate spot."));
        type(QStringLiteral("txtUserId"), QStringLiteral("PAT"));
        press(QStringLiteral("cmdOk"));
        expectBox(QStringLiteral("This is not a valid login."));
        enter(QStringLiteral("PAT"), QStringLiteral("bolts"));
        enter(QStringLiteral("PAT"), QStringLiteral("lathe"));
    });
    EXPECT_TRUE(core::LoginUser());
    EXPECT_EQ(core::shared().CurrentUserName, QStringLiteral("PAT")) << "as typed";
    EXPECT_EQ(core::shared().CurrentUserNo, numberOf(QStringLiteral("pat")));
    EXPECT_EQ(core::shared().CurrentGroupNo, 3);
}

TEST_P(Login, GivingUpLeavesTheUserWhoWasSignedIn) {
    core::shared().CurrentUserName = QStringLiteral("pat");
    onLogin([this] {
        type(QStringLiteral("txtUserId"), QStringLiteral("Admin"));
        key(Qt::Key_Escape);
    });
    EXPECT_FALSE(core::LoginUser());
    onLogin([this] { form().close(); });
    EXPECT_FALSE(core::LoginUser());
    EXPECT_EQ(core::shared().CurrentUserName, QStringLiteral("pat"));
}

TEST_P(Login, AnApostropheSignsNobodyInAndEndsInTheDatabaseError) {
    const auto attempt = [this](const QString& user, const QString& password) {
        expectRunTimeError(jet::errors::syntax);
        onLogin([=, this] {
            enter(user, password);
            press(QStringLiteral("cmdCancel"));
        });
        EXPECT_FALSE(core::LoginUser());
    };
    attempt(QStringLiteral("Admin"), QStringLiteral("' OR '1'='1"));
    attempt(QStringLiteral("' OR UserID='Admin"), QStringLiteral("x"));
    EXPECT_EQ(core::shared().CurrentUserName, QString());
}

TEST_P(Login, RightsAreTheUsersOwnAndThoseOfTheOneGroup) {
    grant(QStringLiteral("mnuFileJob"), QStringLiteral("pat"));
    const auto member = [this](int group) {
        database().execute(
            QStringLiteral("UPDATE Users SET usergroupid = %1 WHERE UserID = 'pat'").arg(group));
    };
    database().execute(QStringLiteral("INSERT INTO securitygroups (groupid, objectID) "
                                      "SELECT 3, objectid FROM SecurityObjects "
                                      "WHERE securitycode = 'ShowDollar'"));
    signIn(QStringLiteral("pat"), QStringLiteral("Lathe"));
    EXPECT_TRUE(core::HasAccess(QStringLiteral("mnuFileJob")));
    EXPECT_TRUE(core::HasAccess(QStringLiteral("ShowDollar")));
    EXPECT_FALSE(core::HasAccess(QStringLiteral("mnuFileEstimate")));
    member(0);
    signIn(QStringLiteral("pat"), QStringLiteral("Lathe"));
    EXPECT_FALSE(core::HasAccess(QStringLiteral("ShowDollar"))) << "no group";
    signIn(QStringLiteral("aDmin"), QStringLiteral("bolts"));
    EXPECT_TRUE(core::HasAccess(QStringLiteral("anything")));
}

TEST_P(Login, TheMenusFollowTheRights) {
    core::MDIMain shell;
    screen::Forms::add(QStringLiteral("frmJob"), [] {
        return std::make_unique<screen::Form>(QStringLiteral("frmJob"), QStringLiteral("Job"));
    });
    const auto enabled = [&shell](const char* name) {
        return shell.menuAction(QString::fromLatin1(name))->isEnabled();
    };
    shell.SecureMenuObjects();
    EXPECT_FALSE(enabled("mnuFileJob")) << "before the login all that is listed is off";
    EXPECT_FALSE(shell.menuAction(QStringLiteral("mnuAddOns"))->isVisible());
    EXPECT_TRUE(enabled("mnuFileLogin"));

    grant(QStringLiteral("mnuAddOns"), QStringLiteral("pat"));
    grant(QStringLiteral("mnuFileJob"), QStringLiteral("pat"));
    signIn(QStringLiteral("pat"), QStringLiteral("Lathe"));
    shell.SecureMenuObjects();
    EXPECT_TRUE(enabled("mnuFileJob"));
    EXPECT_TRUE(shell.toolButton(2)->isVisible());
    EXPECT_TRUE(shell.toolButton(6)->isVisible());
    EXPECT_FALSE(shell.toolButton(10)->isVisible());
    EXPECT_FALSE(enabled("mnuUtilitiesLoginSetup"));

    signIn(QStringLiteral("admin"), QStringLiteral("Bolts"));
    shell.SecureMenuObjects();
    EXPECT_TRUE(enabled("mnuUtilitiesChangePassword"));
    EXPECT_FALSE(enabled("mnuInvoice")) << "its screen is not installed";
    EXPECT_FALSE(shell.toolButton(4)->isVisible());
}

/// A screen that may be told to refuse to close.
class Stubborn : public screen::Form {
  public:
    Stubborn() : Form(QStringLiteral("frmStubborn"), QStringLiteral("Stubborn")) {}
    bool Form_QueryUnload() override { return !refuses; }
    static inline bool refuses = true;
};

TEST_P(Login, AnotherUserComesOnlyWhenEveryScreenCloses) {
    screen::Forms::add(QStringLiteral("frmStubborn"), [] { return std::make_unique<Stubborn>(); });
    core::MDIMain shell;
    shell.show();
    core::shared().CurrentUserName = QStringLiteral("Admin");
    screen::Forms::show(QStringLiteral("frmStubborn"));
    Stubborn::refuses = true;
    core::SwitchUser();
    EXPECT_TRUE(screen::Forms::isLoaded(QStringLiteral("frmStubborn")));
    EXPECT_EQ(core::shared().CurrentUserName, QStringLiteral("Admin"));

    Stubborn::refuses = false;
    onLogin([this] { press(QStringLiteral("cmdCancel")); });
    core::SwitchUser();
    EXPECT_FALSE(screen::Forms::isLoaded(QStringLiteral("frmStubborn")));
    EXPECT_EQ(core::shared().CurrentUserName, QStringLiteral("Admin"));

    shell.menuAction(QStringLiteral("mnuFileJob"))->setEnabled(true);
    onLogin([this] { enter(QStringLiteral("pat"), QStringLiteral("Lathe")); });
    shell.menuAction(QStringLiteral("mnuFileLogin"))->trigger();
    EXPECT_EQ(core::shared().CurrentUserName, QStringLiteral("pat"));
    EXPECT_FALSE(shell.menuAction(QStringLiteral("mnuFileJob"))->isEnabled());
}

TEST_P(Login, OnesOwnPasswordIsCheckedAndStoredInCapitals) {
    signIn(QStringLiteral("pat"), QStringLiteral("Lathe"));
    const auto fill = [this](const QString& old, const QString& fresh, const QString& again) {
        type(QStringLiteral("txtOldPassword"), old);
        type(QStringLiteral("txtNewPassword"), fresh);
        type(QStringLiteral("txtVerify"), again);
        press(QStringLiteral("cmdOK"));
    };
    whenShown(QStringLiteral("frmAbout"), [this] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        press(QStringLiteral("cmdOK"));
    });
    screen::Forms::showModal(QStringLiteral("frmAbout"));
    whenShown(QStringLiteral("frmPass"), [&] {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        expectBox(QStringLiteral("Invalid Old Password. Please try again!"));
        fill(QStringLiteral("wrong"), QStringLiteral("a"), QStringLiteral("b"));
        EXPECT_EQ(focusName(), QStringLiteral("txtOldPassword"));
        expectBox(QStringLiteral("New Password is not verified correctly. Please try again!"));
        fill(QStringLiteral("lathe"), QStringLiteral("drill"), QStringLiteral("dril"));
        EXPECT_EQ(focusName(), QStringLiteral("txtVerify"));
        expectBox(
            QStringLiteral("New Password may not be the same as the old one. Please try again!"));
        fill(QStringLiteral("lathe"), QStringLiteral("LATHE"), QStringLiteral("lathe"));
        fill(QStringLiteral("LATHE"), QStringLiteral("o'drill"), QStringLiteral("O'Drill"));
    });
    screen::Forms::showModal(QStringLiteral("frmPass"));
    EXPECT_EQ(rows(QStringLiteral("SELECT [password] FROM Users WHERE UserID = 'pat'")),
              QStringList(QStringLiteral("O'DRILL")));
    EXPECT_EQ(rows(QStringLiteral("SELECT [password] FROM Users WHERE UserID = 'Admin'")),
              QStringList(QStringLiteral("Bolts")));

    database().execute(QStringLiteral("DELETE * FROM Users WHERE UserID = 'pat'"));
    expectBox(QStringLiteral("Your UserID has just been deleted!"), Answer::Ok, {}, {},
              screen::Icon::Critical);
    screen::Forms::showModal(QStringLiteral("frmPass"));
}

MIRSA_BOTH_ENGINES(Login);

} // namespace
