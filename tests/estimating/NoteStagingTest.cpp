#include "estimating/NoteStaging.h"
#include "platform/values/Literals.h"

#include "estimating/ShopRows.h"
#include "support/DatabaseFixture.h"

#include <random>

using namespace estimating;
using namespace shoprows;

namespace {

class NoteStagingTest : public testsupport::ShopDatabaseFixture {
  protected:
    void prepare() override {
        for (int i = 0; i < 12; ++i)
            m_operations.push_back(operation(db(), u"Op %1"_s.arg(i)));
    }

    /// Saves a routing of `count` rows as document `number`, as the modules do it.
    void saveRouting(const RoutingKind& kind, qint64 number, int count) {
        db().execute(
            u"DELETE FROM %1 WHERE %2 = %3"_s.arg(kind.operTable, kind.documentKey).arg(number));
        std::vector<OperRow> made;
        for (int i = 0; i < count; ++i)
            made.push_back(row(m_operations[static_cast<std::size_t>(i % 12)], {}, 1));
        insertOperRows(db(), kind, number, made);
    }

    QStringList notes(const RoutingKind& kind, qint64 number) {
        return rows(db(), u"SELECT SeqNo, OperNotes FROM %1 WHERE %2 = %3 "
                          "ORDER BY SeqNo, OperNotes"_s.arg(kind.noteTable, kind.documentKey)
                              .arg(number));
    }

    /// Notes whose ID isn't that of the row at their place.
    QStringList unbound(const RoutingKind& kind, qint64 number) {
        return rows(db(), u"SELECT %1.SeqNo FROM %1 LEFT JOIN %2 ON %1.ID = %2.ID "
                          "WHERE %1.%3 = %4 AND (%2.SeqNo IS NULL OR %2.SeqNo <> "
                          "%1.SeqNo)"_s.arg(kind.noteTable, kind.operTable, kind.documentKey)
                              .arg(number));
    }

    void schedule(qint64 jobNo, int seqNo, const QString& name) {
        db().execute(u"INSERT INTO JobOperSchedule (JobNo, SeqNo, Description) "
                     "VALUES(%1,%2,'%3')"_s.arg(jobNo)
                         .arg(seqNo)
                         .arg(name));
    }

    std::vector<qint64> m_operations;
};

const RoutingKind& kindAt(int i) {
    return i == 0 ? estimateRouting() : jobRouting();
}

} // namespace

TEST_P(NoteStagingTest, CancelBringsTheNotesOfRemovedRowsBack) {
    for (int i = 0; i < 2; ++i) {
        const RoutingKind& kind = kindAt(i);
        saveRouting(kind, 7, 3);
        NoteStaging staging(db(), kind, 7);
        staging.write(2, u"two"_s);
        staging.write(3, u"three"_s);
        staging.adopt(7);
        const QStringList before = notes(kind, 7);

        staging.rowRemoved(2, 3);
        EXPECT_EQ(notes(kind, 7), QStringList({"0|two", "2|three"}));
        staging.rowInserted(1, 2, u"it's new"_s);
        EXPECT_EQ(notes(kind, 7), QStringList({"0|two", "1|it's new", "3|three"}));
        staging.cancel();
        EXPECT_EQ(notes(kind, 7), before);
        EXPECT_EQ(unbound(kind, 7), QStringList());
    }
}

TEST_P(NoteStagingTest, SaveDropsParkedNotesAndBindsTheOthersToTheirNewRows) {
    for (int i = 0; i < 2; ++i) {
        const RoutingKind& kind = kindAt(i);
        saveRouting(kind, 7, 3);
        NoteStaging staging(db(), kind, 7);
        staging.write(2, u"two"_s);
        staging.write(3, u"three"_s);
        staging.adopt(7);
        staging.rowRemoved(2, 3);
        saveRouting(kind, 7, 2);
        staging.adopt(7);
        EXPECT_EQ(notes(kind, 7), QStringList({"2|three"}));
        EXPECT_EQ(unbound(kind, 7), QStringList());
    }
}

TEST_P(NoteStagingTest, ANewDocumentsNotesWaitUnderNumberZero) {
    NoteStaging adding(db(), estimateRouting(), 0);
    adding.stage(1, u"one"_s);
    adding.stage(2, u"two"_s);
    adding.rowRemoved(1, 3);
    EXPECT_EQ(notes(estimateRouting(), 0), QStringList({"0|one", "1|two"}));
    // Another station that adds at once shares the rows, whoever saves first.
    const auto other = station();
    NoteStaging(*other, estimateRouting(), 0).stage(2, u"theirs"_s);
    saveRouting(estimateRouting(), 9, 2);
    adding.adopt(9);
    EXPECT_EQ(notes(estimateRouting(), 9), QStringList({"1|two", "2|theirs"}));
    EXPECT_EQ(notes(estimateRouting(), 0), QStringList());
    EXPECT_EQ(unbound(estimateRouting(), 9), QStringList());

    NoteStaging(db(), estimateRouting(), 0).stage(1, u"thrown away"_s);
    NoteStaging(db(), estimateRouting(), 0).cancel();
    EXPECT_EQ(notes(estimateRouting(), 0), QStringList());
    EXPECT_EQ(notes(estimateRouting(), 9).size(), 2);
}

