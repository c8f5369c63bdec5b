#include "ControlsTest.h"
#include "platform/values/Literals.h"

#include "platform/values/Clock.h"

#include <QCalendarWidget>

using namespace controls;

namespace {

class DateFieldTest : public ControlsTest {
  protected:
    DateFieldTest() {
        values::setNow(QDateTime(QDate(2026, 3, 2), QTime(9, 30)));
        screen::Fields fields(build());
        due = fields.date(u"txtDue"_s, u"&Due:"_s);
        fields.text(u"txtNext"_s, u"&Next:"_s);
        show();
        go(u"txtNext"_s);
    }
    ~DateFieldTest() override { values::setNow(std::nullopt); }
    QString shown() const { return due->QLineEdit::text(); }
    DateField* due;
};

TEST_F(DateFieldTest, TakesDatesAsPeopleTypeThem) {
    const struct {
        const char16_t* typed;
        QDate date;
    } cases[] = {{u"3/2/2026", {2026, 3, 2}},  {u"12/31/26", {2026, 12, 31}},
                 {u"20260228", {2026, 2, 28}}, {u"t", {2026, 3, 2}},
                 {u"2/30/2026", {}},           {u"13/1/2026", {}},
                 {u"t+", {2026, 3, 3}},        {u"t--", {2026, 2, 28}}};
    for (const auto& c : cases) {
        type(u"txtDue"_s, QString());
        type(u"txtDue"_s, QString::fromUtf16(c.typed));
        leave();
        EXPECT_EQ(due->date().value_or(QDate()), c.date)
            << QString::fromUtf16(c.typed).toStdString();
        EXPECT_EQ(due->isValid(), c.date.isValid());
    }
}

TEST_F(DateFieldTest, KeepsAndMarksWhatIsNoDate) {
    due->setDate(QDate(2026, 3, 2));
    const QColor plain = due->palette().color(QPalette::Text);
    type(u"txtDue"_s, u"13/45/2026"_s);
    leave();
    EXPECT_EQ(shown(), u"13/45/2026"_s);
    EXPECT_EQ(due->text(), QString());
    EXPECT_TRUE(due->value().isNull());
    EXPECT_EQ(due->toolTip(), u"This isn't a date."_s);
    EXPECT_NE(due->palette().color(QPalette::Text), plain);
    type(u"txtDue"_s, u"3/4/2026"_s);
    leave();
    EXPECT_EQ(due->toolTip(), QString());
    EXPECT_EQ(due->palette().color(QPalette::Text), plain);

    type(u"txtDue"_s, u"9"_s);
    key(Qt::Key_Escape);
    EXPECT_EQ(due->text(), u"3/4/2026"_s);
}

TEST_F(DateFieldTest, ShowsTheLongFormWhileNobodyIsInIt) {
    int changes = 0;
    due->changed.connect([&] { ++changes; });
    due->setShown(DateField::Shown::Long);
    due->setText(u"20260302"_s);
    EXPECT_EQ(shown(), u"Monday, March 2, 2026"_s);
    EXPECT_EQ(due->text(), u"3/2/2026"_s);
    go(u"txtDue"_s);
    EXPECT_EQ(shown(), u"3/2/2026"_s);
    leave();
    EXPECT_EQ(shown(), u"Monday, March 2, 2026"_s);
    EXPECT_EQ(changes, 1);
    due->setValue(jet::Value());
    EXPECT_EQ(shown(), QString());
}

TEST_F(DateFieldTest, PicksFromACalendarUnlessLocked) {
    go(u"txtDue"_s);
    key(Qt::Key_F4);
    auto* calendar = due->findChild<QCalendarWidget*>(u"calendar"_s);
    ASSERT_TRUE(calendar);
    EXPECT_EQ(calendar->selectedDate(), QDate(2026, 3, 2));
    calendar->activated(QDate(2026, 3, 9));
    settle();
    EXPECT_EQ(due->text(), u"3/9/2026"_s);
    EXPECT_FALSE(due->findChild<QCalendarWidget*>());

    due->setLatest(QDate(2026, 3, 10));
    typeOn(u"++"_s);
    EXPECT_EQ(due->text(), u"3/10/2026"_s);
    key(Qt::Key_F4);
    EXPECT_EQ(due->findChild<QCalendarWidget*>()->maximumDate(), QDate(2026, 3, 10));
    key(Qt::Key_Escape);
    due->setText(u"3/11/2026"_s);
    go(u"txtNext"_s);
    EXPECT_EQ(due->text(), u"3/11/2026"_s);
    EXPECT_TRUE(due->toolTip().contains(u"3/10/2026"_s));
    due->setText(u"3/9/2026"_s);
    go(u"txtDue"_s);

    due->setLocked(true);
    key(Qt::Key_F4);
    typeOn(u"t+"_s);
    EXPECT_FALSE(due->findChild<QCalendarWidget*>());
    EXPECT_EQ(due->text(), u"3/9/2026"_s);
}

} // namespace
