#pragma once

#include "platform/jet/Database.h"

#include <QDate>
#include <QDomElement>
#include <QString>

#include <vector>

namespace accounting {

/// Which of the two records of what was sent: SentInvoice or SentAP.
enum class SentKind { Invoice, Bill };

/// An invoice or a bill that QuickBooks holds, as it is recorded here.
struct SentDocument {
    struct Line {
        QString description;
        QString quantity;
    };
    SentKind kind = SentKind::Invoice;
    QString number; ///< under which QuickBooks has it
    QString order;
    QDate date;
    std::vector<Line> lines;
};

/// What an "InvoiceRet" or a "BillRet" says.
SentDocument documentFrom(SentKind kind, const QDomElement& ret, const QString& order,
                          const QDate& date);

/// Writes all rows of a document, or none. Throws jet::Error.
void record(jet::Database& database, const SentDocument& document);

/// Documents that QuickBooks holds and that the database refused to record. They wait in a file of
/// the program folder, which all stations share.
class Unrecorded {
  public:
    explicit Unrecorded(const QString& programFolder);
    /// False if the file can't be written.
    bool keep(const SentDocument& document);
    std::vector<SentDocument> kept() const;
    /// Records what can be recorded now, and gives those documents. `reason` says why others stay.
    std::vector<SentDocument> recordAll(jet::Database& database, QString& reason);

  private:
    bool write(const std::vector<SentDocument>& documents) const;
    QString m_path;
};

/// A row of SentInvoice or SentAP.
struct SentRow {
    QString number;
    QString description;
    double quantity = 0;
    QString date;
};

/// What was sent for an order, in the order of sending.
std::vector<SentRow> sentRows(jet::Database& database, SentKind kind, const QString& order);
/// The select that it opens, to be expected by who opens others beside it.
QString sentSelect(SentKind kind, const QString& order);

/// A line that may be sent.
struct Sendable {
    QString description;
    double due = 0;     ///< what may be sent of it in all: shipped, received, or else ordered
    double sending = 0; ///< what would be sent now
    bool selected = false;
};

/// The description as it is recorded, by which lines sent before are found again.
QString recordedDescription(const QString& partNo, const QString& description);

/// "4 on 3/2/2026 (1043), 6 on 3/9/2026 (1051)"; empty for a line that wasn't sent yet.
QString sentBefore(const std::vector<SentRow>& sent, const QString& description);

/// For each of the lines shown: whether sending it, with what is selected beside it, would send
/// more than is due, some of it having been sent before. `all` are the lines of the whole order,
/// also those that aren't shown.
std::vector<bool> repeats(const std::vector<SentRow>& sent, const std::vector<Sendable>& all,
                          const std::vector<Sendable>& shown);

} // namespace accounting
