#include "estimating/frmOperation.h"

#include "core/MirsaMain.h"
#include "estimating/CatalogueDialogs.h"
#include "estimating/routing/Pictures.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Format.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QStackedWidget>
#include <QStyle>
#include <QTabWidget>
#include <QTreeWidget>

namespace estimating {

namespace {

constexpr int keyRole = Qt::UserRole;

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
    return hasNote ? QStringLiteral("has a default note") : QStringLiteral("no default note");
}

QIcon noteMark(bool hasNote) {
    return hasNote ? noteIcon() : noNoteIcon();
}

} // namespace

frmOperation::frmOperation() : Form(QString::fromLatin1(formName), QStringLiteral("Operations")) {
    auto* outside = new QVBoxLayout(this);
    SSTabOper = screen::named(new QTabWidget(this), QStringLiteral("SSTabOper"));
    outside->addWidget(SSTabOper);
    SSTabOper->addTab(inhousePage(), QStringLiteral("&Inhouse"));
    SSTabOper->addTab(listPage(overhead(), QStringLiteral("OH"), lvwOH),
                      QStringLiteral("O&verhead"));
    SSTabOper->addTab(listPage(contractor(), QStringLiteral("CO"), lvwCO),
                      QStringLiteral("Co&ntractor"));
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdClose = bar.button(QStringLiteral("cmdClose"), QStringLiteral("&Close"));
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
    lvwIN = newList(page, QStringLiteral("lvwIN"), QStringLiteral("Inhouse operations"));
    lvwIN->setColumns(
        {{QStringLiteral("Operation"), 34},
         {QStringLiteral("Rate ") + core::shared().CurrencySymbol + QStringLiteral("/hr"), 14,
          controls::GridColumn::Kind::Number},
         {QStringLiteral("Department"), 24}});
    tvwOper = screen::named(new QTreeWidget(page), QStringLiteral("tvwOper"),
                            QStringLiteral("Inhouse operations by department"));
    tvwOper->setHeaderHidden(true);
    tvwOper->setExpandsOnDoubleClick(false);
    m_views->addWidget(tvwOper);
    m_views->addWidget(lvwIN);

    screen::ButtonBar bar(page, across);
    cmdView = bar.button(QStringLiteral("cmdView"), QStringLiteral("&View by Operation"));
    QPushButton* cmdNewDept =
        bar.button(QStringLiteral("cmdNewDept"), QStringLiteral("New De&partment"));
    cmdNewOper = bar.button(QStringLiteral("cmdNewOper"), QStringLiteral("&New Operation"));
    QPushButton* cmdEdit = bar.button(QStringLiteral("cmdEdit"), QStringLiteral("&Edit"));
    QPushButton* cmdDelete = bar.button(QStringLiteral("cmdDelete"), QStringLiteral("&Delete"));
    bar.stretch();

    on(cmdView, &frmOperation::cmdView_Click);
    on(cmdNewDept, &frmOperation::cmdNewDept_Click);
    on(cmdNewOper, &frmOperation::cmdNewOper_Click);
    on(cmdEdit, &frmOperation::cmdEdit_Click);
    on(cmdDelete, &frmOperation::cmdDelete_Click);
    on(lvwIN->rowDoubleClicked, [this](int) { cmdEdit_Click(); });
    connect(tvwOper, &QTreeWidget::currentItemChanged, this,
            [this] { guarded([this] { tvwOper_NodeClick(); }); });
    connect(tvwOper, &QTreeWidget::itemDoubleClicked, this,
            [this] { guarded([this] { cmdEdit_Click(); }); });
    return page;
}

QWidget* frmOperation::listPage(const QString& type, const QString& prefix,
                                controls::ListView*& list) {
    auto* page = new QWidget(SSTabOper);
    auto* across = new QHBoxLayout(page);
    list = newList(page, QStringLiteral("lvw") + prefix, operationTitle(type));
    list->setColumns({{QStringLiteral("Description"), 60}});
    across->addWidget(list, 1);
    screen::ButtonBar bar(page, across);
    const QString cmd = QStringLiteral("cmd") + prefix;
    QPushButton* add = bar.button(cmd + QStringLiteral("new"), QStringLiteral("&New Operation"));
    QPushButton* edit = bar.button(cmd + QStringLiteral("edit"), QStringLiteral("&Edit"));
    QPushButton* remove = bar.button(cmd + QStringLiteral("delete"), QStringLiteral("&Delete"));
    bar.stretch();
    controls::ListView* const rows = list;
    on(add, [this, rows, type] { newOperation(rows, type); });
    on(edit, [this, rows, type] { editOperation(rows, type); });
    on(remove, [this, rows, type] { removeOperation(rows, type); });
    on(rows->rowDoubleClicked, [this, rows, type](int) { editOperation(rows, type); });
    return page;
}

void frmOperation::Form_Load() {
    fillInhouse();
    fillList(lvwOH, overhead());
    fillList(lvwCO, contractor());
    tvwOper_NodeClick();
}

void frmOperation::fillList(controls::ListView* list, const QString& type) {
    const int selected = std::max(list->selectedRow(), 0);
    list->clearRows();
    for (const CatalogueEntry& entry : operationsOfType(core::MainDatabase(), type)) {
        QStringList texts{entry.description};
        if (list == lvwIN) {
            texts << values::format(entry.rate, core::moneyMask(QStringLiteral("#,###.00")))
                  << entry.department;
        }
        list->addRow(QStringLiteral("O") + QString::number(entry.operNo), texts,
                     noteMark(entry.hasNote), noteWords(entry.hasNote));
    }
    list->selectPlace(selected);
}

