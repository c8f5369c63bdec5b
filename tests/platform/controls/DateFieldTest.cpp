#include "ControlsTest.h"

#include "platform/values/Clock.h"

#include <QCalendarWidget>

using namespace controls;

namespace {

class DateFieldTest : public ControlsTest {
  protected:
    DateFieldTest() {
        values::setNow(QDateTime(QDate(2026, 3, 2), QTime(9, 30)));
        screen::Fields fields(build());
        due = fields.date(QStringLiteral("txtDue"), QStringLiteral("&Due:"));
        fields.text(QStringLiteral("txtNext"), QStringLiteral("&Next:"));
        show();
        go(QStringLiteral("txtNext"));
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
        type(QStringLiteral("txtDue"), QString());
        type(QStringLiteral("txtDue"), QString::fromUtf16(c.typed));
        leave();
        EXPECT_EQ(due->date().value_or(QDate()), c.date)
            << QString::fromUtf16(c.typed).toStdString();
        EXPECT_EQ(due->isValid(), c.date.isValid());
    }
}

TEST_F(DateFieldTest, KeepsAndMarksWhatIsNoDate) {
    due->setDate(QDate(2026, 3, 2));
    const QColor plain = due->palette().color(QPalette::Text);
    type(QStringLiteral("txtDue"), QStringLiteral("13/45/2026"));
    leave();
    EXPECT_EQ(shown(), QStringLiteral("13/45/2026"));
    EXPECT_EQ(due->text(), QString());
    EXPECT_TRUE(due->value().isNull());
    EXPECT_EQ(due->toolTip(), QStringLiteral("This isn't a date."));
    EXPECT_NE(due->palette().color(QPalette::Text), plain);
    type(QStringLiteral("txtDue"), QStringLiteral("3/4/2026"));
    leave();
    EXPECT_EQ(due->toolTip(), QString());
    EXPECT_EQ(due->palette().color(QPalette::Text), plain);

    type(QStringLiteral("txtDue"), QStringLiteral("9"));
    key(Qt::Key_Escape);
    EXPECT_EQ(due->text(), QStringLiteral("3/4/2026"));
}

TEST_F(DateFieldTest, ShowsTheLongFormWhileNobodyIsInIt) {
    int changes = 0;
    due->changed.connect([&] { ++changes; });
    due->setShown(DateField::Shown::Long);
    due->setText(QStringLiteral("20260302"));
    EXPECT_EQ(shown(), QStringLiteral("Monday, March 2, 2026"));
    EXPECT_EQ(due->text(), QStringLiteral("3/2/2026"));
    go(QStringLiteral("txtDue"));
    EXPECT_EQ(shown(), QStringLiteral("3/2/2026"));
    leave();
    EXPECT_EQ(shown(), QStringLiteral("Monday, March 2, 2026"));
    EXPECT_EQ(changes, 1);
    due->setValue(jet::Value());
    EXPECT_EQ(shown(), QString());
}

TEST_F(DateFieldTest, PicksFromACalendarUnlessLocked) {
    go(QStringLiteral("txtDue"));
    key(Qt::Key_F4);
    auto* calendar = due->findChild<QCalendarWidget*>(QStringLiteral("calendar"));
    ASSERT_TRUE(calendar);
    EXPECT_EQ(calendar->selectedDate(), QDate(2026, 3, 2));
    calendar->activated(QDate(2026, 3, 9));
    settle();
    EXPECT_EQ(due->text(), QStringLiteral("3/9/2026"));
    EXPECT_FALSE(due->findChild<QCalendarWidget*>());
    due->setLocked(true);
    key(Qt::Key_F4);
    typeOn(QStringLiteral("t+"));
    EXPECT_FALSE(due->findChild<QCalendarWidget*>());
    EXPECT_EQ(due->text(), QStringLiteral("3/9/2026"));
}

} // namespace
