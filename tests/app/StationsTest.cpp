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
            rows(QStringLiteral(
                "SELECT EstNo, Quantity FROM Estimate WHERE Quantity <> (SELECT COUNT(*) FROM "
                "EstOper WHERE EstOper.EstNo = Estimate.EstNo)")),
            QStringList());
        EXPECT_EQ(
            rows(QStringLiteral(
                "SELECT EstNo FROM Estimate WHERE Quantity <> (SELECT MAX(SeqNo) FROM EstOper "
                "WHERE EstOper.EstNo = Estimate.EstNo)")),
            QStringList());
        EXPECT_EQ(rows(QStringLiteral(
                      "SELECT EstNo FROM Estimate WHERE NOT Quantity = (SELECT SUM(Quantity) FROM "
                      "EstMiscCost WHERE EstMiscCost.EstNo = Estimate.EstNo)")),
                  QStringList());
        for (const auto* table : {u"EstOper", u"EstMiscCost"}) {
            EXPECT_EQ(rows(QStringLiteral("SELECT EstNo FROM ") + QString::fromUtf16(table) +
                           QStringLiteral(" WHERE EstNo NOT IN (SELECT EstNo FROM Estimate)")),
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
        const int held = db().lookup(QStringLiteral("SELECT COUNT(*) FROM Estimate")).toLong();
        EXPECT_GE(held, saved + said) << "what was said to be saved is there";
        saved = held;
        expectWholeEstimates();
    }
    EXPECT_GT(saved, 8);
}

TEST_P(Stations, TwoThatSaveAtOnceLoseNothingAndNeitherIsTurnedAway) {
    const auto first = start(QStringLiteral("A"), 60);
    const auto second = start(QStringLiteral("B"), 60);
    for (QProcess* station : {first.get(), second.get()}) {
        ASSERT_TRUE(station->waitForFinished(120000));
        EXPECT_EQ(station->exitCode(), 0) << station->readAllStandardError().toStdString();
    }
    EXPECT_EQ(rows(QStringLiteral("SELECT COUNT(*) FROM Estimate")),
              QStringList{QStringLiteral("120")});
    EXPECT_EQ(rows(QStringLiteral("SELECT COUNT(*) FROM Estimate WHERE PartNo LIKE '*edited'")),
              QStringList{QStringLiteral("2")});
    expectWholeEstimates();
}

MIRSA_BOTH_ENGINES(Stations);
