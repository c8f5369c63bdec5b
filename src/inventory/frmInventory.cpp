#include "inventory/frmInventory.h"

#include "core/MirsaMain.h"
#include "core/Shell.h"
#include "core/history/HistoryTargets.h"
#include "inventory/FolderNodes.h"
#include "inventory/ItemRows.h"
#include "platform/controls/DropMenu.h"
#include "platform/controls/ListView.h"
#include "platform/controls/Pictures.h"
#include "platform/controls/Splitter.h"
#include "platform/controls/Tree.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Literals.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace inventory {

namespace {

const QString system = u"System Message"_s;

controls::ListRow row(const Folder& folder) {
    return {u"f"_s + QString::number(folder.id),
            {folder.description},
            controls::pictures::folder(),
            u"Folder"_s};
}

void tell(const QString& text) {
    screen::MsgBox(text, screen::Buttons::Ok, screen::Icon::Exclamation, system);
}

} // namespace

frmInventory::frmInventory()
    : Form(QString::fromLatin1(formName), u"Inventory"_s), m_view(&typeView()) {
    auto* outside = new QVBoxLayout(this);
    auto* splitter = screen::named(new controls::Splitter(Qt::Horizontal, this), u"splMain"_s);
    outside->addWidget(splitter, 1);
    tvMain = screen::named(new controls::Tree(splitter), u"tvMain"_s, u"Folders"_s);
    lvMain = screen::named(new controls::ListView(splitter), u"lvMain"_s, u"Folders and items"_s);
    lvMain->setColumns({{u"Description"_s, 30},
                        {u"Part Number"_s, 16},
                        {u"Manufacturer"_s, 16},
                        {u"Location"_s, 16},
                        {u"Type"_s, 16},
                        {u"Quantity"_s, 12}});
    splitter->setStretchFactor(0, 1);
    splitter->setStretchFactor(1, 3);
    outside->addWidget(buttons());

    on(tvMain->selected, [this](const QString& key) {
        m_lastUsed = tvMain;
        ListSelected(key);
    });
    on(lvMain->selectionChangedByUser, [this] {
        m_lastUsed = lvMain;
        countPapers();
    });
    // Whoever goes to the list by the keyboard means what is selected there.
    on(qApp, &QApplication::focusChanged, [this](QWidget*, QWidget* now) {
        if (now == tvMain || now == lvMain)
            m_lastUsed = now;
    });
    on(lvMain->rowDoubleClicked, [this](int) { openRow(); });
}

