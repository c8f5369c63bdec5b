#include "platform/quickbooks/Waiting.h"
#include "platform/values/Literals.h"
#include "support/ScreenFixture.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using Kind = quickbooks::Outcome::Kind;

namespace {

/// Doors that are shell scripts, each going wrong in its own way.
class DoorTest : public testsupport::ScreenFixture {
  protected:
    void write(const QString& name, const QString& text, bool program = false) {
        QFile file(m_folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
        if (program)
            file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    quickbooks::Door door(const QString& script, int seconds = 20) {
        write(u"carry"_s, u"#!/bin/sh\n"_s + script, true);
        write(u"Mirsa.quickbooks"_s,
              u"# how to reach QuickBooks\n\ncarry \"one two\"\nseconds=%1\n"_s.arg(seconds));
        return quickbooks::doorOf(m_folder.path());
    }
    quickbooks::Outcome outcome(const QString& script, const QByteArray& request = "<a/>") {
        quickbooks::Waiting waiting(u"Waiting"_s);
        return waiting.exchange(door(script), request);
    }
    QTemporaryDir m_folder;
};

} // namespace

TEST_F(DoorTest, AnswersAndFailuresAreToldApart) {
    const auto answered = outcome(u"cat; echo \"$1 $PWD\"\n"_s, QByteArray(300000, 'x'));
    EXPECT_EQ(answered.kind, Kind::Answered);
    EXPECT_TRUE(answered.text.startsWith(QString(300000, u'x') + u"one two "_s));
    EXPECT_TRUE(answered.text.contains(m_folder.path())) << "the program runs in its folder";
    EXPECT_EQ(outcome(u"printf 'Gr\\303\\274n'\n"_s).text, u"Grün");
    EXPECT_EQ(outcome(u"cat >/dev/null; exit 1\n"_s).kind, Kind::NotOpen);
    const auto refused = outcome(u"echo 'not today' >&2; exit 2\n"_s);
    EXPECT_EQ(refused.kind, Kind::NotSent);
    EXPECT_EQ(refused.text, u"not today");
    EXPECT_EQ(outcome(u"exit 0\n"_s).kind, Kind::NoAnswer);
    EXPECT_EQ(outcome(u"echo '<half'; exit 3\n"_s).kind, Kind::NoAnswer);
    EXPECT_EQ(outcome(u"cat >/dev/null; kill -9 $$\n"_s).kind, Kind::NoAnswer);
    EXPECT_EQ(outcome(u"exec 0<&-; sleep 0.2; exit 255\n"_s, QByteArray(2000000, 'x')).kind,
              Kind::NoAnswer)
        << "the line broke";
}

TEST_F(DoorTest, AMissingDoorIsNamed) {
    const auto complaint = [&] { return quickbooks::doorOf(m_folder.path()).complaint; };
    EXPECT_TRUE(complaint().contains(u"Mirsa.quickbooks"));
    write(u"Mirsa.quickbooks"_s, u"# nothing\n"_s);
    EXPECT_TRUE(complaint().contains(u"names no program"));
    write(u"Mirsa.quickbooks"_s, u"no-such-program x\n"_s);
    EXPECT_TRUE(complaint().contains(u"no-such-program"));
    write(u"Mirsa.quickbooks"_s, u"sh\nseconds=soon\n"_s);
    EXPECT_TRUE(complaint().contains(u"seconds=soon"));
    quickbooks::Waiting waiting(u"Waiting"_s);
    EXPECT_EQ(waiting.exchange(quickbooks::doorOf(m_folder.path()), "x").kind, Kind::NotSent);
}

TEST_F(DoorTest, TheTimeLimitAndCancelEndTheProgram) {
    const QString slow = u"echo $$ >pid; exec sleep 30\n"_s;
    const auto stillRuns = [&] {
        QFile file(m_folder.filePath(u"pid"_s));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return QFile::exists(u"/proc/"_s + QString::fromLatin1(file.readAll()).trimmed());
    };
    {
        quickbooks::Waiting waiting(u"Waiting"_s);
        const auto late = waiting.exchange(door(slow, 1), "x");
        EXPECT_EQ(late.kind, Kind::NoAnswer);
        EXPECT_TRUE(late.text.contains(u"1 seconds"));
        EXPECT_FALSE(stillRuns());
    }
    quickbooks::Waiting waiting(u"Sending the invoice"_s);
    // Meanwhile the rest of the program paints, and takes no click and no key.
    QPushButton other(u"Send"_s, &shell());
    int clicks = 0;
    QObject::connect(&other, &QPushButton::clicked, [&] { ++clicks; });
    other.show();
    QTimer::singleShot(100, &other, [&] { QTest::mouseClick(&other, Qt::LeftButton); });
    QTimer press;
    QObject::connect(&press, &QTimer::timeout, &press, [&] {
        const auto windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows) {
            if (window->objectName() != u"frmQuickBooksWait" || !window->isVisible())
                continue;
            press.stop();
            QTest::mouseClick(window->findChild<QAbstractButton*>(u"cmdCancel"_s), Qt::LeftButton);
            return;
        }
    });
    press.start(50);
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(waiting.exchange(door(slow), "x").kind, Kind::Cancelled);
    EXPECT_LT(time.elapsed(), 10000);
    EXPECT_EQ(clicks, 0);
    EXPECT_FALSE(stillRuns());
    EXPECT_EQ(waiting.exchange(door(u"cat\n"_s), "x").kind, Kind::NotSent)
        << "after Cancel nothing goes out any more";
}
