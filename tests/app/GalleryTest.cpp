#include "support/Gallery.h"
#include "core/MirsaMain.h"
#include "core/papers/PaperScreen.h"
#include "core/records/RecordScreen.h"
#include "platform/values/Literals.h"
#include "sample/Papers.h"
#include "sample/PracticeCompany.h"
#include "support/Paths.h"
#include "support/SampleFixture.h"
#include "timemgmt/exceptions/ExceptionWatch.h"

#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

namespace {

/// Every screen of the program, opened on the sample shop.
class GalleryTest : public testsupport::SampleTest {
  protected:
    void prepare() override {
        const QDir reports(testsupport::sourceFile(u"reports"_s));
        const QStringList files = reports.entryList(QDir::Files);
        for (const QString& file : files)
            QFile::link(reports.filePath(file), m_folder.filePath(file));
        QFile::link(testsupport::builtFile(u"tools/qbcompany/mirsa-qb-company"_s),
                    m_folder.filePath(u"mirsa-qb-company"_s));
        SampleTest::prepare();
        core::shared().ProgramFolder = m_folder.path();
        EXPECT_TRUE(sample::makePracticeCompany(database(), m_folder.path()));
        sample::addPapers(database(), m_folder.path());
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_P(GalleryTest, EveryScreenOpensWithNothingClippedAndEverythingNamed) {
    QStringList names = screen::Forms::known();
    ASSERT_FALSE(names.isEmpty());
    names.sort();
    for (const QString& name : std::as_const(names)) {
        SCOPED_TRACE(name.toStdString());
        const auto form = screen::Forms::make(name);
        EXPECT_TRUE(form->load());
        showInShell(*form);
        const QStringList complaints = testsupport::gallery(*form);
        EXPECT_TRUE(complaints.isEmpty()) << complaints.join(u'\n').toStdString();
        form->hide();
    }
}

TEST_P(GalleryTest, ALetterMeansOneThingOnAllScreens) {
    // What many screens can do. Done shares its letter with New, which goes first; it has Ctrl+W.
    // The schedules and the spare parts have captions that claim some of these letters for
    // themselves.
    const QStringList others{u"frmSchedule"_s, u"frmScheduleView"_s, u"frmSpareParts"_s};
    const QMap<QString, QChar> letters{{u"New"_s, u'n'},
                                       {u"Edit"_s, u'e'},
                                       {u"Delete"_s, u'd'},
                                       {u"Save"_s, u's'},
                                       {u"Cancel"_s, u'c'},
                                       {u"Goto"_s, u'g'},
                                       {u"Query/Report"_s, u'q'},
                                       {u"Quick Report Shown"_s, u'r'},
                                       {u"Quick Report All"_s, u'a'},
                                       {u"Done"_s, u'n'},
                                       {u"Close"_s, u'c'},
                                       {u"Goto Part"_s, u'o'},
                                       {u"Create Job"_s, u'j'}};
    QMap<QString, int> seen;
    for (const QString& name : screen::Forms::known()) {
        if (others.contains(name, Qt::CaseInsensitive))
            continue;
        const auto form = screen::Forms::make(name);
        EXPECT_TRUE(form->load());
        showInShell(*form);
        for (const auto* button : form->findChildren<QPushButton*>()) {
            const QString caption = button->text().simplified();
            const QString words = QString(caption).remove(u'&');
            if (caption == words || !letters.contains(words))
                continue;
            EXPECT_EQ(QKeySequence::mnemonic(caption),
                      QKeySequence::mnemonic(u'&' + QString(letters.value(words))))
                << name.toStdString() << ": " << caption.toStdString();
            ++seen[words];
        }
        form->hide();
    }
    EXPECT_EQ(seen.size(), letters.size());
    EXPECT_GT(seen.value(u"New"_s), 7);
}

TEST_P(GalleryTest, TheDialogsOfAJobShowWhatBelongsToIt) {
    jet::Database& shop = core::MainDatabase();
    const QString first = shop.lookup(u"SELECT MIN(JobNo) FROM Job WHERE Shipped=False"_s).toText();
    shop.execute(u"UPDATE Job SET CustID=1, PONo='PO-58618', AssemblyJobNo=0 WHERE "
                 "Shipped=False"_s);
    shop.execute(u"UPDATE Job SET AssemblyJobNo=%1 WHERE JobNo IN (SELECT TOP 3 JobNo FROM Job "
                 "WHERE Shipped=False AND JobNo>%1 ORDER BY JobNo)"_s.arg(first));
    for (const char* date : {"02/20/2026", "02/27/2026"}) {
        shop.execute(
            u"INSERT INTO jobship (jobno, shippeddate, quantity, "
            "shippedbyempid) VALUES(%1, #%2#, 12, 1)"_s.arg(first, QString::fromLatin1(date)));
    }
    auto* job = dynamic_cast<core::RecordScreen*>(open(u"frmJob"_s));
    ASSERT_TRUE(job->goToRecord(first.toLongLong()));
    for (const auto& [button, name] : {std::pair{"cmdAssembly", "frmAssemblyInfo"},
                                       std::pair{"cmdShippingHistory", "frmJobShip"}}) {
        whenShown(QString::fromLatin1(name), [this] {
            form().resize(600, 400);
            EXPECT_EQ(testsupport::gallery(form()), QStringList());
            press(u"cmdClose"_s);
        });
        press(QString::fromLatin1(button));
        use(screen::Forms::find(u"frmJob"_s));
    }
    press(u"cmdClose"_s);
}

TEST_P(GalleryTest, TheRoutingGetsTheHeightOfEachDisplay) {
    struct Display {
        const char* name;
        QSize inside; ///< of the main window at that size
        double font;
        int rows;
    };
    const QDir folder = testsupport::galleryFolder();
    const QFont usual = QApplication::font();
    for (const auto& [name, inside, font, rows] :
         {Display{"1366x768", {1297, 605}, 1, 10}, Display{"1920x1080", {1910, 930}, 1, 25},
          Display{"4k", {3830, 2000}, 1.5, 45}}) {
        QFont larger = usual;
        larger.setPointSizeF(usual.pointSizeF() * font);
        QApplication::setFont(larger);
        for (const QString& screen : {u"frmEstimate"_s, u"frmJob"_s}) {
            SCOPED_TRACE(screen.toStdString() + name);
            open(screen);
            QWidget* window = form().parentWidget();
            window->resize(inside + window->size() - form().size());
            settle();
            const auto* routing = control<controls::Grid>(u"sprOper"_s);
            EXPECT_GE(routing->viewport()->height() / routing->rowHeight(0), rows);
            form().grab().save(
                folder.filePath(screen + u'-' + QString::fromLatin1(name) + u".png"_s));
            press(u"cmdClose"_s);
        }
    }
    QApplication::setFont(usual);
}

TEST_P(GalleryTest, TheDeskShowsTheShopInLightAndDarkAndInEachDisplay) {
    const QDir folder = testsupport::galleryFolder();
    const QPalette usual = QApplication::palette();
    // The latest estimate of a part that was made several times.
    const qint64 again =
        core::MainDatabase()
            .lookup(
                u"SELECT MAX(EstNo) FROM Estimate WHERE PartNo IN (SELECT PartNo FROM Job WHERE "
                "Shipped = True GROUP BY PartNo HAVING COUNT(*) > 2)"_s)
            .toLong();
    QPalette dark(QColor(45, 45, 48), QColor(30, 30, 30));
    dark.setColor(QPalette::Highlight, QColor(42, 100, 160));
    const auto save = [&](const char* how) {
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        form().grab().save(folder.filePath(form().name() + QString::fromLatin1(how) + u".png"_s));
    };
    for (const auto& [how, palette, inside] : {std::tuple{"-dark", dark, QSize(1297, 605)},
                                               {"-4k", usual, QSize(3830, 2000)},
                                               {"", usual, QSize(1297, 605)}}) {
        QApplication::setPalette(palette);
        const auto fit = [this, size = inside] {
            QWidget* window = form().parentWidget();
            window->resize(size + window->size() - form().size());
            settle();
        };
        open(u"frmStart"_s);
        fit();
        auto* today = control<QTreeWidget>(u"tvwToday"_s);
        ASSERT_TRUE(QTest::qWaitFor([&] { return today->topLevelItemCount() > 4; }));
        save(how);
        form().unload();
        open(u"frmJobList"_s);
        fit();
        ASSERT_TRUE(QTest::qWaitFor([this] { return text(u"lblTotals"_s).contains(u"Hours"); }));
        save(how);
        form().unload();
        whenShown(u"frmFind"_s, [&, suffix = how] {
            auto* found = control<QTreeWidget>(u"tvwFound"_s);
            type(u"txtFind"_s, u"bracket"_s);
            EXPECT_TRUE(QTest::qWaitFor([&] { return found->topLevelItemCount() > 0; }));
            save(suffix);
            press(u"cmdClose"_s);
        });
        screen::Forms::showModal(u"frmFind"_s);
        screen::Form* estimate = open(u"frmEstimate"_s);
        ASSERT_TRUE(dynamic_cast<core::RecordScreen*>(estimate)->goToRecord(again));
        fit();
        press(u"cmdMemory"_s);
        screen::Form* memory = screen::Forms::find(u"frmMemory"_s);
        ASSERT_TRUE(memory);
        use(memory);
        memory->resize(inside.width() > 2000 ? QSize(1600, 700) : memory->sizeHint());
        ASSERT_TRUE(QTest::qWaitFor([this] { return rowCount(u"sprMemory"_s) > 4; }));
        settle();
        save(how);
        control<QTabWidget>(u"SSTabBehind"_s)->setCurrentIndex(1);
        EXPECT_GT(rowCount(u"sprQuotes"_s), 0);
        press(u"cmdClose"_s);
        estimate->unload();
        open(u"frmPapers"_s);
        fit();
        screen::Forms::find<core::PaperScreen>(u"frmPapers"_s)
            ->showRecord(u"frmJob"_s,
                         core::MainDatabase()
                             .lookup(u"SELECT MAX(Record) FROM Papers WHERE Kind = 'Job'"_s)
                             .toLong());
        EXPECT_EQ(rowCount(u"lvwPapers"_s), 2);
        save(how);
        form().unload();
    }
    QApplication::setPalette(usual);
}

TEST_P(GalleryTest, TheMistakesOfTheSampleShopAreListed) {
    open(u"frmTimeExceptions"_s);
    form().parentWidget()->resize(1180, 480);
    auto& watch = timemgmt::ExceptionWatch::on(core::MainDatabase().name());
    const auto list = u"lvwExceptions"_s;
    ASSERT_TRUE(QTest::qWaitFor([&] { return !watch.isReading() && rowCount(list) > 0; }));
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    const QString shown = cells(list).join(u'\n');
    for (const auto* kind : {u"Never signed out|", u"Overlapping attendance|",
                             u"Over the estimate|", u"Entered by hand|", u"Employee has left|"})
        EXPECT_TRUE(shown.contains(QString::fromUtf16(kind))) << shown.toStdString();
}

TEST_P(GalleryTest, AnEmployeesTimeAndAUsersRightsAreShown) {
    open(u"frmTM"_s);
    type(u"dbcEmpNum"_s,
         database()
             .lookup(u"SELECT MAX(EmpID) FROM Timelog WHERE StartDate > #02/25/2026#"_s)
             .toText());
    check(u"optDisplay(1)"_s);
    choose(u"cboCanned"_s, u"Previous 7 Days"_s);
    press(u"chkShow"_s);
    EXPECT_GT(rowCount(u"sprMain"_s), 0);
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
    open(u"frmUser_Group"_s);
    choose(u"cboUsers"_s, u"Lee Loner"_s);
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
}

TEST_P(GalleryTest, TheScheduleShowsItsJobsAtEachZoomAndInEachDisplay) {
    const QDir folder = testsupport::galleryFolder();
    const auto lookOver = [this] { EXPECT_EQ(testsupport::gallery(form()), QStringList()); };
    jet::Database& shop = core::MainDatabase();
    const QString planned = u" FROM Job WHERE Shipped = False AND JobNo IN (SELECT JobNo FROM "
                            "JobOperSchedule) "_s;
    const QString job = shop.lookup(u"SELECT MAX(JobNo)"_s + planned).toText();
    const QString customer = shop.lookup(u"SELECT CustID FROM Job WHERE JobNo = "_s + job).toText();
    shop.execute(u"UPDATE Job SET PONo = 'PO-58618', CustID = "_s + customer +
                 u" WHERE Shipped = False AND JobNo > "_s + job + u" - 6"_s);
    open(u"frmSchedule"_s);
    form().parentWidget()->resize(1180, 660);
    choose(u"dbcCustomer"_s,
           shop.lookup(u"SELECT company FROM Customer WHERE CustID = "_s + customer).toText());
    check(u"optJobPO"_s);
    choose(u"dbcJobPO"_s, u"PO-58618"_s);
    press(u"cmdEdit"_s);
    form().grab().save(folder.filePath(u"frmSchedule-order.png"_s));
    press(u"cmdCancel"_s);
    check(u"optJobNo"_s);
    choose(u"dbcJobNo"_s, job);
    for (const char* display : {"Hours", "Days", "Weeks"}) {
        for (const char* zoom : {"200%", "100%", "50%", "33%"}) {
            choose(u"cmbRulerDiv"_s, QString::fromLatin1(display));
            choose(u"cmbSizes"_s, QString::fromLatin1(zoom));
            settle();
            form().grab().save(folder.filePath(u"frmSchedule-%1-%2.png"_s.arg(
                QString::fromLatin1(display).toLower(), QString::fromLatin1(zoom).chopped(1))));
        }
    }
    choose(u"cmbRulerDiv"_s, u"Days"_s);
    choose(u"cmbSizes"_s, u"100%"_s);
    press(u"cmdEdit"_s);
    lookOver();
    go(u"ctSchedule"_s);
    key(Qt::Key_Home, Qt::ControlModifier);
    whenShown(u"frmScheduleAdd"_s, [&] {
        lookOver();
        press(u"cmdCancel"_s);
    });
    press(u"cmdAddEntry"_s);
    press(u"cmdCancel"_s);
    press(u"cmdViewer"_s);
    use(screen::Forms::find(u"frmScheduleView"_s));
    form().parentWidget()->resize(1180, 660);
    lookOver();
    check(u"chkGroup"_s);
    form().grab().save(folder.filePath(u"frmScheduleView-departments.png"_s));
    press(u"cmdDone"_s);
    use(screen::Forms::find(u"frmSchedule"_s));
    press(u"cmdDone"_s);
}

TEST_P(GalleryTest, WhatGoesToQuickBooksShowsAnOrderOfTheShop) {
    jet::Database& shop = core::MainDatabase();
    const auto show = [&](const QString& screen, const QString& partner, const QString& order,
                          const QString& grid, const QString& item) {
        open(screen);
        if (screen == u"frmInvoice")
            check(u"Option1(0)"_s);
        choose(u"dbcCompID"_s, partner);
        choose(u"dbcPO"_s, order);
        EXPECT_GT(rowCount(grid), 0);
        setCell(grid, 0, 1, item);
        EXPECT_EQ(testsupport::gallery(form()), QStringList());
        press(u"cmdClose"_s);
    };
    const jet::Recordset job = shop.openRecordset(
        u"SELECT TOP 1 Job.PONo, Customer.Company FROM (Job INNER JOIN Customer ON Job.CustID = "
        "Customer.CustID) INNER JOIN SentInvoice ON Job.PONo = SentInvoice.POID ORDER BY "
        "Job.JobNo"_s);
    show(u"frmInvoice"_s, job.text(u"Company"), job.text(u"PONo"), u"sprMain"_s, u"Machining"_s);
    const jet::Recordset sent = shop.openRecordset(
        u"SELECT TOP 1 SentAP.POID, Vendor.Company FROM (SentAP INNER JOIN POVendor ON SentAP.POID "
        "= POVendor.OrderNumber) INNER JOIN Vendor ON POVendor.VendorID = Vendor.VendID ORDER BY "
        "SentAP.ID"_s);
    show(u"frmAP"_s, sent.text(u"Company"), sent.text(u"POID"), u"vaSpread1"_s, u"Material"_s);
}

TEST_P(GalleryTest, TabReachesEveryControlOfAModuleAndComesRound) {
    for (const char* name : {"frmCustomer", "frmVendor", "frmEmployee", "frmOperation",
                             "frmMiscItems", "frmEstimate", "frmJob", "frmUnitOfMeasure"}) {
        SCOPED_TRACE(name);
        open(QString::fromLatin1(name));
        QStringList wanted;
        const auto widgets = form().findChildren<QWidget*>();
        for (const QWidget* widget : widgets) {
            const auto* option = qobject_cast<const QRadioButton*>(widget);
            if (widget->isVisible() && widget->isEnabled() &&
                (widget->focusPolicy() & Qt::TabFocus) != 0 && !widget->objectName().isEmpty() &&
                !widget->objectName().startsWith(u"qt_") && !widget->focusProxy() &&
                (!option || option->isChecked()))
                wanted += widget->objectName();
        }
        EXPECT_GT(wanted.size(), 4);
        QStringList reached;
        for (int i = 0; i < 200; ++i) {
            key(Qt::Key_Tab);
            for (const QWidget* at = QApplication::focusWidget(); at && at != &form();
                 at = at->parentWidget())
                reached += at->objectName();
        }
        for (const QString& control : std::as_const(wanted))
            EXPECT_TRUE(reached.contains(control)) << control.toStdString() << " isn't reached";
        press(u"cmdClose"_s);
    }
}

INSTANTIATE_TEST_SUITE_P(FileAlone, GalleryTest, ::testing::Values(testsupport::EngineKind::File));