QWidget* frmInventory::buttons() {
    auto* foot = new QWidget(this);
    auto* down = new QVBoxLayout(foot);
    down->setContentsMargins(0, 0, 0, 0);
    auto* count = new QHBoxLayout;
    down->addLayout(count);
    txtObjCount = screen::named(new QLabel(foot), u"txtObjCount"_s, u"Number of objects"_s);
    count->addWidget(txtObjCount);
    count->addStretch();
    screen::ButtonBar first(foot, down);
    screen::ButtonBar second(foot, down);
    const auto button = [&](screen::ButtonBar& bar, const QString& name, const QString& caption,
                            const QString& form, const std::function<void()>& action) {
        QPushButton* made = bar.button(name, caption);
        made->setEnabled(form.isEmpty() || screen::Forms::isKnown(form));
        on(made, action);
        m_commands.push_back(made);
    };
    button(first, u"Toolbar1"_s, u"Change &View"_s, {}, [this] { changeView(); });
    button(first, u"cmdNew"_s, u"&New"_s, {}, [this] { cmdNew_Click(); });
    button(first, u"cmdEdit"_s, u"&Edit"_s, {}, [this] { cmdEdit_Click(); });
    button(first, u"cmdDelete"_s, u"&Delete"_s, {}, [this] { cmdDelete_Click(); });
    button(first, u"cmdFind"_s, u"&Find"_s, u"frmItemFind"_s,
           [] { screen::Forms::showModal(u"frmItemFind"_s); });
    button(first, u"cmdCount"_s, u"Count Stoc&k"_s, u"frmItemCount"_s,
           [this] { cmdCount_Click(); });
    first.stretch();
    QPushButton* cmdClose = first.button(u"cmdClose"_s, u"&Close"_s);
    on(cmdClose, [this] { unload(); });
    button(second, u"cmdReStock"_s, u"&Stock Inventory"_s, u"frmItemReStock"_s, [this] {
        screen::Forms::dialog<RestockDialog>(u"frmItemReStock"_s)->stock(selectedItem());
    });
    button(second, u"cmdIssue"_s, u"&Issue Inventory"_s, u"frmItemIssueInv"_s,
           [this] { showFor(u"frmItemIssueInv"_s, u"Please select an item to issue."_s); });
    button(second, u"cmdOrder"_s, u"&Order Selected"_s, u"frmItemOrder"_s,
           [this] { cmdOrder_Click(); });
    const QString select = u"Please select an item."_s;
    button(second, u"cmdCreateJob"_s, u"Create &Job"_s, u"frmItemCreateJob"_s,
           [=, this] { showFor(u"frmItemCreateJob"_s, select); });
    button(second, u"cmdCreateEst"_s, u"Create Es&timate"_s, u"frmItemCreateEst"_s,
           [=, this] { showFor(u"frmItemCreateEst"_s, select); });
    button(second, u"cmdActivity"_s, u"Item &Activity"_s, u"frmItemActivity"_s,
           [=, this] { showFor(u"frmItemActivity"_s, select); });
    button(second, u"cmdFlag"_s, u"&Report Flagged"_s, u"frmItemFlagged"_s,
           [] { screen::Forms::showModal(u"frmItemFlagged"_s); });
    button(second, u"cmdQuery"_s, u"&Query/Report"_s, u"frmQueryTypeLoc"_s,
           [] { screen::Forms::show(u"frmQueryTypeLoc"_s); });
    second.stretch();
    // What they make is worked on in its own module.
    for (const auto& [name, right] : {std::pair(u"cmdCreateJob"_s, u"mnuFileJob"_s),
                                      std::pair(u"cmdCreateEst"_s, u"mnuFileEstimate"_s)})
        foot->findChild<QPushButton*>(name)->setEnabled(core::HasAccess(right));

    const auto offer = [this](controls::DropMenu& menu) {
        const QString word = m_view->word;
        menu.add(m_commands[0]);
        menu.add(u"New Item"_s, [this] { newItem(); });
        menu.add(u"New "_s + word, [this] { newFolder(); });
        const bool item = selectedItem() != 0 && !treeIsMeant();
        menu.add((item ? u"Edit Item"_s : u"Edit "_s + word), [this] { cmdEdit_Click(); });
        menu.add((item ? u"Delete Item"_s : u"Delete "_s + word), [this] { cmdDelete_Click(); });
        menu.addSeparator();
        for (std::size_t i = 4; i < m_commands.size(); ++i)
            menu.add(m_commands[i]);
    };
    on(tvMain->menuAsked, [=, this](controls::DropMenu& menu) {
        m_lastUsed = tvMain;
        offer(menu);
    });
    on(lvMain->menuAsked, [=, this](controls::DropMenu& menu) {
        m_lastUsed = lvMain;
        offer(menu);
    });
    return foot;
}

QSize frmInventory::sizeHint() const {
    return {1040, 600};
}

void frmInventory::Form_Load() {
    m_papers = std::make_unique<core::PaperCount>(*this);
    showView(0);
}

bool frmInventory::Form_QueryUnload() {
    m_papers.reset();
    return true;
}

void frmInventory::countPapers() {
    if (m_papers)
        m_papers->show(selectedItem());
}

void frmInventory::showView(qint64 item) {
    // The root's folders, once for the tree and once for the list.
    std::vector<jet::WantedSet> wanted{foldersSelect(*m_view, 0)};
    if (item != 0)
        wanted.emplace_back(pathOfItemSelect(*m_view, item));
    else
        for (const jet::WantedSet& one : contentsSelects(*m_view, 0))
            wanted.push_back(one);
    core::MainDatabase().expect(wanted);
    showFolders(*tvMain, *m_view);
    if (item != 0)
        goToItem(item);
    else
        expandToNode(0);
}

// The tree and the list

void frmInventory::expandToNode(qint64 folder) {
    openPath(pathTo(core::MainDatabase(), *m_view, folder));
}

