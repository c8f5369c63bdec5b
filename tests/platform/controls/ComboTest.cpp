#include "ControlsTest.h"
#include "platform/values/Literals.h"

#include <QApplication>
#include <QLineEdit>
#include <QWheelEvent>

using namespace controls;

namespace {

class ComboTest : public ControlsTest {
  protected:
    ComboTest() {
        screen::Fields fields(build());
        combo = fields.dataCombo(u"dbcTerms"_s, u"&Terms:"_s,
                                 {.limit = 10, .filter = values::keys::name()});
        list = fields.listCombo(u"cmbKind"_s, u"&Kind:"_s);
        fields.text(u"txtNext"_s, u"&Next:"_s);
        combo->setItems({u"Net 10"_s, u"Net 30"_s, u"COD"_s});
        combo->chosen.connect([this] { chosen << combo->text(); });
        show();
        go(u"txtNext"_s);
    }
    DataCombo* combo;
    ListCombo* list;
    QStringList chosen;
};

TEST_F(ComboTest, CompletesWithoutRegardToCaseAndTellsTheChoiceOnce) {
    type(u"dbcTerms"_s, u"cod"_s);
    leave();
    EXPECT_EQ(text(u"dbcTerms"_s), u"COD"_s);
    EXPECT_EQ(combo->boundText(), u"COD"_s);
    EXPECT_EQ(chosen, QStringList{u"COD"_s});
    go(u"dbcTerms"_s);
    leave();
    choose(u"dbcTerms"_s, u"Net 30"_s);
    leave();
    EXPECT_EQ(chosen.size(), 2);
}

TEST_F(ComboTest, ANumberIsTakenAsItIsTyped) {
    combo->setItems({u"10"_s, u"11"_s, u"1"_s});
    type(u"dbcTerms"_s, u"1"_s);
    leave();
    EXPECT_EQ(combo->boundText(), u"1"_s);
    combo->setItems({u"10 days"_s, u"11"_s});
    type(u"dbcTerms"_s, u"10"_s);
    leave();
    EXPECT_EQ(text(u"dbcTerms"_s), u"10 days"_s);
}

TEST_F(ComboTest, TextOffTheListStandsUnlessTypingIsNotAllowed) {
    type(u"dbcTerms"_s, u"N'et 45 days|"_s);
    leave();
    EXPECT_EQ(text(u"dbcTerms"_s), u"Net 45 day"_s);
    EXPECT_EQ(combo->boundText(), QString());
    EXPECT_TRUE(chosen.isEmpty());
    combo->setTypingAllowed(false);
    combo->setText(u"COD"_s);
    type(u"dbcTerms"_s, u"what"_s);
    leave();
    EXPECT_EQ(text(u"dbcTerms"_s), u"COD"_s);
}

TEST_F(ComboTest, AFreshListKeepsWhatIsShown) {
    combo->setText(u"Net 30"_s);
    int changes = 0;
    combo->changed.connect([&] { ++changes; });
    combo->setItems({u"Cash"_s, u"Net 30"_s});
    EXPECT_EQ(text(u"dbcTerms"_s), u"Net 30"_s);
    EXPECT_EQ(combo->currentIndex(), 1);
    combo->setItems({u"Cash"_s});
    EXPECT_EQ(text(u"dbcTerms"_s), u"Net 30"_s);
    EXPECT_EQ(combo->boundText(), QString());
    EXPECT_EQ(changes, 0);
    combo->clear();
    EXPECT_EQ(text(u"dbcTerms"_s), QString());
    EXPECT_EQ(combo->count(), 1);
    EXPECT_EQ(changes, 1);
}

TEST_F(ComboTest, LockedOrUnderTheWheelItKeepsItsChoice) {
    combo->setText(u"Net 30"_s);
    go(u"dbcTerms"_s);
    const QPointF middle(combo->rect().center());
    QWheelEvent wheel(middle, combo->mapToGlobal(middle), {}, QPoint(0, -120), Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(combo, &wheel);
    EXPECT_EQ(text(u"dbcTerms"_s), u"Net 30"_s);
    combo->setLocked(true);
    key(Qt::Key_Down);
    typeOn(u"x"_s);
    paste(u"dbcTerms"_s, u"x"_s);
    EXPECT_EQ(text(u"dbcTerms"_s), u"Net 30"_s);
    combo->setLocked(false);
    key(Qt::Key_Down);
    EXPECT_EQ(text(u"dbcTerms"_s), u"COD"_s);
}

TEST_F(ComboTest, AListKnowsTheNumberBehindItsRows) {
    list->addRow(u"Line"_s, 3);
    list->addRow(u"Bar"_s, 5);
    EXPECT_TRUE(list->chooseNumber(5));
    EXPECT_EQ(list->text(), u"Bar"_s);
    list->setText(u"line"_s);
    EXPECT_EQ(list->itemNumber(), 3);
    EXPECT_FALSE(list->chooseNumber(9));
    // What the database holds is shown though it is on no list.
    list->setText(u"Pie"_s);
    EXPECT_EQ(list->text(), u"Pie"_s);
    list->clear();
    EXPECT_EQ(list->text(), QString());
    EXPECT_EQ(list->count(), 3);
}

} // namespace
