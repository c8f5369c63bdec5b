#include "jobs/frmJobShip.h"

#include "core/MirsaMain.h"
#include "core/RecordScreen.h"
#include "jobs/JobDialogs.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Format.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace jobs {

using controls::GridColumn;

frmJobShip::frmJobShip() : Form(QString::fromLatin1(formName), QStringLiteral("Shipping History")) {
    auto* outside = new QVBoxLayout(this);
    lvwShip = screen::named(new controls::ListView(this), QStringLiteral("lvwShip"),
                            QStringLiteral("Shipping history"));
    lvwShip->setColumns({{QStringLiteral("Shipped Date"), 30},
                         {QStringLiteral("Quantity"), 10, GridColumn::Kind::Number},
                         {QStringLiteral("Employee"), 26}});
    outside->addWidget(lvwShip, 1);
    screen::ButtonBar bar(this, outside);
    cmdNew = bar.button(QStringLiteral("cmdNew"), QStringLiteral("&New"));
    cmdEdit = bar.button(QStringLiteral("cmdEdit"), QStringLiteral("&Edit"));
    cmdDelete = bar.button(QStringLiteral("cmdDelete"), QStringLiteral("&Delete"));
    bar.stretch();
    QPushButton* cmdClose = bar.button(QStringLiteral("cmdClose"), QStringLiteral("&Close"));
    setCancelButton(cmdClose);
    on(cmdNew, &frmJobShip::cmdNew_Click);
    on(cmdEdit, &frmJobShip::cmdEdit_Click);
    on(cmdDelete, &frmJobShip::cmdDelete_Click);
    on(cmdClose, [this] { unload(); });
    on(lvwShip->rowDoubleClicked, [this](int) { cmdEdit_Click(); });
    resize(660, 420);
}

void frmJobShip::Form_Load() {
    if (const auto* module = screen::Forms::find<core::RecordScreen>(QStringLiteral("frmJob")))
        m_jobNo = module->currentKey();
    setWindowTitle(QStringLiteral("Shipping History for Job No. ") + QString::number(m_jobNo));
    cmdNew->setEnabled(m_jobNo != 0);
    showShipments();
}

void frmJobShip::showShipments() {
    const int row = std::max(0, lvwShip->selectedRow());
    const QString key = lvwShip->selectedKey();
    lvwShip->clearRows();
    jet::Recordset set = core::MainDatabase().openRecordset(
        QStringLiteral("SELECT jobship.*, employee.lastname, employee.firstname FROM jobship"
                       " INNER JOIN employee ON jobship.shippedbyempid=employee.empid"
                       " WHERE Jobno=") +
            QString::number(m_jobNo) + QStringLiteral(" ORDER BY shippeddate DESC"),
        jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        const auto date = set[u"ShippedDate"].toDate();
        lvwShip->addRow(QStringLiteral("S") + set.text(u"JobShipID"),
                        {date ? values::format(*date, u"Long Date") : QString(),
                         values::format(set[u"Quantity"].toDouble(), u"#####0"),
                         set.text(u"lastname") + QStringLiteral(", ") + set.text(u"firstname")});
    }
    if (key.isEmpty() || !lvwShip->selectKey(key))
        lvwShip->selectPlace(row);
    cmdEdit->setEnabled(lvwShip->rowCount() > 0);
    cmdDelete->setEnabled(lvwShip->rowCount() > 0);
}

void frmJobShip::showDialog(const QString& mode, qint64 jobShipId) {
    screen::Forms::dialog<ShippingDialog>(QStringLiteral("frmJobshipAddEdit"))
        ->ShowForm(mode, m_jobNo, jobShipId);
    // Also where nothing was saved: the dialog may just have told that a consignment is gone.
    showShipments();
}

void frmJobShip::cmdNew_Click() {
    if (m_jobNo != 0)
        showDialog(QStringLiteral("New"), 0);
}

void frmJobShip::cmdEdit_Click() {
    const int row = lvwShip->selectedRow();
    if (row >= 0)
        showDialog(QStringLiteral("Edit"), lvwShip->keyNumber(row));
}

void frmJobShip::cmdDelete_Click() {
    const int row = lvwShip->selectedRow();
    if (row < 0)
        return;
    const qint64 jobShipId = lvwShip->keyNumber(row);
    if (screen::MsgBox(QStringLiteral("Delete this item?"), screen::Buttons::YesNo,
                       screen::Icon::Question, QStringLiteral("Delete")) != screen::Answer::Yes)
        return;
    core::MainDatabase().execute(QStringLiteral("DELETE FROM jobship WHERE jobshipid=") +
                                 QString::number(jobShipId));
    showShipments();
}

} // namespace jobs
