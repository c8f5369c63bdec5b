#include "core/frmBackup.h"

#include "core/MirsaMain.h"
#include "core/keeping/BackupJob.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QDir>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace core {

using controls::GridColumn;
using keeping::BackupJob;

frmBackup::frmBackup() : Form(QString::fromLatin1(formName), u"Backup"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* note = new QLabel(
        u"A backup is taken while others work, opened again and checked. Only then it stands in "
        "this list. mirsa-setup restore puts one back."_s,
        this);
    note->setWordWrap(true);
    outside->addWidget(note);
    lblFolder = screen::named(new QLabel(this), u"lblFolder"_s);
    lblFolder->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblFolder->setWordWrap(true);
    outside->addWidget(lblFolder);
    lvwBackups = screen::named(new controls::ListView(this), u"lvwBackups"_s, u"Good backups"_s);
    lvwBackups->setColumns({{u"Date"_s, 22},
                            {u"Size"_s, 14, GridColumn::Kind::Number},
                            {u"Papers"_s, 16, GridColumn::Kind::Number},
                            {u"File"_s, 34}});
    outside->addWidget(lvwBackups, 1);
    PB = screen::named(new QProgressBar(this), u"PB"_s, u"Progress of the backup"_s);
    PB->hide();
    outside->addWidget(PB);
    screen::ButtonBar bar(this, outside);
    cmdBackup = bar.button(u"cmdBackup"_s, u"&Back Up Now"_s);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setDefaultButton(cmdBackup);
    setCancelButton(cmdClose);
    on(cmdBackup, &frmBackup::cmdBackup_Click);
    on(cmdClose, [this] { unload(); });
    m_timer.setInterval(200);
    QObject::connect(&m_timer, &QTimer::timeout, this,
                     [this] { guarded([this] { tmrBackup_Timer(); }); });
    resize(620, 420);
}

void frmBackup::Form_Load() {
    lblFolder->setText(u"Folder: "_s + QDir::toNativeSeparators(
                                           keeping::backupSettings(shared().ProgramFolder).folder));
    fill();
    const auto& job = BackupJob::current();
    showRunning(job && job->isRunning());
}

void frmBackup::fill() {
    lvwBackups->clearRows();
    int number = 0;
    const auto papers = [](const keeping::BackupFile& backup) {
        if (!backup.papersFailure.isEmpty())
            return u"not copied"_s;
        const QString count = values::format(backup.papers, u"#,##0"_s);
        return backup.papersMissing == 0 ? count
                                         : count + u", %1 missing"_s.arg(backup.papersMissing);
    };
    for (const keeping::BackupFile& backup :
         keeping::backupsIn(keeping::backupSettings(shared().ProgramFolder).folder))
        lvwBackups->addRow(
            u"B%1"_s.arg(++number),
            {backup.made.toString(u"yyyy-MM-dd hh:mm:ss"_s),
             values::format(static_cast<double>(backup.bytes) / 1024, u"#,##0"_s) + u" KB"_s,
             papers(backup), backup.path.section(u'/', -1)});
}

void frmBackup::showRunning(bool running) {
    cmdBackup->setEnabled(!running);
    PB->setVisible(running);
    if (running)
        m_timer.start();
    else
        m_timer.stop();
}

void frmBackup::cmdBackup_Click() {
    auto& job = BackupJob::current();
    job = std::make_unique<BackupJob>(shared().ProgramFolder,
                                      keeping::backupSettings(shared().ProgramFolder).folder);
    PB->setValue(0);
    showRunning(true);
}

void frmBackup::tmrBackup_Timer() {
    const auto& job = BackupJob::current();
    if (job && job->isRunning()) {
        PB->setValue(job->percent());
        return;
    }
    showRunning(false);
    fill();
    if (job && !job->failure().isEmpty())
        screen::MsgBox(u"No backup was made: "_s + job->failure(), screen::Buttons::Ok,
                       screen::Icon::Critical, u"System Message"_s);
    else
        lvwBackups->selectRow(0);
}

} // namespace core
