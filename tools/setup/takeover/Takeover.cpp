#include "setup/takeover/Takeover.h"

#include "core/keeping/Files.h"
#include "platform/jet/Location.h"
#include "platform/jet/Translate.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "setup/Check.h"
#include "setup/Folder.h"
#include "setup/Relations.h"
#include "setup/Setup.h"
#include "setup/takeover/OldReader.h"
#include "setup/takeover/Remarks.h"
#include "setup/takeover/Report.h"
#include "setup/takeover/TableTaker.h"

#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

namespace takeover {

using keeping::Refusal;

namespace {

/// Files that are gone on the way out, whatever happens.
class Leftovers {
  public:
    explicit Leftovers(QStringList paths) : m_paths(std::move(paths)) { clear(); }
    ~Leftovers() { clear(); }
    Leftovers(const Leftovers&) = delete;
    Leftovers& operator=(const Leftovers&) = delete;

  private:
    void clear() const {
        for (const QString& path : m_paths)
            keeping::removeDatabase(path);
    }
    QStringList m_paths;
};

void refuseWhatCannotBeRead(const QString& path) {
    if (!QFileInfo(path).isFile())
        throw Refusal(path + u" isn't there."_s);
    switch (kindOf(path)) {
    case FileKind::OldDatabase:
        break;
    case FileKind::Nothing:
        throw Refusal(path + u" is empty, or can't be read."_s);
    case FileKind::PresentDatabase:
        throw Refusal(path + u" is a database of the present system already: put it into the "
                             "program folder as Mirsa.mdb."_s);
    case FileKind::Other:
        throw Refusal(path + u" is no database of the old system, whatever its name says."_s);
    }
    const QFileInfo file(path);
    for (const auto* ending : {u"ldb", u"LDB", u"laccdb"}) {
        const QString lock = file.absoluteDir().filePath(file.completeBaseName() + u'.' +
                                                         QString::fromUtf16(ending));
        if (QFileInfo::exists(lock))
            throw Refusal(u"The old program has the file open, or was broken off while it had "
                          "(there is "_s +
                          lock +
                          u"). End it everywhere, or take a copy of the "
                          "file alone."_s);
    }
}

void askForPassword(const QString& path, const Options& options) {
    const QString password = passwordOfFile(path);
    if (password.isEmpty())
        return;
    const QString given = options.askPassword ? options.askPassword() : QString();
    if (given != password)
        throw Refusal(u"The file has a password, and that wasn't it."_s);
}

/// A copy that nobody else touches, and the MD5 of what was copied.
QString copyOf(const QString& from, const QString& to) {
    QFile source(from), target(to);
    if (!source.open(QIODevice::ReadOnly))
        throw Refusal(from + u" can't be read."_s);
    if (!target.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw Refusal(to + u" can't be written."_s);
    QCryptographicHash hash(QCryptographicHash::Md5);
    while (!source.atEnd()) {
        const QByteArray piece = source.read(1 << 20);
        if (piece.isEmpty() && source.error() != QFileDevice::NoError)
            throw Refusal(from + u" can't be read to its end: "_s + source.errorString());
        hash.addData(piece);
        if (target.write(piece) != piece.size())
            throw Refusal(to + u" can't be written: "_s + target.errorString());
    }
    if (!target.flush())
        throw Refusal(to + u" can't be written: "_s + target.errorString());
    return QString::fromLatin1(hash.result().toHex());
}

std::vector<jet::Table> tablesOfToday() {
    std::vector<jet::Table> tables;
    for (const QString& statement : setup::definitions())
        if (statement.startsWith(u"CREATE TABLE", Qt::CaseInsensitive))
            tables.push_back(jet::tableFromDefinition(statement));
    return tables;
}

const OldTable* tableOf(const OldCatalogue& catalogue, const QString& name) {
    for (const OldTable& table : catalogue.tables)
        if (table.name.compare(name, Qt::CaseInsensitive) == 0)
            return &table;
    return nullptr;
}

/// Tables that no old database can have had.
bool isOwnKeeping(const QString& table) {
    return table == u"Journal" || table == u"Writer";
}

/// One takeover into an open, empty database.
class Run {
  public:
    Run(jet::Database& database, const OldReader& reader, OldCatalogue catalogue, Remarks& remarks)
        : m_database(database), m_reader(reader), m_catalogue(std::move(catalogue)),
          m_remarks(remarks) {}

    std::vector<TableResult> results;
    QStringList added;

    void run() {
        jet::Transaction transaction(m_database);
        if (m_database.isServer() &&
            !jet::Native(m_database).value("SELECT to_regclass('job')::text").isNull())
            throw Refusal(u"The database on the server is set up already. An old one goes into an "
                          "empty one."_s);
        for (const QString& statement : setup::definitions())
            if (statement.startsWith(u"CREATE TABLE", Qt::CaseInsensitive))
                m_database.execute(statement);
        takeTables();
        countRelations();
        countRepeats();
        fillUp();
        for (const TableResult& table : results)
            if (!table.counter.isEmpty())
                setup::setLastGiven(m_database, table.name, table.counter, table.lastGiven);
        transaction.commit();
    }

  private:
    void takeTables() {
        TableTaker taker(m_database, m_reader, m_remarks);
        const std::vector<jet::Table> today = tablesOfToday();
        QSet<QString> taken;
        for (const jet::Table& table : today) {
            const OldTable* old = tableOf(m_catalogue, table.name);
            if (!old) {
                if (!isOwnKeeping(table.name))
                    m_remarks.count(u"table missing"_s, table.name, {});
                taker.pass({}, table.name);
                continue;
            }
            taken.insert(old->name);
            if (old->problem.isEmpty())
                taker.take(*old, table);
            else
                taker.pass(*old, table.name);
        }
        for (const OldTable& old : m_catalogue.tables) {
            if (taken.contains(old.name))
                continue;
            if (old.problem.isEmpty())
                taker.keep(old);
            else
                taker.pass(old, old.name);
        }
        results = taker.finish();
    }

    /// Indexes, and what the program of today needs beside what an old one had.
    void fillUp() {
        for (const QString& line : setup::upgrade(m_database))
            if (!line.startsWith(u"added index"))
                added += line;
        for (const auto* name : {u"Users", u"SystemSettings"}) {
            const QString table = QString::fromUtf16(name);
            if (m_database.hasRows(u"SELECT * FROM "_s + table))
                continue;
            for (const QString& statement : setup::deliveredRows(table)) {
                m_database.execute(statement);
                added += u"added row of "_s + table;
            }
        }
    }

    bool came(const QString& table, const QString& column) const {
        const OldTable* old = tableOf(m_catalogue, table);
        return old &&
               std::any_of(old->columns.begin(), old->columns.end(), [&](const OldColumn& c) {
                   return c.name.compare(column, Qt::CaseInsensitive) == 0;
               });
    }

    void countRelations() {
        for (const setup::Reference& reference : setup::references()) {
            if (!came(reference.table, reference.column))
                continue;
            const auto rows = setup::orphansOf(m_database, reference);
            const QString kind = u"rows that refer to none in "_s + reference.target;
            for (const setup::Orphan& row : rows)
                m_remarks.count(kind, reference.table, reference.column, 1,
                                row.record + u": "_s + row.value);
        }
    }

    void countRepeats() {
        const QString kind = u"rows that repeat a key the program keeps unique"_s;
        for (const setup::UniqueColumns& unique : setup::uniqueColumns()) {
            if (!came(unique.table, unique.columns.front()))
                continue;
            const QString column = unique.columns.join(u',');
            for (const setup::Repeat& repeat : setup::repeatsOf(m_database, unique))
                m_remarks.count(kind, unique.table, column, repeat.times - 1, repeat.record);
            for (const TableResult& table : results)
                if (table.name == unique.table)
                    m_remarks.count(kind, unique.table, column, table.renumbered.value(column));
        }
    }

    jet::Database& m_database;
    const OldReader& m_reader;
    OldCatalogue m_catalogue;
    Remarks& m_remarks;
};

QStringList damagesOf(const OldCatalogue& catalogue, const std::vector<TableResult>& results) {
    QStringList damages = catalogue.damages;
    for (const TableResult& table : results)
        for (const QString& damage : table.damages)
            damages += table.name + u": "_s + damage;
    return damages;
}

} // namespace

Result takeOver(const QString& program, const QString& oldFile, const QString& folder,
                const Options& options) {
    QElapsedTimer timer;
    timer.start();
    refuseWhatCannotBeRead(oldFile);
    const bool onServer = !options.serverUri.isEmpty();
    const QDir target(folder);
    const QString path = target.filePath(u"Mirsa.mdb"_s);
    const QString marker = target.filePath(u"Mirsa.server"_s);
    for (const QString& existing : {path, marker})
        if (QFileInfo::exists(existing))
            throw Refusal(existing + u" is there already. An old database goes into a folder "
                                     "without one. Nothing was changed."_s);
    askForPassword(oldFile, options);

    const keeping::FolderLock lock(folder);
    const QString copy = target.filePath(u"Takeover.copy.unfinished"_s);
    const QString unfinished = keeping::unfinishedName(path);
    const QString values = target.filePath(u"Takeover.tsv"_s);
    const QString valuesAside = keeping::unfinishedName(values);
    const QString reportFile = target.filePath(u"Takeover.txt"_s);
    const Leftovers leftovers({copy, unfinished, valuesAside});

    ReportFacts facts;
    facts.file = oldFile;
    facts.started = values::now();
    facts.md5 = copyOf(oldFile, copy);
    const OldReader reader(program, copy);
    facts.catalogue = reader.catalogue();
    for (const jet::Table& table : tablesOfToday())
        if (facts.catalogue.linked.contains(table.name, Qt::CaseInsensitive))
            throw Refusal(u"The rows of "_s + table.name +
                          u" stand in another file, to which this one only points. Take over that "
                          "file. Nothing was changed."_s);
    if (!tableOf(facts.catalogue, u"Job"_s) && !tableOf(facts.catalogue, u"Customer"_s) &&
        facts.catalogue.damages.isEmpty())
        throw Refusal(u"The file holds neither jobs nor customers: it is no database of this "
                      "system. Nothing was changed."_s);

    auto database = onServer ? jet::Database::openServer(options.serverUri)
                             : jet::Database::createFile(unfinished);
    if (onServer && database->schema().table(u"Job"))
        throw Refusal(u"The database on the server is set up already. An old one goes into an "
                      "empty one. Nothing was changed."_s);
    // Reading a large file takes its time between two writes, and nobody else works here yet.
    if (onServer)
        jet::Native(*database).execute("SET idle_in_transaction_session_timeout = 0");
    Remarks remarks(valuesAside);
    Run run(*database, reader, facts.catalogue, remarks);
    {
        // On a server all is undone by this one, where the file turns out to be damaged.
        jet::Transaction transaction(*database);
        run.run();
        facts.damages = damagesOf(facts.catalogue, run.results);
        facts.accepted = facts.damages.isEmpty() || options.acceptDamage;
        if (facts.accepted)
            transaction.commit();
    }
    remarks.finish();
    facts.tables = run.results;
    facts.added = run.added;
    facts.remarks = remarks.entries();
    facts.milliseconds = timer.elapsed();
    facts.valuesFile = remarks.changedValues() > 0 ? values : QString();
    const QString summary = summaryOf(facts);
    if (!facts.accepted) {
        database.reset();
        keeping::writeWhole(reportFile, reportText(facts).toUtf8());
        throw Refusal(u"The file is damaged, and nothing was taken over. "_s + reportFile +
                      u" tells what could be read; with --damaged that is taken over."_s);
    }
    if (!onServer) {
        keeping::closeWhole(std::move(database));
        database = jet::Database::openFile(unfinished);
        if (const QStringList wrong = setup::engineFindings(*database); !wrong.isEmpty())
            throw Refusal(u"What was written is not what was meant ("_s + wrong.first() +
                          u"). Nothing was taken over."_s);
        keeping::closeWhole(std::move(database));
    }
    keeping::writeWhole(reportFile, reportText(facts).toUtf8());
    if (!facts.valuesFile.isEmpty())
        keeping::replaceFile(valuesAside, values);
    if (onServer)
        keeping::writeWhole(marker, options.serverUri.toUtf8() + '\n',
                            !jet::passwordOf(options.serverUri).isEmpty());
    else
        keeping::putInPlace(unfinished, path);
    return {summary, reportFile, run.added};
}

} // namespace takeover
