#include "platform/controls/CheckList.h"
#include "ControlsTest.h"

#include <QStyle>
#include <QTest>

using controls::CheckList;

namespace {

class CheckListTest : public ControlsTest {
  protected:
    CheckListTest() {
        screen::Fields fields(build());
        list = new CheckList(fields.grid()->parentWidget());
        fields.add(list, QStringLiteral("lstRights"), QStringLiteral("&Rights:"));
        list->addRow(QStringLiteral("Jobs"), 7);
        list->addRow(QStringLiteral("Estimates"), 3, true);
        list->addRow(QStringLiteral("Prices"), 9);
        list->itemCheck.connect([this](int row) {
            happened += QStringLiteral("%1%2")
                            .arg(list->itemText(row))
                            .arg(list->isTicked(row) ? QStringLiteral("+") : QStringLiteral("-"));
        });
        list->click.connect([this] { happened += QStringLiteral("click"); });
        show();
        settle();
    }
    QStringList taken() { return std::exchange(happened, {}); }
    CheckList* list;
    QStringList happened;
};

TEST_F(CheckListTest, TheUserTurnsTicksOverByMouseAndSpaceAndTheProgramWithoutAnEvent) {
    EXPECT_EQ(taken(), QStringList());
    go(QStringLiteral("lstRights"));
    list->setCurrentRow(1);
    key(Qt::Key_Space);
    EXPECT_EQ(taken(), QStringList({QStringLiteral("Estimates-"), QStringLiteral("click")}));
    key(Qt::Key_Down);
    EXPECT_EQ(taken(), QStringList(QStringLiteral("click")));
    EXPECT_FALSE(list->isTicked(2)) << "moving ticks nothing";

    const QRect row = list->visualItemRect(list->item(0));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, {row.left() + 8, row.center().y()});
    EXPECT_EQ(taken(), QStringList({QStringLiteral("Jobs+"), QStringLiteral("click")}));
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, {row.left() + 60, row.center().y()});
    EXPECT_EQ(taken(), QStringList(QStringLiteral("click"))) << "on the text";
    EXPECT_TRUE(list->isTicked(0));

    list->setTicked(0, false);
    list->setItemText(0, QStringLiteral("Work"));
    EXPECT_EQ(taken(), QStringList());
}

TEST_F(CheckListTest, RowsAreFoundByTheirNumberAndText) {
    EXPECT_EQ(list->findNumber(9), 2);
    EXPECT_EQ(list->findNumber(4), -1);
    EXPECT_EQ(list->itemNumber(list->findRow(QStringLiteral("Estimates"))), 3);
    list->removeRow(0);
    EXPECT_EQ(list->findNumber(9), 1);
    EXPECT_TRUE(list->isTicked(0));
}

} // namespace
