#include "core/papers/PaperScreen.h"
#include "core/JobModule.h"
#include "core/MDIMain.h"
#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "core/Screens.h"
#include "core/papers/Papers.h"
#include "platform/jet/Native.h"
#include "platform/report/Document.h"
#include "platform/report/Painting.h"
#include "platform/report/Report.h"
#include "platform/values/Literals.h"
#include "support/Paths.h"
#include "support/ShopFixture.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QDropEvent>
#include <QImage>
#include <QMimeData>
#include <QPainter>
#include <QPdfWriter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>
#include <QToolButton>
#include <QUrl>

namespace {

using screen::Answer;

/// The papers of job 1, whose part has an estimate.
class PaperScreen : public testsupport::ShopTest {
  protected:
    void prepare() override {
        QStandardPaths::setTestModeEnabled(true);
        core::registerScreens();
        screen::Forms::add(u"frmJob"_s, [] { return std::make_unique<coretest::JobModule>(); });
        core::shared().ProgramFolder = m_folder.path();
        database().execute(u"UPDATE SystemSettings SET PapersFolder = 'Papers'"_s);
        database().execute(u"INSERT INTO Job (PartNo) VALUES ('AX')"_s);
        database().execute(u"INSERT INTO Estimate (PartNo) VALUES ('AX')"_s);
        m_shell.show();
        m_job = dynamic_cast<coretest::JobModule*>(screen::Forms::show(u"frmJob"_s));
        ASSERT_TRUE(m_job);
    }
    /// Presses Ctrl+O on the job, and works on its papers.
    void look() {
        screen::Forms::show(u"frmJob"_s);
        m_shell.menuAction(u"mnuPapers"_s)->trigger();
        use(screen::Forms::find(u"frmPapers"_s));
        settled();
    }
    /// Lets the look at the files come to its end.
    void settled() const {
        for (int i = 0; i < 10; ++i) {
            QTest::qWait(10);
            settle();
        }
    }
    QString file(const QString& name, const QByteArray& contents) const {
        const QString path = m_folder.filePath(name);
        QFile made(path);
        EXPECT_TRUE(made.open(QIODevice::WriteOnly) && made.write(contents) == contents.size());
        return path;
    }
    QString pdf(const QString& name, int pages) const {
        QPdfWriter writer(m_folder.filePath(name));
        QPainter painter(&writer);
        for (int page = 0; page < pages; ++page) {
            if (page > 0)
                writer.newPage();
            painter.fillRect(1000, 1000, 3000, 2000, Qt::black);
        }
        return m_folder.filePath(name);
    }
    void add(const QStringList& files) {
        expectOpenFile(files.join(u'|'));
        press(u"cmdAdd"_s);
        settled();
    }
    /// Without the date.
    QStringList shown() const {
        QStringList all;
        for (const QString& row : cells(u"lvwPapers"_s)) {
            const QStringList texts = row.split(u'|');
            all += QStringList{texts[0], texts[1], texts[5], texts[6]}.join(u'|');
        }
        return all;
    }
    QString count() const { return m_shell.findChild<QToolButton*>(u"cmdPapers"_s)->text(); }
    core::PaperKind kind(const QString& name) const { return *core::paperKind(name); }
    core::Paper paper(int place) {
        const core::PaperKind job = kind(u"Job"_s);
        return core::readPapers(database(), core::papersSelect(job, 1, {}), job,
                                1)[static_cast<std::size_t>(place)];
    }
    QString stored(const core::Paper& of) const {
        return core::paperStore(database(), m_folder.path()).pathOf(of.content.hash);
    }

    QTemporaryDir m_folder;
    core::MDIMain m_shell;
    coretest::JobModule* m_job = nullptr;
};
MIRSA_BOTH_ENGINES(PaperScreen);

} // namespace

