#include "app/Start.h"
#include "app/Screens.h"
#include "core/MDIMain.h"
#include "core/MirsaMain.h"
#include "platform/screen/Application.h"
#include "platform/system/SingleInstance.h"
#include "platform/values/Literals.h"
#include "support/DatabaseFixture.h"
#include "support/ScreenFixture.h"

#include <QAction>
#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QToolBar>

namespace {

using testsupport::EngineKind;
using testsupport::TestDatabase;

class Start : public testsupport::ScreenFixture {
  protected:
    void SetUp() override { app::registerAllScreens(); }
    void TearDown() override {
        m_program.reset();
        ScreenFixture::TearDown();
        core::shared() = core::SharedState();
    }
    /// A program folder with a delivered shop's database.
    void deliver() {
        const TestDatabase shop(EngineKind::File, TestDatabase::Contents::Shop);
        ASSERT_TRUE(QFile::copy(shop.location(), path("Mirsa.mdb")));
    }
    QString path(const char* file) const { return m_folder.filePath(QString::fromLatin1(file)); }
    bool main() {
        m_program = std::make_unique<app::Program>(dynamic_cast<screen::Application&>(*qApp));
        return m_program->Main(m_folder.path());
    }
    /// The splash, left by a key as people do.
    void passSplash() {
        whenShown(u"frmSplash"_s, [this] { key(Qt::Key_Space); });
    }
    int windows() const {
        int count = 0;
        const auto all = QApplication::topLevelWidgets();
        for (const QWidget* widget : all)
            count += widget->isVisible() && widget != &shell() ? 1 : 0;
        return count;
    }

    QTemporaryDir m_folder;
    std::unique_ptr<app::Program> m_program;
};

TEST_F(Start, AMissingOrUnreadableDatabaseEndsItBeforeAnyWindow) {
    expectBoxContaining(u"The database can't be found or opened."_s, screen::Answer::Retry);
    expectBoxContaining(u"The database can't be found or opened."_s, screen::Answer::Close);
    EXPECT_FALSE(main());
    EXPECT_EQ(windows(), 0);
    EXPECT_FALSE(QFile::exists(path("Mirsa.mdb"))) << "none is made";

    QFile file(path("Mirsa.mdb"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(4096, 'x'));
    file.close();
    expectRunTimeError(jet::errors::unrecognizedFormat);
    EXPECT_FALSE(main());
    EXPECT_EQ(windows(), 0);
    EXPECT_EQ(m_program->shell(), nullptr);
}

TEST_F(Start, ADatabaseOfAnEarlierReleaseOrAnotherProgramIsNamed) {
    const auto change = [this](const QString& statement) {
        jet::Database::openFile(path("Mirsa.mdb"))->execute(statement);
    };
    deliver();
    change(u"DROP TABLE JobShip"_s);
    change(u"ALTER TABLE Terms DROP COLUMN QBSent"_s);
    expectBoxContaining(u"It lacks:\n\ncolumn Terms.QBSent\ntable JobShip\n\nAn "
                        "administrator brings it up to date with this command. It changes nothing "
                        "that is in the database:\n\nmirsa-setup upgrade \""_s +
                        m_folder.path());
    EXPECT_FALSE(main());
    EXPECT_EQ(windows(), 0);

    QFile::remove(path("Mirsa.mdb"));
    jet::Database::createFile(path("Mirsa.mdb"))->execute(u"CREATE TABLE Songs (Title TEXT(9))"_s);
    expectBoxContaining(u"Mirsa.mdb' is no database of Mirsa Project Manager"_s);
    EXPECT_FALSE(main());
}

TEST_F(Start, ASecondInstanceIsToldAndEnds) {
    deliver();
    const platform::SingleInstance running(m_folder.path());
    expectBox(u"Mirsa is already running."_s, screen::Answer::Ok, u"Mirsa"_s, {},
              screen::Icon::Critical);
    expectEndOfProcess();
    EXPECT_FALSE(main());
    EXPECT_EQ(windows(), 0);
}

TEST_F(Start, GivingUpTheFirstLoginEndsTheProcess) {
    deliver();
    passSplash();
    whenShown(u"frmLogin"_s, [this] { press(u"cmdCancel"_s); });
    expectEndOfProcess();
    EXPECT_FALSE(main());
}

TEST_F(Start, TheSplashGoesByItselfAndTheLoginOpensTheShell) {
    deliver();
    whenShown(u"frmSplash"_s, [this] {
        const QPointer<screen::Form> splash(&form());
        EXPECT_TRUE(QTest::qWaitFor([&] { return !splash || !splash->isVisible(); }, 4000));
    });
    whenShown(u"frmLogin"_s, [this] {
        core::MDIMain* shell = dynamic_cast<core::MDIMain*>(core::shell());
        ASSERT_TRUE(shell);
        EXPECT_TRUE(shell->isVisible());
        EXPECT_FALSE(shell->findChild<QToolBar*>()->isVisible());
        EXPECT_FALSE(shell->menuAction(u"mnuFileCustomer"_s)->isEnabled());
        type(u"txtUserId"_s, u"admin"_s);
        type(u"txtUserPassword"_s, u"Bolts\n"_s);
    });
    ASSERT_TRUE(main());
    core::MDIMain* shell = m_program->shell();
    EXPECT_TRUE(shell->findChild<QToolBar*>()->isVisible());
    EXPECT_TRUE(shell->menuAction(u"mnuFileCustomer"_s)->isEnabled());
    EXPECT_EQ(core::shared().CurrentUserName, u"admin"_s);
    EXPECT_EQ(shell->windowTitle(), u"Mirsa Project Manager"_s);

    // What a timer throws is told, and the program goes on.
    QTimer::singleShot(0, shell, [] { throw jet::Error(jet::errors::syntax, u"Syntax"_s); });
    expectRunTimeError(jet::errors::syntax);
    settle();

    expectBoxContaining(u"There are no records in the database"_s, screen::Answer::No);
    shell->menuAction(u"mnuFileCustomer"_s)->trigger();
    EXPECT_TRUE(screen::Forms::isLoaded(u"frmCustomer"_s));
    expectEndOfProcess();
    shell->menuAction(u"mnuFileExit"_s)->trigger();
    EXPECT_FALSE(screen::Forms::isLoaded(u"frmCustomer"_s));
}

} // namespace
