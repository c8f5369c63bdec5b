#include "inventory/frmItemTreeSelect.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"

#include <QPushButton>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace inventory {

namespace {

constexpr int idRole = Qt::UserRole;
constexpr int filledRole = Qt::UserRole + 1;

} // namespace

frmItemTreeSelect::frmItemTreeSelect() : Form(QString::fromLatin1(formName), u"Select a Type"_s) {
    auto* outside = new QVBoxLayout(this);
    tvItem = screen::named(new QTreeWidget(this), u"tvItem"_s, u"Folders"_s);
    tvItem->setHeaderHidden(true);
    outside->addWidget(tvItem, 1);
    screen::Fields fields(this, outside);
    txtPath = fields.text(u"txtPath"_s, u"Path:"_s, {.characters = 40});
    txtPath->setLocked(true);
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    cmdSelect = bar.button(u"cmdSelect"_s, u"&Select"_s);
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setDefaultButton(cmdSelect);
    setCancelButton(cmdClose);
    on(cmdSelect, &frmItemTreeSelect::cmdSelect_Click);
    on(cmdClose, [this] { hideModal(); });
    connect(tvItem, &QTreeWidget::currentItemChanged, this,
            [this] { guarded([this] { tvItem_Click(); }); });
    connect(tvItem, &QTreeWidget::itemExpanded, this,
            [this](QTreeWidgetItem* item) { guarded([&] { addChildren(item); }); });
    connect(tvItem, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
        if (item->childCount() == 0)
            guarded([this] { cmdSelect_Click(); });
    });
    resize(420, 420);
}

std::pair<qint64, QString> frmItemTreeSelect::pickFolder(const QString& view) {
    setWindowTitle(u"Select a "_s + view);
    m_table = u"Item"_s + view + u"s"_s;
    auto* root = new QTreeWidgetItem(tvItem, {u"Item "_s + view + u"s"_s});
    root->setData(0, idRole, 0);
    addChildren(root);
    root->setExpanded(true);
    tvItem->setCurrentItem(root);
    tvItem->setFocus();
    showModal();
    return m_chosen;
}

void frmItemTreeSelect::addChildren(QTreeWidgetItem* under) {
    if (under->data(0, filledRole).toBool())
        return;
    under->setData(0, filledRole, true);
    jet::Recordset set = core::MainDatabase().openRecordset(
        u"Select ID, Description from "_s + m_table + u" WHERE Parent = "_s +
            under->data(0, idRole).toString() + u" ORDER BY Description"_s,
        jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        auto* child = new QTreeWidgetItem(under, {set.text(u"Description")});
        child->setData(0, idRole, set[u"ID"].toLong());
        child->setIcon(0, style()->standardIcon(QStyle::SP_DirClosedIcon));
        child->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    }
    under->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
}

void frmItemTreeSelect::tvItem_Click() {
    QStringList path;
    const QTreeWidgetItem* item = tvItem->currentItem();
    for (; item && item->parent(); item = item->parent())
        path.prepend(item->text(0));
    txtPath->setText(path.join(u'\\'));
    cmdSelect->setEnabled(!path.isEmpty());
}

void frmItemTreeSelect::cmdSelect_Click() {
    const QTreeWidgetItem* item = tvItem->currentItem();
    if (!item || !item->parent())
        return;
    m_chosen = {item->data(0, idRole).toLongLong(), txtPath->text()};
    hideModal();
}

} // namespace inventory