TEST_P(NoteStagingTest, ANewJobDeletesTheNotesOfRemovedRowsOutright) {
    NoteStaging adding(db(), jobRouting(), 0);
    adding.stage(1, u"one"_s);
    adding.stage(2, u"two"_s);
    schedule(0, 1, u"others"_s);
    adding.rowRemoved(1, 2);
    EXPECT_EQ(notes(jobRouting(), 0), QStringList({"1|two"}));
    EXPECT_EQ(rows(db(), u"SELECT SeqNo FROM JobOperSchedule"_s), QStringList({"1"}));
    saveRouting(jobRouting(), 4, 1);
    adding.adopt(4);
    EXPECT_EQ(notes(jobRouting(), 4), QStringList({"1|two"}));
    EXPECT_EQ(unbound(jobRouting(), 4), QStringList());
}

TEST_P(NoteStagingTest, AJobsScheduleMovesWithItsRowsAndCancelLeavesItMoved) {
    saveRouting(jobRouting(), 3, 3);
    for (int seq = 1; seq <= 3; ++seq)
        schedule(3, seq, u"s%1"_s.arg(seq));
    schedule(5, 2, u"other"_s);
    const QString of = u"SELECT SeqNo, Description FROM JobOperSchedule "
                       "ORDER BY JobNo, Description"_s;
    NoteStaging staging(db(), jobRouting(), 3);
    staging.rowInserted(2, 3, {});
    EXPECT_EQ(rows(db(), of), QStringList({"1|s1", "3|s2", "4|s3", "2|other"}));
    staging.rowRemoved(3, 4);
    EXPECT_EQ(rows(db(), of), QStringList({"1|s1", "0|s2", "3|s3", "2|other"}));
    staging.cancel();
    EXPECT_EQ(rows(db(), of), QStringList({"1|s1", "0|s2", "3|s3", "2|other"}));
    staging.adopt(3);
    EXPECT_EQ(rows(db(), of), QStringList({"1|s1", "3|s3", "2|other"}));
}

TEST_P(NoteStagingTest, TheDialogWritesChangesAndEmptiesANote) {
    NoteStaging staging(db(), estimateRouting(), 2);
    EXPECT_TRUE(staging.write(1, u"it's\r\nlong"_s));
    EXPECT_EQ(staging.note(1), u"it's\r\nlong"_s);
    EXPECT_TRUE(staging.write(1, u"short"_s));
    EXPECT_EQ(rows(db(), u"SELECT ID, EstNo, SeqNo, OperNotes FROM EstOperNote"_s),
              QStringList({"0|2|1|short"}));
    EXPECT_FALSE(staging.write(1, {}));
    EXPECT_FALSE(staging.note(1));
}

TEST_P(NoteStagingTest, CopiesPutTheDefaultNoteInFront) {
    operationNote(db(), m_operations[0], u"default 0"_s);
    operationNote(db(), m_operations[1], u"default 1"_s);
    NoteStaging source(db(), jobRouting(), 6);
    source.write(1, u"carried 1"_s);
    source.write(3, u"carried 3"_s);
    std::vector<OperRow> copied;
    for (std::size_t i = 0; i < 4; ++i)
        copied.push_back(row(m_operations[i], u"Op %1"_s.arg(i), 1));
    copied[3].hasNote = true;

    stageCopiedNotes(db(), estimateRouting(), copied, jobRouting(), 6, true, true);
    EXPECT_EQ(notes(estimateRouting(), 0),
              QStringList({"1|default 0\r\ncarried 1", "2|default 1", "3|carried 3"}));
    EXPECT_TRUE(copied[0].hasNote && copied[1].hasNote && copied[2].hasNote);
    EXPECT_FALSE(copied[3].hasNote);

    NoteStaging(db(), estimateRouting(), 0).cancel();
    stageCopiedNotes(db(), estimateRouting(), copied, jobRouting(), 6, false, true);
    EXPECT_EQ(notes(estimateRouting(), 0), QStringList({"1|carried 1", "3|carried 3"}));
}

TEST_P(NoteStagingTest, AnyOrderOfInsertsAndRemovalsKeepsNotesWithTheirRows) {
    std::mt19937 random(7);
    const auto below = [&](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    for (int round = 0; round < 12; ++round) {
        const RoutingKind& kind = kindAt(round % 2);
        const qint64 number = 100 + round;
        std::vector<QString> model(static_cast<std::size_t>(2 + below(4)));
        NoteStaging staging(db(), kind, number);
        saveRouting(kind, number, static_cast<int>(model.size()));
        for (std::size_t i = 0; i < model.size(); ++i) {
            if (below(3) != 0) {
                model[i] = u"first %1"_s.arg(i);
                staging.write(static_cast<int>(i) + 1, model[i]);
            }
        }
        staging.adopt(number);
        const std::vector<QString> saved = model;
        const auto expectModel = [&](const std::vector<QString>& expected) {
            for (std::size_t i = 0; i < expected.size(); ++i) {
                ASSERT_EQ(staging.note(static_cast<int>(i) + 1).value_or(QString()), expected[i])
                    << "round " << round << ", row " << i + 1;
            }
        };
        for (int step = 0; step < 8; ++step) {
            const int size = static_cast<int>(model.size());
            if (size == 0 || below(2) == 0) {
                const int place = below(size + 1);
                const QString text = below(2) ? u"new %1"_s.arg(step) : QString();
                staging.rowInserted(place + 1, size, text);
                model.insert(model.begin() + place, text);
            } else {
                const int place = below(size);
                staging.rowRemoved(place + 1, size);
                model.erase(model.begin() + place);
            }
            expectModel(model);
        }
        if (round % 3 == 0) {
            staging.cancel();
            expectModel(saved);
        } else {
            saveRouting(kind, number, static_cast<int>(model.size()));
            staging.adopt(number);
            expectModel(model);
        }
        EXPECT_EQ(unbound(kind, number), QStringList()) << "round " << round;
    }
}

MIRSA_BOTH_ENGINES(NoteStagingTest);
