#include "desk/find/FileIndex.h"

#include "desk/find/FindKinds.h"
#include "platform/jet/Native.h"
#include "platform/values/Literals.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace desk {

namespace {

/// To be raised with every change of what is kept, or of the kinds.
constexpr int form = 1;
constexpr int journal = -1; ///< in place of a kind

QByteArray table(int kind) {
    return "Found" + QByteArray::number(kind);
}

QByteArray quoted(QByteArray text) {
    return '\'' + text.replace('\'', "''") + '\'';
}

} // namespace

QString FileIndex::pathFor(const QString& location, const QString& folder) {
    const QByteArray name =
        QCryptographicHash::hash(location.toUtf8(), QCryptographicHash::Sha256).toHex().left(24);
    return QDir(folder).filePath(u"find-"_s + QString::fromLatin1(name) + u'-' +
                                 QString::number(form));
}

FileIndex::FileIndex(const QString& path) {
    QDir().mkpath(QFileInfo(path).path());
    const bool isNew = !QFile::exists(path) || QFileInfo(path).size() == 0;
    if (isNew) {
        QFile::remove(path);
        m_database = jet::Database::createFile(path);
        // It has what the database has.
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner);
    } else {
        m_database = jet::Database::openFile(path);
    }
    jet::Native native(*m_database);
    native.execute("CREATE TABLE IF NOT EXISTS Ranges (Kind INTEGER PRIMARY KEY, Low INTEGER, "
                   "High INTEGER, Turn INTEGER)");
    for (std::size_t kind = 0; kind < findKinds().size(); ++kind)
        native.execute("CREATE VIRTUAL TABLE IF NOT EXISTS " + table(static_cast<int>(kind)) +
                       " USING fts5(body, tokenize = 'trigram', detail = 'none')");
}

FileIndex::~FileIndex() = default;
FileIndex::FileIndex(FileIndex&&) noexcept = default;

std::optional<FileIndex::Range> FileIndex::range(int kind) {
    const auto found =
        jet::Native(*m_database)
            .rows("SELECT Low, High, Turn FROM Ranges WHERE Kind = " + QByteArray::number(kind));
    if (found.empty())
        return {};
    return Range{found[0][0].toInteger(), found[0][1].toInteger(), found[0][2].toInteger()};
}

std::vector<qint64> FileIndex::candidates(int kind, const std::vector<QByteArray>& words,
                                          int most) {
    QByteArray pieces, rest;
    for (const QByteArray& word : words) {
        QByteArray& where = QString::fromUtf8(word).size() >= 3 ? pieces : rest;
        where +=
            (where.isEmpty() ? " WHERE body LIKE " : " AND body LIKE ") + quoted('%' + word + '%');
    }
    std::vector<qint64> keys;
    if (pieces.isEmpty())
        return keys; // every text would be read
    QByteArray select = "SELECT rowid, body FROM " + table(kind) + pieces + " ORDER BY rowid DESC";
    // Words that the index doesn't help with are looked for in so many of the others' texts.
    if (!rest.isEmpty())
        select = "SELECT rowid FROM (" + select + " LIMIT 3000)" + rest + " ORDER BY rowid DESC";
    else
        select.replace(", body", "");
    jet::Native(*m_database)
        .each(select + " LIMIT " + QByteArray::number(most),
              [&](const std::vector<jet::Cell>& cells) { keys.push_back(cells[0].integer); });
    return keys;
}

FileIndex::Texts FileIndex::texts(int kind, qint64 first, qint64 last) {
    Texts found;
    jet::Native(*m_database)
        .each("SELECT rowid, body FROM " + table(kind) + " WHERE rowid BETWEEN " +
                  QByteArray::number(first) + " AND " + QByteArray::number(last) +
                  " ORDER BY rowid",
              [&](const std::vector<jet::Cell>& cells) {
                  found.emplace_back(
                      cells[0].integer,
                      QByteArray(cells[1].text, cells[1].isNull() ? 0 : cells[1].size));
              });
    return found;
}

void FileIndex::write(int kind, const Texts& put, const std::vector<qint64>& gone,
                      const Range& range, bool isNew) {
    jet::Native native(*m_database);
    jet::Transaction transaction(*m_database);
    const QByteArray remove = "DELETE FROM " + table(kind) + " WHERE rowid = ?1";
    const auto take = [&](qint64 key) {
        jet::Arguments arguments;
        arguments.addInteger(key);
        native.write(remove, arguments);
    };
    for (const qint64 key : gone)
        take(key);
    for (const auto& [key, text] : put) {
        if (!isNew)
            take(key);
        jet::Arguments arguments;
        arguments.addInteger(key);
        arguments.addText(QString::fromUtf8(text));
        native.write("INSERT INTO " + table(kind) + " (rowid, body) VALUES (?1, ?2)", arguments);
    }
    jet::Arguments arguments;
    for (const qint64 number : {qint64{kind}, range.low, range.high, range.turn})
        arguments.addInteger(number);
    native.write("INSERT OR REPLACE INTO Ranges (Kind, Low, High, Turn) VALUES (?1, ?2, ?3, ?4)",
                 arguments);
    transaction.commit();
}

qint64 FileIndex::journalEntry() {
    return range(journal).value_or(Range()).high;
}

void FileIndex::setJournalEntry(qint64 entry) {
    jet::Native(*m_database)
        .execute("INSERT OR REPLACE INTO Ranges (Kind, Low, High, Turn) VALUES (" +
                 QByteArray::number(journal) + ", 0, " + QByteArray::number(entry) + ", 0)");
}

void FileIndex::optimize(int kind) {
    const QByteArray name = table(kind);
    jet::Native(*m_database).execute("INSERT INTO " + name + "(" + name + ") VALUES ('optimize')");
}

} // namespace desk
