#include "core/keeping/PaperBackup.h"

#include "core/keeping/Backup.h"
#include "core/keeping/Files.h"
#include "platform/values/Literals.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <optional>

namespace keeping {

namespace {

using State = PaperStore::State;

bool hasPapers(jet::Database& database) {
    return database.schema().table(u"Papers"_s) != nullptr;
}

/// What the records name.
std::vector<Content> named(jet::Database& database) {
    std::vector<Content> all;
    jet::Recordset rows = database.openRecordset(u"SELECT DISTINCT Hash, Bytes FROM Papers"_s,
                                                 jet::RecordsetType::Snapshot);
    for (; !rows.eof(); rows.moveNext())
        all.push_back({rows.text(u"Hash"), rows[u"Bytes"].toLong()});
    return all;
}

/// Nothing where there is a list that can't be read.
std::optional<std::vector<Content>> readList(const QString& path) {
    std::vector<Content> all;
    QFile file(path);
    if (!file.exists())
        return all;
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    for (const QString& line : QString::fromLatin1(file.readAll()).split(u'\n'))
        if (const QString hash = line.section(u' ', 0, 0); hash.size() == 64)
            all.push_back({hash, line.section(u' ', 1, 1).toLongLong()});
    return all;
}

/// Copies a content from one store to another.
State pass(const Content& content, const PaperStore& from, const PaperStore& to,
           const Progress& progress = {}) {
    const QString place = to.pathOf(content.hash);
    if (!QDir().mkpath(QFileInfo(place).absolutePath()))
        throw Refusal(u"The folder "_s + to.folder() + u" can't be written."_s);
    return from.copyOut(content, place, progress);
}

} // namespace

QString papersFolderOf(jet::Database& database, const QString& programFolder) {
    const jet::Table* settings = database.schema().table(u"SystemSettings"_s);
    if (!settings || !settings->column(u"PapersFolder") || !hasPapers(database))
        return {};
    return paperFolder(programFolder,
                       database.lookup(u"SELECT PapersFolder FROM SystemSettings"_s).toText(),
                       database.isServer());
}

PaperStore papersOfBackups(const QString& backupFolder) {
    return PaperStore(QDir(backupFolder).absoluteFilePath(u"Papers"_s));
}

QString paperListOf(const QString& backup) {
    return backup.left(backup.lastIndexOf(u'.')) + u".papers"_s;
}

namespace {

/// Enters what a backup has into its list.
class PaperList {
  public:
    bool has(const Content& content) const { return m_hashes.contains(content.hash); }
    void enter(const Content& content) {
        if (has(content))
            return;
        m_hashes.insert(content.hash);
        m_text += content.hash.toLatin1() + ' ' + QByteArray::number(content.bytes) + '\n';
    }
    int count() const { return static_cast<int>(m_hashes.size()); }
    void write(const QString& backup) const {
        if (!m_hashes.isEmpty())
            writeWhole(paperListOf(backup), m_text);
    }

