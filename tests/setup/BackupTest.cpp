#include "core/keeping/Backup.h"
#include "core/keeping/BackupJob.h"
#include "core/keeping/Files.h"
#include "core/keeping/PaperBackup.h"
#include "core/papers/Papers.h"
#include "platform/jet/Location.h"
#include "platform/values/Literals.h"
#include "setup/Program.h"
#include "support/DatabaseFixture.h"

#include <QDir>
#include <QThread>

#include <thread>

namespace {

using setuptest::run;

/// A program folder on either engine, with a counter that writers keep.
class Backup : public testsupport::ShopDatabaseFixture {
  protected:
    void prepare() override {
        execute(u"UPDATE SystemSettings SET ArchiveMonths = 0");
        if (GetParam() == testsupport::EngineKind::Server) {
            keeping::writeWhole(folder() + u"/Mirsa.server"_s, testDatabase().location().toUtf8());
        } else {
            testDatabase().close();
            ASSERT_TRUE(QFile::copy(testDatabase().location(), folder() + u"/Mirsa.mdb"_s));
        }
    }
    QString folder() const { return m_folder.path(); }
    QString target() const { return m_folder.filePath(u"Backups"_s); }
    std::unique_ptr<jet::Database> open() const { return jet::openProgramFolder(folder()); }

    /// One change: a shipment, and the number of shipments in its job.
    static void write(jet::Database& database) {
        jet::Transaction transaction(database);
        database.execute(u"INSERT INTO JobShip (JobNo, Quantity) VALUES (1, 1)"_s);
        database.execute(u"UPDATE SystemSettings SET ArchiveMonths = IIf(ArchiveMonths IS NULL, 1, "
                         "ArchiveMonths + 1)"_s);
        transaction.commit();
    }
    static qint64 written(jet::Database& database) {
        const QStringList both = rows(database, u"SELECT ArchiveMonths, (SELECT COUNT(*) FROM "
                                                "JobShip) AS Shipments FROM SystemSettings"_s)
                                     .value(0)
                                     .split(u'|');
        EXPECT_EQ(both.first(), both.last()) << "half a change";
        return both.last().toLongLong();
    }

  private:
    QTemporaryDir m_folder;
};
MIRSA_BOTH_ENGINES(Backup);

keeping::BackupFile at(const QDate& date) {
    return {date.toString(Qt::ISODate), QDateTime(date, QTime(8, 0)), 1};
}

} // namespace

TEST_P(Backup, TakenWhileStationsWriteIsAStateOfSomeMoment) {
    std::vector<std::jthread> stations;
    for (int i = 0; i < 8; ++i)
        stations.emplace_back([this](const std::stop_token& stop) {
            const auto database = open();
            while (!stop.stop_requested())
                write(*database);
        });
    qint64 before = 0, after = 0;
    {
        const auto database = open();
        while (database->lookup(u"SELECT COUNT(*) FROM JobShip"_s).toLong() < 20)
            QThread::msleep(5);
        before = written(*database);
        const auto made = run({u"backup"_s, folder(), target()});
        ASSERT_EQ(made.code, 0) << made.err.toStdString();
        after = written(*database);
    }
    stations.clear();

    const auto backups = keeping::backupsIn(target());
    ASSERT_EQ(backups.size(), 1U);
    testDatabase().close();
    const auto restored = run({u"restore"_s, backups.front().path, folder()});
    ASSERT_EQ(restored.code, 0) << restored.err.toStdString();
    const auto database = open();
    const qint64 rows = written(*database);
    EXPECT_GE(rows, before);
    EXPECT_LE(rows, after);
    write(*database); // counters go on
    EXPECT_EQ(written(*database), rows + 1);
}

