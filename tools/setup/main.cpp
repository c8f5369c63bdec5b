#include "platform/jet/Database.h"
#include "platform/jet/Location.h"
#include "platform/values/Literals.h"
#include "sample/PracticeCompany.h"
#include "sample/Sample.h"
#include "setup/Setup.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTextStream>

namespace {

constexpr char usage[] = R"(mirsa-setup: makes and keeps the databases of Mirsa Project Manager.

  mirsa-setup new FOLDER            makes FOLDER/Mirsa.mdb with what a delivered database holds
  mirsa-setup upgrade FOLDER        adds the tables, columns and indexes that an older database lacks
  mirsa-setup sample FOLDER [--years N] [--jobs N]
                                    fills the database of FOLDER with a made-up shop's last N years
                                    (2) and about N jobs (400), and puts a company to practise QuickBooks
                                    on beside it; the database must hold no jobs yet
  mirsa-setup server URI FOLDER     sets up the PostgreSQL database at URI and lets FOLDER use it

FOLDER is the program folder. Nothing that is there already is overwritten.
)";

/// What went wrong in the user's own request.
struct Refusal {
    QString text;
};

QString filePath(const QString& folder, const QString& name) {
    return QDir(folder).filePath(name);
}

void makeNew(const QString& folder, QTextStream& out) {
    const QString path = filePath(folder, u"Mirsa.mdb"_s);
    if (QFile::exists(path))
        throw Refusal{path + u" is there already. Nothing was changed."_s};
    if (!QDir().mkpath(folder))
        throw Refusal{u"The folder "_s + folder + u" can't be made."_s};
    // Under another name until it is whole: a broken-off run leaves no half database behind.
    const QString unfinished = path + u".new"_s;
    QFile::remove(unfinished);
    {
        const auto database = jet::Database::createFile(unfinished);
        setup::install(*database);
    }
    if (!QFile::rename(unfinished, path))
        throw Refusal{path + u" can't be written."_s};
    out << path << " is ready. Sign in as Admin with the password Bolts.\n";
}

void upgrade(const QString& folder, QTextStream& out) {
    const auto database = jet::openProgramFolder(folder);
    const QStringList added = setup::upgrade(*database);
    if (added.isEmpty())
        out << "Nothing was missing.\n";
    for (const QString& line : added)
        out << "Added " << line << '\n';
}

void fillSample(const QString& folder, const sample::Options& options, QTextStream& out) {
    const auto database = jet::openProgramFolder(folder);
    if (database->hasRows(u"SELECT TOP 1 JobNo FROM Job"_s))
        throw Refusal{u"This database holds jobs already. The sample shop goes into a new one."_s};
    QElapsedTimer timer;
    timer.start();
    sample::fill(*database, options);
    if (!sample::makePracticeCompany(*database, folder))
        throw Refusal{u"The practice company can't be written into "_s + folder};
    out << "The sample shop is filled: " << database->lookup(u"SELECT COUNT(*) FROM Job"_s).toText()
        << " jobs, " << database->lookup(u"SELECT COUNT(*) FROM Estimate"_s).toText()
        << " estimates, " << database->lookup(u"SELECT COUNT(*) FROM Timelog"_s).toText()
        << " time records, in " << timer.elapsed() / 1000 << " s.\n";
}

void setUpServer(const QString& uri, const QString& folder, QTextStream& out) {
    const QString marker = filePath(folder, u"Mirsa.server"_s);
    if (QFile::exists(marker))
        throw Refusal{marker + u" is there already. Nothing was changed."_s};
    const auto database = jet::Database::openServer(uri);
    if (database->schema().table(u"Job")) {
        out << "The database on the server is set up already; nothing was added to it.\n";
    } else {
        setup::install(*database);
        out << "The database on the server is set up.\n";
    }
    QFile file(marker);
    if (!QDir().mkpath(folder) || !file.open(QIODevice::WriteOnly) ||
        file.write(uri.toUtf8() + '\n') < 0)
        throw Refusal{marker + u" can't be written."_s};
    out << folder << " now uses it.\n";
}

/// "--years N" and "--jobs N", in any order.
sample::Options sampleOptions(const QStringList& words) {
    sample::Options options;
    for (qsizetype i = 0; i < words.size(); i += 2) {
        int* const option = words[i] == u"--years"  ? &options.years
                            : words[i] == u"--jobs" ? &options.jobs
                                                    : nullptr;
        if (!option)
            throw Refusal{words[i] + u" is no option. Options are --years and --jobs."_s};
        bool ok = false;
        *option = words.value(i + 1).toInt(&ok);
        if (!ok || *option < 1)
            throw Refusal{words[i] + u" takes a number above 0."_s};
    }
    return options;
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    const QStringList words = application.arguments().mid(1);
    const QString command = words.value(0);
    try {
        if (command == u"new" && words.size() == 2) {
            makeNew(words[1], out);
        } else if (command == u"upgrade" && words.size() == 2) {
            upgrade(words[1], out);
        } else if (command == u"sample" && words.size() >= 2) {
            fillSample(words[1], sampleOptions(words.mid(2)), out);
        } else if (command == u"server" && words.size() == 3) {
            setUpServer(words[1], words[2], out);
        } else if (command == u"--help" || command == u"-h" || command == u"help") {
            out << usage;
        } else {
            err << usage;
            return 2;
        }
    } catch (const Refusal& refusal) {
        err << "mirsa-setup: " << refusal.text << '\n';
        return 1;
    } catch (const jet::Error& error) {
        err << "mirsa-setup: " << error.text() << '\n';
        return 1;
    }
    return 0;
}
