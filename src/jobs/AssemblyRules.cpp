#include "jobs/AssemblyRules.h"

#include "platform/jet/Native.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QSet>

#include <algorithm>

namespace jobs {

const AssemblyKind& assemblyKind(const QString& mode) {
    static const AssemblyKind estimates{u"Estimate"_s,      u"Estimate"_s, u"estno"_s,
                                        u"assemblyestno"_s, u"rfqno"_s,    u"RFQ No. "_s,
                                        u"RFQ Number"_s,    false,         u"frmEstimate"_s};
    static const AssemblyKind jobs{u"Job"_s,           u"Job"_s,  u"jobno"_s,
                                   u"assemblyjobno"_s, u"pono"_s, u"PO No. "_s,
                                   u"PO Number"_s,     true,      u"frmJob"_s};
    return mode.compare(estimates.mode, Qt::CaseInsensitive) == 0 ? estimates : jobs;
}

namespace {

QString ordersSelect(const AssemblyKind& kind, qint64 custId) {
    return u"SELECT DISTINCT "_s + kind.orderColumn + u" as PoOrRfq FROM "_s +
           kind.table.toLower() + u" WHERE custid="_s + QString::number(custId) + u" ORDER BY "_s +
           kind.orderColumn;
}

QString nodesSelect(const AssemblyKind& kind, qint64 custId, const QString& order) {
    QString select =
        u"SELECT * FROM "_s + kind.table + u" WHERE custid="_s + QString::number(custId);
    if (!order.isEmpty() && order != allOrders)
        select += u" AND "_s + kind.orderColumn + u"='"_s + values::quoted(order) + u"'"_s;
    if (kind.activeOnly)
        select += u" AND shipped=false"_s;
    return select;
}

} // namespace

void expectAssembly(jet::Database& database, const AssemblyKind& kind, qint64 custId,
                    const QString& order) {
    database.expect({ordersSelect(kind, custId), nodesSelect(kind, custId, order)});
}

QStringList assemblyOrders(jet::Database& database, const AssemblyKind& kind, qint64 custId) {
    QStringList orders;
    jet::Recordset set =
        database.openRecordset(ordersSelect(kind, custId), jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        const QString order = set.text(u"PoOrRfq");
        if (!order.trimmed().isEmpty())
            orders << order;
    }
    return orders;
}

QString AssemblyNode::text() const {
    return QString::number(number) + u"  ("_s + partNo + u")"_s;
}

Assembly Assembly::read(jet::Database& database, const AssemblyKind& kind, qint64 custId,
                        const QString& order) {
    std::vector<AssemblyNode> nodes;
    jet::Recordset set =
        database.openRecordset(nodesSelect(kind, custId, order), jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        AssemblyNode node;
        node.number = set[kind.keyColumn].toLong();
        node.partNo = set.text(u"partno");
        node.parent = set[kind.parentColumn].toLong();
        nodes.push_back(std::move(node));
    }
    return Assembly(std::move(nodes));
}

namespace {

/// The records that are among their own parents.
QSet<qint64> inLoops(const std::vector<AssemblyNode>& nodes, const QHash<qint64, qint64>& stored) {
    QSet<qint64> looped;
    QSet<qint64> done;
    for (const AssemblyNode& node : nodes) {
        std::vector<qint64> path;
        qint64 at = node.number;
        for (; stored.contains(at) && !done.contains(at); at = stored.value(at)) {
            done.insert(at);
            path.push_back(at);
        }
        const auto met = std::find(path.begin(), path.end(), at);
        looped.unite(QSet<qint64>(met, path.end()));
    }
    return looped;
}

} // namespace

Assembly::Assembly(std::vector<AssemblyNode> nodes) {
    std::sort(nodes.begin(), nodes.end(),
              [](const AssemblyNode& a, const AssemblyNode& b) { return a.number < b.number; });
    QHash<qint64, qint64> stored;
    for (const AssemblyNode& node : nodes)
        stored.insert(node.number, node.parent);
    const QSet<qint64> looped = inLoops(nodes, stored);
    QHash<qint64, std::vector<AssemblyNode>> below;
    std::vector<AssemblyNode> strays;
    for (AssemblyNode& node : nodes) {
        node.under =
            stored.contains(node.parent) && !looped.contains(node.number) ? node.parent : 0;
        m_under.insert(node.number, node.under);
        (node.isStray() ? strays : below[node.under]).push_back(std::move(node));
    }
    m_nodes.reserve(stored.size());
    m_nodes = std::move(below[0]);
    m_nodes.insert(m_nodes.end(), strays.begin(), strays.end());
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        const auto children = below.constFind(m_nodes[i].number);
        if (children != below.constEnd())
            m_nodes.insert(m_nodes.end(), children->begin(), children->end());
    }
}

bool Assembly::hasRoot() const {
    return std::any_of(m_nodes.begin(), m_nodes.end(),
                       [](const AssemblyNode& node) { return node.parent == 0; });
}

bool Assembly::mayHang(qint64 number, qint64 under) const {
    if (!m_under.contains(number) || (under != 0 && !m_under.contains(under)))
        return false;
    for (qint64 at = under; at != 0; at = m_under.value(at)) {
        if (at == number)
            return false;
    }
    return true;
}

void Assembly::moved(qint64 number, qint64 under) {
    m_under.insert(number, under);
}

namespace {

/// A record and all that it hangs under, as stored; empty if it isn't there.
QSet<qint64> upwards(jet::Database& database, const AssemblyKind& kind, qint64 from) {
    jet::Native native(database);
    const QByteArray table = native.quoted(kind.table), key = native.quoted(kind.keyColumn),
                     parent = native.quoted(kind.parentColumn);
    QSet<qint64> met;
    // UNION leaves out what was met before: an old loop ends there.
    for (const jet::Native::Row& row :
         native.rows("WITH RECURSIVE upwards(at, parent) AS (SELECT " + key + ", " + parent +
                     " FROM " + table + " WHERE " + key + " = " + QByteArray::number(from) +
                     " UNION SELECT t." + key + ", t." + parent + " FROM " + table +
                     " t JOIN upwards u ON t." + key + " = u.parent) SELECT at FROM upwards"))
        met.insert(row.front().toInteger());
    return met;
}

} // namespace

Hanging hangUnder(jet::Database& database, const AssemblyKind& kind, qint64 number, qint64 parent) {
    jet::Transaction transaction(database);
    if (parent != 0) {
        // Further up a missing parent is an old broken link, and no matter here.
        const QSet<qint64> above = upwards(database, kind, parent);
        if (above.contains(number) || parent == number)
            return Hanging::Loop;
        if (above.isEmpty())
            return Hanging::ParentGone;
    }
    const int touched = database.execute(
        u"UPDATE "_s + kind.table + u" SET "_s + kind.parentColumn + u"="_s +
        QString::number(parent) + u" WHERE "_s + kind.keyColumn + u"="_s + QString::number(number));
    if (touched == 0)
        return Hanging::Gone;
    transaction.commit();
    return Hanging::Done;
}

} // namespace jobs
