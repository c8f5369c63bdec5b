#pragma once

#include "platform/jet/Database.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace desk {

/// What is found in a database file by the pieces of its texts: a file of its own, which may be
/// deleted at any time and is then made again. The shop's own file knows nothing of it, since other
/// programs write there that couldn't keep it.
class FileIndex {
  public:
    using Texts = std::vector<std::pair<qint64, QByteArray>>; ///< by key, as they are searched

    /// Which keys of a kind it has: all from `low` to `high`. `turn` is where the next look at the
    /// older ones begins.
    struct Range {
        qint64 low = 0, high = 0, turn = 0;
    };

    /// Opens the file and makes what it lacks. Throws jet::Error.
    explicit FileIndex(const QString& path);
    ~FileIndex();
    FileIndex(FileIndex&&) noexcept;

    /// For a database at a place, in a folder.
    static QString pathFor(const QString& location, const QString& folder);

    /// Nothing of a kind that wasn't begun.
    std::optional<Range> range(int kind);
    /// The latest keys whose texts may hold all the words; none where no word has three letters.
    std::vector<qint64> candidates(int kind, const std::vector<QByteArray>& words, int most);
    /// What it has of the keys from `first` to `last`, in their order.
    Texts texts(int kind, qint64 first, qint64 last);

    /// Adds or changes texts, and takes keys out, with the range as it is then: all or nothing.
    void write(int kind, const Texts& put, const std::vector<qint64>& gone, const Range& range,
               bool isNew);
    /// The entry of the database's journal up to which it has all changes; 0 if none is known.
    qint64 journalEntry();
    void setJournalEntry(qint64 entry);
    /// Puts the pieces together, when very many were added.
    void optimize(int kind);

  private:
    std::unique_ptr<jet::Database> m_database;
};

} // namespace desk
