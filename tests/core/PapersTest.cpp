#include "core/papers/Papers.h"
#include "core/keeping/Files.h"
#include "core/papers/Aside.h"
#include "platform/values/Literals.h"
#include "support/DatabaseFixture.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QThread>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

using keeping::Content;
using keeping::PaperStore;
using State = PaperStore::State;

/// A folder for papers, and another with files to take from.
class Store : public ::testing::Test {
  protected:
    QString file(const QString& name, const QByteArray& contents) const {
        const QString path = m_from.filePath(name);
        QFile made(path);
        EXPECT_TRUE(made.open(QIODevice::WriteOnly) && made.write(contents) == contents.size());
        return path;
    }
    static QByteArray noise(int bytes) {
        QByteArray block(bytes, Qt::Uninitialized);
        QRandomGenerator(1).fillRange(reinterpret_cast<quint32*>(block.data()), bytes / 4);
        return block;
    }
    static QString refusal(const std::function<void()>& action) {
        try {
            action();
        } catch (const keeping::Refusal& refusal) {
            return refusal.text();
        }
        return {};
    }
    void scratch(const Content& content, const QByteArray& with) const {
        QFile stored(store.pathOf(content.hash));
        stored.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        ASSERT_TRUE(stored.open(QIODevice::ReadWrite));
        stored.write(with);
    }
    QStringList rests() const { return QDir(store.folder()).entryList(QDir::Files); }
    /// What a child process, a station of its own, ends with.
    static int inChild(const std::function<int()>& work, int killAfterMilliseconds = -1) {
        const pid_t child = ::fork();
        if (child == 0)
            ::_exit(work());
        if (killAfterMilliseconds >= 0) {
            QThread::msleep(static_cast<unsigned long>(killAfterMilliseconds));
            ::kill(child, SIGKILL);
        }
        int status = 0;
        ::waitpid(child, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    QTemporaryDir m_from, m_folder;
    PaperStore store{m_folder.filePath(u"Papers"_s)};
};

} // namespace

TEST_F(Store, KeepsAFileOnceAndSaysWhatIsMissingOrChanged) {
    const Content drawing = store.add(file(u"drawing.pdf"_s, "a drawing"));
    const Content again = store.add(file(u"copy of drawing.pdf"_s, "a drawing"));
    EXPECT_EQ(again.hash, drawing.hash);
    EXPECT_EQ(drawing.bytes, 9);
    store.add(file(u"other.pdf"_s, "b drawing"));
    EXPECT_EQ(store.contents().size(), 2U);
    EXPECT_EQ(store.check(drawing), State::Good);
    const QString out = m_from.filePath(u"out.pdf"_s);
    EXPECT_EQ(store.copyOut(drawing, out), State::Good);

    // Of the same length, so that only reading it shows.
    scratch(drawing, "X");
    EXPECT_EQ(store.look(drawing), State::Good);
    EXPECT_EQ(store.check(drawing), State::Changed);
    QFile::remove(out);
    EXPECT_EQ(store.copyOut(drawing, out), State::Changed);
    EXPECT_FALSE(QFile::exists(out));
    store.add(m_from.filePath(u"drawing.pdf"_s));
    EXPECT_EQ(store.check(drawing), State::Good) << "whoever adds it again puts it right";

    store.remove(drawing.hash);
    EXPECT_EQ(store.check(drawing), State::Missing);
    EXPECT_EQ(rests(), QStringList());
    QDir(store.folder()).removeRecursively();
    EXPECT_EQ(store.look(drawing), State::Unreadable) << "the whole folder is out of reach";
}

TEST_F(Store, SaysWhatItCannotTake) {
    EXPECT_TRUE(refusal([&] { store.add(m_from.path()); }).contains(u"is a folder"));
    EXPECT_TRUE(refusal([&] { store.add(m_from.filePath(u"no"_s)); }).contains(u"isn't there"));
    EXPECT_TRUE(refusal([&] { store.add(file(u"e"_s, "")); }).contains(u"is empty"));
    const QString large = file(u"large"_s, "x");
    ASSERT_TRUE(QFile::resize(large, PaperStore::mostBytes + 1));
    EXPECT_TRUE(refusal([&] { store.add(large); }).contains(u"larger than 1 GB"));
    const QString some = file(u"some"_s, noise(4 << 20));
    EXPECT_TRUE(
        refusal([&] { store.add(some, [](int done) { return done < 50; }); }).contains(u"Broken"));
    const PaperStore nowhere(some + u"/Papers"_s);
    EXPECT_TRUE(refusal([&] { nowhere.add(some); }).contains(u"folder for papers"));
    // A disk that fills up amid the copy.
    EXPECT_EQ(inChild([&] {
                  std::signal(SIGXFSZ, SIG_IGN);
                  const rlimit limit{1 << 20, 1 << 20};
                  ::setrlimit(RLIMIT_FSIZE, &limit);
                  return refusal([&] { store.add(some); }).contains(u"can't be written") ? 7 : 1;
              }),
              7);
    EXPECT_TRUE(store.contents().empty());
    EXPECT_EQ(rests(), QStringList());
}

TEST_F(Store, LongWorkIsDoneAsideAndBrokenOffByHim) {
    const Content photo = store.add(file(u"photo.jpg"_s, noise(4 << 20)));
    const auto here = std::this_thread::get_id();
    int painted = 0;
    State state = State::Good;
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [&] { ++painted; }, Qt::QueuedConnection);
    core::runAside(
        [&](const keeping::Progress& progress) {
            EXPECT_NE(std::this_thread::get_id(), here);
            while (progress(42))
                QThread::msleep(5);
            state = store.check(photo, progress);
        },
        [&](int percent) {
            EXPECT_EQ(std::this_thread::get_id(), here);
            return percent != 42;
        });
    EXPECT_EQ(state, State::Unreadable);
    EXPECT_EQ(painted, 1);
    EXPECT_EQ(refusal([&] {
                  core::runAside([&](const auto&) { store.add(m_from.path()); },
                                 [](int) { return true; });
              }),
              refusal([&] { store.add(m_from.path()); }));
}

