#pragma once

#include "desk/find/FileIndex.h"

#include <QSet>
#include <QString>

#include <map>
#include <optional>
#include <vector>

namespace desk {

/// A record that was found.
struct FoundRecord {
    int kind = 0;
    qint64 key = 0;
    QString name;   ///< the first of its texts
    QString detail; ///< the second
    QString beside;
    QString line; ///< what else holds the words, if these don't
    int score = 0;

    friend bool operator==(const FoundRecord&, const FoundRecord&) = default;
};

/// Finds records by number and by the words in their texts, on the thread of its database. Numbers,
/// and texts that have an index in the shop's database, are always as they are there; so is what is
/// new or among the latest of its kind, and nothing is given that doesn't hold the words any more.
class Finder {
  public:
    /// `indexPath`: of the index of a database file; empty for a server.
    Finder(jet::Database& shop, const QString& indexPath) : m_shop(shop), m_path(indexPath) {}

    /// The best ones of each of the kinds: kinds with better ones first, the best of a kind first.
    std::vector<FoundRecord> find(const QString& text, const QSet<int>& kinds);

  private:
    using Keys = std::map<int, std::vector<qint64>>; ///< by kind
    Keys candidates(const QString& text, const std::vector<QByteArray>& words,
                    const QSet<int>& kinds);
    void addIndexed(Keys& keys, const std::vector<QByteArray>& words, const QSet<int>& kinds);
    void addLatest(Keys& keys, const std::vector<QByteArray>& words, const QSet<int>& kinds);
    void readLatest(int kind);
    void readChanges();

    jet::Database& m_shop;
    QString m_path;
    std::optional<FileIndex> m_index;
    qint64 m_version = -1;
    std::map<int, FileIndex::Texts> m_latest;  ///< of each kind
    std::map<int, FileIndex::Texts> m_changes; ///< which the index may not have yet
};

} // namespace desk
