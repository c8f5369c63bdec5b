#include "jobs/frmAssemblyInfo.h"

#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "platform/controls/DropMenu.h"
#include "platform/controls/Pictures.h"
#include "platform/controls/Tree.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Literals.h"

#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace jobs {

using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

namespace {

const QString rootKey = u"ROOT"_s;

QString keyOf(qint64 number) {
    return number == 0 ? rootKey : u"K"_s + QString::number(number);
}

/// 0 for the root.
qint64 numberOf(const QString& key) {
    return key.mid(1).toLongLong();
}

} // namespace

frmAssemblyInfo::frmAssemblyInfo()
    : Form(QString::fromLatin1(formName), u"Assembly Tree"_s), m_kind(&assemblyKind(u"Job"_s)) {
    auto* outside = new QVBoxLayout(this);
    auto* body = new QWidget(this);
    outside->addWidget(body);
    screen::Fields fields(body);
    cboCustomer = fields.listCombo(u"cboCustomer"_s, u"C&ustomer"_s);
    fields.nextRow();
    cboPoOrRfq = new controls::ListCombo(body);
    lblPoOrRfq =
        screen::named(new QLabel(screen::fieldTitle(m_kind->orderLabel), body), u"lblPoOrRfq"_s);
    lblPoOrRfq->setBuddy(cboPoOrRfq);
    fields.grid()->addWidget(lblPoOrRfq, 1, 0);
    fields.grid()->addWidget(screen::named(cboPoOrRfq, u"cboPoOrRfq"_s, u"Order"_s), 1, 1);
    fields.grid()->setColumnStretch(1, 1);
    fields.grid()->setContentsMargins(0, 0, 0, 0);
    for (controls::ListCombo* combo : {cboCustomer, cboPoOrRfq}) {
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo->setMinimumContentsLength(30);
    }
    lblDescription = screen::named(new QLabel(this), u"lblDescription"_s);
    outside->addWidget(lblDescription);
    tvwAssembly = screen::named(new controls::Tree(this), u"tvwAssembly"_s, u"Assembly tree"_s);
    lblDescription->setBuddy(tvwAssembly);
    tvwAssembly->setExpandsOnDoubleClick(false);
    outside->addWidget(tvwAssembly, 1);
    auto* lblInvalidDrag = screen::named(new QLabel(this), u"lblInvalidDrag"_s);
    lblInvalidDrag->setPixmap(
        style()->standardPixmap(QStyle::SP_MessageBoxCritical).scaled(24, 24));
    lblInvalidDrag->hide();
    tvwAssembly->setInvalidCursor(QCursor(lblInvalidDrag->pixmap(Qt::ReturnByValue)));

    screen::ButtonBar bar(this, outside);
    cmdCut = bar.button(u"cmdCut"_s, u"Cu&t"_s);
    cmdCut->setToolTip(u"Takes the selected number up, to be pasted (Ctrl+X)"_s);
    cmdPaste = bar.button(u"cmdPaste"_s, u"&Paste"_s);
    cmdPaste->setToolTip(u"Hangs it under the selected number (Ctrl+V)"_s);
    cmdPaste->setEnabled(false);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setCancelButton(cmdClose);

    on(cmdCut, [this] {
        tvwAssembly->cut();
        tvwAssembly->setFocus();
    });
    on(cmdPaste, [this] {
        tvwAssembly->paste();
        tvwAssembly->setFocus();
    });
    on(cmdClose, [this] { unload(); });
    on(cboCustomer->chosen, &frmAssemblyInfo::cboCustomer_Click);
    on(cboPoOrRfq->chosen, &frmAssemblyInfo::cboPoOrRfq_Click);
    on(tvwAssembly->dropped,
       [this](const QString& key, const QString& under) { hang(numberOf(key), numberOf(under)); });
    on(tvwAssembly->doubleClicked, [this](const QString& key) {
        if (key != rootKey)
            goTo(numberOf(key));
    });
    on(tvwAssembly->cutChanged, [this] { cmdPaste->setEnabled(tvwAssembly->hasCut()); });
    on(tvwAssembly->refused, [] { screen::beep(); });
    controls::offerInMenu(tvwAssembly, {cmdCut, cmdPaste});
    tvwAssembly->mayDrag = [](const QString& key) { return key != rootKey; };
    tvwAssembly->mayDrop = [this](const QString& key, const QString& under) {
        return m_assembly.mayHang(numberOf(key), numberOf(under));
    };
    resize(560, 600);
}

void frmAssemblyInfo::showTree(qint64 custId, const QString& order, qint64 number,
                               const QString& mode) {
    m_kind = &assemblyKind(mode);
    setWindowTitle(m_kind->mode + u" Assembly Information"_s);
    lblPoOrRfq->setText(screen::fieldTitle(m_kind->orderLabel));
    cboPoOrRfq->setAccessibleName(m_kind->orderLabel);
    lblDescription->setText(m_kind->mode + u" Number  (Part Number)"_s);
    cboCustomer->clearRows();
    expectAssembly(core::MainDatabase(), *m_kind, custId,
                   order.trimmed().isEmpty() ? QString() : order);
    jet::Recordset customers = core::MainDatabase().openRecordset(
        u"Select * from Customer order by Company"_s, jet::RecordsetType::Snapshot);
    for (; !customers.eof(); customers.moveNext())
        cboCustomer->addRow(customers.text(u"Company"), customers[u"CustID"].toLong());
    if (!cboCustomer->chooseNumber(custId))
        cboCustomer->clear();
    fillOrders();
    if (!order.trimmed().isEmpty())
        cboPoOrRfq->setText(order);
    fillTree();
    tvwAssembly->selectNode(keyOf(number));
    tvwAssembly->setFocus();
    showModal();
    if (m_changed)
        core::refreshNeighbours({m_kind->module}, m_kind->table);
}

