#include "platform/screen/Seams.h"
#include "platform/system/Companions.h"
#include "platform/system/Locale.h"
#include "platform/system/SingleInstance.h"
#include "support/Print.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <sys/wait.h>
#include <unistd.h>

using namespace screen;

namespace {

/// Presses a key in the box that the next call shows.
void pressInBox(Qt::Key key, QString* title = nullptr) {
    QTimer::singleShot(0, qApp, [key, title] {
        QWidget* box = QApplication::activeModalWidget();
        ASSERT_TRUE(box);
        if (title)
            *title = box->windowTitle();
        QTest::keyClick(box, key);
    });
}

TEST(MessageBox, EnterAndEscapeGiveTheirAnswers) {
    resetSeams();
    const struct {
        Buttons buttons;
        Answer enter;
        Answer escape;
    } cases[] = {{Buttons::Ok, Answer::Ok, Answer::Ok},
                 {Buttons::OkCancel, Answer::Ok, Answer::Cancel},
                 {Buttons::YesNo, Answer::Yes, Answer::No},
                 {Buttons::YesNoCancel, Answer::Yes, Answer::Cancel}};
    for (const auto& c : cases) {
        pressInBox(Qt::Key_Return);
        EXPECT_EQ(MsgBox(u"a < b & c"_qs, c.buttons), c.enter);
        pressInBox(Qt::Key_Escape);
        EXPECT_EQ(MsgBox(u"?"_qs, c.buttons, Icon::Question), c.escape);
    }
    QString title;
    pressInBox(Qt::Key_Return, &title);
    EXPECT_EQ(MsgBox(u"?"_qs, Buttons::YesNo, Icon::Critical, {}, Answer::No), Answer::No);
    EXPECT_EQ(title, u"Mirsa"_qs);
}

TEST(RunTimeError, ShowsNumberAndTextAndEndsTheProcess) {
    resetSeams();
    int ended = -1;
    seams().endProcess = [&](int code) { ended = code; };
    QString shown;
    QTimer::singleShot(0, qApp, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_TRUE(box);
        shown = box->text();
        box->accept();
    });
    EXPECT_FALSE(guardedCall([] { throw std::runtime_error("boom"); }));
    EXPECT_EQ(shown, u"Run-time error '1000':\n\nboom"_qs);
    EXPECT_EQ(ended, 1);
    resetSeams();
}

TEST(SingleInstance, OneAtATimeAndADeadOneIsForgotten) {
    QTemporaryDir folder;
    {
        const platform::SingleInstance first(folder.path());
        EXPECT_TRUE(first.isFirst());
        EXPECT_FALSE(platform::SingleInstance(folder.path()).isFirst());
    }
    const pid_t child = fork();
    if (child == 0) {
        const platform::SingleInstance left(folder.path());
        _exit(left.isFirst() ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(QDir(folder.path()).entryList({u"*.lock"_qs}).size(), 1);
    EXPECT_TRUE(platform::SingleInstance(folder.path()).isFirst());
}

TEST(Companions, StartWhatIsThereAndTellWhatIsNot) {
    QTemporaryDir folder;
    QString error;
    const QString program = folder.filePath(u"Barcode"_qs);
    EXPECT_FALSE(platform::startProgram(program + u".exe"_qs, {}, error));
    EXPECT_TRUE(error.contains(u"Barcode.exe"));
    const QString mark = folder.filePath(u"started"_qs);
    QFile file(program);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\ntouch \"$1\"\n");
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    EXPECT_TRUE(platform::startProgram(program + u".exe"_qs, {mark}, error));
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(mark); }));
}

TEST(Locale, HasACurrencySymbol) {
    EXPECT_FALSE(platform::localeCurrencySymbol().isEmpty());
}

} // namespace
