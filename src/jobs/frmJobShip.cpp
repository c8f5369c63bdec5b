#include "jobs/frmJobShip.h"

#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "jobs/JobDialogs.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

namespace jobs {

using controls::GridColumn;

frmJobShip::frmJobShip()
    : ListForm(QString::fromLatin1(formName), u"Shipping History"_s, u"lvwShip"_s,
               u"Shipping history"_s,
               {{u"Shipped Date"_s, 30},
                {u"Quantity"_s, 10, GridColumn::Kind::Number},
                {u"Employee"_s, 26}},
               Reselect::Row) {}

void frmJobShip::Form_Load() {
    if (const auto* module = screen::Forms::find<core::RecordScreen>(u"frmJob"_s))
        m_jobNo = module->currentKey();
    setWindowTitle(u"Shipping History for Job No. "_s + QString::number(m_jobNo));
    control(u"cmdNew"_s)->setEnabled(m_jobNo != 0);
    ListForm::Form_Load();
}

std::vector<controls::ListRow> frmJobShip::rows() {
    jet::Recordset set = core::MainDatabase().openRecordset(
        u"SELECT jobship.*, employee.lastname, employee.firstname FROM jobship"
        " INNER JOIN employee ON jobship.shippedbyempid=employee.empid"
        " WHERE Jobno="_s +
            QString::number(m_jobNo) + u" ORDER BY shippeddate DESC"_s,
        jet::RecordsetType::Snapshot);
    std::vector<controls::ListRow> found;
    for (; !set.eof(); set.moveNext()) {
        const auto date = set[u"ShippedDate"].toDate();
        found.push_back({u"S"_s + set.text(u"JobShipID"),
                         {date ? values::format(*date, u"Long Date") : QString(),
                          values::format(set[u"Quantity"].toDouble(), u"#####0"),
                          set.text(u"lastname") + u", "_s + set.text(u"firstname")}});
    }
    for (const char16_t* button : {u"cmdEdit", u"cmdDelete"})
        control(QString::fromUtf16(button))->setEnabled(!found.empty());
    return found;
}

void frmJobShip::showDialog(const QString& mode, qint64 jobShipId) {
    screen::Forms::dialog<ShippingDialog>(u"frmJobshipAddEdit"_s)
        ->ShowForm(mode, m_jobNo, jobShipId);
    // Also where nothing was saved: the dialog may just have told that a consignment is gone.
    reload();
}

void frmJobShip::cmdNew_Click() {
    if (m_jobNo != 0)
        showDialog(u"New"_s, 0);
}

void frmJobShip::cmdEdit_Click() {
    if (const qint64 jobShipId = selectedNumber())
        showDialog(u"Edit"_s, jobShipId);
}

void frmJobShip::cmdDelete_Click() {
    const qint64 jobShipId = selectedNumber();
    if (jobShipId == 0 || !askDelete())
        return;
    core::MainDatabase().execute(u"DELETE FROM jobship WHERE jobshipid="_s +
                                 QString::number(jobShipId));
    reload();
}

} // namespace jobs
