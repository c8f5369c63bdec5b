#include "estimating/RfqNotes.h"

#include "platform/values/Literals.h"
#include "platform/values/Text.h"

namespace estimating {

namespace {

QString where(const RfqPair& pair) {
    return u"CustID="_s + QString::number(pair.custId) + u" and RFQNo='"_s +
           values::quoted(pair.rfqNo) + u"'"_s;
}

} // namespace

std::optional<QString> rfqNotes(jet::Database& database, const RfqPair& pair) {
    return rfqNotes(database, u"SELECT rfqnotes FROM rfqnotes WHERE "_s + where(pair));
}

QString rfqNotesSelect(qint64 estNo) {
    return u"SELECT RfqNotes.rfqnotes FROM RfqNotes INNER JOIN Estimate ON (RfqNotes.CustID = "
           "Estimate.CustID) AND (RfqNotes.RFQNo = Estimate.RFQNo) WHERE Estimate.EstNo = "_s +
           QString::number(estNo);
}

std::optional<QString> rfqNotes(jet::Database& database, const QString& select) {
    const jet::Recordset row = database.openRecordset(select, jet::RecordsetType::Snapshot);
    if (row.isEmpty())
        return std::nullopt;
    return row.text(u"rfqnotes");
}

std::optional<core::ChangedElsewhere> saveRfqNotes(jet::Database& database, const RfqPair& pair,
                                                   const RfqNotesEntry& entry) {
    if (entry.now == entry.shown)
        return std::nullopt;
    const auto stored = rfqNotes(database, pair);
    const QString theirs = stored.value_or(QString());
    if (theirs == entry.now && stored)
        return std::nullopt;
    if (theirs != entry.shown && !entry.overwrite) {
        return core::ChangedElsewhere{u"R.F.Q. notes"_s, theirs, entry.now, u"rfqnotes"_s,
                                      u"txtNotes(2)"_s};
    }
    const QString text = u"'"_s + values::quoted(entry.now) + u"'"_s;
    if (stored) {
        database.execute(u"UPDATE RfqNotes SET rfqnotes = "_s + text + u" WHERE "_s + where(pair));
    } else {
        database.execute(u"INSERT INTO RfqNotes (CustID, RFQNo, rfqnotes) VALUES("_s +
                         QString::number(pair.custId) + u",'"_s + values::quoted(pair.rfqNo) +
                         u"',"_s + text + u")"_s);
    }
    return std::nullopt;
}

void dropUnusedRfqNotes(jet::Database& database, const RfqPair& pair, const RfqPair& kept) {
    if (pair == kept)
        return;
    database.execute(u"DELETE FROM RfqNotes WHERE "_s + where(pair) +
                     u" AND NOT EXISTS (SELECT EstNo FROM Estimate WHERE "_s + where(pair) + u')');
}

void dropRfqNotesOf(jet::Database& database, qint64 estNo) {
    const QString number = QString::number(estNo);
    const auto own = [&number](const QString& column) {
        return column + u" = (SELECT "_s + column + u" FROM Estimate WHERE EstNo = "_s + number +
               u')';
    };
    database.execute(u"DELETE FROM RfqNotes WHERE "_s + own(u"CustID"_s) + u" AND "_s +
                     own(u"RFQNo"_s) +
                     u" AND NOT EXISTS (SELECT EstNo FROM Estimate AS Other WHERE "
                     "Other.CustID = RfqNotes.CustID AND Other.RFQNo = RfqNotes.RFQNo AND "
                     "Other.EstNo <> "_s +
                     number + u')');
}

QString RfqNotesField::show(const RfqPair& pair, const std::optional<QString>& stored) {
    m_pair = pair;
    m_stored = stored.value_or(QString());
    m_given = m_stored;
    return m_given;
}

std::optional<QString> RfqNotesField::enter(const RfqPair& pair,
                                            const std::optional<QString>& stored,
                                            const QString& shown) {
    m_pair = pair;
    m_stored = stored.value_or(QString());
    if (!stored)
        return std::nullopt;
    const bool typed = shown != m_given && !shown.isEmpty() && shown != m_stored;
    m_given = m_stored;
    if (!typed)
        return m_stored;
    return m_stored.isEmpty() ? shown : m_stored + u"\r\n"_s + shown;
}

} // namespace estimating
