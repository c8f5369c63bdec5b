#include "ControlsTest.h"

#include <QApplication>
#include <QDropEvent>
#include <QInputMethodEvent>
#include <QMimeData>

using namespace controls;

namespace {

class EntryTest : public ControlsTest {
  protected:
    EntryTest() {
        screen::Fields fields(build());
        name = fields.text(QStringLiteral("txtName"), QStringLiteral("&Name:"),
                           {.limit = 8, .filter = values::keys::name()});
        rate = fields.text(QStringLiteral("txtRate"), QStringLiteral("&Rate:"),
                           {.filter = values::keys::decimal(), .mask = QStringLiteral("#,##0.00")});
        price = fields.currency(QStringLiteral("txtPrice"), QStringLiteral("&Price:"),
                                QStringLiteral("$###,##0.00"));
        notes = fields.memo(QStringLiteral("txtNotes"), QStringLiteral("N&otes:"), 3, 12,
                            values::keys::name());
        show();
    }
    void drop(QWidget* on, const QString& text) {
        QMimeData data;
        data.setText(text);
        QDragEnterEvent enter(on->rect().center(), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(on, &enter);
        QDropEvent event(on->rect().center(), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(on, &event);
    }
    TextField* name;
    TextField* rate;
    CurrencyField* price;
    MemoField* notes;
};

TEST_F(EntryTest, DeniedCharactersStayOutWhicheverWayTheyCome) {
    type(QStringLiteral("txtName"), QStringLiteral("O'N|e\"il"));
    EXPECT_EQ(text(QStringLiteral("txtName")), QStringLiteral("ONeil"));
    paste(QStringLiteral("txtName"), QStringLiteral("O'Hara|"));
    EXPECT_EQ(text(QStringLiteral("txtName")), QStringLiteral("OHara"));
    name->setText(QString());
    drop(name, QStringLiteral("D'Arcy"));
    EXPECT_EQ(text(QStringLiteral("txtName")), QStringLiteral("DArcy"));
    name->setText(QString());
    QInputMethodEvent composed;
    composed.setCommitString(QStringLiteral("L'é"));
    QApplication::sendEvent(name, &composed);
    EXPECT_EQ(text(QStringLiteral("txtName")), QStringLiteral("Lé"));

    paste(QStringLiteral("txtNotes"), QStringLiteral("it's\nso|"));
    EXPECT_EQ(text(QStringLiteral("txtNotes")), QStringLiteral("its\r\nso"));
    notes->clear();
    QApplication::sendEvent(notes, &composed);
    EXPECT_EQ(text(QStringLiteral("txtNotes")), QStringLiteral("Lé"));
}

TEST_F(EntryTest, TextOfTheProgramPassesTheFilterAndStaysWhenSomebodyTypesOn) {
    name->setText(QStringLiteral("O'Neil"));
    EXPECT_EQ(text(QStringLiteral("txtName")), QStringLiteral("O'Neil"));
    go(QStringLiteral("txtName"));
    name->setCursorPosition(6);
    typeOn(QStringLiteral("x'"));
    EXPECT_EQ(text(QStringLiteral("txtName")), QStringLiteral("O'Neilx"));
    name->setCursorPosition(2);
    paste(QStringLiteral("txtName"), QStringLiteral("'"), false);
    EXPECT_EQ(text(QStringLiteral("txtName")), QStringLiteral("O'Neilx"));
}

TEST_F(EntryTest, TheLimitSwallowsKeysAndCutsPastedTextToItsLeftPart) {
    type(QStringLiteral("txtName"), QStringLiteral("abcdefghij"));
    EXPECT_EQ(text(QStringLiteral("txtName")), QStringLiteral("abcdefgh"));
    // A key that replaces a selection has room.
    name->setSelection(0, 1);
    typeOn(QStringLiteral("X"));
    EXPECT_EQ(text(QStringLiteral("txtName")), QStringLiteral("Xbcdefgh"));
    name->setCursorPosition(1);
    paste(QStringLiteral("txtName"), QStringLiteral("12"), false);
    EXPECT_EQ(text(QStringLiteral("txtName")), QStringLiteral("X12bcdef"));
    EXPECT_EQ(name->cursorPosition(), 3);
    name->setText(QStringLiteral("0123456789"));
    EXPECT_EQ(text(QStringLiteral("txtName")), QStringLiteral("01234567"));

    // A line's end is two characters in the database.
    paste(QStringLiteral("txtNotes"), QStringLiteral("1234\n6789\nabcd"));
    EXPECT_EQ(text(QStringLiteral("txtNotes")), QStringLiteral("1234\r\n6789\r\n"));
}

TEST_F(EntryTest, NumbersTakeTheirFormOnLeaving) {
    const struct {
        const char16_t* typed;
        const char16_t* shown;
    } cases[] = {{u"3", u"3.00"}, {u"1234.567", u"1,234.57"}, {u".", u"0"}, {u"", u"0"}};
    for (const auto& c : cases) {
        type(QStringLiteral("txtRate"), QString::fromUtf16(c.typed));
        leave();
        EXPECT_EQ(text(QStringLiteral("txtRate")), QString::fromUtf16(c.shown));
    }
    rate->setText(QStringLiteral("1,234.50"));
    EXPECT_DOUBLE_EQ(rate->number(), 1234.5);
}

TEST_F(EntryTest, MoneyTakesOnePointAndOneSignAndKnowsItsAmount) {
    type(QStringLiteral("txtPrice"), QStringLiteral("-1a2.3.4"));
    EXPECT_EQ(text(QStringLiteral("txtPrice")), QStringLiteral("-12.34"));
    paste(QStringLiteral("txtPrice"), QStringLiteral("$1,234.567"));
    leave();
    EXPECT_EQ(text(QStringLiteral("txtPrice")), QStringLiteral("$1,234.57"));
    EXPECT_EQ(price->amount(), values::Currency::fromDouble(1234.57));
    type(QStringLiteral("txtPrice"), QString());
    leave();
    EXPECT_TRUE(price->value().isNull());
    EXPECT_EQ(text(QStringLiteral("txtPrice")), QString());
}

TEST_F(EntryTest, LockedFieldsTakeNothing) {
    name->setText(QStringLiteral("Acme"));
    notes->setText(QStringLiteral("a\r\nb"));
    name->setLocked(true);
    notes->setLocked(true);
    type(QStringLiteral("txtName"), QStringLiteral("x"));
    paste(QStringLiteral("txtName"), QStringLiteral("x"));
    type(QStringLiteral("txtNotes"), QStringLiteral("x"));
    paste(QStringLiteral("txtNotes"), QStringLiteral("x"));
    EXPECT_EQ(text(QStringLiteral("txtName")), QStringLiteral("Acme"));
    EXPECT_EQ(text(QStringLiteral("txtNotes")), QStringLiteral("a\r\nb"));
    name->setLocked(false);
    type(QStringLiteral("txtName"), QStringLiteral("x"));
    EXPECT_EQ(text(QStringLiteral("txtName")), QStringLiteral("x"));
}

TEST_F(EntryTest, FieldsTellWhenTheyAreEnteredLeftAndChanged) {
    QStringList told;
    name->entered.connect([&] { told << QStringLiteral("entered"); });
    name->left.connect([&] { told << QStringLiteral("left"); });
    name->changed.connect([&] { told << QStringLiteral("changed"); });
    go(QStringLiteral("txtPrice"));
    told.clear();
    type(QStringLiteral("txtName"), QStringLiteral("ab"));
    leave();
    EXPECT_EQ(told.join(u' '), QStringLiteral("entered changed changed left"));
    // Tab went through the line below; in a memo it moves on as well.
    go(QStringLiteral("txtNotes"));
    leave();
    EXPECT_NE(focusName(), QStringLiteral("txtNotes"));
}

} // namespace
