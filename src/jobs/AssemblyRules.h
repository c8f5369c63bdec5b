#pragma once

#include "platform/jet/Database.h"
#include "platform/values/Literals.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace jobs {

/// What tells the assemblies of estimates from those of jobs.
struct AssemblyKind {
    QString mode; ///< "Estimate" or "Job"
    QString table;
    QString keyColumn;
    QString parentColumn;
    QString orderColumn; ///< the customer's RFQ or PO number
    QString orderWord;   ///< "RFQ No. "
    QString orderLabel;  ///< "RFQ Number"
    bool activeOnly;     ///< shows no shipped records
    QString module;      ///< the screen that shows such records
};

/// The kind of a mode word; "Job" for any other than "Estimate".
const AssemblyKind& assemblyKind(const QString& mode);

/// The choice of all orders of a customer.
inline const QString allOrders = u"ALL"_s;

/// Lets the two sets that an assembly's window reads come with what is read next: its customer's
/// orders, and the records of one of them (of all where it is empty).
void expectAssembly(jet::Database& database, const AssemblyKind& kind, qint64 custId,
                    const QString& order);
/// The orders of a customer, without the empty one.
QStringList assemblyOrders(jet::Database& database, const AssemblyKind& kind, qint64 custId);

/// A record in the tree.
struct AssemblyNode {
    qint64 number = 0;
    QString partNo;
    qint64 parent = 0; ///< as stored; 0 for none
    qint64 under = 0;  ///< where it stands; 0 for the root

    /// Stands under the root because its parent isn't among the records, or is a part of it.
    bool isStray() const { return parent != 0 && under == 0; }
    /// "17  (AB-12)"
    QString text() const;
};

/// The assembly tree of a selection of records.
class Assembly {
  public:
    /// Reads the records of a customer's order; an empty order or "ALL" takes all of them.
    static Assembly read(jet::Database& database, const AssemblyKind& kind, qint64 custId,
                         const QString& order);
    /// Places records under each other, in the order of their numbers. One whose parent is none of
    /// them stands under the root, behind those that have no parent, and so do those that are among
    /// their own parents.
    explicit Assembly(std::vector<AssemblyNode> nodes = {});

    bool isEmpty() const { return m_nodes.empty(); }
    /// Whether any record has no parent.
    bool hasRoot() const;
    /// As read, each record behind the one that it stands under.
    const std::vector<AssemblyNode>& nodes() const { return m_nodes; }
    /// Whether a record may be dropped on another (0: on the root): not on itself and not on what
    /// stands below it.
    bool mayHang(qint64 number, qint64 under) const;
    /// Notes that a record was hung somewhere else.
    void moved(qint64 number, qint64 under);

  private:
    std::vector<AssemblyNode> m_nodes;
    QHash<qint64, qint64> m_under;
};

/// How an attempt to hang a record somewhere else ended.
enum class Hanging {
    Done,
    Loop, ///< the new parent is the record itself or belongs to it, as stored
    Gone, ///< the record was deleted meanwhile
    ParentGone,
};

/// Stores a record's parent, 0 for none, in one transaction that first makes sure that both are
/// there and that no loop comes of it, also by records that the tree doesn't show.
Hanging hangUnder(jet::Database& database, const AssemblyKind& kind, qint64 number, qint64 parent);

} // namespace jobs
