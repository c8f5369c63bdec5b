#include "ControlsTest.h"
#include "platform/controls/ListView.h"
#include "platform/values/Literals.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QHeaderView>

using namespace controls;
using Kind = GridColumn::Kind;

namespace {

class GridTest : public ControlsTest {
  protected:
    GridTest() {
        auto* form = build();
        screen::Fields fields(form);
        grid = new Grid(form);
        grid->setColumns({{u"No"_s, 6, Kind::Number},
                          {u"Name"_s, 16, Kind::Text, true, values::keys::name(), {}, 6},
                          {u"Done"_s, 6, Kind::Check, true},
                          {u"Unit"_s, 8, Kind::Combo, true, {}, {u"EACH"_s}},
                          {u"Note"_s, 4, Kind::Picture}});
        fields.add(grid, u"sprLines"_s, u"&Lines"_s);
        list = new ListView(form);
        list->setColumns({{u"Code"_s, 10}, {u"Due"_s, 12}});
        fields.add(list, u"lvwOpen"_s, u"&Open"_s);
        fields.text(u"txtNext"_s, u"&Next:"_s);
        grid->setRows({{u"10"_qs, u"Saw"_qs, u"0"_qs, u"FT"_qs},
                       {u"9"_qs, u"Drill"_qs, u"1"_qs},
                       {u"100"_qs, u"Bend"_qs}});
        for (int row = 0; row < 3; ++row)
            grid->setRowKey(row, 1000 + row);
        for (const auto& [code, due] : {std::pair{u"Zinc"_qs, u"2/1/2026"_qs},
                                        {u"bolt"_qs, u"12/1/2025"_qs},
                                        {u"Bar"_qs, u"11/30/2025"_qs}})
            list->addRow(u"O1%1"_qs.arg(list->rowCount()), {code, due});
        show();
    }
    Grid* grid;
    ListView* list;
};

TEST_F(GridTest, EditsByKeyThroughFilterAndLimitAndTellsAfterwards) {
    QStringList told;
    grid->cellChanged.connect([&](int row, int column) { told << grid->text(row, column); });
    setCell(u"sprLines"_qs, 0, 1, u"O'Brien|s"_qs);
    EXPECT_EQ(grid->text(0, 1), u"OBrien"_qs);
    setCell(u"sprLines"_qs, 1, 3, u"each"_qs);
    setCell(u"sprLines"_qs, 1, 3, u"PAIR"_qs);
    EXPECT_EQ(told, QStringList({u"OBrien"_qs, u"EACH"_qs, u"PAIR"_qs}));
    grid->setText(0, 1, u"Mine"_qs);
    EXPECT_EQ(told.size(), 3);
    // Escape leaves the cell as it was.
    key(Qt::Key_F2);
    typeOn(u"zz"_qs);
    key(Qt::Key_Escape);
    EXPECT_EQ(told.size(), 3);
    EXPECT_EQ(grid->text(1, 3), u"PAIR"_qs);
}

TEST_F(GridTest, WhatIsBeingTypedCountsWhenTheFormIsClosedOrLeft) {
    clickCell(u"sprLines"_qs, 0, 1);
    typeOn(u"Lathe"_qs);
    go(u"txtNext"_qs);
    EXPECT_EQ(grid->text(0, 1), u"Lathe"_qs);
    clickCell(u"sprLines"_qs, 1, 1);
    typeOn(u"Press"_qs);
    QString atEnd;
    grid->cellChanged.connect([&](int row, int column) { atEnd = grid->text(row, column); });
    form().unload();
    EXPECT_EQ(atEnd, u"Press"_qs);
}

TEST_F(GridTest, LockedCellsAndLockedGridsTakeNothing) {
    grid->setCellLocked(0, 1, true);
    grid->setCellLocked(0, 0, false);
    EXPECT_TRUE(grid->isCellLocked(0, 1));
    clickCell(u"sprLines"_qs, 0, 1);
    typeOn(u"x"_qs);
    EXPECT_EQ(grid->text(0, 1), u"Saw"_qs);
    setCell(u"sprLines"_qs, 0, 0, u"7"_qs);
    EXPECT_EQ(grid->text(0, 0), u"7"_qs);
    grid->setLocked(true);
    clickCell(u"sprLines"_qs, 1, 1);
    typeOn(u"x"_qs);
    clickCell(u"sprLines"_qs, 1, 2);
    key(Qt::Key_Space);
    EXPECT_EQ(cells(u"sprLines"_qs).at(1), u"9|Drill|1||"_qs);
}

TEST_F(GridTest, SpaceChecksBoxesAndPressesPictures) {
    int clicked = -1;
    grid->cellClicked.connect([&](int, int column) { clicked = column; });
    QStringList told;
    grid->cellChanged.connect([&](int row, int column) { told << grid->text(row, column); });
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(0, 2));
    key(Qt::Key_Space);
    key(Qt::Key_Space);
    EXPECT_EQ(told.join(u' '), u"1 0"_qs);
    EXPECT_EQ(clicked, -1);
    grid->setCurrentIndex(grid->model()->index(0, 4));
    key(Qt::Key_Space);
    EXPECT_EQ(clicked, 4);
    clickCell(u"sprLines"_qs, 1, 0);
    EXPECT_EQ(clicked, 0);
}

