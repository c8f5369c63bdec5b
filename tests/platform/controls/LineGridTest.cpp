#include "platform/controls/LineGrid.h"
#include "ControlsTest.h"
#include "platform/values/Numbers.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QToolTip>

using namespace controls;
using Kind = GridColumn::Kind;

namespace {

struct Line {
    qint64 id = 0;
    QString part;
    double quantity = 0;
    bool mark = false;
    bool secret = false;
};

QString takeQuantity(Line& line, const QString& typed) {
    if (!values::isNumeric(typed))
        return u"\"%1\" is not a number."_s.arg(typed);
    line.quantity = values::val(typed);
    return {};
}

/// Two grids over the same lines: what is bought, and how much of it.
class LineGridTest : public ControlsTest {
  protected:
    LineGridTest() {
        auto* form = build();
        screen::Fields fields(form);
        parts = new LineGrid<Line>(
            lines,
            {{.look = {u"Item #"_s, 6, Kind::Number}},
             {.look = {.title = u"Part"_s, .characters = 10, .stretches = true},
              .text = [](const Line& line) { return line.part; },
              .take =
                  [](Line& line, const QString& typed) {
                      line.part = typed;
                      return QString();
                  }},
             {.look = {u"Qty"_s, 6, Kind::Number},
              .text = [](const Line& line) { return values::numberText(line.quantity); },
              .take = takeQuantity,
              .locked = [](const Line& line) { return line.part == u"fixed"_s; },
              .secret = [](const Line& line) { return line.secret; }},
             {.look = {.title = u"ID"_s, .hidden = true},
              .text = [](const Line& line) { return QString::number(line.id); }},
             {.look = {u"Mark"_s, 4, Kind::Picture},
              .picture =
                  [](const Line& line) {
                      return line.mark ? CellPicture{QIcon(QPixmap(8, 8)), u"Marked"_s}
                                       : CellPicture{};
                  }}},
            form);
        fields.add(parts, u"sprParts"_s, u"&Parts"_s);
        amounts = new LineGrid<Line>(
            lines,
            {{.look = {u"Part"_s, 10}, .text = [](const Line& line) { return line.part; }},
             {.look = {u"Qty"_s, 6},
              .text = [](const Line& line) { return values::numberText(line.quantity); }}},
            form);
        fields.add(amounts, u"sprAmounts"_s, u"&Amounts"_s);
        fields.text(u"txtNext"_s, u"&Next:"_s);
        show();
        lines->setRows({{11, u"Bolt"_s, 4}, {12, u"Nut"_s, 8}, {13, u"Washer"_s, 16}});
    }
    QString shown(const QString& grid) {
        QStringList texts;
        auto* view = control<Grid>(grid);
        for (int row = 0; row < view->rowCount(); ++row) {
            if (!view->isRowHidden(row))
                texts << cells(grid).at(row);
        }
        return texts.join(u" / "_s);
    }
    void at(int row, int column) {
        parts->setFocus();
        parts->setCurrentIndex(parts->model()->index(row, column));
    }
    std::shared_ptr<LineModel<Line>> lines = std::make_shared<LineModel<Line>>();
    LineGrid<Line>* parts = nullptr;
    LineGrid<Line>* amounts = nullptr;
};

TEST_F(LineGridTest, BothGridsShowWhatOneTakesAndItIsTakenBackStepByStep) {
    EXPECT_EQ(parts->activeRow(), 0);
    EXPECT_TRUE(parts->isColumnHidden(3));
    int sums = 0;
    lines->touched.connect([&] { ++sums; });
    setCell(u"sprParts"_s, 1, 2, u"9.5"_s);
    EXPECT_EQ(lines->row(1).quantity, 9.5);
    EXPECT_EQ(cell(u"sprAmounts"_s, 1, 1), u"9.5"_s);
    lines->hide(0);
    EXPECT_EQ(shown(u"sprParts"_s), u"1|Nut|9.5|12| / 2|Washer|16|13|"_s);
    EXPECT_EQ(lines->visibleRows().size(), 2U);
    EXPECT_EQ(parts->activeRow(), 1) << "a hidden line is not the active one";
    lines->patch(1, [](Line& line) { line.mark = true; });
    EXPECT_TRUE(parts->hasPicture(1, 4));
    lines->changing = [](int, const Line& stands, Line& put) { put.mark = stands.mark; };
    {
        const LineModel<Line>::Group group(*lines);
        lines->insert(3, {14, u"Pin"_s, 1});
        lines->remove(2);
    }
    EXPECT_EQ(shown(u"sprAmounts"_s), u"Nut|9.5 / Pin|1"_s);
    EXPECT_EQ(sums, 3);

    parts->setFocus();
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(u"sprAmounts"_s), u"Nut|9.5 / Washer|16"_s) << "a group is one step";
    key(Qt::Key_Z, Qt::ControlModifier);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(u"sprParts"_s), u"1|Bolt|4|11| / 2|Nut|8|12| / 3|Washer|16|13|"_s);
    EXPECT_TRUE(lines->row(1).mark);
    for (int i = 0; i < 3; ++i)
        key(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(shown(u"sprParts"_s), u"1|Nut|9.5|12| / 2|Pin|1|14|"_s);
    lines->setRows({{1, u"Other"_s}});
    EXPECT_FALSE(lines->undo());
}

