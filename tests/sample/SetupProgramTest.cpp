#include "platform/jet/Location.h"
#include "platform/values/Literals.h"
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

TEST(SetupProgramOnFiles, MakesAFolderOnceAndFillsItOnce) {
    QTemporaryDir temporary;
    const QString folder = temporary.filePath(u"new shop"_s);
    const QString path = folder + u"/Mirsa.mdb"_s;
    EXPECT_EQ(run({u"upgrade"_s, folder}).code, 1);
    const Answer made = run({u"new"_s, folder});
    ASSERT_EQ(made.code, 0) << made.err.toStdString();
    EXPECT_EQ(QDir(folder).entryList(QDir::Files), QStringList{u"Mirsa.mdb"_s});

    const Answer filled = run({u"sample"_s, folder, u"--years"_s, u"1"_s, u"--jobs"_s, u"30"_s});
    ASSERT_EQ(filled.code, 0) << filled.err.toStdString();
    EXPECT_TRUE(filled.out.contains(u"30 jobs")) << filled.out.toStdString();
    // A company to practise QuickBooks on comes with it, and the program knows the way there.
    EXPECT_TRUE(contents(folder + u"/Mirsa.quickbooks"_s).contains("mirsa-qb-company Practice"));
    EXPECT_TRUE(contents(folder + u"/Practice.company"_s).contains("<CustomerRet>"));

    const QByteArray before = contents(path);
    for (const QStringList& words :
         {QStringList{u"new"_s, folder}, QStringList{u"sample"_s, folder}}) {
        const Answer refused = run(words);
        EXPECT_EQ(refused.code, 1);
        EXPECT_FALSE(refused.err.isEmpty());
        EXPECT_TRUE(contents(path) == before);
    }
}

TEST(SetupProgramOnFiles, TellsWhatItTakes) {
    QTemporaryDir folder;
    EXPECT_EQ(run({}).code, 2);
    EXPECT_EQ(run({u"remove"_s, folder.path()}).code, 2);
    EXPECT_EQ(run({u"new"_s, folder.path(), u"twice"_s}).code, 2);
    EXPECT_EQ(run({u"--help"_s}).code, 0);
    ASSERT_EQ(run({u"new"_s, folder.path()}).code, 0);
    for (const QStringList& options :
         {QStringList{u"--jobs"_s, u"many"_s}, QStringList{u"--jobs"_s},
          QStringList{u"--job"_s, u"5"_s}, QStringList{u"--years"_s, u"0"_s}}) {
        const Answer answer = run(QStringList{u"sample"_s, folder.path()} + options);
        EXPECT_NE(answer.code, 0) << options.join(u' ').toStdString();
        EXPECT_FALSE(answer.err.isEmpty());
    }
    QFile broken(folder.filePath(u"Mirsa.mdb"_s));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly | QIODevice::Truncate));
    broken.write("This is no database, whatever its name says. It is a letter to the customer.");
    broken.close();
    EXPECT_EQ(run({u"upgrade"_s, folder.path()}).code, 1);
}

TEST_P(SetupProgram, SetsUpAServerOnceAndThenOnlyConnects) {
    QTemporaryDir first, second;
    const QString uri = testDatabase().location();
    const Answer made = run({u"server"_s, uri, first.path()});
    ASSERT_EQ(made.code, 0) << made.err.toStdString();
    {
        const auto database = jet::openProgramFolder(first.path());
        EXPECT_TRUE(database->isServer());
        EXPECT_EQ(rows(*database, u"SELECT UserID FROM Users"_s), QStringList{u"Admin"_s});
        database->execute(u"INSERT INTO Customer (company) VALUES ('Kestrel Tool')"_s);
    }
    EXPECT_EQ(run({u"server"_s, uri, first.path()}).code, 1);
    const Answer joined = run({u"server"_s, uri, second.path()});
    ASSERT_EQ(joined.code, 0) << joined.err.toStdString();
    const auto database = jet::openProgramFolder(second.path());
    EXPECT_EQ(rows(*database, u"SELECT company FROM Customer"_s), QStringList{u"Kestrel Tool"_s});
    EXPECT_EQ(rows(*database, u"SELECT UserID FROM Users"_s), QStringList{u"Admin"_s});

    QTemporaryDir third;
    const Answer nowhere =
        run({u"server"_s, u"postgresql://nobody@127.0.0.1:1/none"_s, third.path()});
    EXPECT_EQ(nowhere.code, 1);
    EXPECT_FALSE(QFile::exists(third.filePath(u"Mirsa.server"_s)));
}
