#include "platform/jet/Location.h"
#include "support/DatabaseFixture.h"

#include <QDir>
#include <QFile>
#include <QProcess>

namespace {

struct Answer {
    int code = -1;
    QString out, err;
};

Answer run(const QStringList& words) {
    QProcess process;
    process.start(QStringLiteral(MIRSA_SETUP), words);
    Answer answer;
    if (process.waitForFinished(60000)) {
        answer.code = process.exitCode();
        answer.out = QString::fromUtf8(process.readAllStandardOutput());
        answer.err = QString::fromUtf8(process.readAllStandardError());
    }
    return answer;
}

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class SetupProgram : public testsupport::DatabaseFixture {};
INSTANTIATE_TEST_SUITE_P(OnAServer, SetupProgram,
                         ::testing::Values(testsupport::EngineKind::Server),
                         testsupport::engineName);

} // namespace

TEST(SetupProgramOnFiles, makesAFolderOnceAndFillsItOnce) {
    QTemporaryDir temporary;
    const QString folder = temporary.filePath(QStringLiteral("new shop"));
    const QString path = folder + QStringLiteral("/Mirsa.mdb");
    EXPECT_EQ(run({QStringLiteral("upgrade"), folder}).code, 1);
    const Answer made = run({QStringLiteral("new"), folder});
    ASSERT_EQ(made.code, 0) << made.err.toStdString();
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList{QStringLiteral("Mirsa.mdb")});

    const Answer filled =
        run({QStringLiteral("sample"), folder, QStringLiteral("--years"), QStringLiteral("1"),
             QStringLiteral("--jobs"), QStringLiteral("30")});
    ASSERT_EQ(filled.code, 0) << filled.err.toStdString();
    EXPECT_TRUE(filled.out.contains(u"30 jobs")) << filled.out.toStdString();

    const QByteArray before = contents(path);
    for (const QStringList& words : {QStringList{QStringLiteral("new"), folder},
                                     QStringList{QStringLiteral("sample"), folder}}) {
        const Answer refused = run(words);
        EXPECT_EQ(refused.code, 1);
        EXPECT_FALSE(refused.err.isEmpty());
        EXPECT_TRUE(contents(path) == before);
    }
}

TEST(SetupProgramOnFiles, tellsWhatItTakes) {
    QTemporaryDir folder;
    EXPECT_EQ(run({}).code, 2);
    EXPECT_EQ(run({QStringLiteral("remove"), folder.path()}).code, 2);
    EXPECT_EQ(run({QStringLiteral("new"), folder.path(), QStringLiteral("twice")}).code, 2);
    EXPECT_EQ(run({QStringLiteral("--help")}).code, 0);
    ASSERT_EQ(run({QStringLiteral("new"), folder.path()}).code, 0);
    for (const QStringList& options :
         {QStringList{QStringLiteral("--jobs"), QStringLiteral("many")},
          QStringList{QStringLiteral("--jobs")},
          QStringList{QStringLiteral("--job"), QStringLiteral("5")},
          QStringList{QStringLiteral("--years"), QStringLiteral("0")}}) {
        const Answer answer = run(QStringList{QStringLiteral("sample"), folder.path()} + options);
        EXPECT_NE(answer.code, 0) << options.join(u' ').toStdString();
        EXPECT_FALSE(answer.err.isEmpty());
    }
    QFile broken(folder.filePath(QStringLiteral("Mirsa.mdb")));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly | QIODevice::Truncate));
    broken.write("This is no database, whatever its name says. It is a letter to the customer.");
    broken.close();
    EXPECT_EQ(run({QStringLiteral("upgrade"), folder.path()}).code, 1);
}

TEST_P(SetupProgram, setsUpAServerOnceAndThenOnlyConnects) {
    QTemporaryDir first, second;
    const QString uri = testDatabase().location();
    const Answer made = run({QStringLiteral("server"), uri, first.path()});
    ASSERT_EQ(made.code, 0) << made.err.toStdString();
    {
        const auto database = jet::openProgramFolder(first.path());
        EXPECT_TRUE(database->isServer());
        EXPECT_EQ(rows(*database, QStringLiteral("SELECT UserID FROM Users")),
                  QStringList{QStringLiteral("Admin")});
        database->execute(QStringLiteral("INSERT INTO Customer (company) VALUES ('Kestrel Tool')"));
    }
    EXPECT_EQ(run({QStringLiteral("server"), uri, first.path()}).code, 1);
    const Answer joined = run({QStringLiteral("server"), uri, second.path()});
    ASSERT_EQ(joined.code, 0) << joined.err.toStdString();
    const auto database = jet::openProgramFolder(second.path());
    EXPECT_EQ(rows(*database, QStringLiteral("SELECT company FROM Customer")),
              QStringList{QStringLiteral("Kestrel Tool")});
    EXPECT_EQ(rows(*database, QStringLiteral("SELECT UserID FROM Users")),
              QStringList{QStringLiteral("Admin")});

    QTemporaryDir third;
    const Answer nowhere =
        run({QStringLiteral("server"), QStringLiteral("postgresql://nobody@127.0.0.1:1/none"),
             third.path()});
    EXPECT_EQ(nowhere.code, 1);
    EXPECT_FALSE(QFile::exists(third.filePath(QStringLiteral("Mirsa.server"))));
}
