#include "core/keeping/Backup.h"
#include "core/keeping/Files.h"
#include "core/keeping/PaperBackup.h"
#include "platform/jet/Location.h"
#include "platform/jet/Native.h"
#include "platform/values/Literals.h"
#include "sample/Papers.h"
#include "sample/PracticeCompany.h"
#include "sample/Sample.h"
#include "setup/Check.h"
#include "setup/Folder.h"
#include "setup/takeover/OldFile.h"
#include "setup/takeover/Takeover.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>

#include <csignal>

#ifdef Q_OS_UNIX
#include <termios.h>
#include <unistd.h>
#endif

namespace {

using keeping::Refusal;

constexpr char usage[] = R"(mirsa-setup: makes and keeps the databases of Mirsa Project Manager.

  mirsa-setup new FOLDER            makes FOLDER/Mirsa.mdb with what a delivered database holds
  mirsa-setup upgrade FOLDER        adds the tables, columns and indexes that an older database lacks
                                    and drops the indexes that others have replaced
  mirsa-setup check FOLDER [--mend] reads the whole database and tells what is wrong, by record;
                                    --mend puts right what has one right answer
  mirsa-setup sample FOLDER [--years N] [--jobs N]
                                    fills the database of FOLDER with a made-up shop's last N years
                                    (2) and about N jobs (400), and puts a company to practise QuickBooks
                                    on beside it; the database must hold no jobs yet
  mirsa-setup backup FOLDER [TARGET]
                                    copies the database of FOLDER while stations work, checks the copy
                                    and names it in TARGET (FOLDER/Backups, or as FOLDER/Mirsa.backup
                                    says), with the papers below TARGET/Papers; old ones go as that
                                    file says
  mirsa-setup restore BACKUP FOLDER puts a backup in place of the database of FOLDER, which is put
                                    aside first, and its papers where any are missing or changed
  mirsa-setup takeover OLD.mdb FOLDER [--server URI] [--damaged]
                                    takes a database of the old system over into a new one, with a
                                    report in FOLDER/Takeover.txt; --damaged: what can be read of it
  mirsa-setup server URI FOLDER     sets up the PostgreSQL database at URI and lets FOLDER use it

FOLDER is the program folder. Nothing that is there already is overwritten.
)";

int tell(QTextStream& out, const QStringList& lines) {
    for (const QString& line : lines)
        out << line << '\n';
    out.flush();
    return 0;
}

int fillSample(const QString& folder, const sample::Options& options, QTextStream& out) {
    const auto database = jet::openProgramFolder(folder);
    if (database->hasRows(u"SELECT TOP 1 JobNo FROM Job"_s))
        throw Refusal(u"This database holds jobs already. The sample shop goes into a new one."_s);
    QElapsedTimer timer;
    timer.start();
    sample::fill(*database, options);
    sample::addPapers(*database, folder);
    if (!sample::makePracticeCompany(*database, folder))
        throw Refusal(u"The practice company can't be written into "_s + folder);
    out << "The sample shop is filled: " << database->lookup(u"SELECT COUNT(*) FROM Job"_s).toText()
        << " jobs, " << database->lookup(u"SELECT COUNT(*) FROM Estimate"_s).toText()
        << " estimates, " << database->lookup(u"SELECT COUNT(*) FROM Timelog"_s).toText()
        << " time records, in " << timer.elapsed() / 1000 << " s.\n";
    return 0;
}

/// 0 where all is well or was mended, 1 where something is left.
int checkFolder(const QString& folder, bool mend, QTextStream& out) {
    const auto database = jet::openProgramFolder(folder);
    jet::Native(*database).setWriter(u"mirsa-setup "_s + qEnvironmentVariable("USER"));
    std::vector<setup::Finding> findings = setup::check(*database, {.mend = mend});
    for (const keeping::PaperFinding& paper : keeping::checkPapers(*database, folder, mend))
        findings.push_back({u"Papers"_s, paper.record, paper.text, paper.mended});
    int left = 0;
    for (const setup::Finding& finding : findings) {
        QStringList words;
        for (const QString& word : {finding.table, finding.record})
            if (!word.isEmpty())
                words += word;
        out << (words.isEmpty() ? QString() : words.join(u", "_s) + u": "_s) << finding.text
            << (finding.mended ? u" (mended)"_s : QString()) << '\n';
        left += finding.mended ? 0 : 1;
    }
    if (const QString uri = jet::serverOfFolder(folder); !uri.isEmpty())
        tell(out, setup::passwordAdvice(uri, folder + u"/Mirsa.server"_s));
    out << (findings.empty() ? u"Nothing is wrong."_s
                             : u"%1 found, %2 left."_s.arg(findings.size()).arg(left))
        << '\n';
    return left == 0 ? 0 : 1;
}

