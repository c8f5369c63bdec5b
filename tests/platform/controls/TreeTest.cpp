#include "platform/controls/Tree.h"
#include "ControlsTest.h"
#include "platform/controls/Pictures.h"
#include "platform/jet/Error.h"

#include <QMouseEvent>
#include <QTest>

using namespace controls;

namespace {

/// A shop's locations, asked for branch by branch: "x0" with the halls, halls with shelves.
class TreeTest : public ControlsTest {
  protected:
    TreeTest() {
        auto* form = build();
        screen::Fields fields(form);
        tree = new Tree(form);
        fields.add(tree, u"tvMain"_s, u"&Locations"_s);
        fields.text(u"txtNext"_s, u"&Next:"_s);
        tree->children = [this](const QString& key) {
            asked << key;
            if (fails)
                throw jet::Error(jet::errors::noSuchTable, u"gone"_s);
            if (key == u"C2")
                return std::vector<TreeNode>();
            return std::vector<TreeNode>{folderNode(key + u"1"_s), folderNode(key + u"2"_s)};
        };
        tree->addNode({}, {u"x0"_s, u"Item Locations"_s, pictures::folder()});
        tree->addNodes(u"x0"_s, {folderNode(u"C1"_s), folderNode(u"C2"_s)});
        tree->selectNode(u"x0"_s);
        tree->selected.connect([this](const QString& key) { went << key; });
        show();
    }
    static TreeNode folderNode(const QString& key) {
        return {.key = key,
                .text = u"Hall "_s + key.mid(1),
                .picture = pictures::folder(),
                .openPicture = pictures::openFolder(),
                .lazy = true};
    }
    QTreeWidgetItem* item(const QString& text) const {
        return tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive).value(0);
    }
    QPoint middle(const QString& text) const { return tree->visualItemRect(item(text)).center(); }
    void drag(const QString& from, const QString& to, bool escape = false) {
        QWidget* port = tree->viewport();
        QTest::mousePress(port, Qt::LeftButton, {}, middle(from));
        for (const QPoint& at : {(middle(from) + middle(to)) / 2, middle(to)}) {
            QMouseEvent move(QEvent::MouseMove, at, port->mapToGlobal(at), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(port, &move);
        }
        lit = item(to)->background(0).style() != Qt::NoBrush;
        if (escape)
            QTest::keyClick(tree, Qt::Key_Escape);
        QTest::mouseRelease(port, Qt::LeftButton, {}, middle(to));
    }
    Tree* tree;
    QStringList asked;
    QStringList went;
    bool fails = false;
    bool lit = false;
};

TEST_F(TreeTest, BranchesAreAskedForOnceWhenTheyAreOpenedByKeysToo) {
    go(u"tvMain"_s);
    EXPECT_TRUE(went.isEmpty());
    key(Qt::Key_Right);
    key(Qt::Key_Down);
    const qint64 closed = item(u"Hall 1"_s)->icon(0).cacheKey();
    key(Qt::Key_Right);
    EXPECT_EQ(asked, QStringList(u"C1"_s));
    EXPECT_EQ(tree->childrenOf(u"C1"_s), QStringList({u"C11"_s, u"C12"_s}));
    EXPECT_NE(item(u"Hall 1"_s)->icon(0).cacheKey(), closed);
    key(Qt::Key_Down);
    EXPECT_EQ(went, QStringList({u"C1"_s, u"C11"_s}));
    // Closed over the selected node, which stays in sight.
    tree->open(u"C1"_s, false);
    EXPECT_EQ(tree->selectedKey(), u"C1"_s);
    EXPECT_EQ(item(u"Hall 1"_s)->icon(0).cacheKey(), closed);
    tree->open(u"C1"_s);
    EXPECT_EQ(asked.size(), 1);
    tree->open(u"C2"_s);
    EXPECT_EQ(item(u"Hall 2"_s)->childIndicatorPolicy(),
              QTreeWidgetItem::DontShowIndicatorWhenChildless);
    // What fails can be tried again.
    fails = true;
    expectRunTimeError(jet::errors::noSuchTable);
    tree->open(u"C12"_s);
    EXPECT_FALSE(tree->isOpen(u"C12"_s));
    fails = false;
    tree->open(u"C12"_s);
    EXPECT_TRUE(tree->hasNode(u"C122"_s));
    EXPECT_EQ(tree->parentOf(u"C122"_s), u"C12"_s);
    key(Qt::Key_Asterisk);
    EXPECT_EQ(asked.size(), 4) << "not all at once";
}

TEST_F(TreeTest, NodesAreAddedRenamedAndRemovedByKey) {
    tree->addNode(u"C1"_s, folderNode(u"C9"_s));
    EXPECT_FALSE(tree->hasNode(u"C9"_s)) << "comes when the branch is asked for";
    tree->addNodeInOrder(u"x0"_s, {.key = u"C3"_s, .text = u"Hall 10"_s});
    EXPECT_EQ(tree->childrenOf(u"x0"_s), QStringList({u"C1"_s, u"C3"_s, u"C2"_s}));
    tree->setText(u"C3"_s, u"Yard"_s);
    EXPECT_EQ(tree->textOf(u"C3"_s), u"Yard"_s);
    tree->open(u"C1"_s);
    tree->selectNode(u"C12"_s);
    tree->removeNode(u"C1"_s);
    EXPECT_FALSE(tree->hasNode(u"C12"_s));
    EXPECT_FALSE(tree->selectNode(u"C12"_s));
    EXPECT_TRUE(went.isEmpty());
}

TEST_F(TreeTest, SpaceAndAClickTurnAChoiceOver) {
    tree->addNodes(u"x0"_s, {{.key = u"i1"_s, .text = u"Bolt"_s, .chosen = true},
                             {.key = u"i2"_s, .text = u"Nut"_s, .chosen = false}});
    QStringList turned;
    tree->choiceTurned.connect([&](const QString& key) { turned << key; });
    go(u"tvMain"_s);
    tree->selectNode(u"i1"_s);
    key(Qt::Key_Space);
    EXPECT_FALSE(tree->isChosen(u"i1"_s));
    EXPECT_EQ(item(u"Bolt"_s)->data(0, Qt::AccessibleDescriptionRole).toString(), u"not chosen"_s);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, middle(u"Nut"_s));
    EXPECT_TRUE(tree->isChosen(u"i2"_s));
    tree->selectNode(u"C1"_s);
    key(Qt::Key_Space);
    EXPECT_EQ(turned, QStringList({u"i1"_s, u"i2"_s}));
}

