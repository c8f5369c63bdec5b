#include "MemorySource.h"
#include "platform/values/Literals.h"
#include "support/Paths.h"

#include "platform/report/PageView.h"
#include "platform/report/PreviewWindow.h"
#include "support/ScreenFixture.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSpinBox>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>

namespace {

class Preview : public testsupport::ScreenFixture {
  protected:
    Preview() {
        MemorySource::Table table{{u"No"_s}, {}};
        for (int number = 1; number <= 12; ++number)
            table.rows.push_back({number});
        source.add(u"Job"_s, std::move(table));
        const auto file = report::readReportText(
            "<report title=\"Jobs\" documentName=\"Job {No} for "
            "'AC/DC'\" mailTo=\"shop@example.com\"><query><from>Job</from></query><body><detail>"
            "<band newPage=\"yes\"><text>Job number {No}</text>"
            "<text y=\"200\">{iif(No = 3 or No = 7, 'Needle here', 'hay')}</text></band>"
            "</detail></body></report>",
            u"Jobs.rpt"_s);
        std::shared_ptr<const report::Document> document = report::layOut(file, source, {});
        window =
            report::PreviewWindow::open(document, {u"Job Report"_s, 20, 20, 800, 600, &shell()});
        EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    }
    ~Preview() override { delete window; }

    QString state() const { return window->statusBar()->findChildren<QLabel*>().at(0)->text(); }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(window->focusWidget() ? window->focusWidget() : window, Qt::Key(key),
                        modifiers);
    }

    MemorySource source;
    QPointer<report::PreviewWindow> window;
};

} // namespace

TEST_F(Preview, PagesAreReachedByKeysAndByNumber) {
    EXPECT_EQ(state(), u"Page 1 of 12"_s);
    press(Qt::Key_PageDown);
    press(Qt::Key_PageDown);
    EXPECT_EQ(state(), u"Page 3 of 12"_s);
    press(Qt::Key_PageUp);
    EXPECT_EQ(state(), u"Page 2 of 12"_s);
    press(Qt::Key_End);
    EXPECT_EQ(state(), u"Page 12 of 12"_s);
    EXPECT_FALSE(window->findChild<QAction*>(u"nextPage"_s)->isEnabled());
    auto* page = window->findChild<QSpinBox*>(u"page"_s);
    page->setValue(5);
    EXPECT_EQ(state(), u"Page 5 of 12"_s);
    press(Qt::Key_Home);
    EXPECT_EQ(state(), u"Page 1 of 12"_s);
    EXPECT_FALSE(window->findChild<QAction*>(u"firstPage"_s)->isEnabled());
}

TEST_F(Preview, ZoomKeepsThePage) {
    auto* view = window->view();
    view->goToPage(4);
    for (const auto& [zoom, percent] : {std::pair(report::PageView::Zoom::Page, 0.0),
                                        {report::PageView::Zoom::Percent, 50.0},
                                        {report::PageView::Zoom::Percent, 200.0},
                                        {report::PageView::Zoom::Width, 0.0}}) {
        view->setZoom(zoom, percent);
        EXPECT_EQ(view->currentPage(), 4);
    }
    view->setZoom(report::PageView::Zoom::Page);
    EXPECT_EQ(view->horizontalScrollBar()->maximum(), 0);
    EXPECT_LT(view->percent(), 100);
    window->resize(1000, 900);
    EXPECT_EQ(view->currentPage(), 4);
}

TEST_F(Preview, SearchGoesFromPlaceToPlaceAndRound) {
    press(Qt::Key_F, Qt::ControlModifier);
    auto* wanted = window->findChild<QLineEdit*>(u"wanted"_s);
    ASSERT_TRUE(wanted->hasFocus());
    QTest::keyClicks(wanted, u"needle"_s);
    std::vector<QString> seen;
    for (int step = 0; step < 3; ++step) {
        QTest::keyClick(wanted, Qt::Key_Return);
        seen.push_back(state());
    }
    EXPECT_EQ(seen, (std::vector{u"Page 3 of 12"_s, u"Page 7 of 12"_s, u"Page 3 of 12"_s}));
    press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(state(), u"Page 7 of 12"_s);
    QDir().mkpath(testsupport::builtFile(u"gallery"_s));
    window->grab().save(testsupport::builtFile(u"gallery/reportPreview.png"_s));
    EXPECT_FALSE(window->view()->find(u"no such words"_s));
    EXPECT_EQ(state(), u"Page 7 of 12"_s);
}

TEST_F(Preview, SavesAPdfAndTellsWhereItCannot) {
    EXPECT_TRUE(window->suggestedFile().endsWith(u"/Job 1 for 'AC-DC'.pdf"_s));
    QTemporaryDir folder;
    expectSaveFile(folder.filePath(u"jobs"_s));
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_GT(QFileInfo(folder.filePath(u"jobs.pdf"_s)).size(), 2000);
    expectSaveFile(folder.filePath(u"no/such/folder.pdf"_s));
    expectBoxContaining(u"could not be saved"_s);
    window->saveAsPdf();
}

TEST_F(Preview, SendHandsThePdfToTheMailProgram) {
    press(Qt::Key_E, Qt::ControlModifier);
    ASSERT_EQ(started.size(), 1);
    EXPECT_TRUE(started[0].startsWith(u"xdg-email --utf8 --subject Job 1 for 'AC/DC' --attach "_s));
    EXPECT_TRUE(started[0].endsWith(u"/Job 1 for 'AC-DC'.pdf shop@example.com"_s));
    const QString path = started[0].section(u" --attach "_s, 1).section(u" shop@"_s, 0, 0);
    EXPECT_GT(QFileInfo(path).size(), 1000);
    EXPECT_TRUE(QDir(QFileInfo(path).path()).removeRecursively());
    programsStart = false;
    expectBoxContaining(u"could not be handed to your mail program: File not found"_s);
    press(Qt::Key_E, Qt::ControlModifier);
}

TEST_F(Preview, EscapeClosesItAndItGoesWithItsMainWindow) {
    EXPECT_EQ(window->parentWidget(), &shell());
    EXPECT_TRUE(window->isWindow());
    EXPECT_FALSE(window->isModal());
    press(Qt::Key_Escape);
    settle();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
}
