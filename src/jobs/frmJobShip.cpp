#include "jobs/frmJobShip.h"

#include "core/MirsaMain.h"
#include "core/RecordScreen.h"
#include "jobs/JobDialogs.h"
#include "platform/values/Format.h"

namespace jobs {

using controls::GridColumn;

frmJobShip::frmJobShip()
    : ListForm(QString::fromLatin1(formName), QStringLiteral("Shipping History"),
               QStringLiteral("lvwShip"), QStringLiteral("Shipping history"),
               {{QStringLiteral("Shipped Date"), 30},
                {QStringLiteral("Quantity"), 10, GridColumn::Kind::Number},
                {QStringLiteral("Employee"), 26}},
               Reselect::Row) {}

void frmJobShip::Form_Load() {
    if (const auto* module = screen::Forms::find<core::RecordScreen>(QStringLiteral("frmJob")))
        m_jobNo = module->currentKey();
    setWindowTitle(QStringLiteral("Shipping History for Job No. ") + QString::number(m_jobNo));
    control(QStringLiteral("cmdNew"))->setEnabled(m_jobNo != 0);
    ListForm::Form_Load();
}

void frmJobShip::fill(controls::ListView& list) {
    jet::Recordset set = core::MainDatabase().openRecordset(
        QStringLiteral("SELECT jobship.*, employee.lastname, employee.firstname FROM jobship"
                       " INNER JOIN employee ON jobship.shippedbyempid=employee.empid"
                       " WHERE Jobno=") +
            QString::number(m_jobNo) + QStringLiteral(" ORDER BY shippeddate DESC"),
        jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        const auto date = set[u"ShippedDate"].toDate();
        list.addRow(QStringLiteral("S") + set.text(u"JobShipID"),
                    {date ? values::format(*date, u"Long Date") : QString(),
                     values::format(set[u"Quantity"].toDouble(), u"#####0"),
                     set.text(u"lastname") + QStringLiteral(", ") + set.text(u"firstname")});
    }
    for (const char16_t* button : {u"cmdEdit", u"cmdDelete"})
        control(QString::fromUtf16(button))->setEnabled(list.rowCount() > 0);
}

void frmJobShip::showDialog(const QString& mode, qint64 jobShipId) {
    screen::Forms::dialog<ShippingDialog>(QStringLiteral("frmJobshipAddEdit"))
        ->ShowForm(mode, m_jobNo, jobShipId);
    // Also where nothing was saved: the dialog may just have told that a consignment is gone.
    reload();
}

void frmJobShip::cmdNew_Click() {
    if (m_jobNo != 0)
        showDialog(QStringLiteral("New"), 0);
}

void frmJobShip::cmdEdit_Click() {
    if (const qint64 jobShipId = selectedNumber())
        showDialog(QStringLiteral("Edit"), jobShipId);
}

void frmJobShip::cmdDelete_Click() {
    const qint64 jobShipId = selectedNumber();
    if (jobShipId == 0 || !askDelete())
        return;
    core::MainDatabase().execute(QStringLiteral("DELETE FROM jobship WHERE jobshipid=") +
                                 QString::number(jobShipId));
    reload();
}

} // namespace jobs