TEST_P(PaperScreen, FilesAreAddedShownOpenedAndRemoved) {
    look();
    EXPECT_TRUE(text(u"lblState"_s).contains(u"No papers yet"));
    const QString drawing = file(u"O'Neil 10%.pdf"_s, "drawing");
    expectBoxContaining(m_folder.path() + u" is a folder"_s);
    add({drawing, m_folder.path(), file(u"order.txt"_s, "order")});
    EXPECT_EQ(shown(), (QStringList{u"order.txt|This job||"_s, u"O'Neil 10%.pdf|This job||"_s}));
    screen::Forms::show(u"frmJob"_s);
    EXPECT_EQ(count(), u"Papers (2)");
    look();

    // A copy is opened that can't be written.
    selectRow(u"lvwPapers"_s, 1);
    press(u"cmdOpen"_s);
    ASSERT_EQ(started.size(), 1);
    const QString copy = started.front().section(u' ', 1);
    EXPECT_EQ(started.front().section(u' ', 0, 0), u"xdg-open");
    EXPECT_TRUE(copy.endsWith(u"/O'Neil 10%.pdf")) << copy.toStdString();
    QFile opened(copy);
    ASSERT_TRUE(opened.open(QIODevice::ReadOnly));
    EXPECT_EQ(opened.readAll(), "drawing");
    EXPECT_FALSE(opened.permissions() & QFileDevice::WriteOwner);
    expectSaveFile(m_folder.filePath(u"saved.pdf"_s));
    press(u"cmdSave"_s);
    EXPECT_TRUE(QFile::exists(m_folder.filePath(u"saved.pdf"_s)));

    // By keyboard alone: Del asks, and what it takes away stays until a backup has it.
    const QString kept = stored(paper(1));
    go(u"lvwPapers"_s);
    expectBoxContaining(u"remove O'Neil 10%.pdf"_s, Answer::No);
    key(Qt::Key_Delete);
    expectBoxContaining(u"remove O'Neil 10%.pdf"_s, Answer::Yes);
    key(Qt::Key_Delete);
    EXPECT_EQ(shown(), QStringList{u"order.txt|This job||"_s});
    EXPECT_TRUE(QFile::exists(kept));
    EXPECT_EQ(rows(u"SELECT FileName, Kind, Record, AddedBy FROM Papers"_s),
              QStringList{u"order.txt|Job|1|"_s + core::shared().CurrentUserName});
}

TEST_P(PaperScreen, WhatIsMissingOrChangedIsSaidInTheListAndNotOpened) {
    look();
    add({file(u"a.pdf"_s, "a drawing"), file(u"b.pdf"_s, "b drawing")});
    QFile(stored(paper(0))).remove();
    QFile changed(stored(paper(1)));
    changed.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    ASSERT_TRUE(changed.open(QIODevice::ReadWrite) && changed.write("A") == 1);
    changed.setFileTime(QDateTime::currentDateTime().addSecs(60),
                        QFileDevice::FileModificationTime);
    changed.close();
    look();
    EXPECT_EQ(shown(), (QStringList{u"b.pdf|This job||Missing"_s,
                                    u"a.pdf|This job||Changed from outside"_s}));
    EXPECT_TRUE(text(u"lblState"_s).contains(u"2 not as stored"));
    selectRow(u"lvwPapers"_s, 0);
    expectBoxContaining(u"b.pdf is missing"_s);
    press(u"cmdOpen"_s);
    selectRow(u"lvwPapers"_s, 1);
    expectBoxContaining(u"a.pdf isn't what was stored"_s);
    press(u"cmdOpen"_s);
    EXPECT_EQ(started, QStringList());
    add({m_folder.filePath(u"a.pdf"_s), m_folder.filePath(u"b.pdf"_s)});
    EXPECT_EQ(shown(), (QStringList{u"b.pdf|This job||"_s, u"a.pdf|This job||"_s}));
}

TEST_P(PaperScreen, ALineThatBreaksWhileARowIsWrittenLosesNothing) {
    if (GetParam() != testsupport::EngineKind::Server)
        GTEST_SKIP() << "a file has no line";
    const auto other = anotherStation();
    jet::Native(*other).execute(
        "CREATE FUNCTION breaks() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN PERFORM "
        "pg_terminate_backend(pg_backend_pid()); RETURN NEW; END'");
    jet::Native(*other).execute(
        "CREATE TRIGGER breaks BEFORE INSERT ON papers EXECUTE FUNCTION breaks()");
    look();
    const QString drawing = file(u"a.pdf"_s, "a drawing");
    expectBoxContaining(u"server can't be reached"_s, Answer::Retry);
    expectBoxContaining(u"server can't be reached"_s, Answer::Close);
    expectBoxContaining(u"could not be put beside the record"_s);
    add({drawing});
    EXPECT_EQ(shown(), QStringList());
    jet::Native(*other).execute("DROP TRIGGER breaks ON papers");
    add({drawing});
    EXPECT_EQ(shown(), QStringList{u"a.pdf|This job||"_s});
    EXPECT_EQ(core::paperStore(database(), m_folder.path()).contents().size(), 1U);
}