TEST_F(LineGridTest, LinesMovePastHiddenOnesWithTheirOwnersConsent) {
    lines->hide(1);
    at(2, 1);
    key(Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(shown(u"sprParts"_s), u"1|Washer|16|13| / 2|Bolt|4|11|"_s);
    EXPECT_EQ(parts->activeRow(), 0);
    key(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(shown(u"sprAmounts"_s), u"Washer|16 / Bolt|4"_s);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(u"sprAmounts"_s), u"Bolt|4 / Washer|16"_s);
    lines->staging = [](const LineStep&, Line&) { throw std::runtime_error("no"); };
    EXPECT_THROW(lines->moveDown(0), std::runtime_error);
    EXPECT_EQ(shown(u"sprAmounts"_s), u"Bolt|4 / Washer|16"_s);
    parts->setLocked(true);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_TRUE(lines->isHidden(1)) << "in browsing nothing is taken back";
}

TEST_F(LineGridTest, WhatMakesNoSenseStaysToBeMendedAndIsNotTaken) {
    at(0, 2);
    typeOn(u"1.2.3\n"_s);
    ASSERT_NE(QApplication::focusWidget(), parts) << "the editor stays open";
    EXPECT_EQ(QApplication::focusWidget()->accessibleDescription(),
              u"\"1.2.3\" is not a number."_s);
    EXPECT_EQ(lines->row(0).quantity, 4);
    go(u"txtNext"_s);
    EXPECT_EQ(cell(u"sprParts"_s, 0, 2), u"1.2.3"_s) << "left, it stands in the cell";
    EXPECT_EQ(lines->row(0).quantity, 4);
    lines->patch(0, [](Line& line) { line.mark = true; });
    lines->insert(0, {15, u"Key"_s, 2});
    EXPECT_EQ(parts->complaint(), u"\"1.2.3\" is not a number."_s);
    EXPECT_EQ(parts->activeRow(), 1);
    key(Qt::Key_Escape);
    EXPECT_EQ(cell(u"sprParts"_s, 1, 2), u"4"_s);
    EXPECT_EQ(parts->complaint(), QString());
    setCell(u"sprParts"_s, 1, 2, u"7"_s);
    EXPECT_EQ(lines->row(1).quantity, 7);
}

TEST_F(LineGridTest, ASecretFigureIsNotGivenAwayAndKeptWhereNothingIsTyped) {
    lines->setRows({{1, u"Bolt"_s, 4, false, true}, {2, u"fixed"_s, 5}});
    EXPECT_EQ(cell(u"sprParts"_s, 0, 2), QString());
    EXPECT_TRUE(parts->isCellLocked(1, 2));
    EXPECT_FALSE(parts->isCellLocked(0, 2));
    setCell(u"sprParts"_s, 0, 2, QString());
    EXPECT_EQ(lines->row(0).quantity, 4);
    setCell(u"sprParts"_s, 0, 2, u"6"_s);
    EXPECT_EQ(lines->row(0).quantity, 6);
    EXPECT_EQ(cell(u"sprParts"_s, 0, 2), QString());
}

TEST_F(LineGridTest, CellsArePastedWholeOrNotAtAll) {
    lines->hide(1);
    at(0, 1);
    QApplication::clipboard()->setText(u"Screw\t5\tx\nRivet\t6\n"_s);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(shown(u"sprAmounts"_s), u"Screw|5 / Rivet|6"_s);
    QApplication::clipboard()->setText(u"Nail\t7\nHook\tmany"_s);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(shown(u"sprAmounts"_s), u"Screw|5 / Rivet|6"_s);
    key(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown(u"sprAmounts"_s), u"Bolt|4 / Washer|16"_s) << "one step";
}

TEST_F(LineGridTest, FiveThousandLinesStayQuickAndOneColumnTakesTheRoom) {
    std::vector<Line> rows(5000);
    for (int i = 0; i < 5000; ++i)
        rows[static_cast<std::size_t>(i)] = {i, u"Part %1"_s.arg(i), double(i)};
    QElapsedTimer clock;
    clock.start();
    lines->setRows(std::move(rows));
    for (int i = 0; i < 50; ++i)
        lines->hide(i);
    for (int i = 0; i < 20; ++i)
        lines->moveUp(4000 - i);
    parts->repaint();
    EXPECT_LT(clock.elapsed(), 3000);
    EXPECT_EQ(cell(u"sprParts"_s, 4999, 0), u"4950"_s);
    EXPECT_TRUE(parts->viewport()->rect().intersects(parts->visualRect(parts->currentIndex())));
    int width = 0;
    for (const int column : {0, 1, 2, 4})
        width += parts->columnWidth(column);
    EXPECT_EQ(width, parts->viewport()->width());
    EXPECT_GT(parts->columnWidth(1), parts->columnWidth(4));
}

} // namespace