TEST_F(TreeTest, ADragLightsWhatTakesItAndEscapeEndsIt) {
    tree->open(u"x0"_s);
    tree->open(u"C1"_s);
    QStringList dropped;
    tree->dropped.connect(
        [&](const QString& key, const QString& under) { dropped << key + u'>' + under; });
    drag(u"Hall 2"_s, u"Hall 1"_s);
    EXPECT_TRUE(dropped.isEmpty()) << "nothing says that it may";
    tree->mayDrop = [](const QString& key, const QString& under) {
        return key != under && under != u"C12";
    };
    tree->mayDrag = [](const QString& key) { return key != u"x0"; };
    drag(u"Hall 2"_s, u"Hall 1"_s);
    EXPECT_TRUE(lit);
    drag(u"Hall 2"_s, u"Hall 12"_s);
    EXPECT_FALSE(lit);
    drag(u"Item Locations"_s, u"Hall 1"_s);
    drag(u"Hall 2"_s, u"Hall 11"_s, true);
    EXPECT_EQ(dropped, QStringList(u"C2>C1"_s));
    EXPECT_EQ(item(u"Hall 11"_s)->background(0).style(), Qt::NoBrush);
    tree->moveNode(u"C2"_s, u"C1"_s, 1);
    EXPECT_EQ(tree->childrenOf(u"C1"_s), QStringList({u"C11"_s, u"C2"_s, u"C12"_s}));
    tree->selectNode(u"C11"_s);
    tree->cut();
    tree->selectNode(u"C2"_s);
    tree->paste();
    EXPECT_EQ(dropped.last(), u"C11>C2"_s);
    int refused = 0;
    tree->refused.connect([&] { ++refused; });
    tree->paste();
    tree->selectNode(u"x0"_s);
    tree->cut();
    EXPECT_EQ(refused, 2);
}

} // namespace