void frmOperation::fillTree() {
    const QString selected =
        tvwOper->currentItem() ? tvwOper->currentItem()->data(0, keyRole).toString() : QString();
    QStringList open;
    for (int i = 0; i < tvwOper->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* item = tvwOper->topLevelItem(i);
        if (item->isExpanded())
            open << item->data(0, keyRole).toString();
    }
    tvwOper->clear();
    QTreeWidgetItem* current = nullptr;
    const auto node = [&](QTreeWidgetItem* item, const QString& text, const QString& key) {
        item->setText(0, text);
        item->setData(0, keyRole, key);
        if (key == selected)
            current = item;
    };
    for (const DepartmentNode& department : operationsByDepartment(core::MainDatabase())) {
        const QString key = QStringLiteral("D") + QString::number(department.id);
        auto* top = new QTreeWidgetItem(tvwOper);
        node(top, department.name, key);
        top->setIcon(0, style()->standardIcon(QStyle::SP_DirIcon));
        for (const CatalogueEntry& entry : department.operations) {
            auto* below = new QTreeWidgetItem(top);
            node(below, entry.description,
                 QStringLiteral("O") + QString::number(entry.operNo) + key);
            below->setIcon(0, noteMark(entry.hasNote));
            below->setData(0, Qt::AccessibleDescriptionRole, noteWords(entry.hasNote));
        }
        top->setExpanded(open.contains(key));
    }
    if (tvwOper->topLevelItemCount() == 0) {
        node(new QTreeWidgetItem(tvwOper), QStringLiteral("There are no items to view"),
             QStringLiteral("K1"));
    }
    tvwOper->setCurrentItem(current ? current : tvwOper->topLevelItem(0));
}

void frmOperation::fillInhouse() {
    fillTree();
    fillList(lvwIN, inhouse());
}

bool frmOperation::showsTree() const {
    return m_views->currentWidget() == tvwOper;
}

QString frmOperation::selectedInhouse() const {
    if (!showsTree())
        return lvwIN->selectedKey();
    const QTreeWidgetItem* item = tvwOper->currentItem();
    return item ? item->data(0, keyRole).toString() : QString();
}

void frmOperation::tvwOper_NodeClick() {
    cmdNewOper->setEnabled(!showsTree() || selectedInhouse().startsWith(QLatin1Char('D')));
}

void frmOperation::cmdView_Click() {
    const bool toList = showsTree();
    m_views->setCurrentWidget(toList ? static_cast<QWidget*>(lvwIN) : tvwOper);
    cmdView->setText(toList ? QStringLiteral("&View by Department")
                            : QStringLiteral("&View by Operation"));
    tvwOper_NodeClick();
}

void frmOperation::cmdNewDept_Click() {
    auto dialog = screen::Forms::dialog<DepartmentDialog>(QStringLiteral("frmOperDeptAddEdit"));
    if (dialog->ShowForm(QStringLiteral("New"), 0))
        fillInhouse();
}

void frmOperation::cmdNewOper_Click() {
    auto dialog = screen::Forms::dialog<OperationDialog>(QStringLiteral("frmOperAddEdit"));
    const qint64 department =
        showsTree() ? numberIn(selectedInhouse(), QLatin1Char('D')) : qint64{0};
    if (dialog->ShowForm(QStringLiteral("New"), 0, department, inhouse()))
        fillInhouse();
}

void frmOperation::cmdEdit_Click() {
    const QString key = selectedInhouse();
    const QString edit = QStringLiteral("Edit");
    if (key.startsWith(QLatin1Char('D'))) {
        auto dialog = screen::Forms::dialog<DepartmentDialog>(QStringLiteral("frmOperDeptAddEdit"));
        if (dialog->ShowForm(edit, numberIn(key, QLatin1Char('D'))))
            fillInhouse();
    } else if (key.startsWith(QLatin1Char('O'))) {
        auto dialog = screen::Forms::dialog<OperationDialog>(QStringLiteral("frmOperAddEdit"));
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
        if (tvwOper->currentItem()->childCount() > 0) {
            screen::MsgBox(QStringLiteral("Please delete the operation(s) first before deleting "
                                          "the department."),
                           screen::Buttons::Ok, screen::Icon::Exclamation);
        } else if (ask(QStringLiteral("Delete this department?"))) {
            deleteDepartment(core::MainDatabase(), numberIn(key, QLatin1Char('D')));
            fillInhouse();
        }
    }
}

void frmOperation::newOperation(controls::ListView* list, const QString& type) {
    auto dialog = screen::Forms::dialog<OperationDialog>(QStringLiteral("frmOperAddEdit"));
    if (dialog->ShowForm(QStringLiteral("New"), 0, 0, type))
        fillList(list, type);
}

void frmOperation::editOperation(controls::ListView* list, const QString& type) {
    const int row = list->selectedRow();
    if (row < 0)
        return;
    auto dialog = screen::Forms::dialog<OperationDialog>(QStringLiteral("frmOperAddEdit"));
    if (dialog->ShowForm(QStringLiteral("Edit"), list->keyNumber(row), 0, type))
        fillList(list, type);
}

void frmOperation::removeOperation(controls::ListView* list, const QString& type) {
    const int row = list->selectedRow();
    if (row >= 0 && deleteAfterQuestion(list->keyNumber(row), type))
        fillList(list, type);
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
    if (!ask(QStringLiteral("Delete this operation?")))
        return false;
    deleteOperation(database, operNo);
    return true;
}

bool frmOperation::ask(const QString& question) const {
    return screen::MsgBox(question, screen::Buttons::YesNo, screen::Icon::Question,
                          QStringLiteral("Delete")) == screen::Answer::Yes;
}

} // namespace estimating
