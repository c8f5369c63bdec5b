#include "platform/values/Literals.h"
#include "support/DatabaseFixture.h"

#include <QProcess>
#include <QThread>

namespace {

/// Stations as processes of their own, saving estimates on one database.
class Stations : public testsupport::ShopDatabaseFixture {
  protected:
    std::unique_ptr<QProcess> start(const QString& name, int rounds) {
        auto process = std::make_unique<QProcess>();
        process->start(QStringLiteral(MIRSA_ESTIMATE_SAVER),
                       {testDatabase().location(), name, QString::number(rounds)});
        EXPECT_TRUE(process->waitForStarted());
        return process;
    }

    /// Every estimate has just the operations and the fixed cost that its quantity says, numbered
    /// without gaps, and no child row is without its estimate.
    void expectWholeEstimates() {
        EXPECT_EQ(
            rows(u"SELECT EstNo, Quantity FROM Estimate WHERE Quantity <> (SELECT COUNT(*) FROM "
                 "EstOper WHERE EstOper.EstNo = Estimate.EstNo)"_s),
            QStringList());
        EXPECT_EQ(
            rows(u"SELECT EstNo FROM Estimate WHERE Quantity <> (SELECT MAX(SeqNo) FROM EstOper "
                 "WHERE EstOper.EstNo = Estimate.EstNo)"_s),
            QStringList());
        EXPECT_EQ(
            rows(u"SELECT EstNo FROM Estimate WHERE NOT Quantity = (SELECT SUM(Quantity) FROM "
                 "EstMiscCost WHERE EstMiscCost.EstNo = Estimate.EstNo)"_s),
            QStringList());
        for (const auto* table : {u"EstOper", u"EstMiscCost"}) {
            EXPECT_EQ(rows(u"SELECT EstNo FROM "_s + QString::fromUtf16(table) +
                           u" WHERE EstNo NOT IN (SELECT EstNo FROM Estimate)"_s),
                      QStringList());
        }
    }
};

} // namespace

TEST_P(Stations, AProcessKilledWhileItSavesAndDeletesLeavesWholeEstimatesOnly) {
    int saved = 0;
    for (int round = 0; round < 8; ++round) {
        const auto station = start(QString(QChar(u'A' + round)), 100000);
        ASSERT_TRUE(station->waitForReadyRead(20000))
            << station->readAllStandardError().toStdString();
        QThread::msleep(static_cast<unsigned long>(15 + 13 * round % 40));
        station->kill();
        ASSERT_TRUE(station->waitForFinished());
        const int said = static_cast<int>(station->readAllStandardOutput().count('\n'));
        const int held = db().lookup(u"SELECT COUNT(*) FROM Estimate"_s).toLong();
        EXPECT_GE(held, saved + said) << "what was said to be saved is there";
        saved = held;
        expectWholeEstimates();
    }
    EXPECT_GT(saved, 8);
}

TEST_P(Stations, TwoThatSaveAtOnceLoseNothingAndNeitherIsTurnedAway) {
    const auto first = start(u"A"_s, 60);
    const auto second = start(u"B"_s, 60);
    for (QProcess* station : {first.get(), second.get()}) {
        ASSERT_TRUE(station->waitForFinished(120000));
        EXPECT_EQ(station->exitCode(), 0) << station->readAllStandardError().toStdString();
    }
    EXPECT_EQ(rows(u"SELECT COUNT(*) FROM Estimate"_s), QStringList{u"120"_s});
    EXPECT_EQ(rows(u"SELECT COUNT(*) FROM Estimate WHERE PartNo LIKE '*edited'"_s),
              QStringList{u"2"_s});
    expectWholeEstimates();
}

MIRSA_BOTH_ENGINES(Stations);
