#pragma once

#include "estimating/Routing.h"

#include <optional>
#include <vector>

namespace estimating {

/// The notes of a routing while its document is open. Operations live on the screen until the save,
/// notes are written at once; three values of zero keep what is provisional apart:
/// - document 0: the note belongs to the document that is being added;
/// - SeqNo 0: its operation was removed since the last save, the note is parked;
/// - ID 0: the note isn't bound to a saved operation row yet. Otherwise ID is that row's, by which
///   Cancel finds the note's old place.
/// Rows of document 0 carry no mark of the station, so two that add at once share them.
class NoteStaging {
  public:
    /// `documentNo` is 0 while the document is being added.
    NoteStaging(jet::Database& database, const RoutingKind& kind, qint64 documentNo)
        : m_database(database), m_kind(kind), m_documentNo(documentNo) {}

    /// The note of the row at a place (from 1); nothing if it has none.
    std::optional<QString> note(qint64 seqNo) const;
    /// What the note dialog's OK does: the text replaces the note or becomes one, and an empty text
    /// deletes it. Returns whether the row has a note now. One that becomes a note is bound to the
    /// saved row `id`, where that is told.
    bool write(qint64 seqNo, const QString& text, qint64 id = 0);
    /// A new note, not bound to a saved row.
    void stage(qint64 seqNo, const QString& text);

    /// A row was put at `place` (from 1) into a routing of `rowsBefore` rows: the notes at and
    /// after it move up, those of the schedule before them. A non-empty default note is staged.
    void rowInserted(int place, int rowsBefore, const QString& defaultNote);
    /// The row at `place` was taken out: its note is parked (or deleted), later ones move down.
    void rowRemoved(int place, int rowsBefore);

    /// The row at `from` was moved to `to` (both from 1): notes and schedule rows go along.
    void rowMoved(int from, int to);
    /// A row that had been taken out was put back to `place`: what was parked of it comes back, and
    /// `text` where its note isn't among that. `id` is the saved row's, 0 if there is none.
    void rowRestored(int place, int rowsBefore, qint64 id, qint64 operNo, const QString& text);

    /// In the transaction of a save, after the rows: new notes get the document's number, parked
    /// ones go, those of rows that stayed follow them, and all are bound to their rows.
    void adopt(qint64 savedNo);
    /// Throws away what is new and puts the notes of a saved document back to their places. The
    /// text of a changed note and moved schedule rows are not put back.
    void cancel();
    /// Throws away what is new in this document alone, and puts the others back.
    void restart();
    /// An entry goes on that another run began: the notes of `stored`, the rows as they are saved,
    /// go to the places that they have among `rows`, and what was newly written there is staged
    /// again. Marks the rows that have a note.
    void takeUp(const std::vector<OperRow>& stored, std::vector<OperRow>& rows);
    /// Puts the notes of a saved document back to the rows that they are bound to: a station that
    /// ended inside an edit has left them elsewhere.
    void putBack();

  private:
    QString where(qint64 seqNo) const;
    /// Moves what stands at places from `first` to `last` by one.
    void shift(const QString& table, int first, int last, bool up);
    void park(const QString& table, int place);
    QStringList tables() const;
    jet::Database& m_database;
    const RoutingKind& m_kind;
    qint64 m_documentNo;
};

/// Default note in front, a line break, then the other note; either may be empty.
QString joinedNotes(const QString& defaultNote, const QString& otherNote);

/// Stages the default notes that were wanted, and marks their rows. `chosen` and `rows` are
/// matched by operation.
void stageDefaultNotes(jet::Database& database, const RoutingKind& kind,
                       const std::vector<ChosenOperation>& chosen, std::vector<OperRow>& rows);

/// Stages the notes of a copy under the document that is being added: default notes of the
/// operations, and behind them the notes of the document copied from, whose rows as they are stored
/// `rows` must be. The marks of `rows` tell afterwards which have one.
void stageCopiedNotes(jet::Database& database, const RoutingKind& kind, std::vector<OperRow>& rows,
                      const RoutingKind& fromKind, qint64 fromNo, bool useDefaultNotes,
                      bool carryNotes);

/// The notes of the stored rows of a document, one for each; empty where there is none.
QStringList notesOf(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                    const std::vector<OperRow>& rows);

} // namespace estimating
