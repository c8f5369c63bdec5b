#include "estimating/memory/Memory.h"

#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <algorithm>
#include <map>
#include <set>

namespace estimating {

namespace {

using JobOperation = std::pair<qint64, qint64>; ///< of numbers

/// What the time records of an operation of a job add up to.
struct Booked {
    double hours = 0;
    double scrap = 0;
    bool any = false;
};
using BookedBy = std::map<JobOperation, Booked>;

QString number(qint64 value) {
    return QString::number(value);
}

QString top(int rows) {
    return u"SELECT TOP "_s + number(rows) + u' ';
}

/// Columns of a job's operation, of `JobOper o` and `Job j`.
const QString& operationColumns() {
    static const QString columns =
        u"o.JobNo AS JobNo, o.OperNo AS OperNo, o.EstOper AS EstOper, o.OperTime_Amount AS Amount, "
        "o.OperShopRate AS OwnRate, o.Status AS Status, j.Quantity AS Quantity, j.PartNo AS "
        "PartNo, j.Shipped AS Shipped, j.ShipDate AS ShipDate, j.JobShopRate AS OneRate, "
        "j.OneShopRate AS IsOneRate FROM JobOper o INNER JOIN Job j ON o.JobNo = j.JobNo "_s;
    return columns;
}

QString bookedSelect(const QString& where) {
    return u"SELECT JobNo, OperNo, SUM(AccumTime) AS Hours, SUM(PartsScrap) AS Scrap, COUNT(*) AS "
           "Records FROM Timelog WHERE "_s +
           where + u" GROUP BY JobNo, OperNo"_s;
}

QString jobsOfPart(const QString& partNo) {
    return u" FROM Job WHERE PartNo = '"_s + values::quoted(partNo) + u"' ORDER BY JobNo DESC"_s;
}

/// The selects of a question, in the order in which recall() reads them.
std::vector<jet::WantedSet> wanted(const MemoryQuestion& question) {
    std::vector<jet::WantedSet> sets;
    if (!question.partNo.isEmpty()) {
        const QString part =
            u"JobNo IN ("_s + top(memoryPartJobs) + u"JobNo"_s + jobsOfPart(question.partNo) + u')';
        sets.emplace_back(top(memoryPartJobs + 1) +
                          u"JobNo, PartNo, Quantity, Shipped, ShipDate, JobShopCost"_s +
                          jobsOfPart(question.partNo));
        sets.emplace_back(u"SELECT p.OperType AS OperType, "_s +
                          QString(operationColumns())
                              .replace(u"FROM JobOper o INNER JOIN Job j"_s,
                                       u"FROM (JobOper o INNER JOIN Operation p ON o.OperNo = "
                                       "p.OperNo) INNER JOIN Job j"_s) +
                          u"WHERE o."_s + part);
        sets.emplace_back(bookedSelect(part));
        QString prices;
        for (const QChar letter : u"ABCDE"_s) {
            prices += u", e.QtyBreak%1 AS Quantity%1"_s.arg(letter);
            if (question.money)
                prices += u", e.QtyQP%1 AS Price%1"_s.arg(letter);
        }
        sets.emplace_back(
            top(memoryQuotes) +
            u"e.EstNo AS EstNo, e.EstDate AS EstDate, e.Quantity AS Quantity, IIf(e.QtyQPA <> 0, "
            "1, 0) AS Quoted, c.company AS Company, (SELECT MAX(w.JobNo) FROM Job w WHERE w.EstNo "
            "= e.EstNo) AS Won"_s +
            prices +
            u" FROM Estimate e LEFT JOIN Customer c ON e.CustID = c.Custid WHERE e.PartNo = '"_s +
            values::quoted(question.partNo) + u"' AND e.EstNo <> "_s + number(question.estNo) +
            u" ORDER BY e.EstNo DESC"_s);
    }
    for (const MemoryOperation& operation : question.operations) {
        const QString done = u"WHERE o.OperNo = "_s + number(operation.operNo) +
                             u" AND (j.Shipped = True OR o.Status = 'F') ORDER BY o.JobNo DESC"_s;
        sets.emplace_back(top(memoryOperationJobs) + operationColumns() + done);
        sets.emplace_back(bookedSelect(
            u"OperNo = "_s + number(operation.operNo) + u" AND JobNo IN ("_s +
            top(memoryOperationJobs) +
            u"o.JobNo FROM JobOper o INNER JOIN Job j ON o.JobNo = j.JobNo "_s + done + u')'));
    }
    return sets;
}

BookedBy readBooked(jet::Recordset& set) {
    BookedBy booked;
    for (; !set.eof(); set.moveNext()) {
        booked[{set[u"JobNo"].toLong(), set[u"OperNo"].toLong()}] = {
            set[u"Hours"].toDouble(), set[u"Scrap"].toDouble(), set[u"Records"].toLong() > 0};
    }
    return booked;
}

Took readJob(const jet::Recordset& row) {
    Took took;
    took.jobNo = row[u"JobNo"].toLong();
    took.partNo = row.text(u"PartNo");
    took.pieces = row[u"Quantity"].toDouble();
    if (row[u"Shipped"].toBool())
        took.shipped = row[u"ShipDate"].toDate();
    return took;
}

Took readOperation(const jet::Recordset& row, const BookedBy& booked, bool inhouse, bool money) {
    Took took = readJob(row);
    const bool done = row[u"Shipped"].toBool() || row.text(u"Status").toUpper() == u"F";
    const auto found = booked.find({took.jobNo, row[u"OperNo"].toLong()});
    const Booked records = found == booked.end() ? Booked() : found->second;
    took.scrap = records.scrap;
    if (inhouse) {
        took.estimated = row[u"EstOper"].toDouble();
        took.booked = records.hours;
        took.counts = done && records.any;
        if (money)
            took.costEach = took.bookedEach() *
                            row[row[u"IsOneRate"].toBool() ? u"OneRate" : u"OwnRate"].toDouble();
    } else {
        const double amount = row[u"Amount"].toDouble();
        took.counts = done && amount != 0;
        if (money) {
            took.estimated = row[u"EstOper"].toDouble();
            took.booked = amount;
            took.costEach = took.bookedEach();
        }
    }
    return took;
}

void addUp(MemoryLine& line) {
    std::vector<double> estimated, booked, bookedEach, costEach;
    for (const Took& job : line.jobs) {
        if (!job.counts)
            continue;
        line.pieces += job.pieces;
        line.scrap += job.scrap;
        estimated.push_back(job.estimated);
        booked.push_back(job.booked);
        bookedEach.push_back(job.bookedEach());
        costEach.push_back(job.costEach);
    }
    line.estimated = spreadOf(std::move(estimated));
    line.booked = spreadOf(std::move(booked));
    line.bookedEach = spreadOf(std::move(bookedEach));
    line.costEach = spreadOf(std::move(costEach));
}

/// The lines of the part: itself, and its operations by number.
struct OfPart {
    MemoryLine whole;
    std::map<qint64, MemoryLine> operations;
    bool isCut = false;
};

OfPart readPart(jet::Recordset& jobs, jet::Recordset& operations, const BookedBy& booked,
                bool money) {
    OfPart part;
    for (; !jobs.eof(); jobs.moveNext()) {
        if (part.whole.jobs.size() == memoryPartJobs) {
            part.isCut = true;
            break;
        }
        Took job = readJob(jobs);
        job.counts = jobs[u"Shipped"].toBool();
        if (money)
            job.costEach = jobs[u"JobShopCost"].toDouble();
        part.whole.jobs.push_back(job);
    }
    std::map<qint64, Took*> byNumber;
    std::set<qint64> worked; ///< with an operation that counts
    for (Took& job : part.whole.jobs)
        byNumber[job.jobNo] = &job;
    for (; !operations.eof(); operations.moveNext()) {
        const bool inhouse = operations.text(u"OperType").toUpper() != u"C";
        const Took took = readOperation(operations, booked, inhouse, money);
        part.operations[operations[u"OperNo"].toLong()].jobs.push_back(took);
        if (took.counts)
            worked.insert(took.jobNo);
        if (Took* job = byNumber[took.jobNo]) {
            job->scrap += took.scrap;
            if (inhouse) {
                job->estimated += took.estimated;
                job->booked += took.booked;
            }
        }
    }
    for (Took& job : part.whole.jobs)
        job.counts = job.counts && worked.contains(job.jobNo);
    for (auto& [operNo, line] : part.operations)
        std::sort(line.jobs.begin(), line.jobs.end(),
                  [](const Took& a, const Took& b) { return a.jobNo > b.jobNo; });
    return part;
}

std::vector<QuotedBefore> readQuotes(jet::Recordset& set, bool money, const QDate& today) {
    using Outcome = QuotedBefore::Outcome;
    std::vector<QuotedBefore> quotes;
    for (; !set.eof(); set.moveNext()) {
        QuotedBefore quote;
        quote.estNo = set[u"EstNo"].toLong();
        quote.company = set.text(u"Company");
        quote.date = set[u"EstDate"].toDate();
        quote.quantity = set[u"Quantity"].toDouble();
        quote.jobNo = set[u"Won"].toLong();
        for (const QChar letter : u"ABCDE"_s) {
            const double quantity = set[u"Quantity"_s + letter].toDouble();
            if (quantity <= 0)
                continue;
            const values::Currency each =
                money ? set[u"Price"_s + letter].toCurrency() : values::Currency();
            if (!money || each != values::Currency())
                quote.prices.push_back({quantity, each});
        }
        const bool quoted = set[u"Quoted"].toLong() != 0;
        const bool recent = quote.date && quote.date->daysTo(today) <= memoryQuoteDays;
        quote.outcome = quote.jobNo != 0 ? Outcome::Won
                        : !quoted        ? Outcome::NotQuoted
                        : recent         ? Outcome::Open
                                         : Outcome::Lost;
        quotes.push_back(std::move(quote));
    }
    return quotes;
}

} // namespace

Spread spreadOf(std::vector<double> figures) {
    Spread spread;
    spread.count = static_cast<int>(figures.size());
    if (figures.empty())
        return spread;
    std::sort(figures.begin(), figures.end());
    const auto at = [&figures](double share) {
        const double place = share * static_cast<double>(figures.size() - 1);
        const auto below = static_cast<std::size_t>(place);
        const std::size_t above = std::min(below + 1, figures.size() - 1);
        return figures[below] +
               (figures[above] - figures[below]) * (place - static_cast<double>(below));
    };
    spread.low = at(0.25);
    spread.median = at(0.5);
    spread.high = at(0.75);
    return spread;
}

Memory recall(jet::Database& database, const MemoryQuestion& question, const QDate& today) {
    std::vector<jet::Recordset> sets = database.together(wanted(question));
    auto next = sets.begin();
    Memory memory;
    OfPart part;
    const bool hasPart = !question.partNo.isEmpty();
    if (hasPart) {
        jet::Recordset& jobs = *next++;
        jet::Recordset& operations = *next++;
        const BookedBy booked = readBooked(*next++);
        part = readPart(jobs, operations, booked, question.money);
        memory.quotes = readQuotes(*next++, question.money, today);
        memory.partIsCut = part.isCut;
        memory.lines.push_back(std::move(part.whole));
    }
    const bool isKnown = hasPart && !memory.lines.front().jobs.empty();
    for (const MemoryOperation& operation : question.operations) {
        if (isKnown) {
            MemoryLine same = std::move(part.operations[operation.operNo]);
            same.operation = operation;
            memory.lines.push_back(std::move(same));
        }
        MemoryLine all;
        all.operation = operation;
        all.samePart = false;
        jet::Recordset& rows = *next++;
        const BookedBy booked = readBooked(*next++);
        for (; !rows.eof(); rows.moveNext())
            all.jobs.push_back(readOperation(rows, booked, operation.inhouse, question.money));
        memory.lines.push_back(std::move(all));
    }
    for (MemoryLine& line : memory.lines)
        addUp(line);
    return memory;
}

} // namespace estimating
