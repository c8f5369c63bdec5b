#pragma once

#include "platform/jet/Database.h"
#include "platform/values/Currency.h"

#include <QDate>
#include <QString>

#include <array>
#include <optional>
#include <vector>

namespace estimating {

/// An operation of the routing that is being estimated.
struct MemoryOperation {
    qint64 operNo = 0;
    QString description;
    bool inhouse = true;
    bool operator==(const MemoryOperation&) const = default;
};

/// For what the shop's memory is searched.
struct MemoryQuestion {
    qint64 estNo = 0; ///< the estimate itself, which is none of the earlier quotes; 0 for a new one
    QString partNo;   ///< empty where none is entered: operations only
    std::vector<MemoryOperation> operations;
    bool money = false; ///< without it the answer has no amount
    bool operator==(const MemoryQuestion&) const = default;
};

/// The middle of some figures and between which two half of them lie: median and quartiles, read
/// off between two neighbours where they fall between them.
struct Spread {
    int count = 0; ///< of figures; a single one has no spread
    double low = 0;
    double median = 0;
    double high = 0;
};
Spread spreadOf(std::vector<double> figures);

/// What an earlier job took: as a whole, or for one operation.
struct Took {
    qint64 jobNo = 0;
    QString partNo;
    std::optional<QDate> shipped;
    double pieces = 0;    ///< that were ordered
    double estimated = 0; ///< hours; money of a contractor's operation
    double booked = 0;    ///< hours of the time records; money of a contractor's operation
    double scrap = 0;     ///< pieces
    double costEach = 0;  ///< by the shop's rate of that job; of the whole job with all its costs
    /// Whether it is done and has time or money on it. Others are told, and are in no figure.
    bool counts = false;

    double bookedEach() const { return booked / (pieces > 0 ? pieces : 1); }
};

/// What there is to know of the part as a whole, or of an operation.
struct MemoryLine {
    MemoryOperation operation; ///< number 0: the part as a whole, hours of all in-house operations
    bool samePart = true;      ///< or all parts
    std::vector<Took> jobs;    ///< the latest first
    // Over the jobs that count:
    double pieces = 0;
    double scrap = 0;
    Spread estimated, booked, bookedEach, costEach;
};

/// A price at which the part was quoted.
struct QuotedPrice {
    double quantity = 0;
    values::Currency each;
};

/// An earlier estimate of the part.
struct QuotedBefore {
    /// Open is one of the last days without a job yet.
    enum class Outcome { Won, Lost, Open, NotQuoted };
    qint64 estNo = 0;
    QString company;
    std::optional<QDate> date;
    double quantity = 0;
    std::vector<QuotedPrice> prices; ///< of the breaks that were quoted
    qint64 jobNo = 0;                ///< the latest job made from it; 0 for none
    Outcome outcome = Outcome::NotQuoted;
};

struct Memory {
    /// The part, then each operation: of the part, where there are jobs of it, and of all parts.
    std::vector<MemoryLine> lines;
    std::vector<QuotedBefore> quotes; ///< the latest first
    bool partIsCut = false;           ///< there are more jobs of the part than were looked at
};

/// How far back is looked: the latest jobs of the part, the latest finished ones of an operation,
/// the latest quotes.
inline constexpr int memoryPartJobs = 200;
inline constexpr int memoryOperationJobs = 100;
inline constexpr int memoryQuotes = 50;
/// After how many days a quote without a job counts as lost.
inline constexpr int memoryQuoteDays = 90;

/// What the shop knows, in one wait. Operations are the same by their number in the catalogue,
/// which is how routings and time records name them; set-up isn't told apart from the run.
Memory recall(jet::Database& database, const MemoryQuestion& question, const QDate& today);

} // namespace estimating
