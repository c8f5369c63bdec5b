#include "timemgmt/frmShifts.h"

#include "core/MirsaMain.h"
#include "core/RecordScreen.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "timemgmt/ShiftDialogs.h"
#include "timemgmt/ShiftRules.h"

#include <QVBoxLayout>

namespace timemgmt {

using controls::GridColumn;

frmShifts::frmShifts() : Form(QString::fromLatin1(formName), QStringLiteral("Work Shifts")) {
    auto* outside = new QVBoxLayout(this);
    lvwItems = screen::named(new controls::ListView(this), QStringLiteral("lvwItems"),
                             QStringLiteral("Work shifts"));
    lvwItems->setColumns({{QStringLiteral("No."), 7, GridColumn::Kind::Number},
                          {QStringLiteral("Description"), 40}});
    outside->addWidget(lvwItems, 1);
    screen::ButtonBar bar(this, outside);
    QPushButton* cmdNew = bar.button(QStringLiteral("cmdNew"), QStringLiteral("&New"));
    QPushButton* cmdEdit = bar.button(QStringLiteral("cmdEdit"), QStringLiteral("&Edit"));
    QPushButton* cmdDelete = bar.button(QStringLiteral("cmdDelete"), QStringLiteral("&Delete"));
    QPushButton* cmdShiftAuto =
        bar.button(QStringLiteral("cmdShiftAuto"), QStringLiteral("&AutoMirsa Timer"));
    bar.stretch();
    QPushButton* cmdClose = bar.button(QStringLiteral("cmdClose"), QStringLiteral("&Close"));
    setCancelButton(cmdClose);
    on(cmdNew, &frmShifts::cmdNew_Click);
    on(cmdEdit, &frmShifts::cmdEdit_Click);
    on(cmdDelete, &frmShifts::cmdDelete_Click);
    on(cmdShiftAuto, &frmShifts::cmdShiftAuto_Click);
    on(cmdClose, [this] { unload(); });
    on(lvwItems->rowDoubleClicked, [this](int) { cmdEdit_Click(); });
    resize(640, 460);
}

void frmShifts::Form_Load() {
    showItems();
}

void frmShifts::showItems() {
    const int selected = std::max(0, lvwItems->selectedRow());
    lvwItems->clearRows();
    jet::Recordset set = core::MainDatabase().openRecordset(
        QStringLiteral("SELECT * FROM shifts ORDER BY id"), jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        const QString id = set.text(u"ID");
        lvwItems->addRow(QStringLiteral("I") + id, {id, set.text(u"Description")});
    }
    lvwItems->selectPlace(selected);
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
        showItems();
}

void frmShifts::cmdEdit_Click() {
    const int row = lvwItems->selectedRow();
    if (row < 0 || !CanChangeShifts() || IsShiftSignedIn(lvwItems->keyNumber(row)))
        return;
    auto dialog = screen::Forms::dialog<ShiftDialog>(QStringLiteral("frmShiftsAddEdit"));
    if (dialog->ShowForm(QStringLiteral("Edit"), lvwItems->keyNumber(row)))
        showItems();
}

void frmShifts::cmdDelete_Click() {
    const int row = lvwItems->selectedRow();
    if (row < 0)
        return;
    const qint64 id = lvwItems->keyNumber(row);
    if (!CanChangeShifts() || IsShiftSignedIn(id))
        return;
    if (isShiftInUse(core::MainDatabase(), id)) {
        screen::MsgBox(QStringLiteral("This shift item has been referenced in the employee table. "
                                      "It cannot be deleted!"),
                       screen::Buttons::Ok, screen::Icon::Information, QStringLiteral("Delete"));
        return;
    }
    if (screen::MsgBox(QStringLiteral("Delete this item?"), screen::Buttons::YesNo,
                       screen::Icon::Question, QStringLiteral("Delete")) != screen::Answer::Yes)
        return;
    deleteShift(core::MainDatabase(), id);
    showItems();
    core::refreshNeighbours({QStringLiteral("frmEmployee")}, QStringLiteral("Shifts"));
}

void frmShifts::cmdShiftAuto_Click() {
    if (!CanChangeShifts())
        return;
    // Without a shift there is nothing to time.
    const int row = lvwItems->selectedRow();
    if (row < 0)
        return;
    const qint64 id = lvwItems->keyNumber(row);
    const bool readOnly = IsShiftSignedIn(id);
    auto dialog = screen::Forms::dialog<ShiftTimerDialog>(QStringLiteral("frmShiftsTimer"));
    dialog->ShowForm(id, readOnly);
}

} // namespace timemgmt
