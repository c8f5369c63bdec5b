#include "estimating/NoteStaging.h"

#include "platform/values/Literals.h"
#include "platform/values/Text.h"

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

bool NoteStaging::write(qint64 seqNo, const QString& text) {
    const QString& table = m_kind.noteTable;
    jet::Transaction transaction(m_database);
    if (text.isEmpty()) {
        m_database.execute(u"Delete from "_s + table + where(seqNo));
    } else if (note(seqNo)) {
        m_database.execute(u"UPDATE "_s + table + u" SET "_s + table + u".OperNotes = '"_s +
                           values::quoted(text) + u"'"_s + where(seqNo));
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

void NoteStaging::move(const QString& table, int from, int to) {
    m_database.execute(u"Update "_s + table + u" set SeqNo = "_s + num(to) + where(from));
}

void NoteStaging::rowInserted(int place, int rowsBefore, const QString& defaultNote) {
    const bool saved = m_documentNo != 0;
    jet::Transaction transaction(m_database);
    for (int i = rowsBefore; i >= place; --i) {
        if (saved && !m_kind.scheduleTable.isEmpty())
            move(m_kind.scheduleTable, i, i + 1);
        move(m_kind.noteTable, i, i + 1);
    }
    if (!defaultNote.isEmpty())
        stage(place, defaultNote);
    transaction.commit();
}

void NoteStaging::rowRemoved(int place, int rowsBefore) {
    const bool saved = m_documentNo != 0;
    const bool schedule = saved && !m_kind.scheduleTable.isEmpty();
    jet::Transaction transaction(m_database);
    if (saved || m_kind.parksNotesOfNewDocument)
        move(m_kind.noteTable, place, 0);
    else
        m_database.execute(u"Delete from "_s + m_kind.noteTable + where(place));
    if (schedule)
        move(m_kind.scheduleTable, place, 0);
    for (int i = place + 1; i <= rowsBefore; ++i) {
        if (schedule)
            move(m_kind.scheduleTable, i, i - 1);
        move(m_kind.noteTable, i, i - 1);
    }
    transaction.commit();
}

void NoteStaging::adopt(qint64 savedNo, int rows) {
    const QString& table = m_kind.noteTable;
    const QString& key = m_kind.documentKey;
    const auto deleteParked = [&] {
        m_database.execute(u"Delete * from "_s + table + u" where SeqNo = 0"_s);
        if (!m_kind.scheduleTable.isEmpty()) {
            m_database.execute(u"Delete * from "_s + m_kind.scheduleTable + u" where SeqNo = 0"_s);
        }
    };
    jet::Transaction transaction(m_database);
    if (m_kind.deletesParkedFirst)
        deleteParked();
    m_database.execute(u"Update "_s + table + u" set "_s + key + u" = "_s + num(savedNo) +
                       u" where "_s + key + u" = 0"_s);
    if (!m_kind.deletesParkedFirst)
        deleteParked();
    for (int i = 1; i <= rows; ++i) {
        const QString place =
            u" where "_s + key + u" = "_s + num(savedNo) + u" and SeqNo = "_s + num(i);
        const jet::Value id = m_database.lookup(u"Select ID from "_s + m_kind.operTable + place);
        if (id.isNull())
            continue;
        m_database.execute(u"Update "_s + table + u" set ID = "_s + id.toText() + place);
    }
    transaction.commit();
    m_documentNo = savedNo;
}

void NoteStaging::cancel() {
    const QString& table = m_kind.noteTable;
    const QString& key = m_kind.documentKey;
    jet::Transaction transaction(m_database);
    m_database.execute(u"Delete * from "_s + table + u" where "_s + key + u" = 0"_s);
    m_database.execute(u"Delete * from "_s + table + u" where ID = 0"_s);
    if (m_documentNo != 0) {
        jet::Recordset saved =
            m_database.openRecordset(u"Select SeqNo,ID from "_s + m_kind.operTable + u" where "_s +
                                         key + u"="_s + num(m_documentNo) + u" ORDER BY SeqNo"_s,
                                     jet::RecordsetType::Snapshot);
        for (; !saved.eof(); saved.moveNext()) {
            m_database.execute(u"Update "_s + table + u" set SeqNo = "_s + saved.text(u"SeqNo") +
                               u" where ID = "_s + saved.text(u"ID"));
        }
    }
    transaction.commit();
}

QString joinedNotes(const QString& defaultNote, const QString& otherNote) {
    if (defaultNote.isEmpty() || otherNote.isEmpty())
        return defaultNote + otherNote;
    return defaultNote + u"\r\n"_s + otherNote;
}

void stageDefaultNotes(jet::Database& database, const RoutingKind& kind,
                       const std::vector<ChosenOperation>& chosen, std::vector<OperRow>& rows) {
    NoteStaging staging(database, kind, 0);
    jet::Transaction transaction(database);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto wanted =
            std::any_of(chosen.begin(), chosen.end(), [&](const ChosenOperation& one) {
                return one.operNo == rows[i].operNo && one.useNote;
            });
        if (!wanted)
            continue;
        const QString text = defaultNote(database, rows[i].operNo);
        if (text.isEmpty())
            continue;
        staging.stage(static_cast<qint64>(i) + 1, text);
        rows[i].hasNote = true;
    }
    transaction.commit();
}

void stageCopiedNotes(jet::Database& database, const RoutingKind& kind, std::vector<OperRow>& rows,
                      const RoutingKind& fromKind, qint64 fromNo, bool useDefaultNotes,
                      bool carryNotes) {
    NoteStaging staging(database, kind, 0);
    const NoteStaging source(database, fromKind, fromNo);
    jet::Transaction transaction(database);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const qint64 seqNo = static_cast<qint64>(i) + 1;
        const QString own =
            useDefaultNotes ? defaultNote(database, rows[i].description) : QString();
        const QString carried = carryNotes ? source.note(seqNo).value_or(QString()) : QString();
        const QString text = joinedNotes(own, carried);
        rows[i].hasNote = !text.isEmpty();
        if (!text.isEmpty())
            staging.stage(seqNo, text);
    }
    transaction.commit();
}

} // namespace estimating