TEST_P(PaperScreen, NothingIsAddedToARecordOrAFolderThatIsGone) {
    look();
    add({file(u"a.pdf"_s, "a drawing")});
    const QString folder = m_folder.filePath(u"Papers"_s);
    ASSERT_TRUE(QDir().rename(folder, folder + u'x'));
    look();
    EXPECT_EQ(shown(), QStringList{u"a.pdf|This job||Out of reach"_s});
    expectBoxContaining(u"is out of reach. Nothing was added."_s);
    add({file(u"b.pdf"_s, "b drawing")});
    EXPECT_FALSE(QFileInfo::exists(folder)) << "another one than that of the other stations";
    ASSERT_TRUE(QDir().rename(folder + u'x', folder));
    anotherStation()->execute(u"DELETE * FROM Job"_s);
    expectBoxContaining(u"Job 1 isn't there any more"_s);
    add({m_folder.filePath(u"b.pdf"_s)});
    EXPECT_EQ(rows(u"SELECT FileName FROM Papers"_s), QStringList());
}

TEST_P(PaperScreen, FilesAreDroppedOnTheModuleAndPasted) {
    const auto drop = [&](QWidget* on, const QStringList& files) {
        QMimeData data;
        QList<QUrl> urls;
        for (const QString& path : files)
            urls += QUrl::fromLocalFile(path);
        data.setUrls(urls);
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(on, &enter);
        EXPECT_TRUE(enter.isAccepted());
        QDropEvent dropped({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(on, &dropped);
        settled();
    };
    EXPECT_TRUE(m_job->acceptDrops());
    drop(m_job->m_field, {file(u"a.pdf"_s, "a"), file(u"b.pdf"_s, "b")});
    EXPECT_EQ(m_job->m_field->text(), QString()) << "a file is no text";
    use(screen::Forms::find(u"frmPapers"_s));
    EXPECT_EQ(shown(), (QStringList{u"b.pdf|This job||"_s, u"a.pdf|This job||"_s}));

    go(u"lvwPapers"_s);
    auto* files = new QMimeData;
    files->setUrls({QUrl::fromLocalFile(file(u"c.pdf"_s, "c"))});
    QApplication::clipboard()->setMimeData(files);
    key(Qt::Key_V, Qt::ControlModifier);
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QApplication::clipboard()->setImage(picture);
    key(Qt::Key_V, Qt::ControlModifier);
    QApplication::clipboard()->clear();
    expectBoxContaining(u"no file and no picture"_s);
    key(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(rowCount(u"lvwPapers"_s), 4);
    EXPECT_TRUE(cell(u"lvwPapers"_s, 0, 0).startsWith(u"Picture ")) << "the latest first";

    m_job->m_key = 0;
    expectBoxContaining(u"save it if it is new"_s);
    drop(m_job, {m_folder.filePath(u"a.pdf"_s)});
}

TEST_P(PaperScreen, PapersOfThePartAreShownByRightsAndKeptHere) {
    core::addPapers(database(), kind(u"Estimate"_s), 1, {{u"AX.pdf"_s, {u"aa"_s, 3}}}, u"Ann"_s);
    core::addPapers(database(), kind(u"Job"_s), 1, {{u"own.txt"_s, {u"bb"_s, 3}}}, u"Ann"_s);
    look();
    EXPECT_EQ(shown().size(), 2);
    selectRow(u"lvwPapers"_s, 1);
    EXPECT_EQ(cell(u"lvwPapers"_s, 1, 1), u"Estimate 1");
    EXPECT_FALSE(isEnabled(u"cmdRemove"_s)) << "it lies beside another record";
    press(u"cmdKeep"_s);
    EXPECT_EQ(cell(u"lvwPapers"_s, 0, 0) + cell(u"lvwPapers"_s, 0, 1), u"AX.pdfThis job");
    expectBoxContaining(u"neither a PDF nor a picture"_s);
    selectRow(u"lvwPapers"_s, 1);
    press(u"cmdBehind"_s);

    // Who may not use the module may look, and sees what lies beside the records of others alone.
    core::shared().CurrentUserName = u"carl"_s;
    core::shared().CurrentUserNo = 7;
    look();
    EXPECT_EQ(shown().size(), 2);
    for (const char* button : {"cmdAdd", "cmdRemove", "cmdBehind", "cmdKeep"})
        EXPECT_FALSE(isEnabled(QString::fromLatin1(button))) << button;
    EXPECT_TRUE(isEnabled(u"cmdOpen"_s));
    expectBoxContaining(u"You may look at these papers"_s);
    screen::Forms::find<core::PaperScreen>(u"frmPapers"_s)->addFiles({m_folder.path()});
    database().execute(u"DELETE * FROM Papers WHERE Kind = 'Job'"_s);
    look();
    EXPECT_EQ(shown(), QStringList()) << "estimates aren't his to see";
}

TEST_P(PaperScreen, ADatabaseWithoutAFolderSaysSo) {
    database().execute(u"UPDATE SystemSettings SET PapersFolder = ''"_s);
    look();
    if (GetParam() == testsupport::EngineKind::Server)
        expectBoxContaining(u"No folder for papers is named yet"_s);
    add({file(u"a.pdf"_s, "a")});
    EXPECT_EQ(rowCount(u"lvwPapers"_s), GetParam() == testsupport::EngineKind::Server ? 0 : 1);
}

TEST_P(PaperScreen, PapersArePrintedBehindTheTraveler) {
    for (const char* name : {"Job_Traveler.rpt", "Job_Traveler_Notes.rpt"})
        QFile::copy(testsupport::sourceFile(u"reports/"_s + QString::fromLatin1(name)),
                    m_folder.filePath(QString::fromLatin1(name)));
    std::shared_ptr<const report::Document> printed;
    report::setPreviewer([&](std::shared_ptr<const report::Document> document,
                             const report::WindowPlacing&) { printed = std::move(document); });
    const auto pages = [&] {
        core::launchTraveler(1, false, &m_shell);
        return printed ? printed->pageCount() : 0;
    };
    const int alone = pages();
    ASSERT_GT(alone, 0);
    QImage photo(900, 600, QImage::Format_RGB32);
    photo.fill(Qt::blue);
    photo.save(m_folder.filePath(u"photo.jpg"_s));
    look();
    add({pdf(u"two.pdf"_s, 2), m_folder.filePath(u"photo.jpg"_s),
         file(u"broken.pdf"_s, "%PDF-1.4 and nothing more"), file(u"no.png"_s, "no picture")});
    EXPECT_EQ(pages(), alone) << "no box is set";
    for (int row = 0; row < 4; ++row) {
        selectRow(u"lvwPapers"_s, row);
        press(u"cmdBehind"_s);
    }
    EXPECT_EQ(shown().filter(u"|Yes|"_s).size(), 4);
    expectBoxContaining(u"broken.pdf: the PDF is damaged\nno.png: no picture can be made of it"_s);
    EXPECT_EQ(pages(), alone + 3) << "what is damaged doesn't stop the others";

    // On paper: two pages of the drawing, and the photo turned as the paper is.
    const QString path = m_folder.filePath(u"printed.pdf"_s);
    report::writePdf(*printed, path);
    QProcess info;
    info.start(u"pdfinfo"_s, {path});
    ASSERT_TRUE(info.waitForFinished());
    EXPECT_TRUE(QString::fromUtf8(info.readAllStandardOutput())
                    .contains(QRegularExpression(u"Pages: +%1\\b"_s.arg(alone + 3))));
    const report::Page last = printed->page(alone + 2);
    ASSERT_EQ(last.items.size(), 1U);
    EXPECT_GT(last.items.front().h, last.items.front().w);
    QImage sheet(printed->paper.size.toSize() * 2, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    report::PagePainter(*printed).paint(painter, last, 2);
    painter.end();
    const QColor middle = sheet.pixelColor(sheet.rect().center());
    EXPECT_GT(middle.blue(), 200);
    EXPECT_LT(middle.red(), 60);

    for (int row = 0; row < 2; ++row)
        QFile(stored(paper(row))).remove();
    expectBoxContaining(u"the file is missing"_s);
    EXPECT_EQ(pages(), alone + 3);
}