TEST_P(Backup, AKillAtAnyMomentLeavesAGoodOldOneOrAGoodNewOne) {
    write(*open());
    ASSERT_EQ(run({u"backup"_s, folder(), target()}).code, 0);
    const QString first = keeping::backupsIn(target()).front().path;
    write(*open());
    testDatabase().close();
    const int rounds = qEnvironmentVariableIntValue("MIRSA_KILLS") > 0
                           ? qEnvironmentVariableIntValue("MIRSA_KILLS")
                           : 5;
    for (int round = 0; round < rounds; ++round) {
        for (const QStringList& words : {QStringList{u"backup"_s, folder(), target()},
                                         QStringList{u"restore"_s, first, folder()}}) {
            QProcess process;
            process.start(setuptest::program(), words);
            process.waitForFinished(5 + (round * 37) % 400);
            process.kill();
            process.waitForFinished();
            const qint64 rows = written(*open());
            EXPECT_TRUE(rows == 1 || rows == 2) << rows;
            ASSERT_FALSE(keeping::backupsIn(target()).empty());
        }
    }
    // Each that counts as good is: it can be put back.
    const auto backups = keeping::backupsIn(target());
    const auto restored = run({u"restore"_s, backups.front().path, folder()});
    ASSERT_EQ(restored.code, 0) << restored.err.toStdString();
    EXPECT_GE(written(*open()), 1);
    ASSERT_EQ(run({u"backup"_s, folder(), target()}).code, 0);
    EXPECT_EQ(QDir(target()).entryList({u"*.unfinished*"_s}), QStringList());
}

TEST_P(Backup, TheDaysOwnGoesOnBesideTheWorkAndEndsWithTheProgram) {
    const auto database = open();
    write(*database);
    { const keeping::BackupJob brokenOff(folder(), target()); }
    EXPECT_EQ(QDir(target()).entryList({u"*.unfinished*"_s}), QStringList());
    keeping::BackupJob job(folder(), target());
    do
        write(*database);
    while (job.isRunning());
    EXPECT_EQ(job.failure(), QString());
    const QDateTime now = QDateTime::currentDateTime();
    EXPECT_FALSE(keeping::isBackupDue(folder(), now));
    EXPECT_TRUE(keeping::isBackupDue(folder(), now.addDays(1)));

    const keeping::BackupJob nowhere(folder(), u"/proc/nowhere"_s);
    while (nowhere.isRunning())
        QThread::msleep(5);
    EXPECT_FALSE(nowhere.failure().isEmpty());
}

TEST_P(Backup, WhatWasChangedSinceItWasFoundGoodIsRefused) {
    write(*open());
    ASSERT_EQ(run({u"backup"_s, folder(), target()}).code, 0);
    const QString path = keeping::backupsIn(target()).front().path;
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    file.seek(file.size() / 2);
    file.write("scratched");
    file.close();
    testDatabase().close();
    const auto refused = run({u"restore"_s, path, folder()});
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.err.contains(u"Nothing was changed"_s)) << refused.err.toStdString();
    EXPECT_EQ(written(*open()), 1);
    EXPECT_EQ(run({u"restore"_s, path + u"x"_s, folder()}).code, 1);
}

TEST_P(Backup, ADatabaseInUseIsNotReplaced) {
    ASSERT_EQ(run({u"backup"_s, folder(), target()}).code, 0);
    const auto station = open();
    write(*station);
    const auto refused = run({u"restore"_s, keeping::backupsIn(target()).front().path, folder()});
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.err.contains(u"in use"_s)) << refused.err.toStdString();
    EXPECT_EQ(written(*station), 1);
}