void frmInventory::openPath(const std::vector<Folder>& path) {
    const screen::BusyPointer busy;
    const qint64 folder = path.empty() ? 0 : path.back().id;
    // The branches on the way that were never opened, and what stands in the folder, in one wait.
    auto wanted = contentsSelects(*m_view, folder);
    const std::size_t contents = wanted.size();
    for (const Folder& step : path) {
        if (step.id != folder &&
            !(tvMain->hasNode(nodeKey(step.id)) && tvMain->isAsked(nodeKey(step.id))))
            wanted.emplace_back(foldersSelect(*m_view, step.id));
    }
    if (wanted.size() > contents)
        core::MainDatabase().expect(wanted);
    for (const Folder& step : path) {
        // One that another station added since the branch was read.
        if (!tvMain->hasNode(nodeKey(step.id)))
            tvMain->addNodeInOrder(nodeKey(step.parent), folderNode(step));
        if (step.id != folder)
            tvMain->open(nodeKey(step.id));
    }
    const QString key = nodeKey(folder);
    tvMain->selectNode(tvMain->hasNode(key) ? key : rootKey);
    ListSelected(tvMain->selectedKey());
}

void frmInventory::ListSelected(const QString& key) {
    const screen::BusyPointer busy;
    std::vector<controls::ListRow> rows;
    const FolderContents found = contentsOf(core::MainDatabase(), *m_view, folderIn(key));
    for (const Folder& folder : found.folders)
        rows.push_back(row(folder));
    for (const ItemRow& item : found.items)
        rows.push_back(listRow(item));
    // Another folder's rows are other rows: the first of them is selected.
    if (key != m_node)
        lvMain->clearRows();
    m_node = key;
    lvMain->setRows(std::move(rows));
    showCount();
}

void frmInventory::showCount() {
    txtObjCount->setText(QString::number(lvMain->rowCount()) + u" object(s)"_s);
    countPapers();
}

qint64 frmInventory::folderShown() const {
    return folderIn(m_node);
}

void frmInventory::openRow() {
    const QString key = lvMain->selectedKey();
    if (key.startsWith(u'i')) {
        cmdEdit_Click();
        return;
    }
    tvMain->open(m_node);
    expandToNode(folderIn(key));
}

void frmInventory::itemChanged(qint64 itemId) {
    const QString key = itemKey(itemId);
    const auto changed = itemRow(core::MainDatabase(), itemId);
    if (!changed)
        lvMain->removeKey(key);
    else if (lvMain->hasKey(key) ||
             (m_view == &typeView() ? changed->item.type : changed->item.location) == folderShown())
        lvMain->patchRow(listRow(*changed));
    showCount();
}

void frmInventory::showAgain() {
    ListSelected(m_node);
}

void frmInventory::goToItem(qint64 itemId) {
    openPath(pathOfItem(core::MainDatabase(), *m_view, itemId));
    lvMain->selectKey(itemKey(itemId));
    countPapers();
    m_lastUsed = lvMain;
}

void frmInventory::folderAdded(const Folder& folder) {
    tvMain->addNodeInOrder(nodeKey(folder.parent), folderNode(folder));
    if (folder.parent == folderShown())
        lvMain->patchRow(row(folder));
    showCount();
}

void frmInventory::changeView() {
    const qint64 item = selectedItem();
    m_view = m_view == &typeView() ? &locationView() : &typeView();
    showView(item);
}

// What is selected

bool frmInventory::treeIsMeant() const {
    return m_lastUsed != lvMain;
}

qint64 frmInventory::selectedItem() const {
    const QString key = lvMain->selectedKey();
    return key.startsWith(u'i') ? folderIn(key) : 0;
}

QString frmInventory::selectedFolder() const {
    const QString key = lvMain->selectedKey();
    return treeIsMeant() ? tvMain->selectedKey() : key.startsWith(u'f') ? key : QString();
}

qint64 frmInventory::itemFor(const QString& complaint) {
    const qint64 item = selectedItem();
    if (item == 0)
        tell(complaint);
    return item;
}

// The buttons

void frmInventory::cmdNew_Click() {
    const auto* button = control<QPushButton>(u"cmdNew"_s);
    core::Shell* shell = core::shell();
    const QString chosen =
        shell ? shell->popUp(u"InventoryNewPopup"_s, button->mapToGlobal(QPoint(0, 0))) : QString();
    if (chosen == u"mnuInvNewItem") {
        newItem();
    } else if (!chosen.isEmpty()) {
        const View& wanted = chosen == u"mnuInvNewLoc" ? locationView() : typeView();
        if (&wanted != m_view)
            changeView();
        newFolder();
    }
}

