#include "timemgmt/frmShifts.h"

#include "core/MirsaMain.h"
#include "core/RecordScreen.h"
#include "platform/screen/MsgBox.h"
#include "timemgmt/ShiftDialogs.h"
#include "timemgmt/ShiftRules.h"

namespace timemgmt {

using controls::GridColumn;

frmShifts::frmShifts()
    : ListForm(QString::fromLatin1(formName), QStringLiteral("Work Shifts"),
               QStringLiteral("lvwItems"), QStringLiteral("Work shifts"),
               {{QStringLiteral("No."), 7, GridColumn::Kind::Number},
                {QStringLiteral("Description"), 40}}) {
    on(addButton(QStringLiteral("cmdShiftAuto"), QStringLiteral("&AutoMirsa Timer")),
       &frmShifts::cmdShiftAuto_Click);
}

void frmShifts::fill(controls::ListView& list) {
    jet::Recordset set = core::MainDatabase().openRecordset(
        QStringLiteral("SELECT * FROM shifts ORDER BY id"), jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        const QString id = set.text(u"ID");
        list.addRow(QStringLiteral("I") + id, {id, set.text(u"Description")});
    }
}

bool frmShifts::CanChangeShifts() {
    if (canChangeShifts(core::programFile(QStringLiteral("AutoMirsaOn.txt"))))
        return true;
    screen::MsgBox(QStringLiteral("You may not change any Shift records while the AutoMirsa "
                                  "application is running."),
                   screen::Buttons::Ok, screen::Icon::Information, windowTitle());
    return false;
}

bool frmShifts::IsShiftSignedIn(qint64 shiftId) {
    if (!isShiftSignedIn(core::MainDatabase(), shiftId))
        return false;
    screen::MsgBox(QStringLiteral("An employee belonging to this shift is currently signed in. "
                                  "Please sign out everyone in the shift before changing this "
                                  "record."),
                   screen::Buttons::Ok, screen::Icon::Information);
    return true;
}

void frmShifts::cmdNew_Click() {
    if (!CanChangeShifts())
        return;
    auto dialog = screen::Forms::dialog<ShiftDialog>(QStringLiteral("frmShiftsAddEdit"));
    if (dialog->ShowForm(QStringLiteral("New"), 0))
        reload();
}

void frmShifts::cmdEdit_Click() {
    const qint64 id = selectedNumber();
    if (id == 0 || !CanChangeShifts() || IsShiftSignedIn(id))
        return;
    auto dialog = screen::Forms::dialog<ShiftDialog>(QStringLiteral("frmShiftsAddEdit"));
    if (dialog->ShowForm(QStringLiteral("Edit"), id))
        reload();
}

void frmShifts::cmdDelete_Click() {
    const qint64 id = selectedNumber();
    if (id == 0 || !CanChangeShifts() || IsShiftSignedIn(id))
        return;
    if (isShiftInUse(core::MainDatabase(), id)) {
        screen::MsgBox(QStringLiteral("This shift item has been referenced in the employee table. "
                                      "It cannot be deleted!"),
                       screen::Buttons::Ok, screen::Icon::Information, QStringLiteral("Delete"));
        return;
    }
    if (!askDelete())
        return;
    deleteShift(core::MainDatabase(), id);
    reload();
    core::refreshNeighbours({QStringLiteral("frmEmployee")}, QStringLiteral("Shifts"));
}

void frmShifts::cmdShiftAuto_Click() {
    if (!CanChangeShifts())
        return;
    // Without a shift there is nothing to time.
    const qint64 id = selectedNumber();
    if (id == 0)
        return;
    const bool readOnly = IsShiftSignedIn(id);
    auto dialog = screen::Forms::dialog<ShiftTimerDialog>(QStringLiteral("frmShiftsTimer"));
    dialog->ShowForm(id, readOnly);
}

} // namespace timemgmt