TEST_F(Store, StationsThatAddTheSameFileAtOnceKeepOne) {
    const QString photo = file(u"photo.jpg"_s, noise(1 << 20));
    std::atomic<int> failed = 0;
    {
        std::vector<std::jthread> stations;
        for (int i = 0; i < 6; ++i)
            stations.emplace_back([&] {
                for (int round = 0; round < 10; ++round) {
                    try {
                        store.add(photo);
                    } catch (const keeping::Refusal&) {
                        ++failed;
                    }
                }
            });
    }
    EXPECT_EQ(failed, 0);
    ASSERT_EQ(store.contents().size(), 1U);
    EXPECT_EQ(store.check(store.contents().front()), State::Good);
    EXPECT_EQ(rests(), QStringList());
}

TEST_F(Store, AStationKilledAmidAddingLeavesNoHalfFileUnderItsName) {
    const QString photo = file(u"photo.jpg"_s, noise(8 << 20));
    for (int round = 0; round < 12; ++round) {
        inChild(
            [&] {
                for (int i = 0; i < 100000; ++i)
                    store.remove(store.add(photo).hash);
                return 0;
            },
            1 + round * 7);
        for (const Content& content : store.contents()) {
            EXPECT_EQ(store.check(content), State::Good);
            store.remove(content.hash);
        }
    }
    ASSERT_FALSE(rests().isEmpty()) << "nobody was killed amid his work";
    store.removeRests(QDateTime::currentDateTime());
    EXPECT_FALSE(rests().isEmpty()) << "another station may be at it";
    store.removeRests(QDateTime::currentDateTime().addDays(2));
    EXPECT_EQ(rests(), QStringList());
}