/// "--years N" and "--jobs N", in any order.
sample::Options sampleOptions(const QStringList& words) {
    sample::Options options;
    for (qsizetype i = 0; i < words.size(); i += 2) {
        int* const option = words[i] == u"--years"  ? &options.years
                            : words[i] == u"--jobs" ? &options.jobs
                                                    : nullptr;
        if (!option)
            throw Refusal(words[i] + u" is no option. Options are --years and --jobs."_s);
        bool ok = false;
        *option = words.value(i + 1).toInt(&ok);
        if (!ok || *option < 1)
            throw Refusal(words[i] + u" takes a number above 0."_s);
    }
    return options;
}

/// A line that isn't shown while it is typed, where somebody types.
QString askPassword() {
    QTextStream(stderr) << "Password of the old database: ";
#ifdef Q_OS_UNIX
    termios before{};
    const bool terminal = tcgetattr(STDIN_FILENO, &before) == 0;
    if (terminal) {
        termios silent = before;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
#endif
    QString line = QTextStream(stdin).readLine();
#ifdef Q_OS_UNIX
    if (terminal)
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &before);
#endif
    QTextStream(stderr) << '\n';
    return line;
}

int takeOver(const QStringList& words, QTextStream& out) {
    takeover::Options options;
    options.askPassword = askPassword;
    for (qsizetype i = 3; i < words.size(); ++i) {
        if (words[i] == u"--damaged")
            options.acceptDamage = true;
        else if (words[i] == u"--server" && i + 1 < words.size())
            options.serverUri = words[++i];
        else
            throw Refusal(words[i] + u" is no option. Options are --server URI and --damaged."_s);
    }
    const takeover::Result result =
        takeover::takeOver(QCoreApplication::applicationFilePath(), words[1], words[2], options);
    return tell(out, {result.summary, u"The report: "_s + result.reportFile});
}

/// The reading processes of a takeover.
int readOld(const QStringList& words) {
    QFile out;
    if (!out.open(stdout, QIODevice::WriteOnly))
        return 1;
    return words[0] == u"old-catalogue" ? takeover::writeCatalogue(words[1], out)
                                        : takeover::writeRows(words[1], words[2], out);
}

int backUp(const QString& folder, const QString& target, QTextStream& out) {
    const keeping::BackupFile made =
        keeping::backUp(folder, target.isEmpty() ? keeping::backupSettings(folder).folder : target);
    QStringList told{u"%1 is good, %2 bytes."_s.arg(made.path).arg(made.bytes)};
    if (made.papers > 0)
        told += u"It has %1 papers."_s.arg(made.papers);
    if (made.papersMissing > 0)
        told += u"%1 papers that records name are missing or were changed: mirsa-setup check tells "
                "which."_s.arg(made.papersMissing);
    if (!made.papersFailure.isEmpty())
        told += u"It has no papers: "_s + made.papersFailure;
    return tell(out, told);
}

int restore(const QString& backup, const QString& folder, QTextStream& out) {
    const auto [kept, papers] = keeping::restore(backup, folder);
    QStringList told{backup + u" is in place."_s,
                     kept.isEmpty() ? u"There was no database before."_s
                                    : u"The database that was there is kept as "_s + kept};
    if (!papers.isEmpty())
        told += papers;
    return tell(out, told);
}

/// What the words ask for; -1 where they ask for nothing that there is.
int perform(const QStringList& words, QTextStream& out) {
    const QString command = words.value(0);
    const auto is = [&](const char16_t* name, int arguments) {
        return command == QStringView(name) && words.size() == arguments + 1;
    };
    if (is(u"new", 1))
        return tell(out, setup::makeNew(words[1]));
    if (is(u"upgrade", 1))
        return tell(out, setup::upgradeFolder(words[1]));
    if (is(u"check", 1))
        return checkFolder(words[1], false, out);
    if (is(u"check", 2) && words[2] == u"--mend")
        return checkFolder(words[1], true, out);
    if (is(u"backup", 1) || is(u"backup", 2))
        return backUp(words[1], words.value(2), out);
    if (is(u"restore", 2))
        return restore(words[1], words[2], out);
    if (command == u"takeover" && words.size() >= 3)
        return takeOver(words, out);
    if (is(u"old-catalogue", 1) || is(u"old-rows", 2))
        return readOld(words);
    if (command == u"sample" && words.size() >= 2)
        return fillSample(words[1], sampleOptions(words.mid(2)), out);
    if (is(u"server", 2))
        return tell(out, setup::setUpServer(words[1], words[2]));
    if (command == u"--help" || command == u"-h" || command == u"help")
        return tell(out, {QString::fromUtf8(usage).chopped(1)});
    return -1;
}

} // namespace

int main(int argc, char* argv[]) {
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN); // a limit on a file's size is then an error like a full disk
#endif
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    try {
        const int code = perform(application.arguments().mid(1), out);
        if (code < 0)
            err << usage;
        return code < 0 ? 2 : code;
    } catch (const Refusal& refusal) {
        err << "mirsa-setup: " << refusal.text() << '\n';
    } catch (const jet::Error& error) {
        err << "mirsa-setup: " << error.text() << '\n';
    }
    return 1;
}
