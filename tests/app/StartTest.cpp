#include "app/Start.h"
#include "app/Screens.h"
#include "core/MDIMain.h"
#include "core/MirsaMain.h"
#include "platform/system/SingleInstance.h"
#include "support/DatabaseFixture.h"
#include "support/ScreenFixture.h"

#include <QAction>
#include <QApplication>
#include <QTest>
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
        m_program = std::make_unique<app::Program>();
        return m_program->Main(m_folder.path());
    }
    /// The splash, left by a key as people do.
    void passSplash() {
        whenShown(QStringLiteral("frmSplash"), [this] { key(Qt::Key_Space); });
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
    expectRunTimeError(jet::errors::cannotOpenFile);
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

TEST_F(Start, ASecondInstanceIsToldAndEnds) {
    deliver();
    const platform::SingleInstance running(m_folder.path());
    expectBox(QStringLiteral("Mirsa is already running."), screen::Answer::Ok,
              QStringLiteral("Mirsa"), {}, screen::Icon::Critical);
    expectEndOfProcess();
    EXPECT_FALSE(main());
    EXPECT_EQ(windows(), 0);
}

TEST_F(Start, GivingUpTheFirstLoginEndsTheProcess) {
    deliver();
    passSplash();
    whenShown(QStringLiteral("frmLogin"), [this] { press(QStringLiteral("cmdCancel")); });
    expectEndOfProcess();
    EXPECT_FALSE(main());
}

TEST_F(Start, TheSplashGoesByItselfAndTheLoginOpensTheShell) {
    deliver();
    whenShown(QStringLiteral("frmSplash"), [this] {
        const QPointer<screen::Form> splash(&form());
        EXPECT_TRUE(QTest::qWaitFor([&] { return !splash || !splash->isVisible(); }, 4000));
    });
    whenShown(QStringLiteral("frmLogin"), [this] {
        core::MDIMain* shell = dynamic_cast<core::MDIMain*>(core::shell());
        ASSERT_TRUE(shell);
        EXPECT_TRUE(shell->isVisible());
        EXPECT_FALSE(shell->findChild<QToolBar*>()->isVisible());
        EXPECT_FALSE(shell->menuAction(QStringLiteral("mnuFileCustomer"))->isEnabled());
        type(QStringLiteral("txtUserId"), QStringLiteral("admin"));
        type(QStringLiteral("txtUserPassword"), QStringLiteral("Bolts\n"));
    });
    ASSERT_TRUE(main());
    core::MDIMain* shell = m_program->shell();
    EXPECT_TRUE(shell->findChild<QToolBar*>()->isVisible());
    EXPECT_TRUE(shell->menuAction(QStringLiteral("mnuFileCustomer"))->isEnabled());
    EXPECT_EQ(core::shared().CurrentUserName, QStringLiteral("admin"));
    EXPECT_EQ(shell->windowTitle(), QStringLiteral("Mirsa Project Manager"));

    expectBoxContaining(QStringLiteral("There are no records in the database"), screen::Answer::No);
    shell->menuAction(QStringLiteral("mnuFileCustomer"))->trigger();
    EXPECT_TRUE(screen::Forms::isLoaded(QStringLiteral("frmCustomer")));
    expectEndOfProcess();
    shell->menuAction(QStringLiteral("mnuFileExit"))->trigger();
    EXPECT_FALSE(screen::Forms::isLoaded(QStringLiteral("frmCustomer")));
}

} // namespace
