#include "timemgmt/frmShiftsTimer.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Literals.h"
#include "timemgmt/ShiftRules.h"

#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include <utility>

namespace timemgmt {

frmShiftsTimer::frmShiftsTimer() : Form(QString::fromLatin1(formName), u"Auto Timer:"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* head = new QWidget(this);
    outside->addWidget(head);
    screen::Fields range(head);
    lblEarliestSI = range.shown(u"lblEarliestSI"_s, u"Earliest Sign-In Time:"_s);
    range.nextRow();
    lblLatestSO = range.shown(u"lblLatestSO"_s, u"Latest Sign-In Time:"_s);
    auto* both = new QHBoxLayout;
    outside->addLayout(both);
    fpRunSuspend = makeTimes(screen::frame(this, both, u"fraSuspend"_s, u"Auto Suspend Times"_s),
                             u"fpRunSuspend"_s, u"Auto suspend time"_s);
    fpRunSignout = makeTimes(screen::frame(this, both, u"fraSignout"_s, u"Auto Sign-Out Times"_s),
                             u"fpRunSignout"_s, u"Auto sign-out time"_s);
    outside->addStretch();

    on(addOkCancel(outside), &frmShiftsTimer::cmdOK_Click);
}

frmShiftsTimer::Times frmShiftsTimer::makeTimes(QWidget* parent, const QString& name,
                                                const QString& caption) {
    screen::Fields fields(parent);
    Times times{};
    for (size_t i = 0; i < times.size(); ++i) {
        auto* field = new controls::TimeField(parent);
        field->setAccessibleName(caption + u" %1"_s.arg(i + 1));
        fields.add(field, name + u"(%1)"_s.arg(i));
        fields.nextRow();
        on(field->changed, [this] { m_changed = m_changed || !m_loading; });
        on(field->entered, [this] { m_emptied = nullptr; });
        on(field->left, [this, field] {
            if (isTimerTime(field->text()))
                return;
            m_emptied = field->isValid() ? nullptr : field;
            field->clear();
        });
        times[i] = field;
    }
    return times;
}

void frmShiftsTimer::ShowForm(qint64 shiftId, bool readOnly) {
    m_shiftId = shiftId;
    const QString id = QString::number(shiftId);
    const jet::Recordset shift = core::MainDatabase().openRecordset(
        u"SELECT * FROM shifts WHERE id="_s + id, jet::RecordsetType::Snapshot);
    if (shift.isEmpty()) {
        sayNotFound();
        return;
    }
    const auto earliest = shift[u"EarliestSignIn"].toDateTime();
    const auto latest = shift[u"LatestSignOut"].toDateTime();
    if (!earliest || !latest) {
        screen::MsgBox(u"Please enter the Shift's Earliest Sign-In and Latest "
                       "Sign-Out Times first!"_s,
                       screen::Buttons::Ok, screen::Icon::Exclamation);
        return;
    }
    setWindowTitle(u"Auto Timer: "_s + shift.text(u"Description"));
    m_earliest = earliest->time();
    m_latest = latest->time();
    controls::TimeField shown;
    shown.setTime(m_earliest);
    lblEarliestSI->setText(shown.text());
    shown.setTime(m_latest);
    lblLatestSO->setText(shown.text());
    fill(shiftId);
    for (const Times& times : {fpRunSuspend, fpRunSignout}) {
        for (controls::TimeField* field : times)
            field->setEnabled(!readOnly);
    }
    showModal();
}

void frmShiftsTimer::sayNotFound() const {
    screen::MsgBox(QString::number(m_shiftId) +
                       u" record id not found! Shifts table may need to be fixed!"_s,
                   screen::Buttons::Ok, screen::Icon::Critical);
}

void frmShiftsTimer::fill(qint64 shiftId) {
    m_loading = true;
    jet::Recordset rows = core::MainDatabase().openRecordset(
        u"SELECT * FROM shiftstimer WHERE shiftsid="_s + QString::number(shiftId),
        jet::RecordsetType::Snapshot);
    for (; !rows.eof(); rows.moveNext()) {
        const bool suspend = rows[u"RunType"] == jet::Value(u"Suspend");
        for (controls::TimeField* field : suspend ? fpRunSuspend : fpRunSignout) {
            if (field->text().isEmpty()) {
                field->setText(rows.text(u"RunTime"));
                break;
            }
        }
    }
    m_loading = false;
}

QStringList frmShiftsTimer::texts(const Times& fields) {
    QStringList all;
    for (const controls::TimeField* field : fields)
        all << field->text();
    return all;
}

QStringList frmShiftsTimer::series(const Times& fields) const {
    const QString form = u"HH:mm:ss"_s;
    QStringList times{m_earliest.toString(form)};
    for (const controls::TimeField* field : fields) {
        if (const auto time = field->time())
            times << time->toString(form);
    }
    return times << m_latest.toString(form);
}

bool frmShiftsTimer::validate() {
    if (texts(fpRunSuspend).join(QString()).isEmpty() &&
        texts(fpRunSignout).join(QString()).isEmpty()) {
        complain(u"Please enter at least one Suspend or one Signout time!"_s, fpRunSuspend[0]);
        return false;
    }
    if (!IsValidTimeSeries(series(fpRunSuspend))) {
        complain(u"You have entered an invalid Auto Suspend Time Series. Please check."_s,
                 fpRunSuspend[0]);
        return false;
    }
    if (!IsValidTimeSeries(series(fpRunSignout))) {
        complain(u"You have entered an invalid Auto Sign-Out Time Series. Please check."_s,
                 fpRunSignout[0]);
        return false;
    }
    return true;
}

void frmShiftsTimer::cmdOK_Click() {
    // Emptied by leaving it for this button: nobody has seen it yet.
    if (controls::TimeField* emptied = std::exchange(m_emptied, nullptr)) {
        complain(u"This isn't a time."_s, emptied);
        return;
    }
    if (m_changed) {
        if (!validate())
            return;
        if (!saveTimer(core::MainDatabase(), m_shiftId, texts(fpRunSuspend), texts(fpRunSignout))) {
            sayNotFound();
            return;
        }
    }
    hideModal();
}

} // namespace timemgmt
