#pragma once

#include <QFile>
#include <QMap>
#include <QString>
#include <QStringList>

namespace takeover {

/// What a takeover found: kinds with their counts, the first records of each, and every value that
/// isn't in the new database as it stood in the old one, in a file that can be read back.
class Remarks {
  public:
    struct Place {
        QString table, column, key;
    };
    struct Entry {
        QString kind, table, column;
        qint64 count = 0;
        QStringList examples; ///< the first records
    };

    /// `valuesFile` takes the changed values, a line each, parted by tabs.
    explicit Remarks(const QString& valuesFile);

    void count(const QString& kind, const QString& table, const QString& column, qint64 rows = 1,
               const QString& example = {});
    /// A value that was made into another one.
    void changed(const QString& kind, const Place& place, const QString& before,
                 const QString& after);
    /// By kind, table and column.
    std::vector<Entry> entries() const;
    qint64 changedValues() const { return m_changed; }
    /// Writes out what is left. Throws keeping::Refusal where the disk is full.
    void finish();

  private:
    QMap<QString, Entry> m_entries;
    QFile m_values;
    qint64 m_changed = 0;
};

} // namespace takeover
