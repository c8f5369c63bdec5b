#include "platform/controls/CheckList.h"
#include "ControlsTest.h"
#include "platform/values/Literals.h"

#include <QStyle>
#include <QTest>

using controls::CheckList;

namespace {

class CheckListTest : public ControlsTest {
  protected:
    CheckListTest() {
        screen::Fields fields(build());
        list = new CheckList(fields.grid()->parentWidget());
        fields.add(list, u"lstRights"_s, u"&Rights:"_s);
        list->addRow(u"Jobs"_s, 7);
        list->addRow(u"Estimates"_s, 3, true);
        list->addRow(u"Prices"_s, 9);
        list->itemCheck.connect([this](int row) {
            happened +=
                u"%1%2"_s.arg(list->itemText(row)).arg(list->isTicked(row) ? u"+"_s : u"-"_s);
        });
        list->click.connect([this] { happened += u"click"_s; });
        show();
        settle();
    }
    QStringList taken() { return std::exchange(happened, {}); }
    CheckList* list;
    QStringList happened;
};

TEST_F(CheckListTest, TheUserTurnsTicksOverByMouseAndSpaceAndTheProgramWithoutAnEvent) {
    EXPECT_EQ(taken(), QStringList());
    go(u"lstRights"_s);
    list->setCurrentRow(1);
    key(Qt::Key_Space);
    EXPECT_EQ(taken(), QStringList({u"Estimates-"_s, u"click"_s}));
    key(Qt::Key_Down);
    EXPECT_EQ(taken(), QStringList(u"click"_s));
    EXPECT_FALSE(list->isTicked(2)) << "moving ticks nothing";

    const QRect row = list->visualItemRect(list->item(0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, {row.left() + 8, row.center().y()});
    EXPECT_EQ(taken(), QStringList({u"Jobs+"_s, u"click"_s}));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, {row.left() + 60, row.center().y()});
    EXPECT_EQ(taken(), QStringList(u"click"_s)) << "on the text";
    EXPECT_TRUE(list->isTicked(0));

    list->setTicked(0, false);
    list->setItemText(0, u"Work"_s);
    EXPECT_EQ(taken(), QStringList());
}

TEST_F(CheckListTest, RowsAreFoundByTheirNumberAndText) {
    EXPECT_EQ(list->findNumber(9), 2);
    EXPECT_EQ(list->findNumber(4), -1);
    EXPECT_EQ(list->itemNumber(list->findRow(u"Estimates"_s)), 3);
    list->removeRow(0);
    EXPECT_EQ(list->findNumber(9), 1);
    EXPECT_TRUE(list->isTicked(0));
}

} // namespace
