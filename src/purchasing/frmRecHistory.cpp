#include "purchasing/frmRecHistory.h"

#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Format.h"
#include "purchasing/Receiving.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace purchasing {

using Kind = controls::GridColumn::Kind;
using screen::Answer;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

frmRecHistory::frmRecHistory() : Form(QString::fromLatin1(formName), u"Received History"_s) {
    auto* outside = new QVBoxLayout(this);
    sprRec = screen::named(new controls::Grid(this), u"sprRec"_s, u"Receipts"_s);
    sprRec->setColumns({{u"Part Number"_s, 16},
                        {.title = u"Description"_s, .characters = 28, .stretches = true},
                        {u"Qty Req."_s, 9, Kind::Number},
                        {u"Units"_s, 7},
                        {u"Qty Recvd"_s, 10, Kind::Number},
                        {u"Date"_s, 11},
                        {u"Emp. #"_s, 7, Kind::Number}});
    outside->addWidget(sprRec, 1);
    screen::ButtonBar bar(this, outside);
    QPushButton* cmdNew = bar.button(u"cmdNew"_s, u"&New"_s);
    QPushButton* cmdDelete = bar.button(u"cmdDelete"_s, u"&Delete"_s);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setCancelButton(cmdClose);
    on(cmdNew, &frmRecHistory::cmdNew_Click);
    on(cmdDelete, &frmRecHistory::cmdDelete_Click);
    on(cmdClose, [this] { hideModal(); });
    resize(820, 420);
}

void frmRecHistory::showHistory(qint64 poNumber, const QString& title) {
    m_po = poNumber;
    setWindowTitle(u"Received History for PO Number "_s + QString::number(poNumber) + u", "_s +
                   title);
    fill();
    sprRec->setFocus();
    showModal();
}

void frmRecHistory::fill() {
    jet::Recordset set = core::MainDatabase().openRecordset(
        u"SELECT POReceived.ID, QtyRecvd, [Date], EmpID, PartNumber, Description, Quantity, "
        "UnitOfMeasure FROM POReceived LEFT JOIN POItem ON POReceived.ItemID = POItem.ID WHERE "
        "POReceived.PONumber = "_s +
            QString::number(m_po) + u" ORDER BY POReceived.ID"_s,
        jet::RecordsetType::Snapshot);
    std::vector<QStringList> rows;
    std::vector<qint64> keys;
    for (; !set.eof(); set.moveNext()) {
        keys.push_back(set[u"ID"].toLong());
        rows.push_back({set.text(u"PartNumber"), set.text(u"Description"), set.text(u"Quantity"),
                        set.text(u"UnitOfMeasure"), set.text(u"QtyRecvd"), set.text(u"Date"),
                        set.text(u"EmpID")});
    }
    const int active = sprRec->activeRow();
    sprRec->setRows(std::move(rows));
    for (int row = 0; row < sprRec->rowCount(); ++row)
        sprRec->setRowKey(row, keys[static_cast<std::size_t>(row)]);
    if (sprRec->rowCount() > 0)
        sprRec->setActiveRow(std::clamp(active, 0, sprRec->rowCount() - 1));
}

void frmRecHistory::cmdNew_Click() {
    if (!screen::Forms::dialog<ReceiveDialog>(u"frmPOaddRec"_s)->receiveInto(m_po))
        return;
    ActiveDetect();
    fill();
}

void frmRecHistory::cmdDelete_Click() {
    const qint64 receipt = sprRec->rowKey(sprRec->activeRow());
    if (receipt == 0) {
        MsgBox(u"Please select a record."_s, Buttons::Ok, Icon::Exclamation, u"System Message"_s);
        return;
    }
    if (MsgBox(u"Are you sure you want to delete the selected history item?"_s, Buttons::YesNo,
               Icon::Question, u"Delete"_s, Answer::No) != Answer::Yes)
        return;
    if (!deleteReceipt(core::MainDatabase(), receipt)) {
        MsgBox(u"This record has associated inventory records and cannot be deleted."_s,
               Buttons::Ok, Icon::Exclamation, u"System Message"_s);
        return;
    }
    fill();
    ActiveDetect();
}

void frmRecHistory::ActiveDetect() const {
    jet::Database& database = core::MainDatabase();
    const bool active =
        database.lookup(u"SELECT Active FROM PO WHERE PONumber = "_s + QString::number(m_po))
            .toBool();
    const ActiveChange change = detectActive(database, m_po, active);
    if (change != ActiveChange::None)
        MsgBox(activeNotice(change), Buttons::Ok, Icon::Information, u"Notice"_s);
    core::refreshNeighbours({u"frmPO"_s}, u"PO"_s);
}

} // namespace purchasing