TEST_P(Backup, HasThePapersOnceAndBringsThemBack) {
    using State = keeping::PaperStore::State;
    const keeping::PaperStore shop(folder() + u"/Drawings"_s), kept(target() + u"/Papers"_s);
    open()->execute(u"UPDATE SystemSettings SET PapersFolder = 'Drawings'"_s);
    open()->execute(u"INSERT INTO Job (PartNo) VALUES ('AX')"_s);
    const core::PaperKind& job = *core::paperKind(u"Job"_s);
    std::vector<keeping::Content> contents;
    for (const char* text : {"drawing", "certificate", "photo"}) {
        const QString path = folder() + u'/' + QString::fromLatin1(text);
        keeping::writeWhole(path, text);
        contents.push_back(shop.add(path));
        core::addPapers(*open(), job, 1, {{QString::fromLatin1(text), contents.back()}}, {});
    }
    const auto backUp = [this] {
        const auto made = run({u"backup"_s, folder(), target()});
        EXPECT_EQ(made.code, 0) << made.err.toStdString();
        return made.out;
    };
    EXPECT_TRUE(backUp().contains(u"It has 3 papers."_s));
    const QString first = keeping::backupsIn(target()).front().path;

    // One that is removed stays until a backup has it, and for a day: somebody may be adding it.
    core::removePapers(*open(), {3});
    backUp();
    const QString second = keeping::backupsIn(target()).front().path;
    EXPECT_EQ(shop.check(contents[2]), State::Good);
    QFile photo(shop.pathOf(contents[2].hash));
    ASSERT_TRUE(photo.open(QIODevice::ReadOnly));
    photo.setFileTime(QDateTime::currentDateTime().addDays(-2), QFileDevice::FileModificationTime);
    backUp();
    EXPECT_EQ(shop.check(contents[2]), State::Missing);
    EXPECT_EQ(kept.contents().size(), 3U) << "each once among the backups";

    // Lost and changed from outside.
    shop.remove(contents[0].hash);
    QFile certificate(shop.pathOf(contents[1].hash));
    certificate.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    ASSERT_TRUE(certificate.open(QIODevice::ReadWrite));
    certificate.write("CERT");
    certificate.close();
    const auto checked = run({u"check"_s, folder()});
    EXPECT_TRUE(checked.out.contains(u"drawing: the file is missing"_s));
    EXPECT_TRUE(checked.out.contains(u"certificate: the file was changed from outside"_s));
    EXPECT_TRUE(backUp().contains(u"1 papers that records name are missing or were changed"_s));
    QDir(target()).remove(keeping::paperListOf(first).section(u'/', -1));
    keeping::trimPapers(target());
    EXPECT_EQ(kept.check(contents[0]), State::Good) << "the only one there is";

    testDatabase().close();
    const auto restored = run({u"restore"_s, second, folder()});
    ASSERT_EQ(restored.code, 0) << restored.err.toStdString();
    EXPECT_TRUE(restored.out.contains(u"3 papers: 0 were there, 3 were put back"_s))
        << restored.out.toStdString();
    for (const keeping::Content& content : contents)
        EXPECT_EQ(shop.check(content), State::Good);
    EXPECT_EQ(rows(*open(), u"SELECT FileName FROM Papers ORDER BY ID"_s).size(), 2);

    shop.remove(contents[0].hash);
    EXPECT_EQ(run({u"check"_s, folder(), u"--mend"_s}).code, 0);
    EXPECT_EQ(shop.check(contents[0]), State::Good) << "the backups had it";

    // Where the folder is out of reach the database's backup is good all the same, and says so.
    open()->execute(u"UPDATE SystemSettings SET PapersFolder = 'Elsewhere'"_s);
    EXPECT_TRUE(backUp().contains(u"It has no papers: "_s));
    // It goes on keeping what earlier ones have, and nothing is put into a place that isn't there.
    for (const keeping::BackupFile& backup : keeping::backupsIn(target()))
        if (backup.path != keeping::backupsIn(target()).front().path)
            QFile::remove(keeping::paperListOf(backup.path));
    keeping::trimPapers(target());
    EXPECT_EQ(kept.check(contents[0]), State::Good);
    for (const QStringList& words : {QStringList{}, QStringList{u"--mend"_s}}) {
        const auto told = run(QStringList{u"check"_s, folder()} + words);
        EXPECT_EQ(told.code, 1);
        EXPECT_EQ(told.out.count(u"Papers: the folder"_s), 1) << told.out.toStdString();
        EXPECT_EQ(told.out.count(u"out of reach"_s), 1);
        EXPECT_FALSE(told.out.contains(u"missing"_s));
        EXPECT_FALSE(QFileInfo::exists(folder() + u"/Elsewhere"_s));
    }
    keeping::writeWhole(folder() + u"/Mirsa.backup"_s, "folder=Backups\n");
    EXPECT_TRUE(keeping::backupWarning(folder(), QDateTime::currentDateTime())
                    .contains(u"has no papers"_s));
}

