#include "timemgmt/frmShiftsAddEdit.h"

#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"
#include "timemgmt/ShiftRules.h"

#include <QVBoxLayout>

namespace timemgmt {

frmShiftsAddEdit::frmShiftsAddEdit() : AddEditForm(QString::fromLatin1(formName), u"New Shift"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* body = new QWidget(this);
    outside->addWidget(body);
    screen::Fields fields(body);
    txtDescription = fields.text(u"txtDescription"_s, u"D&escription"_s,
                                 {.limit = core::MainDatabase().width(u"Shifts", u"Description"),
                                  .filter = values::keys::description(),
                                  .characters = 36});
    fields.nextRow();
    fpEarliestSI = new controls::TimeField(body);
    fields.add(fpEarliestSI, u"fpEarliestSI"_s, u"Earliest &Sign-In Time"_s);
    fields.nextRow();
    fpLatestSO = new controls::TimeField(body);
    fields.add(fpLatestSO, u"fpLatestSO"_s, u"&Latest Sign-In Time"_s);
    outside->addStretch();

    makeButtons(outside);
    on(fpEarliestSI->changed, &frmShiftsAddEdit::rangeChanged);
    on(fpLatestSO->changed, &frmShiftsAddEdit::rangeChanged);
}

bool frmShiftsAddEdit::ShowForm(const QString& mode, qint64 shiftId) {
    if (mode == u"Edit") {
        m_shiftId = shiftId;
        setWindowTitle(u"Edit Shift"_s);
        setAdding(false);
        jet::Database& database = core::MainDatabase();
        const QString id = QString::number(shiftId);
        const jet::Recordset shift = database.openRecordset(
            u"SELECT * FROM shifts WHERE id="_s + id, jet::RecordsetType::Snapshot);
        if (shift.isEmpty()) {
            sayNotFound();
            return true;
        }
        m_loading = true;
        txtDescription->setText(shift.text(u"Description"));
        fpEarliestSI->setValue(shift[u"EarliestSignIn"]);
        fpLatestSO->setValue(shift[u"LatestSignOut"]);
        m_loading = false;
        m_hasTimer = database.hasRows(u"SELECT * FROM shiftstimer WHERE shiftsid="_s + id);
    }
    txtDescription->setFocus();
    return run() || m_gone;
}

void frmShiftsAddEdit::sayNotFound() const {
    screen::MsgBox(QString::number(m_shiftId) +
                       u" item no. not found! Shifts table may need to be fixed!"_s,
                   screen::Buttons::Ok, screen::Icon::Critical);
}

void frmShiftsAddEdit::rangeChanged() {
    if (m_loading || !m_hasTimer)
        return;
    m_resetTimer = true;
    screen::MsgBox(u"Note that the AutoMirsa Suspend and Sign-Out Times for this "
                   "Shift will be reset. You will have to enter the new times based "
                   "on the new Earliest and Latest Sign-In Time Range."_s,
                   screen::Buttons::Ok, screen::Icon::Information);
}

bool frmShiftsAddEdit::validate() {
    const QString description = txtDescription->text();
    if (description.trimmed().isEmpty()) {
        complain(u"Description may not be blank!"_s, txtDescription);
        return false;
    }
    QString same =
        u"SELECT * FROM shifts WHERE description='"_s + values::quoted(description) + u"'"_s;
    if (m_shiftId != 0)
        same += u" AND id<>"_s + QString::number(m_shiftId);
    if (core::MainDatabase().hasRows(same)) {
        complain(description + u" already exists!"_s, txtDescription);
        return false;
    }
    for (controls::TimeField* field : {fpEarliestSI, fpLatestSO}) {
        if (!field->isValid()) {
            complain(u"This isn't a time."_s, field);
            return false;
        }
    }
    if (fpEarliestSI->text() == fpLatestSO->text()) {
        complain(u"Earliest Sign-In Time may not be equal to Latest Sign-Out Time!"_s,
                 fpEarliestSI);
        return false;
    }
    return true;
}

bool frmShiftsAddEdit::save() {
    if (!validate())
        return false;
    const Shift shift{txtDescription->text(), fpEarliestSI->text(), fpLatestSO->text()};
    if (m_shiftId == 0) {
        addShift(core::MainDatabase(), shift);
    } else if (!changeShift(core::MainDatabase(), m_shiftId, shift, m_resetTimer)) {
        m_gone = true;
        sayNotFound();
        return false;
    }
    core::refreshNeighbours({u"frmEmployee"_s}, u"Shifts"_s);
    return true;
}

void frmShiftsAddEdit::startNext() {
    txtDescription->setText(QString());
    txtDescription->setFocus();
}

} // namespace timemgmt