void frmAssemblyInfo::cboCustomer_Click() {
    fillOrders();
    fillTree();
}

void frmAssemblyInfo::cboPoOrRfq_Click() {
    fillTree();
}

void frmAssemblyInfo::fillOrders() {
    cboPoOrRfq->clearRows();
    cboPoOrRfq->addRow(allOrders);
    const QStringList orders =
        assemblyOrders(core::MainDatabase(), *m_kind, cboCustomer->itemNumber());
    for (const QString& order : orders)
        cboPoOrRfq->addRow(order);
    cboPoOrRfq->setCurrentIndex(0);
}

QString frmAssemblyInfo::selection() const {
    QString text = cboCustomer->text();
    if (cboPoOrRfq->currentIndex() > 0)
        text += u", "_s + m_kind->orderWord + cboPoOrRfq->text();
    return text;
}

void frmAssemblyInfo::fillTree() {
    const screen::BusyPointer busy;
    tvwAssembly->clearNodes();
    m_assembly = Assembly::read(core::MainDatabase(), *m_kind, cboCustomer->itemNumber(),
                                cboPoOrRfq->currentIndex() > 0 ? cboPoOrRfq->text() : QString());
    if (m_assembly.isEmpty()) {
        MsgBox(u"Cannot find any "_s + m_kind->table + u" records for "_s + selection(),
               Buttons::Ok, Icon::Information);
        return;
    }
    showNodes();
    tvwAssembly->selectNode(rootKey);
    if (!m_assembly.hasRoot()) {
        MsgBox(u"No root found for the Assembly Tree for "_s + selection(), Buttons::Ok,
               Icon::Exclamation);
    }
}

void frmAssemblyInfo::showNodes() {
    using namespace controls;
    tvwAssembly->addNode({}, {rootKey, u"Root"_s, pictures::folder()});
    QHash<qint64, std::vector<TreeNode>> below;
    for (const AssemblyNode& node : m_assembly.nodes())
        below[node.under].push_back({keyOf(node.number), node.text(), pictures::page()});
    // Each parent stands before its children.
    std::vector<qint64> parents{0};
    for (const AssemblyNode& node : m_assembly.nodes())
        parents.push_back(node.number);
    for (const qint64 parent : parents)
        tvwAssembly->addNodes(keyOf(parent), below.value(parent));
    for (const AssemblyNode& node : m_assembly.nodes()) {
        if (node.isStray())
            tvwAssembly->setRemark(keyOf(node.number),
                                   u"A part of %1, which isn't shown above it"_s.arg(node.parent));
    }
    tvwAssembly->expandAll();
}

void frmAssemblyInfo::moveNode(qint64 number, qint64 under) {
    const QString key = keyOf(number);
    tvwAssembly->setRemark(key, {});
    // By number, in front of those that only stand under the root for want of their parent.
    int place = 0;
    const QStringList siblings = tvwAssembly->childrenOf(keyOf(under));
    for (const QString& sibling : siblings) {
        if (sibling == key)
            continue;
        if (tvwAssembly->hasRemark(sibling) || numberOf(sibling) > number)
            break;
        ++place;
    }
    tvwAssembly->moveNode(key, keyOf(under), place);
    tvwAssembly->selectNode(key);
}

void frmAssemblyInfo::hang(qint64 number, qint64 under) {
    Hanging result = Hanging::Done;
    try {
        result = hangUnder(core::MainDatabase(), *m_kind, number, under);
    } catch (const jet::Error& error) {
        MsgBox(error.text(), Buttons::Ok, Icon::Critical);
        return;
    }
    if (result == Hanging::Done) {
        m_changed = true;
        m_assembly.moved(number, under);
        moveNode(number, under);
        return;
    }
    const auto subject = [this](qint64 which) {
        return m_kind->mode + u" No. "_s + QString::number(which);
    };
    if (result == Hanging::Loop) {
        MsgBox(subject(under) + u" is already a part of "_s + subject(number) + u"."_s, Buttons::Ok,
               Icon::Exclamation);
    } else {
        MsgBox(subject(result == Hanging::Gone ? number : under) + u" does not exist!"_s,
               Buttons::Ok, Icon::Exclamation);
    }
    fillTree();
    tvwAssembly->selectNode(keyOf(number));
}

void frmAssemblyInfo::goTo(qint64 number) {
    auto* module = screen::Forms::find<core::RecordScreen>(m_kind->module);
    if (!module || module->goToRecord(number))
        return;
    // Another station added it after the module read its rows.
    core::refreshNeighbours({m_kind->module}, m_kind->table);
    if (!module->goToRecord(number))
        screen::beep();
}

} // namespace jobs
