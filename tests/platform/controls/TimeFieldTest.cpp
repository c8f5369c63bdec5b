#include "ControlsTest.h"
#include "platform/values/Literals.h"

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
        fields.add(start, u"txtStart"_s, u"&Start:"_s);
        fields.text(u"txtNext"_s, u"&Next:"_s);
        show();
        go(u"txtNext"_s);
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
        type(u"txtStart"_s, QString::fromUtf16(c.typed));
        leave();
        EXPECT_EQ(shown(), QString::fromUtf16(c.shown))
            << QString::fromUtf16(c.typed).toStdString();
        EXPECT_EQ(start->text(), shown());
    }
}

TEST_F(TimeFieldTest, KeepsAndMarksWhatIsNoTime) {
    start->setTime(QTime(6, 0));
    for (const char16_t* wrong : {u"24:00", u"13 PM", u"7:60", u"0am"}) {
        type(u"txtStart"_s, QString::fromUtf16(wrong));
        leave();
        EXPECT_EQ(shown(), QString::fromUtf16(wrong));
        EXPECT_FALSE(start->isValid());
        EXPECT_TRUE(start->value().isNull());
        EXPECT_EQ(start->toolTip(), u"This isn't a time."_s);
    }
    start->setValue(jet::Value(QDateTime(QDate(2026, 3, 2), QTime(15, 0), Qt::UTC)));
    EXPECT_TRUE(start->isValid());
    type(u"txtStart"_s, u"9"_s);
    key(Qt::Key_Escape);
    EXPECT_EQ(shown(), u"03:00 PM"_s);
}

TEST_F(TimeFieldTest, TheFirstFieldOfAWindowIsEnteredAsTheWindowIs) {
    start->setTime(QTime(6, 0));
    const auto activate = [this] {
        QFocusEvent event(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
        QApplication::sendEvent(start, &event);
    };
    activate();
    EXPECT_EQ(start->selectedText(), u"06:00 AM"_s);
    QTest::keyClicks(start, u"9"_s);
    activate(); // back from another window, in the middle of typing
    EXPECT_EQ(start->selectedText(), QString());
    QTest::keyClick(start, Qt::Key_Escape);
    EXPECT_EQ(shown(), u"06:00 AM"_s);
}

TEST_F(TimeFieldTest, TellsEveryEditAndNoOtherTwice) {
    int changes = 0;
    start->changed.connect([&changes] { ++changes; });
    start->setTime(QTime(6, 0));
    start->setTime(QTime(6, 0));
    EXPECT_EQ(changes, 1);
    type(u"txtStart"_s, u"6:00"_s);
    EXPECT_EQ(changes, 5) << "the same time, typed anew";
    leave();
    EXPECT_EQ(changes, 5);
}

} // namespace
