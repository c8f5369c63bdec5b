#include "timemgmt/frmShiftsTimer.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "timemgmt/ShiftRules.h"

#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include <utility>

namespace timemgmt {

frmShiftsTimer::frmShiftsTimer()
    : Form(QString::fromLatin1(formName), QStringLiteral("Auto Timer:")) {
    auto* outside = new QVBoxLayout(this);
    auto* head = new QWidget(this);
    outside->addWidget(head);
    screen::Fields range(head);
    lblEarliestSI =
        range.shown(QStringLiteral("lblEarliestSI"), QStringLiteral("Earliest Sign-In Time:"));
    range.nextRow();
    lblLatestSO =
        range.shown(QStringLiteral("lblLatestSO"), QStringLiteral("Latest Sign-In Time:"));
    auto* both = new QHBoxLayout;
    outside->addLayout(both);
    fpRunSuspend = makeTimes(screen::frame(this, both, QStringLiteral("fraSuspend"),
                                           QStringLiteral("Auto Suspend Times")),
                             QStringLiteral("fpRunSuspend"), QStringLiteral("Auto suspend time"));
    fpRunSignout = makeTimes(screen::frame(this, both, QStringLiteral("fraSignout"),
                                           QStringLiteral("Auto Sign-Out Times")),
                             QStringLiteral("fpRunSignout"), QStringLiteral("Auto sign-out time"));
    outside->addStretch();

    on(addOkCancel(outside), &frmShiftsTimer::cmdOK_Click);
}

frmShiftsTimer::Times frmShiftsTimer::makeTimes(QWidget* parent, const QString& name,
                                                const QString& caption) {
    screen::Fields fields(parent);
    Times times{};
    for (size_t i = 0; i < times.size(); ++i) {
        auto* field = new controls::TimeField(parent);
        field->setAccessibleName(caption + QStringLiteral(" %1").arg(i + 1));
        fields.add(field, name + QStringLiteral("(%1)").arg(i));
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
        QStringLiteral("SELECT * FROM shifts WHERE id=") + id, jet::RecordsetType::Snapshot);
    if (shift.isEmpty()) {
        sayNotFound();
        return;
    }
    const auto earliest = shift[u"EarliestSignIn"].toDateTime();
    const auto latest = shift[u"LatestSignOut"].toDateTime();
    if (!earliest || !latest) {
        screen::MsgBox(QStringLiteral("Please enter the Shift's Earliest Sign-In and Latest "
                                      "Sign-Out Times first!"),
                       screen::Buttons::Ok, screen::Icon::Exclamation);
        return;
    }
    setWindowTitle(QStringLiteral("Auto Timer: ") + shift.text(u"Description"));
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
                       QStringLiteral(" record id not found! Shifts table may need to be fixed!"),
                   screen::Buttons::Ok, screen::Icon::Critical);
}

void frmShiftsTimer::fill(qint64 shiftId) {
    m_loading = true;
    jet::Recordset rows = core::MainDatabase().openRecordset(
        QStringLiteral("SELECT * FROM shiftstimer WHERE shiftsid=") + QString::number(shiftId),
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
    const QString form = QStringLiteral("HH:mm:ss");
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
        complain(QStringLiteral("Please enter at least one Suspend or one Signout time!"),
                 fpRunSuspend[0]);
        return false;
    }
    if (!IsValidTimeSeries(series(fpRunSuspend))) {
        complain(
            QStringLiteral("You have entered an invalid Auto Suspend Time Series. Please check."),
            fpRunSuspend[0]);
        return false;
    }
    if (!IsValidTimeSeries(series(fpRunSignout))) {
        complain(
            QStringLiteral("You have entered an invalid Auto Sign-Out Time Series. Please check."),
            fpRunSignout[0]);
        return false;
    }
    return true;
}

void frmShiftsTimer::cmdOK_Click() {
    // Emptied by leaving it for this button: nobody has seen it yet.
    if (controls::TimeField* emptied = std::exchange(m_emptied, nullptr)) {
        complain(QStringLiteral("This isn't a time."), emptied);
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
