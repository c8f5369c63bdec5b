#include "estimating/EstimateStore.h"

#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

namespace estimating {

using core::column;
using core::DocumentColumn;

namespace {

/// The same column of the five price breaks.
template <class Member>
void addBreaks(std::vector<DocumentColumn>& columns, const char16_t* stem, const char16_t* field,
               Member PriceBreak::*member, const std::function<void(DocumentColumn&, int)>& say) {
    for (int i = 0; i < breakCount; ++i) {
        const QChar letter(u'A' + static_cast<char16_t>(i));
        DocumentColumn one = column<EstimateHeader>(
            QString::fromUtf16(stem) + letter, [ member, i ](auto& header) -> auto& {
                return header.breaks[static_cast<std::size_t>(i)].*member;
            });
        one.field(QString::fromUtf16(field) + u"(%1)"_s.arg(i));
        say(one, i);
        one.words += u" of break "_s + letter;
        columns.push_back(std::move(one));
    }
}

} // namespace

const core::DocumentColumns<EstimateHeader>& estimateColumns() {
    using Header = EstimateHeader;
    static const core::DocumentColumns<Header> all([] {
        std::vector<DocumentColumn> columns{
            column<Header>(u"CustID"_s, &Header::custId).field(u"dbcCustomer"_s, u"Customer"_s),
            column<Header>(u"RFQNo"_s, &Header::rfqNo).field(u"txtRfqno"_s, u"RFQ No."_s),
            column<Header>(u"PartNo"_s, &Header::partNo).field(u"txtPartno"_s, u"Part No."_s),
            column<Header>(u"Description"_s, &Header::description)
                .field(u"txtDescription"_s, u"Description"_s),
            column<Header>(u"EstDate"_s, &Header::estDate)
                .field(u"txtEstDate"_s, u"Date"_s)
                .copied(false),
            column<Header>(u"Quantity"_s, &Header::quantity)
                .field(u"txtQuantity"_s, u"Quantity"_s)
                .mask(u"#####0"_s),
            column<Header>(u"EstShopRate"_s, &Header::shopRate)
                .field(u"txtEstShopRate"_s, u"Hourly Rate"_s)
                .mask(u"#####0.00"_s)
                .secured(),
            column<Header>(u"OneShopRate"_s, &Header::oneShopRate),
            column<Header>(u"Material"_s, &Header::material)
                .field(u"txtMaterial"_s, u"Special Material Notes"_s),
            column<Header>(u"EstNotes"_s, &Header::estNotes)
                .field(u"txtNotes(0)"_s, u"Quote notes"_s),
            column<Header>(u"TravelerNotes"_s, &Header::travelerNotes)
                .field(u"txtNotes(1)"_s, u"Traveler notes"_s),
            column<Header>(u"JobNotes"_s, &Header::jobNotes)
                .field(u"txtNotes(3)"_s, u"Job notes"_s),
            column<Header>(u"AssemblyEstno"_s, &Header::assemblyEstNo).copied(false)};
        columns.back().words = u"Assembly"_s;
        addBreaks(columns, u"QtyBreak", u"txtQtyBreak", &PriceBreak::quantity,
                  [](DocumentColumn& one, int i) {
                      one.words = u"Quantity"_s;
                      one.mask(u"#####0"_s);
                      if (i == 0)
                          one.locked().computed();
                  });
        addBreaks(columns, u"QtyDiscount", u"txtQtyDiscount", &PriceBreak::discount,
                  [](DocumentColumn& one, int i) {
                      one.words = u"Discount"_s;
                      one.mask(u"##0.00"_s);
                      if (i == 0)
                          one.locked().computed();
                  });
        addBreaks(columns, u"QtyPrice", u"fpQtyPrice", &PriceBreak::price,
                  [](DocumentColumn& one, int) { one.locked().secured().computed(); });
        addBreaks(columns, u"QtyQP", u"fpQtyQP", &PriceBreak::quoted, [](DocumentColumn& one, int) {
            one.words = u"Quoted Price"_s;
            one.secured();
        });
        addBreaks(columns, u"QtyTotal", u"fpQtyTotal", &PriceBreak::total,
                  [](DocumentColumn& one, int) { one.locked().secured().computed(); });
        return columns;
    }());
    return all;
}

QString estimateRows() {
    return u"SELECT * FROM Estimate ORDER BY EstNo"_s;
}

std::optional<EstimateDraft> loadEstimate(jet::Database& database, qint64 estNo) {
    const jet::Recordset row =
        database.openRecordset(u"SELECT * FROM Estimate WHERE EstNo = "_s + QString::number(estNo),
                               jet::RecordsetType::Snapshot);
    if (row.isEmpty())
        return std::nullopt;
    return EstimateDraft{loadLines(database, estimateRouting(), estNo),
                         estimateColumns().load(row)};
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

EstimateCost reckonPrices(EstimateHeader& header, const RoutedLines& lines) {
    header.breaks[0].quantity = static_cast<double>(header.quantity);
    header.breaks[0].discount = 0;
    std::array<double, breakCount> discounts{};
    for (std::size_t i = 0; i < breakCount; ++i)
        discounts[i] = header.breaks[i].discount;
    const EstimateCost cost = CalcEstimate(lines.operations, lines.fixedCosts, header.oneShopRate,
                                           header.shopRate, header.breaks[0].quantity, discounts);
    for (std::size_t i = 0; i < breakCount; ++i)
        header.breaks[i].price = values::Currency::fromDouble(cost.priceEach[i]);
    return cost;
}

void reckonTotals(EstimateHeader& header) {
    std::array<double, breakCount> quoted{}, quantities{};
    for (std::size_t i = 0; i < breakCount; ++i) {
        quoted[i] = header.breaks[i].quoted.toDouble();
        quantities[i] = header.breaks[i].quantity;
    }
    const auto totals = CalcQuoteTotals(quoted, quantities);
    for (std::size_t i = 0; i < breakCount; ++i)
        header.breaks[i].total = values::Currency::fromDouble(totals[i]);
}

SaveOutcome saveEstimate(jet::Database& database, qint64 estNo, EstimateDraft& draft,
                         const EstimateDraft* before, const RfqNotesEntry& rfq,
                         const QStringList& settled) {
    SaveSteps steps;
    steps.settled = settled;
    steps.joined = [&] {
        reckonPrices(draft.header, draft);
        reckonTotals(draft.header);
    };
    std::optional<core::ChangedElsewhere> notesConflict;
    jet::Transaction transaction(database);
    steps.alsoWrite = [&](qint64) {
        RfqNotesEntry entry = rfq;
        entry.overwrite = settled.contains(u"rfqnotes"_s);
        notesConflict = saveRfqNotes(database, {draft.header.custId, draft.header.rfqNo}, entry);
        if (before && !notesConflict) {
            dropUnusedRfqNotes(database, {before->header.custId, before->header.rfqNo},
                               {draft.header.custId, draft.header.rfqNo});
        }
    };
    SaveOutcome outcome =
        saveRouted(database, estimateRouting(), estimateColumns(), estNo, draft, before, steps);
    if (notesConflict)
        return {0, {}, std::move(notesConflict)};
    if (outcome.key != 0)
        runStep(database, estimateRouting(), u"Commit Trans"_s, [&] { transaction.commit(); });
    return outcome;
}

void deleteEstimate(jet::Database& database, qint64 estNo) {
    deleteRouted(database, estimateRouting(), estNo, [&] { dropRfqNotesOf(database, estNo); });
}

std::optional<EstimateDraft> draftFromJob(jet::Database& database, qint64 jobNo) {
    const jet::Recordset job = database.openRecordset(
        u"SELECT * FROM job WHERE jobno="_s + QString::number(jobNo), jet::RecordsetType::Snapshot);
    if (job.isEmpty())
        return std::nullopt;
    EstimateDraft draft{loadLines(database, jobRouting(), jobNo), {}};
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
    for (OperRow& row : draft.operations) {
        row.hasNote = false;
        row.located = 0;
        row.status = u" "_s;
        row.estimated.reset();
    }
    return draft;
}

} // namespace estimating