namespace {

class Papers : public testsupport::ShopDatabaseFixture {
  protected:
    void prepare() override {
        execute(u"INSERT INTO Estimate (PartNo) VALUES ('ax-1')");
        execute(u"INSERT INTO Job (PartNo) VALUES ('AX-1')");
        execute(u"INSERT INTO Job (PartNo) VALUES ('BX')");
        execute(u"INSERT INTO Job (PartNo) VALUES ('')");
        execute(u"INSERT INTO Estimate (PartNo) VALUES ('')");
        execute(u"INSERT INTO PO (Title) VALUES ('Steel')");
        execute(u"INSERT INTO POItem (ItemKey, PONumber, PartNumber) VALUES ('1', 1, 'AX-1')");
        execute(u"INSERT INTO POItem (ItemKey, PONumber, PartNumber) VALUES ('2', 1, 'AX-1')");
    }
    int add(const QString& kind, qint64 record, const QString& file, const QString& hash) {
        return core::addPapers(db(), *core::paperKind(kind), record, {{file, {hash, 5}}}, u"Ann"_s)
            .value_or(-1);
    }
    QStringList papers(const QString& kind, qint64 record,
                       const QStringList& others = {u"Estimate"_s, u"Job"_s, u"PO"_s}) {
        QStringList lines;
        const core::PaperKind& of = *core::paperKind(kind);
        for (const core::Paper& paper :
             core::readPapers(db(), core::papersSelect(of, record, others), of, record))
            lines += u"%1 %2 %3%4"_s.arg(paper.kind)
                         .arg(paper.record)
                         .arg(paper.fileName, paper.behind ? u" behind"_s : QString());
        return lines;
    }
};
MIRSA_BOTH_ENGINES(Papers);

} // namespace

TEST_P(Papers, AreShownWithThePartNumberEverywhere) {
    EXPECT_EQ(add(u"Estimate"_s, 1, u"AX.pdf"_s, u"aa"_s), 1);
    EXPECT_EQ(add(u"Estimate"_s, 1, u"ax.pdf"_s, u"aa"_s), 0) << "it lies there already";
    add(u"Job"_s, 1, u"O'Brien's order.pdf"_s, u"bb"_s);
    add(u"PO"_s, 1, u"certificate.pdf"_s, u"cc"_s);
    add(u"Job"_s, 2, u"BX.pdf"_s, u"dd"_s);
    add(u"Job"_s, 3, u"no part.pdf"_s, u"ee"_s);
    EXPECT_EQ(papers(u"Job"_s, 1),
              (QStringList{u"Job 1 O'Brien's order.pdf"_s, u"PO 1 certificate.pdf"_s,
                           u"Estimate 1 AX.pdf"_s}));
    EXPECT_EQ(papers(u"PO"_s, 1).size(), 3);
    EXPECT_EQ(papers(u"Estimate"_s, 2), QStringList()) << "no part number is nobody's";
    EXPECT_EQ(papers(u"Job"_s, 1, {u"Estimate"_s, u"Job"_s}).size(), 2)
        << "who may not see orders sees none of their papers";
    EXPECT_EQ(papers(u"Customer"_s, 1), QStringList());
    add(u"Job"_s, 1, u"AX.pdf"_s, u"aa"_s);
    EXPECT_EQ(papers(u"Job"_s, 1).filter(u"AX.pdf"_s), QStringList{u"Job 1 AX.pdf"_s});
}

TEST_P(Papers, AreCarriedAndGoWithTheirRecord) {
    add(u"Estimate"_s, 1, u"AX.pdf"_s, u"aa"_s);
    core::printBehind(db(), {1}, true);
    {
        jet::Transaction given_up(db());
        core::carryPapers(db(), u"Estimate"_s, 1, u"Job"_s, 1);
    }
    EXPECT_EQ(papers(u"Job"_s, 1, {}), QStringList());
    core::carryPapers(db(), u"Estimate"_s, 1, u"Job"_s, 1);
    EXPECT_EQ(papers(u"Job"_s, 1, {}), QStringList{u"Job 1 AX.pdf behind"_s});
    add(u"Job"_s, 2, u"BX.pdf"_s, u"dd"_s);
    execute(u"DELETE * FROM Job WHERE JobNo IN (1, 2)");
    EXPECT_EQ(rows(u"SELECT Kind, Record FROM Papers"_s), QStringList{u"Estimate|1"_s})
        << "a number that is given again has no papers of others";
    EXPECT_EQ(
        rows(u"SELECT Action FROM Journal WHERE TableName = 'Papers' AND Action = 'D'"_s).size(),
        2);
}
