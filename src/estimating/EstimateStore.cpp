#include "estimating/EstimateStore.h"

#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

namespace estimating {

using jet::Value;

namespace {

constexpr std::array<char16_t, breakCount> breakLetters{u'A', u'B', u'C', u'D', u'E'};

QString breakColumn(const char16_t* stem, std::size_t i) {
    return QString::fromUtf16(stem) + QChar(breakLetters[i]);
}

/// Runs a step of a save or delete; its name goes behind the engine's text if it fails.
template <class Work>
void step(const char16_t* name, Work work) {
    try {
        work();
    } catch (const jet::Error& error) {
        throw jet::Error(error.number(), error.text() + u"\r\n"_s + QString::fromUtf16(name));
    }
}

/// Writes the columns of a header; over an existing row only the prices and those that differ from
/// what was shown, so that another station's change of the others stays.
void writeHeader(jet::Recordset& rows, const EstimateHeader& header, const EstimateHeader* before) {
    const auto put = [&](QStringView column, auto member) {
        if (!before || header.*member != before->*member)
            rows.set(column, header.*member);
    };
    put(u"CustID", &EstimateHeader::custId);
    put(u"RFQNo", &EstimateHeader::rfqNo);
    put(u"Description", &EstimateHeader::description);
    put(u"PartNo", &EstimateHeader::partNo);
    put(u"Material", &EstimateHeader::material);
    put(u"Quantity", &EstimateHeader::quantity);
    put(u"EstDate", &EstimateHeader::estDate);
    put(u"EstShopRate", &EstimateHeader::shopRate);
    put(u"OneShopRate", &EstimateHeader::oneShopRate);
    for (std::size_t i = 0; i < header.breaks.size(); ++i) {
        const PriceBreak& one = header.breaks[i];
        rows.set(breakColumn(u"QtyBreak", i), one.quantity);
        rows.set(breakColumn(u"QtyDiscount", i), one.discount);
        rows.set(breakColumn(u"QtyPrice", i), one.price);
        rows.set(breakColumn(u"QtyQP", i), one.quoted);
        rows.set(breakColumn(u"QtyTotal", i), one.total);
    }
    put(u"EstNotes", &EstimateHeader::estNotes);
    put(u"TravelerNotes", &EstimateHeader::travelerNotes);
    put(u"JobNotes", &EstimateHeader::jobNotes);
    put(u"AssemblyEstno", &EstimateHeader::assemblyEstNo);
}

QStringList basisOf(jet::Database& database, const QString& select) {
    QStringList basis;
    jet::Recordset set = database.openRecordset(select, jet::RecordsetType::Snapshot);
    const int columns = static_cast<int>(set.fieldNames().size());
    for (; !set.eof(); set.moveNext()) {
        for (int column = 0; column < columns; ++column)
            basis << set.field(column).toText();
    }
    return basis;
}

QStringList headerBasis(jet::Database& database, qint64 estNo) {
    return basisOf(database, u"SELECT Quantity, EstShopRate, OneShopRate, QtyBreakA, "
                             "QtyBreakB, QtyBreakC, QtyBreakD, QtyBreakE, QtyDiscountA, "
                             "QtyDiscountB, QtyDiscountC, QtyDiscountD, QtyDiscountE, QtyQPA, "
                             "QtyQPB, QtyQPC, QtyQPD, QtyQPE FROM Estimate WHERE EstNo = "_s +
                                 QString::number(estNo));
}

QStringList operationBasis(jet::Database& database, qint64 estNo) {
    return basisOf(database, u"SELECT OperNo, OperTime_Amount, OperShopRate FROM "
                             "EstOper WHERE EstNo = "_s +
                                 QString::number(estNo) + u" ORDER BY SeqNo"_s);
}

QStringList fixedCostBasis(jet::Database& database, qint64 estNo) {
    return basisOf(database, u"SELECT ItemNo, UnitPrice, Quantity, CostAmount FROM "
                             "EstMiscCost WHERE EstNo = "_s +
                                 QString::number(estNo) +
                                 u" ORDER BY ItemNo, Quantity, UnitPrice"_s);
}

void expectSame(const QStringList& now, const QStringList& before) {
    if (now != before)
        throw ChangedElsewhere();
}

QString pairOf(qint64 custId, const QString& rfqNo) {
    return u"CustID="_s + QString::number(custId) + u" and RFQNo='"_s + values::quoted(rfqNo) +
           u"'"_s;
}

} // namespace

QString estimateRows() {
    return u"SELECT * FROM Estimate ORDER BY EstNo"_s;
}

std::optional<Complaint> checkDraft(const EstimateDraft& draft) {
    const EstimateHeader& header = draft.header;
    if (header.rfqNo.trimmed().isEmpty())
        return Complaint{u"Please enter Rfq No."_s, u"txtRfqno"_s};
    if (header.partNo.trimmed().isEmpty())
        return Complaint{u"Please enter Part No."_s, u"txtPartno"_s};
    if (header.quantity <= 0) {
        return Complaint{u"Please enter a Quantity greater than 0"_s, u"txtQuantity"_s};
    }
    if (header.custId == 0)
        return Complaint{u"Please select a Customer"_s, u"dbcCustomer"_s};
    if (!header.estDate) {
        return Complaint{u"Please enter Estimate Date!"_s, u"txtEstDate"_s};
    }
    if (draft.operations.empty()) {
        return Complaint{u"Please enter at least one operation"_s, u"sprOper"_s};
    }
    return std::nullopt;
}

CostingBasis costingBasis(jet::Database& database, qint64 estNo) {
    return {headerBasis(database, estNo), operationBasis(database, estNo),
            fixedCostBasis(database, estNo)};
}

qint64 saveEstimate(jet::Database& database, jet::Recordset& rows, qint64 estNo,
                    EstimateDraft& draft, const EstimateBefore* before) {
    jet::Transaction transaction(database);
    step(u"Update", [&] {
        if (estNo != 0) {
            // Where another station deleted the estimate the set stands on another one.
            if (rows[u"EstNo"].toLong() != estNo)
                throw jet::Error(jet::errors::rowDeleted, u"Record is deleted."_s);
            rows.edit();
            if (before)
                expectSame(headerBasis(database, estNo), before->basis.header);
        } else {
            try {
                rows.addNew();
            } catch (const jet::Error&) {
                rows.addNew();
            }
        }
        writeHeader(rows, draft.header, before ? &before->header : nullptr);
        rows.update();
        if (estNo == 0)
            estNo = rows.lastAddedKey().toLong();
    });
    const QString ofEstimate = u" WHERE EstNo = "_s + QString::number(estNo);
    step(u"Delete EstOper", [&] {
        if (before)
            expectSame(operationBasis(database, estNo), before->basis.operations);
        database.execute(u"DELETE FROM EstOper"_s + ofEstimate);
    });
    step(u"Delete EstMiscCost", [&] {
        if (before)
            expectSame(fixedCostBasis(database, estNo), before->basis.fixedCosts);
        database.execute(u"DELETE FROM EstMiscCost"_s + ofEstimate);
    });
    step(u"Insert EstOper",
         [&] { insertOperRows(database, estimateRouting(), estNo, draft.operations); });
    step(u"Insert EstMiscCost",
         [&] { insertMiscRows(database, estimateRouting(), estNo, draft.fixedCosts); });
    step(u"Commit Trans", [&] { transaction.commit(); });
    return estNo;
}

void deleteEstimate(jet::Database& database, jet::Recordset& rows, qint64 estNo) {
    const QString ofEstimate = u" WHERE EstNo="_s + QString::number(estNo);
    jet::Transaction transaction(database);
    step(u"Delete EstOper", [&] { database.execute(u"DELETE FROM EstOper"_s + ofEstimate); });
    step(u"Delete EstMiscCost",
         [&] { database.execute(u"DELETE FROM EstMiscCost"_s + ofEstimate); });
    step(u"Delete EstOperNote",
         [&] { database.execute(u"Delete from EstOperNote"_s + ofEstimate); });
    step(u"Delete Estimate", [&] { rows.remove(); });
    step(u"Commit Trans", [&] { transaction.commit(); });
}

QString rfqNotes(jet::Database& database, qint64 custId, const QString& rfqNo) {
    return database.lookup(u"SELECT rfqnotes FROM rfqnotes WHERE "_s + pairOf(custId, rfqNo))
        .toText();
}

bool hasRfqNotes(jet::Database& database, qint64 custId, const QString& rfqNo) {
    return database.hasRows(u"SELECT rfqnotes FROM rfqnotes WHERE "_s + pairOf(custId, rfqNo));
}

void writeRfqNotes(jet::Database& database, qint64 custId, const QString& rfqNo,
                   const QString& notes) {
    const QString text = u"'"_s + values::quoted(notes) + u"'"_s;
    if (hasRfqNotes(database, custId, rfqNo)) {
        database.execute(u"UPDATE RfqNotes SET rfqnotes = "_s + text + u" WHERE "_s +
                         pairOf(custId, rfqNo));
    } else {
        database.execute(u"INSERT INTO RfqNotes (CustID, RFQNo, rfqnotes) VALUES("_s +
                         QString::number(custId) + u",'"_s + values::quoted(rfqNo) + u"',"_s +
                         text + u")"_s);
    }
}

void dropUnusedRfqNotes(jet::Database& database, qint64 custId, const QString& rfqNo) {
    const QString pair = pairOf(custId, rfqNo);
    jet::Transaction transaction(database);
    const Value count = database.lookup(u"SELECT COUNT(*) FROM Estimate WHERE "_s + pair);
    if (count.toLong() == 0)
        database.execute(u"DELETE FROM RfqNotes WHERE "_s + pair);
    transaction.commit();
}

void saveRfqNotes(jet::Database& database, const EstimateHeader& saved, const QString& oldRfqNo,
                  const QString& notes) {
    jet::Transaction transaction(database);
    if (!oldRfqNo.isEmpty() && oldRfqNo != saved.rfqNo)
        dropUnusedRfqNotes(database, saved.custId, oldRfqNo);
    writeRfqNotes(database, saved.custId, saved.rfqNo, notes);
    transaction.commit();
}

std::optional<EstimateDraft> draftFromJob(jet::Database& database, qint64 jobNo,
                                          const QString& currencySymbol) {
    const jet::Recordset job = database.openRecordset(
        u"SELECT * FROM job WHERE jobno="_s + QString::number(jobNo), jet::RecordsetType::Snapshot);
    if (job.isEmpty())
        return std::nullopt;
    EstimateDraft draft;
    EstimateHeader& header = draft.header;
    header.custId = job[u"CustID"].toLong();
    header.partNo = job.text(u"PartNo");
    header.description = job.text(u"Description");
    header.quantity = job[u"Quantity"].toLong();
    header.shopRate = job[u"JobShopRate"].toCurrency();
    header.oneShopRate = job[u"OneShopRate"].toBool();
    header.travelerNotes = job.text(u"TravelerNotes");
    header.jobNotes = job.text(u"JobNotes");
    header.material = job.text(u"Material");
    header.breaks[0].quantity = static_cast<double>(header.quantity);
    header.breaks[0].quoted = job[u"JobShopCost"].toCurrency();
    draft.operations = loadOperRows(database, jobRouting(), jobNo, currencySymbol);
    for (OperRow& row : draft.operations) {
        row.hasNote = false;
        row.located = 0;
        row.status = u" "_s;
        row.estimated.reset();
    }
    draft.fixedCosts = loadMiscRows(database, jobRouting(), jobNo);
    return draft;
}

} // namespace estimating
