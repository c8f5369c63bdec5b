#include "inventory/frmItemTreeSelect.h"

#include "core/MirsaMain.h"
#include "inventory/FolderNodes.h"
#include "platform/controls/TextField.h"
#include "platform/controls/Tree.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace inventory {

frmItemTreeSelect::frmItemTreeSelect(const QString& name) : Form(name, u"Select a Type"_s) {
    auto* outside = new QVBoxLayout(this);
    tvItem = screen::named(new controls::Tree(this), u"tvItem"_s, u"Folders"_s);
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
    on(tvItem->selected, [this](const QString&) { tvItem_Click(); });
    on(tvItem->doubleClicked, [this](const QString& key) {
        // A branch opens and closes.
        if (tvItem->isAsked(key) && tvItem->childrenOf(key).isEmpty())
            cmdSelect_Click();
    });
    resize(420, 420);
}

std::optional<FolderPicker::Picked> frmItemTreeSelect::pickFolder(const QString& word) {
    const View& view = viewOf(word);
    setWindowTitle(u"Select a "_s + view.word);
    showFolders(*tvItem, view);
    tvItem->selectNode(rootKey);
    tvItem_Click();
    tvItem->setFocus();
    showModal();
    return m_chosen;
}

void frmItemTreeSelect::tvItem_Click() {
    QStringList path;
    for (QString key = tvItem->selectedKey(); !key.isEmpty() && key != rootKey;
         key = tvItem->parentOf(key))
        path.prepend(tvItem->textOf(key));
    txtPath->setText(path.join(u'\\'));
    cmdSelect->setEnabled(!path.isEmpty());
}

void frmItemTreeSelect::cmdSelect_Click() {
    const QString key = tvItem->selectedKey();
    if (key.isEmpty() || key == rootKey)
        return;
    m_chosen = Picked{folderIn(key), txtPath->text()};
    hideModal();
}

} // namespace inventory
