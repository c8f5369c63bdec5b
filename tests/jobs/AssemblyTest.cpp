#include "jobs/AssemblyRules.h"
#include "platform/values/Literals.h"

#include "JobModules.h"

#include "estimating/AssemblyTree.h"
#include "support/Gallery.h"

#include <QElapsedTimer>
#include <QMouseEvent>
#include <QTest>
#include <QTreeWidget>

using jobs::Assembly;
using jobs::AssemblyNode;
using jobs::Hanging;

namespace {

QString s(const char16_t* text) {
    return QString::fromUtf16(text);
}

/// "number<place" of each record, in the order of showing.
QStringList places(const Assembly& assembly) {
    QStringList result;
    for (const AssemblyNode& node : assembly.nodes())
        result << u"%1<%2"_s.arg(node.number).arg(node.under);
    return result;
}

TEST(AssemblyPlaces, ParentsComeFirstAndStrangersStandUnderTheRoot) {
    // 2 and 9 belong together, 4 hangs under a record that isn't there, 5 under 4.
    const Assembly assembly({{9, {}, 0}, {2, {}, 9}, {4, {}, 77}, {5, {}, 4}, {1, {}, 2}});
    EXPECT_EQ(places(assembly),
              QStringList({s(u"9<0"), s(u"4<0"), s(u"2<9"), s(u"5<4"), s(u"1<2")}));
    EXPECT_TRUE(assembly.hasRoot());
    EXPECT_FALSE(Assembly({{4, {}, 77}}).hasRoot());
}

TEST(AssemblyPlaces, ALoopIsOpenedAtTheRoot) {
    const Assembly assembly({{1, {}, 2}, {2, {}, 1}, {3, {}, 3}, {4, {}, 1}});
    EXPECT_EQ(places(assembly), QStringList({s(u"1<0"), s(u"2<0"), s(u"3<0"), s(u"4<1")}));
    EXPECT_FALSE(assembly.hasRoot());
}

TEST(AssemblyPlaces, FiveThousandLevelsArePlacedWithoutAPause) {
    std::vector<AssemblyNode> chain;
    for (qint64 number = 1; number <= 5000; ++number)
        chain.push_back({number, {}, number + 1});
    chain.back().parent = 4990; // ten of them in a loop
    QElapsedTimer clock;
    clock.start();
    const Assembly assembly(chain);
    EXPECT_LT(clock.elapsed(), 250);
    EXPECT_EQ(assembly.nodes().size(), 5000U);
    EXPECT_EQ(assembly.nodes().front().number, 4990);
    EXPECT_EQ(places(assembly).last(), s(u"1<2"));
}

TEST(AssemblyPlaces, NothingHangsUnderItselfOrItsOwnParts) {
    Assembly assembly({{1, {}, 0}, {2, {}, 1}, {3, {}, 2}, {4, {}, 0}});
    EXPECT_FALSE(assembly.mayHang(1, 1));
    EXPECT_FALSE(assembly.mayHang(1, 3));
    EXPECT_FALSE(assembly.mayHang(0, 4));
    EXPECT_FALSE(assembly.mayHang(1, 99));
    EXPECT_TRUE(assembly.mayHang(1, 4));
    EXPECT_TRUE(assembly.mayHang(3, 0));
    assembly.moved(4, 3);
    EXPECT_FALSE(assembly.mayHang(1, 4));
    EXPECT_FALSE(assembly.mayHang(2, 4));
}

class Assemblies : public JobModules {
  protected:
    void prepare() override {
        JobModules::prepare();
        m_acme = customer(s(u"Acme"));
        m_other = customer(s(u"Brown"));
        for (qint64& number : m_jobs)
            number = job(m_acme, s(u"P%1").arg(&number - m_jobs + 1), 1);
    }
    void hangJob(qint64 number, qint64 parent) {
        database().execute(
            u"UPDATE Job SET AssemblyJobNo=%1 WHERE JobNo=%2"_s.arg(parent).arg(number));
    }
    qint64 parentOf(qint64 number) const {
        return rows(u"SELECT AssemblyJobNo FROM Job WHERE JobNo=%1"_s.arg(number))
            .value(0)
            .toLongLong();
    }
    /// The tree as the user sees it, each level two dots further in.
    QStringList tree() const {
        QStringList lines;
        for (QTreeWidgetItemIterator at(control<QTreeWidget>(s(u"tvwAssembly"))); *at; ++at) {
            QString line = (*at)->text(0);
            for (auto* up = (*at)->parent(); up; up = up->parent())
                line.prepend(s(u".."));
            lines << line;
        }
        return lines;
    }
    QTreeWidgetItem* item(const QString& text) const {
        const auto found = control<QTreeWidget>(s(u"tvwAssembly"))
                               ->findItems(text, Qt::MatchStartsWith | Qt::MatchRecursive);
        EXPECT_EQ(found.size(), 1) << text.toStdString();
        return found.value(0);
    }
    QString label(qint64 number) const { return QString::number(number) + s(u"  ("); }
    void drag(const QString& from, const QString& to, bool escape = false) {
        auto* view = control<QTreeWidget>(s(u"tvwAssembly"));
        QWidget* port = view->viewport();
        view->scrollTo(view->indexFromItem(item(to)));
        const auto label = [&](const QString& text) {
            const QRect rect = view->visualItemRect(item(text));
            return QPoint(rect.left() + 20, rect.center().y());
        };
        const QPoint start = label(from);
        const QPoint end = label(to);
        QTest::mousePress(port, Qt::LeftButton, {}, start);
        for (const QPoint& at : {(start + end) / 2, end}) {
            QMouseEvent move(QEvent::MouseMove, at, port->mapToGlobal(at), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(port, &move);
        }
        if (escape)
            QTest::keyClick(view, Qt::Key_Escape);
        QTest::mouseRelease(port, Qt::LeftButton, {}, end);
        settle();
    }
    void onTree(const std::function<void()>& driver) {
        whenShown(s(u"frmAssemblyInfo"), [this, driver] {
            driver();
            press(s(u"cmdClose"));
        });
    }

    qint64 m_acme = 0;
    qint64 m_other = 0;
    qint64 m_jobs[4] = {};
};

TEST_P(Assemblies, StoredLoopsAreRefusedEvenThroughRecordsOutOfSight) {
    const auto& kind = jobs::assemblyKind(s(u"Job"));
    const auto hang = [&](int number, int parent) {
        return jobs::hangUnder(database(), kind, m_jobs[number], m_jobs[parent]);
    };
    EXPECT_EQ(hang(1, 0), Hanging::Done);
    EXPECT_EQ(hang(2, 1), Hanging::Done);
    EXPECT_EQ(hang(0, 2), Hanging::Loop);
    EXPECT_EQ(hang(0, 0), Hanging::Loop);
    const quint64 waits = database().waits();
    EXPECT_EQ(hang(3, 2), Hanging::Done);
    if (database().isServer())
        EXPECT_LE(database().waits() - waits, 3u) << "however many are above it";
    EXPECT_EQ(parentOf(m_jobs[0]), 0);
    EXPECT_EQ(jobs::hangUnder(database(), kind, m_jobs[0], 98765), Hanging::ParentGone);
    EXPECT_EQ(jobs::hangUnder(database(), kind, 98765, m_jobs[0]), Hanging::Gone);
    // A broken link and an old loop further up don't hold.
    hangJob(m_jobs[0], 98765);
    EXPECT_EQ(hang(3, 2), Hanging::Done);
    hangJob(m_jobs[0], m_jobs[2]);
    EXPECT_EQ(hang(3, 1), Hanging::Done);
    EXPECT_EQ(jobs::hangUnder(database(), kind, m_jobs[0], 0), Hanging::Done);
    EXPECT_EQ(parentOf(m_jobs[3]), m_jobs[1]);
}

TEST_P(Assemblies, AJobIsDraggedUnderAnotherAndBack) {
    const qint64 shipped = job(m_acme, s(u"gone"), 1, true);
    hangJob(m_jobs[2], m_jobs[1]);
    auto* screen = dynamic_cast<core::RecordScreen*>(open(s(u"frmJob")));
    ASSERT_TRUE(screen->goToRecord(m_jobs[0]));
    onTree([&] {
        EXPECT_EQ(form().windowTitle(), s(u"Job Assembly Information"));
        EXPECT_EQ(text(s(u"lblPoOrRfq")), s(u"PO Number:"));
        EXPECT_EQ(text(s(u"lblDescription")), s(u"Job Number  (Part Number)"));
        EXPECT_EQ(text(s(u"cboCustomer")), s(u"Acme"));
        EXPECT_EQ(text(s(u"cboPoOrRfq")), s(u"PO-7"));
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        EXPECT_EQ(tree(),
                  QStringList({s(u"Root"), s(u"..%1  (P1)").arg(m_jobs[0]),
                               s(u"..%1  (P2)").arg(m_jobs[1]), s(u"....%1  (P3)").arg(m_jobs[2]),
                               s(u"..%1  (P4)").arg(m_jobs[3])}));
        EXPECT_EQ(control<QTreeWidget>(s(u"tvwAssembly"))->currentItem(), item(label(m_jobs[0])));
        drag(label(m_jobs[3]), label(m_jobs[0]));
        drag(label(m_jobs[1]), label(m_jobs[0]));
        EXPECT_EQ(parentOf(m_jobs[3]), m_jobs[0]);
        EXPECT_EQ(tree(), QStringList({s(u"Root"), s(u"..%1  (P1)").arg(m_jobs[0]),
                                       s(u"....%1  (P2)").arg(m_jobs[1]),
                                       s(u"......%1  (P3)").arg(m_jobs[2]),
                                       s(u"....%1  (P4)").arg(m_jobs[3])}));
        EXPECT_TRUE(item(label(m_jobs[1]))->isExpanded());
        const QStringList before = tree();
        drag(label(m_jobs[0]), label(m_jobs[2]));
        drag(label(m_jobs[0]), label(m_jobs[0]));
        drag(s(u"Root"), label(m_jobs[2]));
        EXPECT_EQ(control<QTreeWidget>(s(u"tvwAssembly"))->currentItem(), item(s(u"Root")));
        EXPECT_EQ(tree(), before);
        EXPECT_EQ(parentOf(m_jobs[0]), 0);
        drag(label(m_jobs[2]), s(u"Root"), true);
        EXPECT_EQ(tree(), before);
        EXPECT_EQ(control<QTreeWidget>(s(u"tvwAssembly"))->currentItem(), item(label(m_jobs[2])));
        drag(label(m_jobs[2]), s(u"Root"));
        EXPECT_EQ(parentOf(m_jobs[2]), 0);
        EXPECT_EQ(item(label(m_jobs[2]))->parent()->text(0), s(u"Root"));
    });
    press(s(u"cmdAssembly"));
    use(screen::Forms::find(s(u"frmJob")));
    EXPECT_EQ(text(s(u"lblAssembly")), s(u"ASSY"));
    EXPECT_EQ(parentOf(shipped), 0);
}

TEST_P(Assemblies, CutAndPasteMoveAndADoubleClickGoesToTheJob) {
    auto* screen = dynamic_cast<core::RecordScreen*>(open(s(u"frmJob")));
    ASSERT_TRUE(screen->goToRecord(m_jobs[0]));
    onTree([&] {
        auto* view = control<QTreeWidget>(s(u"tvwAssembly"));
        const auto select = [&](int index) { view->setCurrentItem(item(label(m_jobs[index]))); };
        EXPECT_FALSE(isEnabled(s(u"cmdPaste")));
        go(s(u"tvwAssembly"));
        key(Qt::Key_X, Qt::ControlModifier);
        EXPECT_TRUE(isEnabled(s(u"cmdPaste")));
        key(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(beeps, 1);
        key(Qt::Key_Down);
        key(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(parentOf(m_jobs[0]), m_jobs[1]);
        EXPECT_FALSE(isEnabled(s(u"cmdPaste")));
        select(2);
        press(s(u"cmdCut"));
        key(Qt::Key_Escape);
        EXPECT_FALSE(isEnabled(s(u"cmdPaste")));
        press(s(u"cmdCut"));
        select(0);
        press(s(u"cmdPaste"));
        EXPECT_EQ(parentOf(m_jobs[2]), m_jobs[0]);
        // Another station was quicker.
        hangJob(m_jobs[1], m_jobs[3]);
        expectBox(u"Job No. %1 is already a part of Job No. %2."_s.arg(m_jobs[0]).arg(m_jobs[3]));
        drag(label(m_jobs[3]), label(m_jobs[0]));
        EXPECT_EQ(item(label(m_jobs[1]))->parent(), item(label(m_jobs[3])));

        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {},
                           view->visualItemRect(item(label(m_jobs[2]))).center());
        EXPECT_EQ(screen->currentKey(), m_jobs[2]);
        select(3);
        key(Qt::Key_Return);
        EXPECT_EQ(screen->currentKey(), m_jobs[3]);
    });
    press(s(u"cmdAssembly"));
}

TEST_P(Assemblies, CustomerAndOrderChooseWhatIsShown) {
    database().execute(u"UPDATE Job SET PONo='O''Hara' WHERE JobNo=%1"_s.arg(m_jobs[3]));
    hangJob(m_jobs[3], m_jobs[0]);
    job(m_other, s(u"done"), 1, true);
    dynamic_cast<core::RecordScreen*>(open(s(u"frmJob")))->goToRecord(m_jobs[0]);
    onTree([&] {
        EXPECT_EQ(tree().size(), 4);
        expectBox(s(u"No root found for the Assembly Tree for Acme, PO No. O'Hara"));
        choose(s(u"cboPoOrRfq"), s(u"O'Hara"));
        EXPECT_EQ(tree(), QStringList({s(u"Root"), s(u"..%1  (P4)").arg(m_jobs[3])}));
        choose(s(u"cboPoOrRfq"), s(u"ALL"));
        EXPECT_EQ(item(label(m_jobs[3]))->parent(), item(label(m_jobs[0])));
        expectBox(s(u"Cannot find any Job records for Brown"));
        choose(s(u"cboCustomer"), s(u"Brown"));
        EXPECT_EQ(text(s(u"cboPoOrRfq")), s(u"ALL"));
        expectBox(s(u"Cannot find any Job records for Brown, PO No. PO-7"));
        choose(s(u"cboPoOrRfq"), s(u"PO-7"));
        EXPECT_EQ(tree(), QStringList());
    });
    press(s(u"cmdAssembly"));
}

TEST_P(Assemblies, ShippedParentsLoopsAndDeletedJobsAreMended) {
    const qint64 shipped = job(m_acme, s(u"gone"), 1, true);
    hangJob(m_jobs[0], shipped);
    hangJob(m_jobs[1], m_jobs[2]);
    hangJob(m_jobs[2], m_jobs[1]);
    dynamic_cast<core::RecordScreen*>(open(s(u"frmJob")))->goToRecord(m_jobs[3]);
    onTree([&] {
        const auto line = [&](int index, const char16_t* dots) {
            return u"%1%2  (P%3)"_s.arg(s(dots)).arg(m_jobs[index]).arg(index + 1);
        };
        EXPECT_EQ(tree(), QStringList({s(u"Root"), line(3, u".."), line(0, u".."), line(1, u".."),
                                       line(2, u"..")}));
        EXPECT_TRUE(item(label(m_jobs[0]))->toolTip(0).contains(QString::number(shipped)));
        drag(label(m_jobs[0]), s(u"Root"));
        EXPECT_EQ(parentOf(m_jobs[0]), 0);
        EXPECT_EQ(item(label(m_jobs[0]))->toolTip(0), QString());
        // The stored loop: neither may go below the other before one is free.
        expectBox(u"Job No. %1 is already a part of Job No. %2."_s.arg(m_jobs[2]).arg(m_jobs[1]));
        drag(label(m_jobs[1]), label(m_jobs[2]));
        drag(label(m_jobs[1]), label(m_jobs[0]));
        EXPECT_EQ(parentOf(m_jobs[1]), m_jobs[0]);
        drag(label(m_jobs[2]), label(m_jobs[1]));
        EXPECT_EQ(tree(), QStringList({s(u"Root"), line(0, u".."), line(1, u"...."),
                                       line(2, u"......"), line(3, u"..")}));

        anotherStation()->execute(u"DELETE FROM Job WHERE JobNo=%1"_s.arg(m_jobs[3]));
        const QString gone = u"Job No. %1 does not exist!"_s.arg(m_jobs[3]);
        expectBox(gone);
        drag(label(m_jobs[3]), s(u"Root"));
        EXPECT_EQ(tree().size(), 4);
    });
    press(s(u"cmdAssembly"));
}

TEST_P(Assemblies, ADeepChainIsSeenAndMovedAtItsEnd) {
    std::vector<qint64> chain;
    jet::Transaction transaction(database());
    for (int level = 0; level < 60; ++level) {
        chain.push_back(job(m_other, s(u"deep"), 1));
        if (level > 0)
            hangJob(chain.back(), chain[chain.size() - 2]);
    }
    transaction.commit();
    const qint64 last = chain[59];
    dynamic_cast<core::RecordScreen*>(open(s(u"frmJob")))->goToRecord(last);
    onTree([&] {
        EXPECT_EQ(tree().last().count(u'.'), 120);
        auto* view = control<QTreeWidget>(s(u"tvwAssembly"));
        const auto seen = [&](qint64 number) {
            const QRect place = view->visualItemRect(item(label(number)));
            const int width = view->fontMetrics().horizontalAdvance(item(label(number))->text(0));
            return place.left() >= 0 && place.width() >= width &&
                   place.left() + width <= view->viewport()->width();
        };
        EXPECT_TRUE(seen(last));
        QElapsedTimer clock;
        clock.start();
        drag(label(last), label(chain[56]));
        RecordProperty("drop_60_deep_ms", static_cast<int>(clock.elapsed()));
        EXPECT_LT(clock.elapsed(), 500);
        EXPECT_EQ(parentOf(last), chain[56]);
        go(s(u"tvwAssembly"));
        view->setCurrentItem(item(label(chain[0])));
        EXPECT_TRUE(seen(chain[0]));
        // Not below its own last part, by whatever way.
        key(Qt::Key_X, Qt::ControlModifier);
        view->setCurrentItem(item(label(chain[58])));
        EXPECT_TRUE(seen(chain[58]));
        key(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(beeps, 1);
        EXPECT_EQ(parentOf(chain[0]), 0);
    });
    press(s(u"cmdAssembly"));
}

TEST_P(Assemblies, EstimatesHaveTheirOwnTreeAndThousandsOpenAtOnce) {
    std::vector<qint64> numbers;
    jet::Transaction transaction(database());
    for (int i = 0; i < 500; ++i) {
        numbers.push_back(insert(s(u"Estimate"), s(u"CustID, RFQNo, PartNo, AssemblyEstno"),
                                 u"%1,'R-1','E%2',%3"_s.arg(m_acme).arg(i).arg(
                                     i < 10 ? 0 : numbers[static_cast<std::size_t>(i / 10)])));
    }
    for (int order = 2; order <= 10; ++order) {
        database().execute(
            u"INSERT INTO Estimate (CustID, RFQNo, PartNo, AssemblyEstno) SELECT "
            "CustID, 'R-%1', PartNo, AssemblyEstno FROM Estimate WHERE RFQNo='R-1'"_s.arg(order));
    }
    transaction.commit();
    const auto parent = [&](int index) {
        return rows(u"SELECT AssemblyEstno FROM Estimate WHERE Estno=%1"_s.arg(
                        numbers[static_cast<std::size_t>(index)]))
            .value(0)
            .toLongLong();
    };
    QElapsedTimer clock;
    const auto lap = [&](const char* what, int most) {
        const auto taken = static_cast<int>(clock.elapsed());
        RecordProperty(what, taken);
        EXPECT_LT(taken, most) << what;
        clock.restart();
    };
    clock.start();
    onTree([&] {
        lap("open_500_ms", 1000);
        EXPECT_EQ(form().windowTitle(), s(u"Estimate Assembly Information"));
        EXPECT_EQ(text(s(u"lblPoOrRfq")), s(u"RFQ Number:"));
        EXPECT_EQ(tree().size(), 501);
        EXPECT_EQ(item(label(numbers[499]))->parent(), item(label(numbers[49])));
        clock.restart();
        drag(label(numbers[498]), label(numbers[499]));
        lap("drop_among_500_ms", 500);
        EXPECT_EQ(parent(498), numbers[499]);
        clock.restart();
        choose(s(u"cboPoOrRfq"), s(u"ALL"));
        lap("fill_5000_ms", 2000);
        EXPECT_EQ(tree().size(), 5001);
        clock.restart();
        drag(label(numbers[8]), label(numbers[9]));
        lap("drop_among_5000_ms", 1000);
        EXPECT_EQ(parent(8), numbers[9]);
    });
    screen::Forms::dialog<estimating::AssemblyTree>(s(u"frmAssemblyInfo"))
        ->showTree(m_acme, s(u"R-1"), numbers[499], s(u"Estimate"));
}

MIRSA_BOTH_ENGINES(Assemblies);

} // namespace
