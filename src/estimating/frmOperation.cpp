#include "estimating/frmOperation.h"

#include "core/MirsaMain.h"
#include "estimating/CatalogueDialogs.h"
#include "estimating/routing/Pictures.h"
#include "platform/controls/DropMenu.h"
#include "platform/controls/ListView.h"
#include "platform/controls/Pictures.h"
#include "platform/controls/Tree.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QStackedWidget>
#include <QTabWidget>

namespace estimating {

namespace {

QString inhouse() {
    return QString::fromUtf16(inhouseType);
}
QString contractor() {
    return QString::fromUtf16(contractorType);
}
QString overhead() {
    return QString::fromUtf16(overheadType);
}

/// The number behind a letter of a key: of "O17D7" 17 for O and 7 for D; 0 where the letter isn't.
qint64 numberIn(const QString& key, QChar letter) {
    const qsizetype at = key.indexOf(letter);
    if (at < 0)
        return 0;
    const QStringView rest = QStringView(key).mid(at + 1);
    const auto end = std::find_if(rest.begin(), rest.end(), [](QChar c) { return !c.isDigit(); });
    return QStringView(rest.begin(), end).toLongLong();
}

QString noteWords(bool hasNote) {
    return hasNote ? u"has a default note"_s : u"no default note"_s;
}

QIcon noteMark(bool hasNote) {
    return hasNote ? noteIcon() : noNoteIcon();
}

} // namespace

frmOperation::frmOperation() : Form(QString::fromLatin1(formName), u"Operations"_s) {
    auto* outside = new QVBoxLayout(this);
    SSTabOper = screen::named(new QTabWidget(this), u"SSTabOper"_s);
    outside->addWidget(SSTabOper);
    SSTabOper->addTab(inhousePage(), u"&Inhouse"_s);
    SSTabOper->addTab(listPage(overhead(), u"OH"_s, lvwOH), u"O&verhead"_s);
    SSTabOper->addTab(listPage(contractor(), u"CO"_s, lvwCO), u"Co&ntractor"_s);
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setCancelButton(cmdClose);
    on(cmdClose, [this] { unload(); });
}

QSize frmOperation::sizeHint() const {
    return {760, 500};
}

controls::ListView* frmOperation::newList(QWidget* parent, const QString& name,
                                          const QString& spoken) {
    auto* list = screen::named(new controls::ListView(parent), name, spoken);
    list->setSortable(true);
    return list;
}

QWidget* frmOperation::inhousePage() {
    auto* page = new QWidget(SSTabOper);
    auto* across = new QHBoxLayout(page);
    m_views = new QStackedWidget(page);
    across->addWidget(m_views, 1);
    lvwIN = newList(page, u"lvwIN"_s, u"Inhouse operations"_s);
    lvwIN->setColumns({{u"Operation"_s, 34},
                       {u"Rate "_s + core::shared().CurrencySymbol + u"/hr"_s, 14,
                        controls::GridColumn::Kind::Number},
                       {u"Department"_s, 24}});
    tvwOper = screen::named(new controls::Tree(page), u"tvwOper"_s,
                            u"Inhouse operations by department"_s);
    tvwOper->setExpandsOnDoubleClick(false);
    m_views->addWidget(tvwOper);
    m_views->addWidget(lvwIN);

    screen::ButtonBar bar(page, across);
    cmdView = bar.button(u"cmdView"_s, u"&View by Operation"_s);
    QPushButton* cmdNewDept = bar.button(u"cmdNewDept"_s, u"New De&partment"_s);
    cmdNewOper = bar.button(u"cmdNewOper"_s, u"&New Operation"_s);
    QPushButton* cmdEdit = bar.button(u"cmdEdit"_s, u"&Edit"_s);
    QPushButton* cmdDelete = bar.button(u"cmdDelete"_s, u"&Delete"_s);
    bar.stretch();

    on(cmdView, &frmOperation::cmdView_Click);
    on(cmdNewDept, &frmOperation::cmdNewDept_Click);
    on(cmdNewOper, &frmOperation::cmdNewOper_Click);
    on(cmdEdit, &frmOperation::cmdEdit_Click);
    on(cmdDelete, &frmOperation::cmdDelete_Click);
    on(lvwIN->rowDoubleClicked, [this](int) { cmdEdit_Click(); });
    on(tvwOper->selected, [this](const QString&) { tvwOper_NodeClick(); });
    on(tvwOper->doubleClicked, [this](const QString&) { cmdEdit_Click(); });
    const std::vector<QAbstractButton*> commands{cmdView, cmdNewDept, cmdNewOper, cmdEdit,
                                                 cmdDelete};
    controls::offerInMenu(lvwIN, commands);
    controls::offerInMenu(tvwOper, commands);
    return page;
}

QWidget* frmOperation::listPage(const QString& type, const QString& prefix,
                                controls::ListView*& list) {
    auto* page = new QWidget(SSTabOper);
    auto* across = new QHBoxLayout(page);
    list = newList(page, u"lvw"_s + prefix, operationTitle(type));
    list->setColumns({{u"Description"_s, 60}});
    across->addWidget(list, 1);
    screen::ButtonBar bar(page, across);
    const QString cmd = u"cmd"_s + prefix;
    QPushButton* add = bar.button(cmd + u"new"_s, u"&New Operation"_s);
    QPushButton* edit = bar.button(cmd + u"edit"_s, u"&Edit"_s);
    QPushButton* remove = bar.button(cmd + u"delete"_s, u"&Delete"_s);
    bar.stretch();
    controls::ListView* const rows = list;
    on(add, [this, rows, type] { newOperation(rows, type); });
    on(edit, [this, rows, type] { editOperation(rows, type); });
    on(remove, [this, rows, type] { removeOperation(rows, type); });
    on(rows->rowDoubleClicked, [this, rows, type](int) { editOperation(rows, type); });
    controls::offerInMenu(rows, {add, edit, remove});
    return page;
}

void frmOperation::Form_Load() {
    const OperationCatalogue catalogue = loadCatalogue(core::MainDatabase());
    fillTree(catalogue);
    fillList(lvwIN, inhouse(), catalogue);
    fillList(lvwOH, overhead(), catalogue);
    fillList(lvwCO, contractor(), catalogue);
    tvwOper_NodeClick();
}

void frmOperation::fillList(controls::ListView* list, const QString& type,
                            const OperationCatalogue& catalogue) {
    const int selected = std::max(list->selectedRow(), 0);
    std::vector<controls::ListRow> rows;
    for (const CatalogueEntry& entry : catalogue.ofType(type)) {
        QStringList texts{entry.description};
        if (list == lvwIN) {
            texts << values::format(entry.rate, core::moneyMask(u"#,###.00"_s)) << entry.department;
        }
        rows.push_back({u"O"_s + QString::number(entry.operNo), texts, noteMark(entry.hasNote),
                        noteWords(entry.hasNote)});
    }
    list->setRows(std::move(rows));
    list->selectRow(selected);
}

void frmOperation::fillTree(const OperationCatalogue& catalogue) {
    using namespace controls;
    const QString selected = tvwOper->selectedKey();
    QStringList open;
    const QStringList shown = tvwOper->childrenOf({});
    for (const QString& key : shown) {
        if (tvwOper->isOpen(key))
            open << key;
    }
    tvwOper->clearNodes();
    std::vector<TreeNode> tops;
    for (const DepartmentNode& department : catalogue.departments)
        tops.push_back({u"D"_s + QString::number(department.id), department.name,
                        pictures::folder(), pictures::openFolder()});
    if (tops.empty())
        tops.push_back({u"K1"_s, u"There are no items to view"_s});
    tvwOper->addNodes({}, tops);
    for (const DepartmentNode& department : catalogue.departments) {
        const QString key = u"D"_s + QString::number(department.id);
        std::vector<TreeNode> below;
        for (const CatalogueEntry& entry : catalogue.ofDepartment(department.id))
            below.push_back({.key = u"O"_s + QString::number(entry.operNo) + key,
                             .text = entry.description,
                             .picture = noteMark(entry.hasNote),
                             .said = noteWords(entry.hasNote)});
        tvwOper->addNodes(key, below);
        tvwOper->open(key, open.contains(key));
    }
    if (!tvwOper->selectNode(selected))
        tvwOper->selectNode(tops.front().key);
    tvwOper_NodeClick();
}

void frmOperation::fillInhouse() {
    const OperationCatalogue catalogue = loadCatalogue(core::MainDatabase());
    fillTree(catalogue);
    fillList(lvwIN, inhouse(), catalogue);
}

bool frmOperation::showsTree() const {
    return m_views->currentWidget() == tvwOper;
}

QString frmOperation::selectedInhouse() const {
    return showsTree() ? tvwOper->selectedKey() : lvwIN->selectedKey();
}

void frmOperation::tvwOper_NodeClick() {
    cmdNewOper->setEnabled(!showsTree() || selectedInhouse().startsWith(QLatin1Char('D')));
}

void frmOperation::cmdView_Click() {
    const bool toList = showsTree();
    m_views->setCurrentWidget(toList ? static_cast<QWidget*>(lvwIN) : tvwOper);
    cmdView->setText(toList ? u"&View by Department"_s : u"&View by Operation"_s);
    tvwOper_NodeClick();
}

void frmOperation::cmdNewDept_Click() {
    auto dialog = screen::Forms::dialog<DepartmentDialog>(u"frmOperDeptAddEdit"_s);
    if (dialog->ShowForm(u"New"_s, 0))
        fillInhouse();
}

void frmOperation::cmdNewOper_Click() {
    auto dialog = screen::Forms::dialog<OperationDialog>(u"frmOperAddEdit"_s);
    const qint64 department =
        showsTree() ? numberIn(selectedInhouse(), QLatin1Char('D')) : qint64{0};
    if (dialog->ShowForm(u"New"_s, 0, department, inhouse()))
        fillInhouse();
}

void frmOperation::cmdEdit_Click() {
    const QString key = selectedInhouse();
    const QString edit = u"Edit"_s;
    if (key.startsWith(QLatin1Char('D'))) {
        auto dialog = screen::Forms::dialog<DepartmentDialog>(u"frmOperDeptAddEdit"_s);
        if (dialog->ShowForm(edit, numberIn(key, QLatin1Char('D'))))
            fillInhouse();
    } else if (key.startsWith(QLatin1Char('O'))) {
        auto dialog = screen::Forms::dialog<OperationDialog>(u"frmOperAddEdit"_s);
        if (dialog->ShowForm(edit, numberIn(key, QLatin1Char('O')), 0, inhouse()))
            fillInhouse();
    }
}

void frmOperation::cmdDelete_Click() {
    const QString key = selectedInhouse();
    if (key.startsWith(QLatin1Char('O'))) {
        if (deleteAfterQuestion(numberIn(key, QLatin1Char('O')), inhouse()))
            fillInhouse();
    } else if (key.startsWith(QLatin1Char('D'))) {
        if (!tvwOper->childrenOf(key).isEmpty()) {
            screen::MsgBox(u"Please delete the operation(s) first before deleting "
                           "the department."_s,
                           screen::Buttons::Ok, screen::Icon::Exclamation);
        } else if (screen::confirmDeletion(u"Delete this department?"_s, u"Delete"_s)) {
            deleteDepartment(core::MainDatabase(), numberIn(key, QLatin1Char('D')));
            fillInhouse();
        }
    }
}

void frmOperation::newOperation(controls::ListView* list, const QString& type) {
    auto dialog = screen::Forms::dialog<OperationDialog>(u"frmOperAddEdit"_s);
    if (dialog->ShowForm(u"New"_s, 0, 0, type))
        fillList(list, type, loadCatalogue(core::MainDatabase()));
}

void frmOperation::editOperation(controls::ListView* list, const QString& type) {
    const int row = list->selectedRow();
    if (row < 0)
        return;
    auto dialog = screen::Forms::dialog<OperationDialog>(u"frmOperAddEdit"_s);
    if (dialog->ShowForm(u"Edit"_s, list->keyNumber(row), 0, type))
        fillList(list, type, loadCatalogue(core::MainDatabase()));
}

void frmOperation::removeOperation(controls::ListView* list, const QString& type) {
    const int row = list->selectedRow();
    if (row >= 0 && deleteAfterQuestion(list->keyNumber(row), type))
        fillList(list, type, loadCatalogue(core::MainDatabase()));
}

bool frmOperation::deleteAfterQuestion(qint64 operNo, const QString& type) {
    jet::Database& database = core::MainDatabase();
    QString refusal;
    {
        const screen::BusyPointer busy;
        refusal = operationInUse(database, operNo, type);
    }
    if (!refusal.isEmpty()) {
        screen::MsgBox(refusal, screen::Buttons::Ok, screen::Icon::Exclamation);
        return false;
    }
    if (!screen::confirmDeletion(u"Delete this operation?"_s, u"Delete"_s))
        return false;
    deleteOperation(database, operNo);
    return true;
}

} // namespace estimating