  private:
    QSet<QString> m_hashes;
    QByteArray m_text;
};

/// Why nothing can be taken from a folder that records name papers of; empty if it can.
QString outOfReach(const QString& folder) {
    if (folder.isEmpty())
        return u"the preferences name no folder for them"_s;
    return PaperStore(folder).isInReach() ? QString()
                                          : u"the folder %1 is out of reach or empty"_s.arg(folder);
}

} // namespace

PapersTaken takePapers(jet::Database& database, const QString& programFolder, const QString& backup,
                       const Progress& progress) {
    PapersTaken taken;
    if (!hasPapers(database))
        return taken;
    bool brokenOff = false;
    const Progress goOn = [&](int) {
        brokenOff = brokenOff || (progress && !progress(100));
        return !brokenOff;
    };
    const std::vector<Content> wanted = named(database);
    const QString folder = papersFolderOf(database, programFolder);
    const PaperStore from(folder);
    const PaperStore to = papersOfBackups(QFileInfo(backup).absolutePath());
    PaperList list;
    try {
        if (!wanted.empty())
            taken.failure = outOfReach(folder);
        if (taken.failure.isEmpty() && !folder.isEmpty()) {
            from.removeRests(QDateTime::currentDateTime());
            for (const Content& content : from.contents()) {
                if (to.look(content) != State::Good && pass(content, from, to, goOn) != State::Good)
                    continue;
                if (!goOn(100))
                    throw Refusal(QString());
                list.enter(content);
            }
            for (const Content& content : wanted)
                taken.missing +=
                    from.look(content) != State::Good || to.look(content) != State::Good;
        }
    } catch (const Refusal& refusal) {
        if (brokenOff)
            throw Refusal(u"The backup was broken off."_s);
        taken = {0, 0, refusal.text()};
    }
    // What can't be had here the backups may have from better days: they go on keeping it.
    for (const Content& content : wanted)
        if (!list.has(content) && to.look(content) == State::Good)
            list.enter(content);
    taken.count = list.count();
    try {
        list.write(backup);
    } catch (const Refusal& refusal) {
        taken = {0, 0, refusal.text()};
    }
    return taken;
}

void removeForsaken(jet::Database& database, const QString& programFolder,
                    const QString& backupFolder, const QDateTime& now) {
    const QString folder = papersFolderOf(database, programFolder);
    if (folder.isEmpty())
        return;
    const PaperStore shop(folder);
    const PaperStore kept = papersOfBackups(backupFolder);
    QSet<QString> wanted;
    for (const Content& content : named(database))
        wanted.insert(content.hash);
    for (const Content& content : shop.contents())
        if (!wanted.contains(content.hash) && shop.touched(content.hash) < now.addDays(-1) &&
            kept.look(content) == State::Good)
            shop.remove(content.hash);
}

void trimPapers(const QString& backupFolder) {
    const PaperStore kept = papersOfBackups(backupFolder);
    if (!QFileInfo(kept.folder()).isDir())
        return;
    QSet<QString> listed;
    for (const BackupFile& backup : backupsIn(backupFolder)) {
        const auto list = readList(paperListOf(backup.path));
        if (!list)
            return; // nobody knows what it keeps
        for (const Content& content : *list)
            listed.insert(content.hash);
    }
    for (const Content& content : kept.contents())
        if (!listed.contains(content.hash))
            kept.remove(content.hash);
    kept.removeRests(QDateTime::currentDateTime());
}

QString restorePapers(const QString& backup, jet::Database& database,
                      const QString& programFolder) {
    const auto read = readList(paperListOf(backup));
    if (!read)
        return u"The papers weren't put back: their list, %1, can't be read."_s.arg(
            paperListOf(backup));
    const std::vector<Content>& list = *read;
    if (list.empty())
        return {};
    const PaperStore kept = papersOfBackups(QFileInfo(backup).absolutePath());
    const QString folder = papersFolderOf(database, programFolder);
    const QString byHand =
        u" They stand in %1: what is below it belongs into the folder for papers."_s.arg(
            kept.folder());
    if (folder.isEmpty())
        return u"The papers weren't put back: the preferences name no folder for them."_s + byHand;
    const PaperStore shop(folder);
    int put = 0, lost = 0;
    try {
        for (const Content& content : list) {
            if (shop.check(content) == State::Good)
                continue;
            const bool done = pass(content, kept, shop) == State::Good;
            put += done ? 1 : 0;
            lost += done ? 0 : 1;
        }
    } catch (const Refusal& refusal) {
        return u"The papers weren't all put back: "_s + refusal.text() + byHand;
    }
    QString text = u"%1 papers: %2 were there, %3 were put back into %4."_s.arg(list.size())
                       .arg(list.size() - static_cast<std::size_t>(put + lost))
                       .arg(put)
                       .arg(folder);
    if (lost > 0)
        text += u" %1 are missing in the backup itself."_s.arg(lost);
    return text;
}

std::vector<PaperFinding> checkPapers(jet::Database& database, const QString& programFolder,
                                      bool mend) {
    std::vector<PaperFinding> findings;
    const std::vector<Content> wanted =
        hasPapers(database) ? named(database) : std::vector<Content>();
    if (wanted.empty())
        return findings;
    const QString folder = papersFolderOf(database, programFolder);
    const PaperStore shop(folder);
    const PaperStore kept = papersOfBackups(backupSettings(programFolder).folder);
    const auto unreached = [&](const QString& why) -> std::vector<PaperFinding> {
        return {{{},
                 u"%1: none of its papers (%2) was checked or put back. If it was emptied, add one "
                 "of them again and repeat this."_s.arg(why)
                     .arg(wanted.size()),
                 false}};
    };
    if (const QString why = outOfReach(folder); !why.isEmpty())
        return unreached(why);
    QHash<QString, std::pair<QString, bool>> wrong; ///< by hash
    for (const Content& content : wanted) {
        const State state = shop.check(content);
        if (state == State::Good)
            continue;
        if (const QString why = outOfReach(folder); state == State::Unreadable && !why.isEmpty())
            return unreached(why);
        bool mended = false;
        if (mend && state != State::Unreadable) {
            try {
                mended = pass(content, kept, shop) == State::Good;
            } catch (const Refusal&) {
                // It stays a finding.
            }
        }
        wrong[content.hash] = {state == State::Missing   ? u"the file is missing"_s
                               : state == State::Changed ? u"the file was changed from outside"_s
                                                         : u"the file can't be read"_s,
                               mended};
    }
    if (wrong.isEmpty())
        return findings;
    jet::Recordset rows =
        database.openRecordset(u"SELECT Kind, Record, FileName, Hash FROM Papers ORDER BY ID"_s,
                               jet::RecordsetType::Snapshot);
    for (; !rows.eof(); rows.moveNext())
        if (const auto found = wrong.constFind(rows.text(u"Hash")); found != wrong.cend())
            findings.push_back({rows.text(u"Kind") + u' ' + rows.text(u"Record"),
                                rows.text(u"FileName") + u": "_s + found->first + u" ("_s +
                                    shop.pathOf(rows.text(u"Hash")) + u')',
                                found->second});
    return findings;
}

} // namespace keeping
