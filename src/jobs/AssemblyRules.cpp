#include "jobs/AssemblyRules.h"

#include "platform/values/Text.h"

#include <QSet>

#include <algorithm>

namespace jobs {

const AssemblyKind& assemblyKind(const QString& mode) {
    static const AssemblyKind estimates{
        QStringLiteral("Estimate"),   QStringLiteral("Estimate"),
        QStringLiteral("estno"),      QStringLiteral("assemblyestno"),
        QStringLiteral("rfqno"),      QStringLiteral("RFQ No. "),
        QStringLiteral("RFQ Number"), false,
        QStringLiteral("frmEstimate")};
    static const AssemblyKind jobs{QStringLiteral("Job"),       QStringLiteral("Job"),
                                   QStringLiteral("jobno"),     QStringLiteral("assemblyjobno"),
                                   QStringLiteral("pono"),      QStringLiteral("PO No. "),
                                   QStringLiteral("PO Number"), true,
                                   QStringLiteral("frmJob")};
    return mode.compare(estimates.mode, Qt::CaseInsensitive) == 0 ? estimates : jobs;
}

QStringList assemblyOrders(jet::Database& database, const AssemblyKind& kind, qint64 custId) {
    QStringList orders;
    jet::Recordset set =
        database.openRecordset(QStringLiteral("SELECT DISTINCT ") + kind.orderColumn +
                                   QStringLiteral(" as PoOrRfq FROM ") + kind.table.toLower() +
                                   QStringLiteral(" WHERE custid=") + QString::number(custId) +
                                   QStringLiteral(" ORDER BY ") + kind.orderColumn,
                               jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        const QString order = set.text(u"PoOrRfq");
        if (!order.trimmed().isEmpty())
            orders << order;
    }
    return orders;
}

QString AssemblyNode::text() const {
    return QString::number(number) + QStringLiteral("  (") + partNo + QStringLiteral(")");
}

Assembly Assembly::read(jet::Database& database, const AssemblyKind& kind, qint64 custId,
                        const QString& order) {
    QString select = QStringLiteral("SELECT * FROM ") + kind.table +
                     QStringLiteral(" WHERE custid=") + QString::number(custId);
    if (!order.isEmpty() && order != allOrders) {
        select += QStringLiteral(" AND ") + kind.orderColumn + QStringLiteral("='") +
                  values::quoted(order) + QStringLiteral("'");
    }
    if (kind.activeOnly)
        select += QStringLiteral(" AND shipped=false");
    std::vector<AssemblyNode> nodes;
    jet::Recordset set = database.openRecordset(select, jet::RecordsetType::Snapshot);
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

Hanging hangUnder(jet::Database& database, const AssemblyKind& kind, qint64 number, qint64 parent) {
    jet::Transaction transaction(database);
    QSet<qint64> seen;
    for (qint64 at = parent; at != 0 && !seen.contains(at);) {
        if (at == number)
            return Hanging::Loop;
        seen.insert(at);
        const jet::Recordset row = database.openRecordset(
            QStringLiteral("SELECT ") + kind.parentColumn + QStringLiteral(" FROM ") + kind.table +
                QStringLiteral(" WHERE ") + kind.keyColumn + QStringLiteral("=") +
                QString::number(at),
            jet::RecordsetType::Snapshot);
        if (row.isEmpty()) {
            // Further up a missing parent is an old broken link, and no matter here.
            if (at == parent)
                return Hanging::ParentGone;
            break;
        }
        at = row.field(0).toLong();
    }
    const int touched = database.execute(
        QStringLiteral("UPDATE ") + kind.table + QStringLiteral(" SET ") + kind.parentColumn +
        QStringLiteral("=") + QString::number(parent) + QStringLiteral(" WHERE ") + kind.keyColumn +
        QStringLiteral("=") + QString::number(number));
    if (touched == 0)
        return Hanging::Gone;
    transaction.commit();
    return Hanging::Done;
}

} // namespace jobs
