#include "estimating/NoteStaging.h"

#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QHash>

#include <algorithm>

namespace estimating {

namespace {

QString num(qint64 n) {
    return QString::number(n);
}

} // namespace

QString NoteStaging::where(qint64 seqNo) const {
    return u" where "_s + m_kind.documentKey + u" = "_s + num(m_documentNo) + u" and SeqNo = "_s +
           num(seqNo);
}

std::optional<QString> NoteStaging::note(qint64 seqNo) const {
    jet::Recordset set =
        m_database.openRecordset(u"select OperNotes from "_s + m_kind.noteTable + where(seqNo),
                                 jet::RecordsetType::Snapshot);
    if (set.isEmpty())
        return std::nullopt;
    return set.text(u"OperNotes");
}

bool NoteStaging::write(qint64 seqNo, const QString& text, qint64 id) {
    const QString& table = m_kind.noteTable;
    jet::Transaction transaction(m_database);
    if (text.isEmpty()) {
        m_database.execute(u"Delete from "_s + table + where(seqNo));
    } else if (note(seqNo)) {
        m_database.execute(u"UPDATE "_s + table + u" SET "_s + table + u".OperNotes = '"_s +
                           values::quoted(text) + u"'"_s + where(seqNo));
    } else if (id != 0) {
        m_database.execute(u"Insert into "_s + table + u"(ID,"_s + m_kind.documentKey +
                           u",SeqNo,OperNotes) VALUES("_s + num(id) + u","_s + num(m_documentNo) +
                           u","_s + num(seqNo) + u",'"_s + values::quoted(text) + u"')"_s);
    } else {
        // Without an ID the column takes its default 0: the note isn't bound to a saved row.
        m_database.execute(u"Insert into "_s + table + u"("_s + m_kind.documentKey +
                           u",SeqNo,OperNotes) VALUES("_s + num(m_documentNo) + u","_s +
                           num(seqNo) + u",'"_s + values::quoted(text) + u"')"_s);
    }
    transaction.commit();
    return !text.isEmpty();
}

void NoteStaging::stage(qint64 seqNo, const QString& text) {
    m_database.execute(u"Insert into "_s + m_kind.noteTable + u" (ID,"_s + m_kind.documentKey +
                       u",Seqno,OperNotes) values (0,"_s + num(m_documentNo) + u","_s + num(seqNo) +
                       u",'"_s + values::quoted(text) + u"')"_s);
}

QStringList NoteStaging::tables() const {
    if (m_documentNo != 0 && !m_kind.scheduleTable.isEmpty())
        return {m_kind.scheduleTable, m_kind.noteTable};
    return {m_kind.noteTable};
}

void NoteStaging::shift(const QString& table, int first, int last, bool up) {
    if (first > last)
        return;
    m_database.execute(u"Update "_s + table + u" set SeqNo = SeqNo "_s +
                       (up ? u"+ 1"_s : u"- 1"_s) + u" where "_s + m_kind.documentKey + u" = "_s +
                       num(m_documentNo) + u" and SeqNo >= "_s + num(first) + u" and SeqNo <= "_s +
                       num(last));
}

void NoteStaging::park(const QString& table, int place) {
    m_database.execute(u"UPDATE "_s + table + u" SET SeqNo = 0"_s + where(place));
}

void NoteStaging::rowInserted(int place, int rowsBefore, const QString& defaultNote) {
    jet::Transaction transaction(m_database);
    for (const QString& table : tables())
        shift(table, place, rowsBefore, true);
    if (!defaultNote.isEmpty())
        stage(place, defaultNote);
    transaction.commit();
}

void NoteStaging::rowRemoved(int place, int rowsBefore) {
    jet::Transaction transaction(m_database);
    for (const QString& table : tables()) {
        if (m_documentNo == 0 && !m_kind.parksNotesOfNewDocument)
            m_database.execute(u"Delete from "_s + table + where(place));
        else
            park(table, place);
        shift(table, place + 1, rowsBefore, false);
    }
    transaction.commit();
}

void NoteStaging::rowMoved(int from, int to) {
    const int first = std::min(from, to);
    const int last = std::max(from, to);
    const QString set = u" SET SeqNo = IIf(SeqNo = "_s + num(from) + u", "_s + num(to) +
                        (from < to ? u", SeqNo - 1)"_s : u", SeqNo + 1)"_s) + u" WHERE "_s +
                        m_kind.documentKey + u" = "_s + num(m_documentNo) +
                        u" AND SeqNo BETWEEN "_s + num(first) + u" AND "_s + num(last);
    jet::Transaction transaction(m_database);
    for (const QString& table : tables())
        m_database.execute(u"UPDATE "_s + table + set);
    transaction.commit();
}

void NoteStaging::rowRestored(int place, int rowsBefore, qint64 id, qint64 operNo,
                              const QString& text) {
    jet::Transaction transaction(m_database);
    rowInserted(place, rowsBefore, {});
    const QString back = u" SET SeqNo = "_s + num(place) + where(0);
    if (m_documentNo != 0 && !m_kind.scheduleTable.isEmpty()) {
        m_database.execute(u"UPDATE "_s + m_kind.scheduleTable + back + u" and OperNo = "_s +
                           num(operNo));
    }
    const bool bound = id != 0 && m_database.execute(u"UPDATE "_s + m_kind.noteTable + back +
                                                     u" and ID = "_s + num(id)) > 0;
    if (!bound && !text.isEmpty())
        stage(place, text);
    transaction.commit();
}

void NoteStaging::adopt(qint64 savedNo) {
    const QString& table = m_kind.noteTable;
    const QString& key = m_kind.documentKey;
    const auto deleteParked = [&] {
        m_database.execute(u"Delete * from "_s + table + u" where SeqNo = 0"_s);
        if (!m_kind.scheduleTable.isEmpty())
            m_database.execute(u"Delete * from "_s + m_kind.scheduleTable + u" where SeqNo = 0"_s);
    };
    jet::Transaction transaction(m_database);
    const bool wasSaved = m_documentNo != 0;
    m_documentNo = savedNo;
    if (wasSaved)
        putBack();
    if (m_kind.deletesParkedFirst)
        deleteParked();
    m_database.execute(u"Update "_s + table + u" set "_s + key + u" = "_s + num(savedNo) +
                       u" where "_s + key + u" = 0"_s);
    if (!m_kind.deletesParkedFirst)
        deleteParked();
    const QString& rows = m_kind.operTable;
    m_database.execute(u"UPDATE "_s + table + u" INNER JOIN "_s + rows + u" ON ("_s + table +
                       u"."_s + key + u" = "_s + rows + u"."_s + key + u") AND ("_s + table +
                       u".SeqNo = "_s + rows + u".SeqNo) SET "_s + table + u".ID = "_s + rows +
                       u".ID WHERE "_s + rows + u"."_s + key + u" = "_s + num(savedNo) +
                       u" AND "_s + table + u".ID <> "_s + rows + u".ID"_s);
    transaction.commit();
}

void NoteStaging::putBack() {
    const QString& table = m_kind.noteTable;
    const QString& rows = m_kind.operTable;
    const QString& key = m_kind.documentKey;
    m_database.execute(u"UPDATE "_s + table + u" INNER JOIN "_s + rows + u" ON "_s + table +
                       u".ID = "_s + rows + u".ID SET "_s + table + u".SeqNo = "_s + rows +
                       u".SeqNo WHERE "_s + rows + u"."_s + key + u" = "_s + num(m_documentNo) +
                       u" AND "_s + table + u".SeqNo <> "_s + rows + u".SeqNo"_s);
}

void NoteStaging::restart() {
    jet::Transaction transaction(m_database);
    m_database.execute(u"Delete * from "_s + m_kind.noteTable + u" where "_s + m_kind.documentKey +
                       u" = "_s + num(m_documentNo) + u" and ID = 0"_s);
    putBack();
    transaction.commit();
}

void NoteStaging::takeUp(const std::vector<OperRow>& stored, std::vector<OperRow>& rows) {
    const QString& table = m_kind.noteTable;
    jet::Transaction transaction(m_database);
    if (m_documentNo == 0)
        m_database.execute(u"Delete * from "_s + table + u" where "_s + m_kind.documentKey +
                           u" = 0"_s);
    else
        restart();

    std::vector<std::vector<jet::Value>> places, schedule;
    QHash<qint64, qint64> placeOf;
    for (std::size_t i = 0; i < rows.size(); ++i)
        placeOf.insert(rows[i].operNo, static_cast<qint64>(i) + 1);
    for (const OperRow& row : stored) {
        const qint64 place = placeOf.value(row.operNo, 0); // 0: it is parked
        places.push_back({row.id, place});
        schedule.push_back({m_documentNo, row.operNo, place});
    }
    m_database.updateRows(table, {u"ID"_s, u"SeqNo"_s}, 1, places);
    if (m_documentNo != 0 && !m_kind.scheduleTable.isEmpty()) {
        m_database.updateRows(m_kind.scheduleTable, {m_kind.documentKey, u"OperNo"_s, u"SeqNo"_s},
                              2, schedule);
    }

    QHash<qint64, QString> bound;
    jet::Recordset set = m_database.openRecordset(u"Select ID, OperNotes from "_s + table +
                                                      u" where "_s + m_kind.documentKey + u" = "_s +
                                                      num(m_documentNo) + u" and ID <> 0"_s,
                                                  jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext())
        bound.insert(set[u"ID"].toLong(), set.text(u"OperNotes"));
    std::vector<std::vector<jet::Value>> changed, added;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        OperRow& row = rows[i];
        const bool isBound = row.id != 0 && bound.contains(row.id);
        if (!row.newNote.isEmpty() && isBound)
            changed.push_back({row.id, row.newNote});
        else if (!row.newNote.isEmpty())
            added.push_back({0, m_documentNo, static_cast<qint64>(i) + 1, row.newNote});
        row.hasNote = isBound || !row.newNote.isEmpty();
    }
    m_database.updateRows(table, {u"ID"_s, u"OperNotes"_s}, 1, changed);
    m_database.insertRows(table, {u"ID"_s, m_kind.documentKey, u"SeqNo"_s, u"OperNotes"_s}, added);
    transaction.commit();
}