TEST_P(Backup, AFullDiskIsToldAndLeavesWhatWasThere) {
    write(*open());
    ASSERT_EQ(run({u"backup"_s, folder(), target()}).code, 0);
    const QString first = keeping::backupsIn(target()).front().path;
    write(*open());
    testDatabase().close();
    int refused = 0;
    for (const int kilobytes : {0, 1, 4, 40, 300, 900, 100000}) {
        const auto good = keeping::backupsIn(target()).size();
        for (const QStringList& words : {QStringList{u"backup"_s, folder(), target()},
                                         QStringList{u"restore"_s, first, folder()}}) {
            QString err;
            const int code = setuptest::runOnFullDisk(kilobytes, words, err);
            EXPECT_EQ(code == 0, err.isEmpty()) << err.toStdString();
            refused += code == 0 ? 0 : 1;
            EXPECT_EQ(written(*open()), code == 0 && words[0] == u"restore" ? 1 : 2)
                << kilobytes << words[0].toStdString();
            if (code == 0 && words[0] == u"restore")
                write(*open());
        }
        EXPECT_EQ(QDir(target()).entryList({u"*.unfinished*"_s}), QStringList());
        EXPECT_EQ(QDir(folder()).entryList({u"*.unfinished*"_s}), QStringList());
        EXPECT_GE(keeping::backupsIn(target()).size(), good);
    }
    EXPECT_GE(refused, 6);
}

TEST(BackupAges, AllOfAWeekThenWeeklyThenMonthlyAreKept) {
    const QDateTime now(QDate(2007, 6, 13), QTime(17, 0));
    std::vector<keeping::BackupFile> backups;
    for (int day = 0; day < 500; ++day)
        backups.push_back(at(now.date().addDays(-day)));
    const QStringList old = keeping::outdated(backups, now, {});
    std::vector<keeping::BackupFile> kept;
    for (const auto& backup : backups)
        if (!old.contains(backup.path))
            kept.push_back(backup);
    const auto within = [&](int from, int to) {
        return std::count_if(kept.begin(), kept.end(), [&](const auto& backup) {
            const auto days = backup.made.daysTo(now);
            return days >= from && days <= to;
        });
    };
    EXPECT_EQ(within(0, 7), 8);
    EXPECT_NEAR(static_cast<double>(within(8, 92)), 12.5, 1);
    EXPECT_NEAR(static_cast<double>(within(93, 500)), 14.5, 1);
    // Kept day by day, those that go are the same: nothing leaves a hole.
    for (int day = 1; day < 60; ++day) {
        const QStringList later = keeping::outdated(kept, now.addDays(day), {});
        kept.erase(std::remove_if(kept.begin(), kept.end(),
                                  [&](const auto& backup) { return later.contains(backup.path); }),
                   kept.end());
    }
    EXPECT_GE(kept.size(), 15U);
    EXPECT_EQ(keeping::outdated({at(QDate(1999, 1, 1))}, now, {}), QStringList()) << "the only one";
}

TEST(BackupAges, TheAdministratorIsToldAsTheSettingsSay) {
    QTemporaryDir folder;
    const QDateTime now(QDate(2007, 6, 13), QTime(8, 0));
    EXPECT_TRUE(keeping::isBackupDue(folder.path(), now));
    EXPECT_EQ(keeping::backupWarning(folder.path(), now), QString()) << "one is about to be made";
    QDir().mkpath(folder.filePath(u"Backups"_s));
    EXPECT_NE(keeping::backupWarning(folder.path(), QDateTime::currentDateTime().addDays(5)),
              QString())
        << "tried every day, and none is good";
    keeping::writeWhole(folder.filePath(u"Mirsa.backup"_s),
                        "daily=no\nfolder=Copies\nwarnAfterDays=5\nkeepAllDays=many\n");
    EXPECT_FALSE(keeping::isBackupDue(folder.path(), now));
    EXPECT_NE(keeping::backupWarning(folder.path(), now), QString());
    const keeping::BackupSettings settings = keeping::backupSettings(folder.path());
    EXPECT_EQ(settings.folder, folder.filePath(u"Copies"_s));
    EXPECT_EQ(settings.keepAllDays, 7);
    QDir().mkpath(settings.folder);
    keeping::writeWhole(settings.folder + u"/Mirsa-20070608-080000.mdb"_s, "x");
    keeping::writeWhole(
        settings.folder + u"/Mirsa-20070608-080000.txt"_s,
        "file=Mirsa-20070608-080000.mdb\nmade=2007-06-08T08:00:00\nsize=1\ncheck=good\n");
    EXPECT_EQ(keeping::backupWarning(folder.path(), now), QString());
    EXPECT_TRUE(keeping::backupWarning(folder.path(), now.addDays(1)).contains(u"6/8/2007"_s));
}
