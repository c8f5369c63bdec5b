#include "jobs/frmAssemblyInfo.h"

#include "core/MirsaMain.h"
#include "core/RecordScreen.h"
#include "jobs/AssemblyTreeView.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"

#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace jobs {

using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

frmAssemblyInfo::frmAssemblyInfo()
    : Form(QString::fromLatin1(formName), QStringLiteral("Assembly Tree")),
      m_kind(&assemblyKind(QStringLiteral("Job"))) {
    auto* outside = new QVBoxLayout(this);
    auto* body = new QWidget(this);
    outside->addWidget(body);
    screen::Fields fields(body);
    cboCustomer = fields.listCombo(QStringLiteral("cboCustomer"), QStringLiteral("C&ustomer"));
    fields.nextRow();
    cboPoOrRfq = new controls::ListCombo(body);
    lblPoOrRfq = screen::named(new QLabel(m_kind->orderLabel, body), QStringLiteral("lblPoOrRfq"));
    lblPoOrRfq->setBuddy(cboPoOrRfq);
    fields.grid()->addWidget(lblPoOrRfq, 1, 0);
    fields.grid()->addWidget(
        screen::named(cboPoOrRfq, QStringLiteral("cboPoOrRfq"), QStringLiteral("Order")), 1, 1);
    fields.grid()->setColumnStretch(1, 1);
    fields.grid()->setContentsMargins(0, 0, 0, 0);
    for (controls::ListCombo* combo : {cboCustomer, cboPoOrRfq}) {
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo->setMinimumContentsLength(30);
    }
    lblDescription = screen::named(new QLabel(this), QStringLiteral("lblDescription"));
    outside->addWidget(lblDescription);
    tvwAssembly = screen::named(new AssemblyTreeView(this), QStringLiteral("tvwAssembly"),
                                QStringLiteral("Assembly tree"));
    lblDescription->setBuddy(tvwAssembly);
    outside->addWidget(tvwAssembly, 1);
    auto* lblInvalidDrag = screen::named(new QLabel(this), QStringLiteral("lblInvalidDrag"));
    lblInvalidDrag->setPixmap(
        style()->standardPixmap(QStyle::SP_MessageBoxCritical).scaled(24, 24));
    lblInvalidDrag->hide();
    tvwAssembly->setInvalidCursor(QCursor(lblInvalidDrag->pixmap(Qt::ReturnByValue)));

    screen::ButtonBar bar(this, outside);
    cmdCut = bar.button(QStringLiteral("cmdCut"), QStringLiteral("Cu&t"));
    cmdCut->setToolTip(QStringLiteral("Takes the selected number up, to be pasted (Ctrl+X)"));
    cmdPaste = bar.button(QStringLiteral("cmdPaste"), QStringLiteral("&Paste"));
    cmdPaste->setToolTip(QStringLiteral("Hangs it under the selected number (Ctrl+V)"));
    cmdPaste->setEnabled(false);
    bar.stretch();
    QPushButton* cmdClose = bar.button(QStringLiteral("cmdClose"), QStringLiteral("&Close"));
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
    on(tvwAssembly->dropped, &frmAssemblyInfo::hang);
    on(tvwAssembly->opened, &frmAssemblyInfo::goTo);
    on(tvwAssembly->cutChanged, [this] { cmdPaste->setEnabled(tvwAssembly->hasCut()); });
    tvwAssembly->mayDrop = [this](qint64 number, qint64 under) {
        return m_assembly.mayHang(number, under);
    };
    resize(560, 600);
}

void frmAssemblyInfo::showTree(qint64 custId, const QString& order, qint64 number,
                               const QString& mode) {
    m_kind = &assemblyKind(mode);
    setWindowTitle(m_kind->mode + QStringLiteral(" Assembly Information"));
    lblPoOrRfq->setText(m_kind->orderLabel);
    cboPoOrRfq->setAccessibleName(m_kind->orderLabel);
    lblDescription->setText(m_kind->mode + QStringLiteral(" Number  (Part Number)"));
    cboCustomer->clearRows();
    jet::Recordset customers = core::MainDatabase().openRecordset(
        QStringLiteral("Select * from Customer order by Company"), jet::RecordsetType::Snapshot);
    for (; !customers.eof(); customers.moveNext())
        cboCustomer->addRow(customers.text(u"Company"), customers[u"CustID"].toLong());
    if (!cboCustomer->chooseNumber(custId))
        cboCustomer->clear();
    fillOrders();
    if (!order.trimmed().isEmpty())
        cboPoOrRfq->setText(order);
    fillTree();
    tvwAssembly->selectNumber(number);
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
        text += QStringLiteral(", ") + m_kind->orderWord + cboPoOrRfq->text();
    return text;
}

void frmAssemblyInfo::fillTree() {
    const screen::BusyPointer busy;
    tvwAssembly->clearNodes();
    m_assembly = Assembly::read(core::MainDatabase(), *m_kind, cboCustomer->itemNumber(),
                                cboPoOrRfq->currentIndex() > 0 ? cboPoOrRfq->text() : QString());
    if (m_assembly.isEmpty()) {
        MsgBox(QStringLiteral("Cannot find any ") + m_kind->table +
                   QStringLiteral(" records for ") + selection(),
               Buttons::Ok, Icon::Information);
        return;
    }
    tvwAssembly->showNodes(m_assembly.nodes());
    tvwAssembly->selectNumber(0);
    if (!m_assembly.hasRoot()) {
        MsgBox(QStringLiteral("No root found for the Assembly Tree for ") + selection(),
               Buttons::Ok, Icon::Exclamation);
    }
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
        tvwAssembly->moveNumber(number, under);
        return;
    }
    const auto subject = [this](qint64 which) {
        return m_kind->mode + QStringLiteral(" No. ") + QString::number(which);
    };
    if (result == Hanging::Loop) {
        MsgBox(subject(under) + QStringLiteral(" is already a part of ") + subject(number) +
                   QStringLiteral("."),
               Buttons::Ok, Icon::Exclamation);
    } else {
        MsgBox(subject(result == Hanging::Gone ? number : under) +
                   QStringLiteral(" does not exist!"),
               Buttons::Ok, Icon::Exclamation);
    }
    fillTree();
    tvwAssembly->selectNumber(number);
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
