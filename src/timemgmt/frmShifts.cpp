#include "timemgmt/frmShifts.h"

#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Literals.h"
#include "timemgmt/ShiftDialogs.h"
#include "timemgmt/ShiftRules.h"

namespace timemgmt {

using controls::GridColumn;

frmShifts::frmShifts()
    : ListForm(QString::fromLatin1(formName), u"Work Shifts"_s, u"lvwItems"_s, u"Work shifts"_s,
               {{u"No."_s, 7, GridColumn::Kind::Number}, {u"Description"_s, 40}}) {
    on(addButton(u"cmdShiftAuto"_s, u"&AutoMirsa Timer"_s), &frmShifts::cmdShiftAuto_Click);
}

std::vector<controls::ListRow> frmShifts::rows() {
    jet::Recordset set = core::MainDatabase().openRecordset(u"SELECT * FROM shifts ORDER BY id"_s,
                                                            jet::RecordsetType::Snapshot);
    std::vector<controls::ListRow> found;
    for (; !set.eof(); set.moveNext()) {
        const QString id = set.text(u"ID");
        found.push_back({u"I"_s + id, {id, set.text(u"Description")}});
    }
    return found;
}

bool frmShifts::CanChangeShifts() {
    if (canChangeShifts(core::programFile(u"AutoMirsaOn.txt"_s)))
        return true;
    screen::MsgBox(u"You may not change any Shift records while the AutoMirsa "
                   "application is running."_s,
                   screen::Buttons::Ok, screen::Icon::Information, windowTitle());
    return false;
}

bool frmShifts::IsShiftSignedIn(qint64 shiftId) {
    if (!isShiftSignedIn(core::MainDatabase(), shiftId))
        return false;
    screen::MsgBox(u"An employee belonging to this shift is currently signed in. "
                   "Please sign out everyone in the shift before changing this "
                   "record."_s,
                   screen::Buttons::Ok, screen::Icon::Information);
    return true;
}

void frmShifts::cmdNew_Click() {
    if (!CanChangeShifts())
        return;
    auto dialog = screen::Forms::dialog<ShiftDialog>(u"frmShiftsAddEdit"_s);
    if (dialog->ShowForm(u"New"_s, 0))
        reload();
}

void frmShifts::cmdEdit_Click() {
    const qint64 id = selectedNumber();
    if (id == 0 || !CanChangeShifts() || IsShiftSignedIn(id))
        return;
    auto dialog = screen::Forms::dialog<ShiftDialog>(u"frmShiftsAddEdit"_s);
    if (dialog->ShowForm(u"Edit"_s, id))
        reload();
}

void frmShifts::cmdDelete_Click() {
    const qint64 id = selectedNumber();
    if (id == 0 || !CanChangeShifts() || IsShiftSignedIn(id))
        return;
    if (isShiftInUse(core::MainDatabase(), id)) {
        screen::MsgBox(u"This shift item has been referenced in the employee table. "
                       "It cannot be deleted!"_s,
                       screen::Buttons::Ok, screen::Icon::Information, u"Delete"_s);
        return;
    }
    if (!askDelete())
        return;
    deleteShift(core::MainDatabase(), id);
    reload();
    core::refreshNeighbours({u"frmEmployee"_s}, u"Shifts"_s);
}

void frmShifts::cmdShiftAuto_Click() {
    if (!CanChangeShifts())
        return;
    // Without a shift there is nothing to time.
    const qint64 id = selectedNumber();
    if (id == 0)
        return;
    const bool readOnly = IsShiftSignedIn(id);
    auto dialog = screen::Forms::dialog<ShiftTimerDialog>(u"frmShiftsTimer"_s);
    dialog->ShowForm(id, readOnly);
}

} // namespace timemgmt
