#include "ControlsTest.h"

#include <QApplication>
#include <QLineEdit>
#include <QWheelEvent>

using namespace controls;

namespace {

class ComboTest : public ControlsTest {
  protected:
    ComboTest() {
        screen::Fields fields(build());
        combo = fields.dataCombo(QStringLiteral("dbcTerms"), QStringLiteral("&Terms:"),
                                 {.limit = 10, .filter = values::keys::name()});
        list = fields.listCombo(QStringLiteral("cmbKind"), QStringLiteral("&Kind:"));
        fields.text(QStringLiteral("txtNext"), QStringLiteral("&Next:"));
        combo->setItems(
            {QStringLiteral("Net 10"), QStringLiteral("Net 30"), QStringLiteral("COD")});
        combo->chosen.connect([this] { chosen << combo->text(); });
        show();
        go(QStringLiteral("txtNext"));
    }
    DataCombo* combo;
    ListCombo* list;
    QStringList chosen;
};

TEST_F(ComboTest, CompletesWithoutRegardToCaseAndTellsTheChoiceOnce) {
    type(QStringLiteral("dbcTerms"), QStringLiteral("cod"));
    leave();
    EXPECT_EQ(text(QStringLiteral("dbcTerms")), QStringLiteral("COD"));
    EXPECT_EQ(combo->boundText(), QStringLiteral("COD"));
    EXPECT_EQ(chosen, QStringList{QStringLiteral("COD")});
    go(QStringLiteral("dbcTerms"));
    leave();
    choose(QStringLiteral("dbcTerms"), QStringLiteral("Net 30"));
    leave();
    EXPECT_EQ(chosen.size(), 2);
}

TEST_F(ComboTest, TextOffTheListStandsUnlessTypingIsNotAllowed) {
    type(QStringLiteral("dbcTerms"), QStringLiteral("N'et 45 days|"));
    leave();
    EXPECT_EQ(text(QStringLiteral("dbcTerms")), QStringLiteral("Net 45 day"));
    EXPECT_EQ(combo->boundText(), QString());
    EXPECT_TRUE(chosen.isEmpty());
    combo->setTypingAllowed(false);
    combo->setText(QStringLiteral("COD"));
    type(QStringLiteral("dbcTerms"), QStringLiteral("what"));
    leave();
    EXPECT_EQ(text(QStringLiteral("dbcTerms")), QStringLiteral("COD"));
}

TEST_F(ComboTest, AFreshListKeepsWhatIsShown) {
    combo->setText(QStringLiteral("Net 30"));
    int changes = 0;
    combo->changed.connect([&] { ++changes; });
    combo->setItems({QStringLiteral("Cash"), QStringLiteral("Net 30")});
    EXPECT_EQ(text(QStringLiteral("dbcTerms")), QStringLiteral("Net 30"));
    EXPECT_EQ(combo->currentIndex(), 1);
    combo->setItems({QStringLiteral("Cash")});
    EXPECT_EQ(text(QStringLiteral("dbcTerms")), QStringLiteral("Net 30"));
    EXPECT_EQ(combo->boundText(), QString());
    EXPECT_EQ(changes, 0);
    combo->clear();
    EXPECT_EQ(text(QStringLiteral("dbcTerms")), QString());
    EXPECT_EQ(combo->count(), 1);
    EXPECT_EQ(changes, 1);
}

TEST_F(ComboTest, LockedOrUnderTheWheelItKeepsItsChoice) {
    combo->setText(QStringLiteral("Net 30"));
    go(QStringLiteral("dbcTerms"));
    const QPointF middle(combo->rect().center());
    QWheelEvent wheel(middle, combo->mapToGlobal(middle), {}, QPoint(0, -120), Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(combo, &wheel);
    EXPECT_EQ(text(QStringLiteral("dbcTerms")), QStringLiteral("Net 30"));
    combo->setLocked(true);
    key(Qt::Key_Down);
    typeOn(QStringLiteral("x"));
    paste(QStringLiteral("dbcTerms"), QStringLiteral("x"));
    EXPECT_EQ(text(QStringLiteral("dbcTerms")), QStringLiteral("Net 30"));
    combo->setLocked(false);
    key(Qt::Key_Down);
    EXPECT_EQ(text(QStringLiteral("dbcTerms")), QStringLiteral("COD"));
}

TEST_F(ComboTest, AListKnowsTheNumberBehindItsRows) {
    list->addRow(QStringLiteral("Line"), 3);
    list->addRow(QStringLiteral("Bar"), 5);
    EXPECT_TRUE(list->chooseNumber(5));
    EXPECT_EQ(list->text(), QStringLiteral("Bar"));
    list->setText(QStringLiteral("line"));
    EXPECT_EQ(list->itemNumber(), 3);
    EXPECT_FALSE(list->chooseNumber(9));
    // What the database holds is shown though it is on no list.
    list->setText(QStringLiteral("Pie"));
    EXPECT_EQ(list->text(), QStringLiteral("Pie"));
    list->clear();
    EXPECT_EQ(list->text(), QString());
    EXPECT_EQ(list->count(), 3);
}

} // namespace