void frmInventory::newFolder() {
    const qint64 parent = folderShown();
    screen::Forms::dialog<FolderDialog>(m_view == &typeView() ? u"frmItemTypeNewEdit"_s
                                                              : u"frmItemLocNewEdit"_s)
        ->add(parent, tvMain->textOf(m_node));
}

void frmInventory::newItem() {
    if (folderShown() == 0)
        tell(u"Inventory Items cannot be assigned to the root type or location."_s);
    else
        screen::Forms::dialog<ItemDialog>(u"frmItemNewEdit"_s)->add(*m_view, folderShown());
}

void frmInventory::cmdEdit_Click() {
    const QString folder = selectedFolder();
    if (!folder.isEmpty() && folder != rootKey) {
        renameFolder(folderIn(folder));
        return;
    }
    const qint64 item = treeIsMeant() ? 0 : selectedItem();
    if (item == 0) {
        tell(u"Please select an item or folder to edit."_s);
        return;
    }
    if (screen::Forms::dialog<ItemDialog>(u"frmItemNewEdit"_s)->edit(item))
        goToItem(item);
    else
        itemChanged(item);
}

void frmInventory::renameFolder(qint64 id) {
    const QString text =
        screen::Forms::dialog<FolderDialog>(m_view == &typeView() ? u"frmItemTypeNewEdit"_s
                                                                  : u"frmItemLocNewEdit"_s)
            ->rename(id);
    if (text.isEmpty())
        return;
    tvMain->setText(nodeKey(id), text);
    const int place = lvMain->rowOf(u"f"_s + QString::number(id));
    lvMain->setRowText(place, 0, text);
}

void frmInventory::cmdDelete_Click() {
    const QString folder = selectedFolder();
    const qint64 item = selectedItem();
    if (folder == rootKey)
        tell(u"Cannot delete the root."_s);
    else if (!folder.isEmpty())
        deleteTreeNode(folderIn(folder));
    else if (item != 0)
        deleteListItem(item);
    else
        tell(u"Please select an item or folder to delete."_s);
}

void frmInventory::deleteTreeNode(qint64 id) {
    jet::Database& database = core::MainDatabase();
    const QString refusal = deleteRefusal(database, *m_view, id);
    if (!refusal.isEmpty()) {
        tell(refusal);
        return;
    }
    const auto meant = folder(database, *m_view, id);
    if (meant && !screen::confirmDeletion(u"Delete folder "_s + meant->description + u"?"_s, system,
                                          screen::Icon::Question, screen::Buttons::OkCancel))
        return;
    const auto next = deleteFolder(database, *m_view, id);
    if (!next) {
        tell(deleteRefusal(database, *m_view, id));
        return;
    }
    const bool fromTree = treeIsMeant();
    tvMain->removeNode(nodeKey(id));
    lvMain->removeKey(u"f"_s + QString::number(id));
    showCount();
    if (fromTree || folderShown() == id)
        expandToNode(*next);
    else
        lvMain->selectKey(u"f"_s + QString::number(*next));
}

void frmInventory::deleteListItem(qint64 id) {
    const int place = lvMain->selectedRow();
    if (!screen::confirmDeletion(u"Delete "_s + lvMain->rowText(place, 0) + u"?"_s, system,
                                 screen::Icon::Question, screen::Buttons::OkCancel))
        return;
    deleteItem(core::MainDatabase(), id);
    core::RefreshHistoryIfOpen(u"Items"_s);
    lvMain->removeKey(itemKey(id));
    lvMain->selectRow(place);
    showCount();
}

void frmInventory::showFor(const QString& form, const QString& complaint) {
    if (const qint64 item = itemFor(complaint))
        screen::Forms::dialog<ItemAction>(form)->showFor(item);
}

// Begins where the user is, if that is a location.
void frmInventory::cmdCount_Click() {
    const qint64 location = m_view == &locationView() ? folderShown() : 0;
    auto* count = dynamic_cast<CountScreen*>(screen::Forms::show(u"frmItemCount"_s));
    if (count && location != 0)
        count->countAt(location);
}

void frmInventory::cmdOrder_Click() {
    const qint64 item = itemFor(u"Please select an item to order."_s);
    if (item != 0)
        screen::Forms::dialog<OrderDialog>(u"frmItemOrder"_s)->order(item, 0);
}

} // namespace inventory
