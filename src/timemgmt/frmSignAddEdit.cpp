#include "timemgmt/frmSignAddEdit.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/values/Clock.h"
#include "timemgmt/TimeChanged.h"
#include "timemgmt/Whose.h"

#include <QVBoxLayout>

namespace timemgmt {

namespace {

QString shown(const std::optional<QDateTime>& moment) {
    return moment ? jet::Value(*moment).toText() : u"(none)"_s;
}

} // namespace

frmSignAddEdit::frmSignAddEdit() : AddEditForm(QString::fromLatin1(formName), u"New Sign In"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    const auto time = [&](const QString& name, const QString& label) {
        auto* field = new controls::TimeField(this);
        fields.add(field, name, label);
        return field;
    };
    fpSigninDate = fields.date(u"fpSigninDate"_s, u"Sign &In Date"_s);
    fpSignoutDate = fields.date(u"fpSignoutDate"_s, u"Sign Out D&ate"_s);
    fields.nextColumn();
    fpSigninTime = time(u"fpSigninTime"_s, u"Sign In &Time"_s);
    fpSignoutTime = time(u"fpSignoutTime"_s, u"Sign Out Ti&me"_s);
    for (controls::DateField* field : {fpSigninDate, fpSignoutDate})
        field->setLatest(values::today());
    setTabOrder(fpSigninDate, fpSigninTime);
    setTabOrder(fpSigninTime, fpSignoutDate);
    setTabOrder(fpSignoutDate, fpSignoutTime);
    outside->addStretch();
    makeButtons(outside);
    on(fpSigninDate->left, &frmSignAddEdit::followSignIn);
}

bool frmSignAddEdit::ShowForm(const QString& mode, qint64 empId, qint64 signId) {
    m_empId = empId;
    if (mode == u"Edit") {
        m_signId = signId;
        setWindowTitle(titleForAttendance(core::MainDatabase(), u"Edit Sign In"_s, signId));
        setAdding(false);
        const auto row = signInRow(core::MainDatabase(), signId);
        if (!row) {
            screen::MsgBox(QString::number(signId) +
                               u" record id not found! Sign_in table may need to be fixed!"_s,
                           screen::Buttons::Ok, screen::Icon::Critical);
            return false;
        }
        m_loaded = *row;
        if (row->in) {
            fpSigninDate->setDate(row->in->date());
            fpSigninTime->setTime(row->in->time());
        }
        if (row->out) {
            fpSignoutDate->setDate(row->out->date());
            fpSignoutTime->setTime(row->out->time());
        }
    } else {
        setWindowTitle(titleForEmployee(core::MainDatabase(), windowTitle(), empId));
        const QDate yesterday = values::today().addDays(-1);
        fpSigninDate->setDate(yesterday);
        fpSignoutDate->setDate(yesterday);
    }
    m_signInDate = fpSigninDate->date();
    fpSigninDate->setFocus();
    return run();
}

void frmSignAddEdit::followSignIn() {
    const auto date = fpSigninDate->date();
    if (date && date != m_signInDate && fpSignoutDate->text().isEmpty())
        fpSignoutDate->setDate(date);
    m_signInDate = date;
}

SignInFields frmSignAddEdit::typed() const {
    return {fpSigninDate->date(), fpSigninTime->time(), fpSignoutDate->date(),
            fpSignoutTime->time()};
}

bool frmSignAddEdit::validate() {
    followSignIn(); // the date may not have been left yet
    for (controls::DateField* field : {fpSigninDate, fpSignoutDate}) {
        if (!field->isValid()) {
            complain(u"Please enter a date as month/day/year!"_s, field);
            return false;
        }
    }
    for (controls::TimeField* field : {fpSigninTime, fpSignoutTime}) {
        if (!field->isValid()) {
            complain(u"This isn't a time."_s, field);
            return false;
        }
    }
    if (const auto wrong = checkSignInFields(typed())) {
        complain(*wrong);
        return false;
    }
    return true;
}

bool frmSignAddEdit::save() {
    if (!validate())
        return false;
    SignInEntry entry{m_empId, m_signId, typed().signIn(), typed().signOut(), m_loaded};
    SignInSaved saved = SaveSignIn(core::MainDatabase(), entry);
    while (saved.changed) {
        if (screen::MsgBox(u"This record has been changed by another user meanwhile: Sign In "_s +
                               shown(saved.changed->in) + u", Sign Out "_s +
                               shown(saved.changed->out) + u". Replace it by your entries?"_s,
                           screen::Buttons::YesNo,
                           screen::Icon::Exclamation) != screen::Answer::Yes)
            return false;
        entry.loaded = *saved.changed;
        saved = SaveSignIn(core::MainDatabase(), entry);
    }
    if (saved.refusal) {
        screen::MsgBox(saved.refusal->text, screen::Buttons::Ok,
                       saved.refusal->stop ? screen::Icon::Critical : screen::Icon::Exclamation,
                       QString::fromUtf16(signInTitle));
        return false;
    }
    tellTimeChanged();
    if (saved.closed > 0)
        screen::MsgBox(
            QString::number(saved.closed) +
                u" record(s) updated in Timelog. Job cost and time have been adjusted!"_s,
            screen::Buttons::Ok, screen::Icon::Information, u"Timelog Update"_s);
    return true;
}

/// The next day has the same hours, most likely; its sign-out date follows its sign-in date.
void frmSignAddEdit::startNext() {
    fpSigninDate->clear();
    fpSignoutDate->clear();
    m_signInDate.reset();
    fpSigninDate->setFocus();
}

} // namespace timemgmt