TEST_F(GridTest, TabGoesThroughTheCellsThatCanBeEditedAndThenOn) {
    go(u"sprLines"_qs);
    grid->setCurrentIndex(grid->model()->index(1, 3));
    QStringList places;
    while (QApplication::focusWidget() == grid && places.size() < 9) {
        key(Qt::Key_Tab);
        places << u"%1,%2"_qs.arg(grid->currentIndex().row()).arg(grid->currentIndex().column());
    }
    EXPECT_EQ(places.join(u' '), u"2,1 2,2 2,3 2,3"_qs);
    EXPECT_EQ(focusName(), u"lvwOpen"_qs);
}

TEST_F(GridTest, HiddenTextIsNeitherShownNorCopied) {
    grid->setTextHidden(1, 1, true);
    EXPECT_EQ(grid->text(1, 1), u"Drill"_qs);
    const auto cell = grid->model()->index(1, 1);
    EXPECT_EQ(cell.data(Qt::DisplayRole).toString(), QString());
    EXPECT_EQ(cell.data(Qt::AccessibleTextRole).toString(), QString());
    grid->selectAll();
    grid->setFocus();
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(),
              u"No\tName\tDone\tUnit\tNote\n10\tSaw\t0\tFT\t\n9\t\t1\t\t\n100\tBend\t\t\t"_qs);
}

TEST_F(GridTest, SortsNumbersByValueAndDatesByDateAndKeepsKeysWithRows) {
    grid->setSortable(true);
    EXPECT_EQ(grid->text(0, 0), u"10"_qs);
    grid->setActiveRow(1);
    grid->sortByColumn(0, Qt::AscendingOrder);
    EXPECT_EQ(cells(u"sprLines"_qs).join(u'/').left(5), u"9|Dri"_qs);
    EXPECT_EQ(grid->rowKey(0), 1001);
    EXPECT_EQ(grid->rowKey(2), 1002);
    EXPECT_EQ(grid->activeRow(), 0);
    // Rows that come later stay where the screen puts them until its handler is done.
    grid->insertRow(0);
    grid->setText(0, 0, u"50"_qs);
    grid->setRowKey(0, 7);
    EXPECT_EQ(grid->rowKey(0), 7);
    settle();
    EXPECT_EQ(grid->rowKey(2), 7);

    list->sortByColumn(1, Qt::AscendingOrder);
    EXPECT_EQ(list->rowText(0, 0), u"Bar"_qs);
    EXPECT_EQ(list->rowText(2, 0), u"Zinc"_qs);
    list->sortByColumn(0, Qt::DescendingOrder);
    EXPECT_EQ(list->key(1), u"O11"_qs);
    const QStringList days{u"Wednesday, March 4, 2026"_qs, u"Friday, March 6, 2026"_qs,
                           u"Thursday, December 11, 2025"_qs};
    for (int row = 0; row < 3; ++row)
        list->setRowText(row, 0, days[row]);
    list->sortByColumn(0, Qt::DescendingOrder);
    EXPECT_EQ(list->rowText(0, 0), days[1]);
    EXPECT_EQ(list->rowText(2, 0), days[2]);
}

TEST_F(GridTest, AListSelectsClampsAndTellsWhatTheUserDid) {
    int told = 0;
    int opened = -1;
    list->selectionChangedByUser.connect([&] { ++told; });
    list->rowDoubleClicked.connect([&](int row) { opened = row; });
    EXPECT_EQ(list->selectedRow(), -1);
    EXPECT_EQ(list->selectedKey(), QString());
    list->selectRow(99);
    EXPECT_EQ(list->selectedKey(), u"O12"_qs);
    EXPECT_EQ(list->keyNumber(2), 12);
    EXPECT_FALSE(list->selectKey(u"O1"_qs));
    EXPECT_EQ(told, 0);
    go(u"lvwOpen"_qs);
    typeOn(u"bo"_qs);
    EXPECT_EQ(list->selectedRow(), 1);
    EXPECT_GT(told, 0);
    key(Qt::Key_Return);
    EXPECT_EQ(opened, 1);
    doubleClickRow(u"lvwOpen"_qs, 2);
    EXPECT_EQ(opened, 2);
    told = 0;
    list->swapRows(1, 2);
    list->removeRow(2);
    list->clearRows();
    EXPECT_EQ(told, 0);
    list->selectRow(0);
    EXPECT_EQ(list->selectedRow(), -1);
}

TEST_F(GridTest, ALongListIsThereAtOnceAndAskedOnlyForWhatIsSeen) {
    int asked = 0;
    grid->setSortable(true);
    QElapsedTimer clock;
    clock.start();
    grid->setRows(100'000, [&asked](qint64 key, int column) {
        ++asked;
        return column == 0 ? QString::number(key * 7919 % 100'003) : u"Bracket %1"_qs.arg(key);
    });
    grid->repaint();
    EXPECT_GT(asked, 0);
    EXPECT_LT(asked, 2000);
    EXPECT_EQ(grid->text(99'999, 1), u"Bracket 99999"_qs);
    grid->sortByColumn(0, Qt::AscendingOrder);
    grid->repaint();
    // Far above what it takes; measuring each row would take more than ten seconds.
    EXPECT_LT(clock.elapsed(), 4000);
    EXPECT_EQ(grid->text(0, 0), u"0"_qs);
    grid->setText(1, 1, u"Hinge"_qs); // the row's other texts stay
    EXPECT_EQ(cells(u"sprLines"_qs)[1].left(7), grid->text(1, 0) + u"|Hinge"_qs);
    grid->setRows({{u"4"_qs, u"Nut"_qs}});
    EXPECT_EQ(grid->text(0, 1), u"Nut"_qs);
}

} // namespace
