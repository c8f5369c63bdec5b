#include "inventory/frmSpareMove.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"

#include <QVBoxLayout>

namespace inventory {

frmSpareMove::frmSpareMove() : Form(QString::fromLatin1(formName), u"Move Spare Parts"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    dbcLocation = fields.dataCombo(
        u"dbcLocation"_s, u"New &Location:"_s,
        {.limit = core::MainDatabase().width(u"SpareParts", u"SLocation"), .characters = 30});
    outside->addStretch();
    on(addOkCancel(outside), &frmSpareMove::cmdOK_Click);
}

bool frmSpareMove::move(qint64 custId, const std::vector<qint64>& indexes) {
    m_indexes = indexes;
    dbcLocation->setRows(
        core::MainDatabase().openRecordset(spareLocations(custId), jet::RecordsetType::Snapshot),
        u"slocation"_s, u"slocation"_s);
    showModal();
    return m_moved;
}

void frmSpareMove::cmdOK_Click() {
    const QString location = dbcLocation->text().trimmed();
    if (location.isEmpty()) {
        complain(u"You must enter a location!"_s, dbcLocation);
        return;
    }
    if (screen::MsgBox(u"Are you sure you want to move the selected Record(s)?"_s,
                       screen::Buttons::YesNo, screen::Icon::Question,
                       u"Moving Records!"_s) != screen::Answer::Yes)
        return;
    moveSpares(core::MainDatabase(), m_indexes, location);
    m_moved = true;
    hideModal();
}

} // namespace inventory
