#pragma once

#include "core/records/DocumentColumns.h"
#include "platform/jet/Database.h"

#include <QString>

#include <optional>

namespace estimating {

/// What RFQ notes belong to: all estimates of a customer under one of his request numbers share
/// them.
struct RfqPair {
    qint64 custId = 0;
    QString rfqNo;
    bool operator==(const RfqPair&) const = default;
};

/// The notes of a pair; nothing if it has none.
std::optional<QString> rfqNotes(jet::Database& database, const RfqPair& pair);
/// The select of the notes of an estimate's pair, and the notes that it gives.
QString rfqNotesSelect(qint64 estNo);
std::optional<QString> rfqNotes(jet::Database& database, const QString& select);

/// The notes on a screen.
struct RfqNotesEntry {
    QString shown; ///< as the database had them when the pair was entered
    QString now;
    bool overwrite = false; ///< what another station wrote meanwhile gives way
};

/// Writes notes that were changed on the screen. Tells if another station has changed them too,
/// with nothing written.
std::optional<core::ChangedElsewhere> saveRfqNotes(jet::Database& database, const RfqPair& pair,
                                                   const RfqNotesEntry& entry);
/// Removes the notes of a pair that no estimate names any more, unless it is the one that is kept.
void dropUnusedRfqNotes(jet::Database& database, const RfqPair& pair, const RfqPair& kept = {});
/// The same for the pair of an estimate that is about to be deleted.
void dropRfqNotesOf(jet::Database& database, qint64 estNo);

/// The notes field of an estimate that is being entered: which text it has to show. `stored` is
/// what the database has for the pair.
class RfqNotesField {
  public:
    /// The pair as it is shown in Browse, or at the beginning of an entry. Returns the text to
    /// show.
    QString show(const RfqPair& pair, const std::optional<QString>& stored);
    const RfqPair& pair() const { return m_pair; }
    bool isOther(const RfqPair& pair) const { return !(pair == m_pair); }
    /// Another pair was typed or chosen, with `shown` in the field. Returns the text to show
    /// instead; nothing if the new pair has no notes: the text then goes with the estimate. What
    /// was typed in this entry stays, behind the notes that the pair has.
    std::optional<QString> enter(const RfqPair& pair, const std::optional<QString>& stored,
                                 const QString& shown);
    /// For the save.
    RfqNotesEntry entry(const QString& now) const { return {m_stored, now}; }

  private:
    RfqPair m_pair;
    QString m_stored; ///< what the database has for the pair
    QString m_given;  ///< what the field was given; other text was typed
};

} // namespace estimating