void NoteStaging::cancel() {
    const QString& table = m_kind.noteTable;
    jet::Transaction transaction(m_database);
    m_database.execute(u"Delete * from "_s + table + u" where "_s + m_kind.documentKey + u" = 0"_s);
    m_database.execute(u"Delete * from "_s + table + u" where ID = 0"_s);
    if (m_documentNo != 0)
        putBack();
    transaction.commit();
}

QString joinedNotes(const QString& defaultNote, const QString& otherNote) {
    if (defaultNote.isEmpty() || otherNote.isEmpty())
        return defaultNote + otherNote;
    return defaultNote + u"\r\n"_s + otherNote;
}

namespace {

/// The default notes of operations, by their numbers.
QHash<qint64, QString> defaultNotes(jet::Database& database, const std::vector<OperRow>& rows) {
    QHash<qint64, QString> notes;
    QStringList numbers;
    for (const OperRow& row : rows)
        numbers << num(row.operNo);
    if (numbers.isEmpty())
        return notes;
    jet::Recordset set = database.openRecordset(
        u"Select OperNo, [Note] from OperNote where OperNo in ("_s + numbers.join(u',') + u")"_s,
        jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext())
        notes.insert(set[u"OperNo"].toLong(), set.text(u"Note"));
    return notes;
}

/// Stages a note for each row that has one, and marks the rows.
void stageAll(jet::Database& database, const RoutingKind& kind, const QStringList& notes,
              std::vector<OperRow>& rows) {
    QString staged;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const QString& note = notes[static_cast<qsizetype>(i)];
        rows[i].hasNote = !note.isEmpty();
        rows[i].newNote = note;
        if (note.isEmpty())
            continue;
        staged += (staged.isEmpty() ? QString() : u" UNION ALL "_s) + u"SELECT 0, 0, "_s +
                  num(static_cast<qint64>(i) + 1) + u", '"_s + values::quoted(note) + u"'"_s;
    }
    if (!staged.isEmpty())
        database.execute(u"INSERT INTO "_s + kind.noteTable + u" (ID, "_s + kind.documentKey +
                         u", SeqNo, OperNotes) "_s + staged);
}

} // namespace

