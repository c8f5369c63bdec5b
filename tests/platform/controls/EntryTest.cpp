#include "ControlsTest.h"
#include "platform/values/Literals.h"

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
        name = fields.text(u"txtName"_s, u"&Name:"_s, {.limit = 8, .filter = values::keys::name()});
        rate = fields.text(u"txtRate"_s, u"&Rate:"_s,
                           {.filter = values::keys::decimal(), .mask = u"#,##0.00"_s});
        price = fields.currency(u"txtPrice"_s, u"&Price:"_s, u"$###,##0.00"_s);
        notes = fields.memo(u"txtNotes"_s, u"N&otes:"_s, 3, 12, values::keys::name());
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
    type(u"txtName"_s, u"O'N|e\"il"_s);
    EXPECT_EQ(text(u"txtName"_s), u"ONeil"_s);
    paste(u"txtName"_s, u"O'Hara|"_s);
    EXPECT_EQ(text(u"txtName"_s), u"OHara"_s);
    name->setText(QString());
    drop(name, u"D'Arcy"_s);
    EXPECT_EQ(text(u"txtName"_s), u"DArcy"_s);
    name->setText(QString());
    QInputMethodEvent composed;
    composed.setCommitString(u"L'é"_s);
    QApplication::sendEvent(name, &composed);
    EXPECT_EQ(text(u"txtName"_s), u"Lé"_s);

    paste(u"txtNotes"_s, u"it's\nso|"_s);
    EXPECT_EQ(text(u"txtNotes"_s), u"its\r\nso"_s);
    notes->clear();
    QApplication::sendEvent(notes, &composed);
    EXPECT_EQ(text(u"txtNotes"_s), u"Lé"_s);
}

TEST_F(EntryTest, TextOfTheProgramPassesTheFilterAndStaysWhenSomebodyTypesOn) {
    name->setText(u"O'Neil"_s);
    EXPECT_EQ(text(u"txtName"_s), u"O'Neil"_s);
    go(u"txtName"_s);
    name->setCursorPosition(6);
    typeOn(u"x'"_s);
    EXPECT_EQ(text(u"txtName"_s), u"O'Neilx"_s);
    name->setCursorPosition(2);
    paste(u"txtName"_s, u"'"_s, false);
    EXPECT_EQ(text(u"txtName"_s), u"O'Neilx"_s);
}

TEST_F(EntryTest, TheLimitSwallowsKeysAndCutsPastedTextToItsLeftPart) {
    type(u"txtName"_s, u"abcdefghij"_s);
    EXPECT_EQ(text(u"txtName"_s), u"abcdefgh"_s);
    // A key that replaces a selection has room.
    name->setSelection(0, 1);
    typeOn(u"X"_s);
    EXPECT_EQ(text(u"txtName"_s), u"Xbcdefgh"_s);
    name->setCursorPosition(1);
    paste(u"txtName"_s, u"12"_s, false);
    EXPECT_EQ(text(u"txtName"_s), u"X12bcdef"_s);
    EXPECT_EQ(name->cursorPosition(), 3);
    name->setText(u"0123456789"_s);
    EXPECT_EQ(text(u"txtName"_s), u"01234567"_s);

    // A line's end is two characters in the database.
    paste(u"txtNotes"_s, u"1234\n6789\nabcd"_s);
    EXPECT_EQ(text(u"txtNotes"_s), u"1234\r\n6789\r\n"_s);
}

TEST_F(EntryTest, NumbersTakeTheirFormOnLeaving) {
    const struct {
        const char16_t* typed;
        const char16_t* shown;
    } cases[] = {{u"3", u"3.00"}, {u"1234.567", u"1,234.57"}, {u".", u"0"}, {u"", u"0"}};
    for (const auto& c : cases) {
        type(u"txtRate"_s, QString::fromUtf16(c.typed));
        leave();
        EXPECT_EQ(text(u"txtRate"_s), QString::fromUtf16(c.shown));
    }
    rate->setText(u"1,234.50"_s);
    EXPECT_DOUBLE_EQ(rate->number(), 1234.5);
}

TEST_F(EntryTest, MoneyTakesOnePointAndOneSignAndKnowsItsAmount) {
    type(u"txtPrice"_s, u"-1a2.3.4"_s);
    EXPECT_EQ(text(u"txtPrice"_s), u"-12.34"_s);
    paste(u"txtPrice"_s, u"$1,234.567"_s);
    leave();
    EXPECT_EQ(text(u"txtPrice"_s), u"$1,234.57"_s);
    EXPECT_EQ(price->amount(), values::Currency::fromDouble(1234.57));
    type(u"txtPrice"_s, QString());
    leave();
    EXPECT_TRUE(price->value().isNull());
    EXPECT_EQ(text(u"txtPrice"_s), QString());
    price->setMask(u"kr.###,##0.00"_s);
    price->setAmount(values::Currency::fromDouble(-1234.5));
    EXPECT_EQ(price->text(), u"-kr.1,234.50"_s);
    EXPECT_EQ(price->amount(), values::Currency::fromDouble(-1234.5));
}

TEST_F(EntryTest, LockedFieldsTakeNothing) {
    name->setText(u"Acme"_s);
    notes->setText(u"a\r\nb"_s);
    name->setLocked(true);
    notes->setLocked(true);
    type(u"txtName"_s, u"x"_s);
    paste(u"txtName"_s, u"x"_s);
    type(u"txtNotes"_s, u"x"_s);
    paste(u"txtNotes"_s, u"x"_s);
    EXPECT_EQ(text(u"txtName"_s), u"Acme"_s);
    EXPECT_EQ(text(u"txtNotes"_s), u"a\r\nb"_s);
    name->setLocked(false);
    type(u"txtName"_s, u"x"_s);
    EXPECT_EQ(text(u"txtName"_s), u"x"_s);
}

TEST_F(EntryTest, FieldsTellWhenTheyAreEnteredLeftAndChanged) {
    QStringList told;
    name->entered.connect([&] { told << u"entered"_s; });
    name->left.connect([&] { told << u"left"_s; });
    name->changed.connect([&] { told << u"changed"_s; });
    go(u"txtPrice"_s);
    told.clear();
    type(u"txtName"_s, u"ab"_s);
    leave();
    EXPECT_EQ(told.join(u' '), u"entered changed changed left"_s);
    // Tab went through the line below; in a memo it moves on as well.
    go(u"txtNotes"_s);
    leave();
    EXPECT_NE(focusName(), u"txtNotes"_s);
}

} // namespace
