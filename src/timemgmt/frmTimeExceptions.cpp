#include "timemgmt/frmTimeExceptions.h"

#include "core/MirsaMain.h"
#include "platform/controls/DropMenu.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "timemgmt/TimeDialogs.h"

#include <QLabel>
#include <QVBoxLayout>

namespace timemgmt {

using controls::GridColumn;
using Record = TimeException::Record;

namespace {

const QString signInDialog = u"frmSignAddEdit"_s, timeScreen = u"frmTM"_s, jobScreen = u"frmJob"_s;
constexpr int pollMilliseconds = 400;

/// The screen on which a line is put right. An attendance can be corrected from the next day on;
/// everything else of time is corrected or deleted in Time Management.
QString placeOf(const TimeException& line) {
    if (line.record == Record::Operation)
        return jobScreen;
    const bool byAttendance = line.kind == ExceptionKind::NeverSignedOut ||
                              line.kind == ExceptionKind::OverlappingAttendance ||
                              line.kind == ExceptionKind::OutsideAttendance ||
                              line.kind == ExceptionKind::OpenTooLong;
    return byAttendance && line.signId != 0 && line.when.date() < values::today() ? signInDialog
                                                                                  : timeScreen;
}

bool canOpen(const QString& screen) {
    return screen::Forms::isKnown(screen) &&
           core::HasAccess(screen == jobScreen ? u"mnuFileJob"_s : u"mnuFileTimeManagement"_s);
}

/// As lists show dates; empty for what has none.
QString dayText(const QDateTime& when) {
    return when.isValid() ? values::format(when.date(), u"Short Date") : QString();
}

} // namespace

frmTimeExceptions::frmTimeExceptions() : Form(QString::fromLatin1(formName), u"Time Exceptions"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* head = new QWidget(this);
    screen::Fields fields(head);
    fields.grid()->setContentsMargins(0, 0, 0, 0);
    cboKind = fields.listCombo(u"cboKind"_s, u"&Show:"_s);
    cboKind->setMinimumWidth(300);
    fields.nextColumn();
    lblState = fields.shown(u"lblState"_s, QString(), 60);
    fields.grid()->setColumnStretch(fields.grid()->columnCount() - 1, 1);
    outside->addWidget(head);
    lvwExceptions = screen::named(new controls::ListView(this), u"lvwExceptions"_s,
                                  u"Time records to be looked at"_s);
    lvwExceptions->setColumns({{u"What"_s, 24},
                               {u"Employee"_s, 22},
                               {u"Date"_s, 11},
                               {u"Job"_s, 8, GridColumn::Kind::Number},
                               {u"What is wrong"_s, 60}});
    outside->addWidget(lvwExceptions, 1);
    screen::ButtonBar bar(this, outside);
    cmdOpen = bar.button(u"cmdOpen"_s, u"&Open"_s);
    cmdTime = bar.button(u"cmdTime"_s, u"In &Time Management"_s);
    cmdRefresh = bar.button(u"cmdRefresh"_s, u"&Read Again"_s);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setCancelButton(cmdClose);
    on(cmdOpen, &frmTimeExceptions::cmdOpen_Click);
    on(cmdTime, &frmTimeExceptions::cmdTime_Click);
    on(cmdRefresh, &frmTimeExceptions::cmdRefresh_Click);
    on(cmdClose, [this] { unload(); });
    on(cboKind, &QComboBox::currentIndexChanged, [this] { showLines(); });
    on(lvwExceptions->selectionChangedByUser, [this] { enableButtons(); });
    on(lvwExceptions->rowDoubleClicked, [this](int) { cmdOpen_Click(); });
    controls::offerInMenu(lvwExceptions, {cmdOpen, cmdTime, cmdRefresh});
    m_timer.setInterval(pollMilliseconds);
    on(&m_timer, &QTimer::timeout, [this] { tmrWatch_Timer(); });
}

ExceptionWatch& frmTimeExceptions::watch() const {
    return ExceptionWatch::on(core::MainDatabase().name());
}

void frmTimeExceptions::Form_Load() {
    if (!core::HasAccess(u"mnuFileTimeManagement"_s)) {
        screen::MsgBox(u"You don't have the right to see time records."_s, screen::Buttons::Ok,
                       screen::Icon::Exclamation, windowTitle());
        refuse();
        return;
    }
    watch().check(values::now());
    fillKinds();
    tmrWatch_Timer();
    m_timer.start();
}

void frmTimeExceptions::Form_Activate() {
    watch().check(values::now());
}

void frmTimeExceptions::refreshLookup(const QString& table) {
    if (table == u"Timelog")
        watch().check(values::now());
}

void frmTimeExceptions::tmrWatch_Timer() {
    // Counted before it is read: what comes in between is shown the next time.
    const int readings = watch().readings();
    if (readings != m_readings) {
        m_readings = readings;
        const auto lines = watch().lines();
        const bool changed = !m_lines || !lines || *lines != *m_lines;
        m_lines = lines;
        if (changed) {
            fillKinds();
            showLines();
        }
    }
    showState();
}

void frmTimeExceptions::fillKinds() {
    std::array<int, exceptionKinds> counts{};
    if (m_lines) {
        for (const TimeException& line : *m_lines)
            ++counts[static_cast<std::size_t>(line.kind)];
    }
    const qint64 chosen = std::max(qint64{0}, cboKind->itemNumber());
    const QSignalBlocker quiet(cboKind);
    cboKind->clearRows();
    const auto counted = [](const QString& name, auto count) {
        return u"%1 (%2)"_s.arg(name, QString::number(count));
    };
    cboKind->addRow(counted(u"Everything"_s, m_lines ? m_lines->size() : 0), 0);
    for (int kind = 0; kind < exceptionKinds; ++kind)
        cboKind->addRow(counted(kindName(static_cast<ExceptionKind>(kind)),
                                counts[static_cast<std::size_t>(kind)]),
                        kind + 1);
    cboKind->chooseNumber(chosen);
}

void frmTimeExceptions::showLines() {
    const qint64 chosen = cboKind->itemNumber();
    std::vector<controls::ListRow> rows;
    if (m_lines) {
        for (std::size_t i = 0; i < m_lines->size(); ++i) {
            const TimeException& line = (*m_lines)[i];
            if (chosen > 0 && static_cast<qint64>(line.kind) != chosen - 1)
                continue;
            const QString key =
                QChar(u'a' + static_cast<int>(line.kind) * 3 + static_cast<int>(line.record)) +
                QString::number(line.id);
            rows.push_back({key,
                            {kindName(line.kind), line.employee, dayText(line.when),
                             line.jobNo > 0 ? QString::number(line.jobNo) : QString(), line.text}});
        }
    }
    lvwExceptions->setRows(std::move(rows));
    enableButtons();
}

void frmTimeExceptions::showState() {
    QString state;
    if (const QString failure = watch().failure(); !failure.isEmpty())
        state = u"Could not be read: "_s + failure;
    else if (watch().isReading())
        state = m_lines ? u"Looking for changes..."_s : u"Reading all time records..."_s;
    else if (m_lines && m_lines->empty())
        state = u"Every time record is in order."_s;
    if (lblState->text() != state)
        lblState->setText(state);
}

const TimeException* frmTimeExceptions::selected() const {
    const QString key = lvwExceptions->selectedKey();
    if (key.isEmpty() || !m_lines)
        return nullptr;
    const int letter = key.at(0).unicode() - u'a';
    const auto kind = static_cast<ExceptionKind>(letter / 3);
    const auto record = static_cast<Record>(letter % 3);
    const auto found = std::find_if(m_lines->begin(), m_lines->end(), [&](const auto& line) {
        return line.kind == kind && line.record == record && line.id == key.mid(1).toLongLong();
    });
    return found == m_lines->end() ? nullptr : &*found;
}

void frmTimeExceptions::enableButtons() {
    const TimeException* line = selected();
    cmdOpen->setEnabled(line && canOpen(placeOf(*line)));
    cmdTime->setEnabled(line && line->record != Record::Operation && canOpen(timeScreen));
}

void frmTimeExceptions::showInTime(const TimeException& line) {
    screen::Forms::show(timeScreen);
    if (auto* time = screen::Forms::find<TimeScreen>(timeScreen))
        time->showRecord(line.empId, line.when.date(),
                         line.record == Record::Attendance ? TimePage::Attendance : TimePage::Work,
                         line.id);
}

void frmTimeExceptions::cmdOpen_Click() {
    const TimeException* chosen = selected();
    if (!chosen || !cmdOpen->isEnabled())
        return;
    // The list may be read anew while a dialog stands over it.
    const TimeException line = *chosen;
    const QString place = placeOf(line);
    if (place == jobScreen) {
        screen::Forms::show(jobScreen);
        auto* job = screen::Forms::find<core::RecordScreen>(jobScreen);
        if (job && !job->goToRecord(line.jobNo))
            screen::MsgBox(
                u"Job %1 can't be shown while the Job module is being edited."_s.arg(line.jobNo),
                screen::Buttons::Ok, screen::Icon::Information, windowTitle());
    } else if (place == signInDialog) {
        auto dialog = screen::Forms::dialog<SignInDialog>(signInDialog);
        dialog->ShowForm(u"Edit"_s, line.empId, line.signId);
        watch().check(values::now()); // it may have been put right elsewhere
    } else {
        showInTime(line);
    }
}

void frmTimeExceptions::cmdTime_Click() {
    if (const TimeException* line = selected(); line && cmdTime->isEnabled())
        showInTime(TimeException(*line));
}

void frmTimeExceptions::cmdRefresh_Click() {
    watch().check(values::now());
    showState();
}

} // namespace timemgmt
