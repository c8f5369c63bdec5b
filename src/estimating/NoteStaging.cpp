#include "estimating/NoteStaging.h"

#include "platform/values/Text.h"

namespace estimating {

namespace {

QString num(qint64 n) {
    return QString::number(n);
}

} // namespace

QString NoteStaging::where(qint64 seqNo) const {
    return QStringLiteral(" where ") + m_kind.documentKey + QStringLiteral(" = ") +
           num(m_documentNo) + QStringLiteral(" and SeqNo = ") + num(seqNo);
}

std::optional<QString> NoteStaging::note(qint64 seqNo) const {
    jet::Recordset set = m_database.openRecordset(QStringLiteral("select OperNotes from ") +
                                                      m_kind.noteTable + where(seqNo),
                                                  jet::RecordsetType::Snapshot);
    if (set.isEmpty())
        return std::nullopt;
    return set.text(u"OperNotes");
}

bool NoteStaging::write(qint64 seqNo, const QString& text) {
    const QString& table = m_kind.noteTable;
    jet::Transaction transaction(m_database);
    if (text.isEmpty()) {
        m_database.execute(QStringLiteral("Delete from ") + table + where(seqNo));
    } else if (note(seqNo)) {
        m_database.execute(QStringLiteral("UPDATE ") + table + QStringLiteral(" SET ") + table +
                           QStringLiteral(".OperNotes = '") + values::quoted(text) +
                           QStringLiteral("'") + where(seqNo));
    } else {
        // Without an ID the column takes its default 0: the note isn't bound to a saved row.
        m_database.execute(QStringLiteral("Insert into ") + table + QStringLiteral("(") +
                           m_kind.documentKey + QStringLiteral(",SeqNo,OperNotes) VALUES(") +
                           num(m_documentNo) + QStringLiteral(",") + num(seqNo) +
                           QStringLiteral(",'") + values::quoted(text) + QStringLiteral("')"));
    }
    transaction.commit();
    return !text.isEmpty();
}

void NoteStaging::stage(qint64 seqNo, const QString& text) {
    m_database.execute(QStringLiteral("Insert into ") + m_kind.noteTable + QStringLiteral(" (ID,") +
                       m_kind.documentKey + QStringLiteral(",Seqno,OperNotes) values (0,") +
                       num(m_documentNo) + QStringLiteral(",") + num(seqNo) + QStringLiteral(",'") +
                       values::quoted(text) + QStringLiteral("')"));
}

void NoteStaging::move(const QString& table, int from, int to) {
    m_database.execute(QStringLiteral("Update ") + table + QStringLiteral(" set SeqNo = ") +
                       num(to) + where(from));
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
        m_database.execute(QStringLiteral("Delete from ") + m_kind.noteTable + where(place));
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
        m_database.execute(QStringLiteral("Delete * from ") + table +
                           QStringLiteral(" where SeqNo = 0"));
        if (!m_kind.scheduleTable.isEmpty()) {
            m_database.execute(QStringLiteral("Delete * from ") + m_kind.scheduleTable +
                               QStringLiteral(" where SeqNo = 0"));
        }
    };
    jet::Transaction transaction(m_database);
    if (m_kind.deletesParkedFirst)
        deleteParked();
    m_database.execute(QStringLiteral("Update ") + table + QStringLiteral(" set ") + key +
                       QStringLiteral(" = ") + num(savedNo) + QStringLiteral(" where ") + key +
                       QStringLiteral(" = 0"));
    if (!m_kind.deletesParkedFirst)
        deleteParked();
    for (int i = 1; i <= rows; ++i) {
        const QString place = QStringLiteral(" where ") + key + QStringLiteral(" = ") +
                              num(savedNo) + QStringLiteral(" and SeqNo = ") + num(i);
        const jet::Value id =
            m_database.lookup(QStringLiteral("Select ID from ") + m_kind.operTable + place);
        if (id.isNull())
            continue;
        m_database.execute(QStringLiteral("Update ") + table + QStringLiteral(" set ID = ") +
                           id.toText() + place);
    }
    transaction.commit();
    m_documentNo = savedNo;
}

void NoteStaging::cancel() {
    const QString& table = m_kind.noteTable;
    const QString& key = m_kind.documentKey;
    jet::Transaction transaction(m_database);
    m_database.execute(QStringLiteral("Delete * from ") + table + QStringLiteral(" where ") + key +
                       QStringLiteral(" = 0"));
    m_database.execute(QStringLiteral("Delete * from ") + table + QStringLiteral(" where ID = 0"));
    if (m_documentNo != 0) {
        jet::Recordset saved = m_database.openRecordset(
            QStringLiteral("Select SeqNo,ID from ") + m_kind.operTable + QStringLiteral(" where ") +
                key + QStringLiteral("=") + num(m_documentNo) + QStringLiteral(" ORDER BY SeqNo"),
            jet::RecordsetType::Snapshot);
        for (; !saved.eof(); saved.moveNext()) {
            m_database.execute(QStringLiteral("Update ") + table + QStringLiteral(" set SeqNo = ") +
                               saved.text(u"SeqNo") + QStringLiteral(" where ID = ") +
                               saved.text(u"ID"));
        }
    }
    transaction.commit();
}

QString joinedNotes(const QString& defaultNote, const QString& otherNote) {
    if (defaultNote.isEmpty() || otherNote.isEmpty())
        return defaultNote + otherNote;
    return defaultNote + QStringLiteral("\r\n") + otherNote;
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