QStringList notesOf(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                    const std::vector<OperRow>& rows) {
    jet::Recordset set =
        database.openRecordset(u"Select ID, SeqNo, OperNotes from "_s + kind.noteTable +
                                   u" where "_s + kind.documentKey + u" = "_s + num(documentNo),
                               jet::RecordsetType::Snapshot);
    QHash<qint64, QString> byRow, byPlace;
    for (; !set.eof(); set.moveNext()) {
        byRow.insert(set[u"ID"].toLong(), set.text(u"OperNotes"));
        byPlace.insert(set[u"SeqNo"].toLong(), set.text(u"OperNotes"));
    }
    QStringList notes;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        // By the row that it is bound to, also while somebody's edit has it at another place.
        const bool bound = rows[i].id != 0 && byRow.contains(rows[i].id);
        notes << (bound ? byRow.value(rows[i].id) : byPlace.value(static_cast<qint64>(i) + 1));
    }
    return notes;
}

void stageDefaultNotes(jet::Database& database, const RoutingKind& kind,
                       const std::vector<ChosenOperation>& chosen, std::vector<OperRow>& rows) {
    const QHash<qint64, QString> defaults = defaultNotes(database, rows);
    QStringList notes;
    for (const OperRow& row : rows) {
        const auto wanted =
            std::any_of(chosen.begin(), chosen.end(), [&](const ChosenOperation& one) {
                return one.operNo == row.operNo && one.useNote;
            });
        notes << (wanted ? defaults.value(row.operNo) : QString());
    }
    stageAll(database, kind, notes, rows);
}

void stageCopiedNotes(jet::Database& database, const RoutingKind& kind, std::vector<OperRow>& rows,
                      const RoutingKind& fromKind, qint64 fromNo, bool useDefaultNotes,
                      bool carryNotes) {
    const QHash<qint64, QString> defaults =
        useDefaultNotes ? defaultNotes(database, rows) : QHash<qint64, QString>();
    QStringList notes = carryNotes ? notesOf(database, fromKind, fromNo, rows) : QStringList();
    notes.resize(static_cast<qsizetype>(rows.size()));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        QString& note = notes[static_cast<qsizetype>(i)];
        note = joinedNotes(defaults.value(rows[i].operNo), note);
        rows[i].id = 0;
    }
    stageAll(database, kind, notes, rows);
}

} // namespace estimating
