#include "core/frmDBMaint.h"

#include "core/Beside.h"
#include "core/MirsaMain.h"
#include "core/keeping/Files.h"
#include "platform/jet/Location.h"
#include "platform/jet/Native.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/screen/Seams.h"
#include "platform/values/Literals.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace core {

using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

frmDBMaint::frmDBMaint() : Form(QString::fromLatin1(formName), u"Compact Database"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* menus = new QMenuBar(this);
    outside->setMenuBar(menus);
    QMenu* mnuOptions = menus->addMenu(u"&Options"_s);
    mnuOptions->menuAction()->setObjectName(u"mnuOptions"_s);
    const auto entry = [&](const QString& name, const QString& caption) {
        QAction* action = mnuOptions->addAction(caption);
        action->setObjectName(name);
        return action;
    };
    mnuCompact = entry(u"mnuCompact"_s, u"&Compact"_s);
    mnuRepair = entry(u"mnuRepair"_s, u"&Repair"_s);
    mnuOptions->addSeparator();
    QAction* mnuExit = entry(u"mnuExit"_s, u"E&xit"_s);

    lblProcess = screen::named(new QLabel(this), u"lblProcess"_s);
    lblProcess->setWordWrap(true);
    lblProcess->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    // Room for the longest of its texts, in a larger font too.
    lblProcess->setMinimumSize(560, 11 * lblProcess->fontMetrics().lineSpacing());
    outside->addWidget(lblProcess, 1);
    picWait = screen::named(new QLabel(this), u"picWait"_s);
    picWait->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    picWait->setMargin(8);
    picWait->hide();
    outside->addWidget(picWait);
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    cmdRun = bar.button(u"cmdRun"_s, u"&Run"_s);
    cmdCancel = bar.button(u"cmdCancel"_s, u"&Cancel"_s);
    setDefaultButton(cmdRun);
    setCancelButton(cmdCancel);

    on(mnuCompact, [this] { setMode(u"Compact"_s); });
    on(mnuRepair, [this] { setMode(u"Repair"_s); });
    on(mnuExit, [this] { unload(); });
    on(cmdRun, &frmDBMaint::cmdRun_Click);
    on(cmdCancel, [this] { unload(); });
}

void frmDBMaint::Form_Load() {
    setMode(m_mode.isEmpty() ? u"Compact"_s : m_mode);
}

void frmDBMaint::ShowForm(const QString& mode) {
    m_mode = mode;
    showModal();
}

void frmDBMaint::setMode(const QString& mode) {
    m_mode = mode;
    const bool compact = mode == u"Compact";
    setWindowTitle(mode + u" Database"_s);
    QString text =
        compact ? u"As the users change data, the database file can become fragmented and use more"
                  " disk space than is necessary. Run this Compact Database option periodically"
                  " to compact your database to defragment the database file. The compacted"
                  " database is usually smaller and often runs faster."_s
                : u"This process will attempt to repair a corrupted database file which can"
                  " possibly occur if the database connection is closed unexpectedly"
                  " because of a power outage or computer hardware problem."_s;
    if (MainDatabase().isServer())
        text += compact
                    ? u"\n\nThis database is on a server (PostgreSQL). There the room of deleted "
                      "rows is given back to their tables, and what the server knows about them "
                      "is brought up to date (VACUUM, ANALYZE). Others may go on working."_s
                    : u"\n\nThis database is on a server (PostgreSQL). There all indexes are made "
                      "anew from the rows (REINDEX), and the tables are read through "
                      "(VACUUM)."_s;
    lblProcess->setText(text);
    picWait->setText(compact ? u"Please wait while compacting the database..."_s
                             : u"Please wait while repairing the database..."_s);
}

/// An open module would go on with rows of a database that is no longer there.
bool frmDBMaint::closeModules() {
    const auto open = screen::Forms::all();
    for (screen::Form* form : open)
        if (form != this && screen::Forms::all().contains(form) && !form->unload())
            return false;
    return true;
}

void frmDBMaint::showWaiting(bool waiting) {
    cmdRun->setVisible(!waiting);
    cmdCancel->setVisible(!waiting);
    picWait->setVisible(waiting);
    mnuCompact->setEnabled(!waiting);
    mnuRepair->setEnabled(!waiting);
    repaint();
    QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void frmDBMaint::runOnServer() const {
    jet::Database& database = MainDatabase();
    if (m_mode == u"Repair") {
        jet::Native native(database);
        for (const jet::Table& table : database.schema().tables())
            native.execute("REINDEX TABLE " + native.quoted(table.name));
    }
    database.tidy();
}

void frmDBMaint::runOnFile() {
    const QString path = shared().DatabasePath;
    const QString fresh = programFile(u"MTEMP.MDB"_s);
    endBeside();
    shared().MainDatabase.reset(); // the file must be free
    keeping::removeDatabase(fresh);
    std::exception_ptr failure;
    try {
        jet::Database::compactFile(path, fresh);
        keeping::replaceKeeping(fresh, path, programFile(u"MIRSAOLD.MDB"_s));
    } catch (const jet::Error&) {
        failure = std::current_exception();
    } catch (const keeping::Refusal& refusal) {
        failure = std::make_exception_ptr(jet::Error(jet::errors::other, refusal.text()));
    }
    keeping::removeDatabase(fresh);
    if (!screen::guardedCall([&path] {
            shared().MainDatabase = jet::Database::openFile(path);
            signChanges();
        })) {
        screen::seams().endProcess(1); // without a database there is nothing to go on with
        return;
    }
    beginBeside();
    if (failure)
        std::rethrow_exception(failure);
}

void frmDBMaint::cmdRun_Click() {
    if (MsgBox(u"START?\r\n\r\nMake sure that everyone is off the system."_s, Buttons::YesNo,
               Icon::Question, m_mode + u" Database"_s) != screen::Answer::Yes)
        return;
    if (!closeModules())
        return;
    showWaiting(true);
    std::optional<jet::Error> failure;
    try {
        const screen::BusyPointer hourglass;
        if (MainDatabase().isServer())
            runOnServer();
        else
            runOnFile();
    } catch (const jet::Error& error) {
        failure = error;
    }
    showWaiting(false);
    if (failure)
        MsgBox(u"Unable to %1 the Database at this time. Please report to the supervisor the "
               "following errors:\r\n\r\nError #: %2\r\nDescription: %3"_s.arg(m_mode)
                   .arg(failure->number())
                   .arg(failure->text()),
               Buttons::Ok, Icon::Critical, m_mode + u" Database"_s);
    else
        MsgBox(u"Process Completed!"_s, Buttons::Ok, Icon::Information, m_mode + u" Database"_s);
}

} // namespace core
