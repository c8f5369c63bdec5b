#include "ControlsTest.h"

#include "platform/controls/TimeField.h"

#include <QApplication>
#include <QFocusEvent>
#include <QTest>

using namespace controls;

namespace {

class TimeFieldTest : public ControlsTest {
  protected:
    TimeFieldTest() {
        QWidget* body = build();
        screen::Fields fields(body);
        start = new TimeField(body);
        fields.add(start, QStringLiteral("txtStart"), QStringLiteral("&Start:"));
        fields.text(QStringLiteral("txtNext"), QStringLiteral("&Next:"));
        show();
        go(QStringLiteral("txtNext"));
    }
    QString shown() const { return start->QLineEdit::text(); }
    TimeField* start;
};

TEST_F(TimeFieldTest, TakesTimesAsPeopleTypeThem) {
    const struct {
        const char16_t* typed;
        const char16_t* shown;
    } cases[] = {{u"7", u"07:00 AM"},     {u"730", u"07:30 AM"},           {u"7:30 p", u"07:30 PM"},
                 {u"19:30", u"07:30 PM"}, {u"12am", u"12:00 AM"},          {u"12 PM", u"12:00 PM"},
                 {u"0", u"12:00 AM"},     {u"6:05:09 PM", u"06:05:09 PM"}, {u"x9", u"09:00 AM"}};
    for (const auto& c : cases) {
        type(QStringLiteral("txtStart"), QString::fromUtf16(c.typed));
        leave();
        EXPECT_EQ(shown(), QString::fromUtf16(c.shown))
            << QString::fromUtf16(c.typed).toStdString();
        EXPECT_EQ(start->text(), shown());
    }
}

TEST_F(TimeFieldTest, KeepsAndMarksWhatIsNoTime) {
    start->setTime(QTime(6, 0));
    for (const char16_t* wrong : {u"24:00", u"13 PM", u"7:60", u"0am"}) {
        type(QStringLiteral("txtStart"), QString::fromUtf16(wrong));
        leave();
        EXPECT_EQ(shown(), QString::fromUtf16(wrong));
        EXPECT_FALSE(start->isValid());
        EXPECT_TRUE(start->value().isNull());
        EXPECT_EQ(start->toolTip(), QStringLiteral("This isn't a time."));
    }
    start->setValue(jet::Value(QDateTime(QDate(2026, 3, 2), QTime(15, 0), Qt::UTC)));
    EXPECT_TRUE(start->isValid());
    type(QStringLiteral("txtStart"), QStringLiteral("9"));
    key(Qt::Key_Escape);
    EXPECT_EQ(shown(), QStringLiteral("03:00 PM"));
}

TEST_F(TimeFieldTest, TheFirstFieldOfAWindowIsEnteredAsTheWindowIs) {
    start->setTime(QTime(6, 0));
    const auto activate = [this] {
        QFocusEvent event(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
        QApplication::sendEvent(start, &event);
    };
    activate();
    EXPECT_EQ(start->selectedText(), QStringLiteral("06:00 AM"));
    QTest::keyClicks(start, QStringLiteral("9"));
    activate(); // back from another window, in the middle of typing
    EXPECT_EQ(start->selectedText(), QString());
    QTest::keyClick(start, Qt::Key_Escape);
    EXPECT_EQ(shown(), QStringLiteral("06:00 AM"));
}

TEST_F(TimeFieldTest, TellsEveryEditAndNoOtherTwice) {
    int changes = 0;
    start->changed.connect([&changes] { ++changes; });
    start->setTime(QTime(6, 0));
    start->setTime(QTime(6, 0));
    EXPECT_EQ(changes, 1);
    type(QStringLiteral("txtStart"), QStringLiteral("6:00"));
    EXPECT_EQ(changes, 5) << "the same time, typed anew";
    leave();
    EXPECT_EQ(changes, 5);
}

} // namespace
