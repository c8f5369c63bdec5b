#include "MemorySource.h"

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
        MemorySource::Table table{{QStringLiteral("No")}, {}};
        for (int number = 1; number <= 12; ++number)
            table.rows.push_back({number});
        source.add(QStringLiteral("Job"), std::move(table));
        const auto file = report::readReportText(
            "<report title=\"Jobs\"><query><from>Job</from></query><body><detail>"
            "<band newPage=\"yes\"><text>Job number {No}</text>"
            "<text y=\"200\">{iif(No = 3 or No = 7, 'Needle here', 'hay')}</text></band>"
            "</detail></body></report>",
            QStringLiteral("Jobs.rpt"));
        std::shared_ptr<const report::Document> document = report::layOut(file, source, {});
        window = report::PreviewWindow::open(
            document, {QStringLiteral("Job Report"), 20, 20, 800, 600, &shell()});
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

TEST_F(Preview, pagesAreReachedByKeysAndByNumber) {
    EXPECT_EQ(state(), QStringLiteral("Page 1 of 12"));
    press(Qt::Key_PageDown);
    press(Qt::Key_PageDown);
    EXPECT_EQ(state(), QStringLiteral("Page 3 of 12"));
    press(Qt::Key_PageUp);
    EXPECT_EQ(state(), QStringLiteral("Page 2 of 12"));
    press(Qt::Key_End);
    EXPECT_EQ(state(), QStringLiteral("Page 12 of 12"));
    EXPECT_FALSE(window->findChild<QAction*>(QStringLiteral("nextPage"))->isEnabled());
    auto* page = window->findChild<QSpinBox*>(QStringLiteral("page"));
    page->setValue(5);
    EXPECT_EQ(state(), QStringLiteral("Page 5 of 12"));
    press(Qt::Key_Home);
    EXPECT_EQ(state(), QStringLiteral("Page 1 of 12"));
    EXPECT_FALSE(window->findChild<QAction*>(QStringLiteral("firstPage"))->isEnabled());
}

TEST_F(Preview, zoomKeepsThePage) {
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

TEST_F(Preview, searchGoesFromPlaceToPlaceAndRound) {
    press(Qt::Key_F, Qt::ControlModifier);
    auto* wanted = window->findChild<QLineEdit*>(QStringLiteral("wanted"));
    ASSERT_TRUE(wanted->hasFocus());
    QTest::keyClicks(wanted, QStringLiteral("needle"));
    std::vector<QString> seen;
    for (int step = 0; step < 3; ++step) {
        QTest::keyClick(wanted, Qt::Key_Return);
        seen.push_back(state());
    }
    EXPECT_EQ(seen, (std::vector{QStringLiteral("Page 3 of 12"), QStringLiteral("Page 7 of 12"),
                                 QStringLiteral("Page 3 of 12")}));
    press(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(state(), QStringLiteral("Page 7 of 12"));
    QDir().mkpath(QStringLiteral(MIRSA_BINARY_DIR "/gallery"));
    window->grab().save(QStringLiteral(MIRSA_BINARY_DIR "/gallery/reportPreview.png"));
    EXPECT_FALSE(window->view()->find(QStringLiteral("no such words")));
    EXPECT_EQ(state(), QStringLiteral("Page 7 of 12"));
}

TEST_F(Preview, savesAPdfAndTellsWhereItCannot) {
    QTemporaryDir folder;
    expectSaveFile(folder.filePath(QStringLiteral("jobs")));
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_GT(QFileInfo(folder.filePath(QStringLiteral("jobs.pdf"))).size(), 2000);
    expectSaveFile(folder.filePath(QStringLiteral("no/such/folder.pdf")));
    expectBoxContaining(QStringLiteral("could not be saved"));
    window->saveAsPdf();
}

TEST_F(Preview, escapeClosesItAndItGoesWithItsMainWindow) {
    EXPECT_EQ(window->parentWidget(), &shell());
    EXPECT_TRUE(window->isWindow());
    EXPECT_FALSE(window->isModal());
    press(Qt::Key_Escape);
    settle();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(window.isNull());
}
