#include "estimating/RoutingDraft.h"

#include "core/records/DocumentColumns.h"

#include <QHash>

#include <algorithm>

namespace estimating {

namespace {

using core::DocumentColumn;

/// A figure that is hours on an in-house row and money on a contractor's.
void addFigure(std::vector<DocumentColumn>& columns, const QString& name,
               std::optional<double> OperRow::*figure) {
    for (const bool inhouse : {true, false}) {
        DocumentColumn one{inhouse ? name + u"Hours"_s : name + u"Amount"_s,
                           [figure, inhouse](const void* row) {
                               const auto& oper = *static_cast<const OperRow*>(row);
                               return oper.inhouse == inhouse ? jet::Value(oper.*figure)
                                                              : jet::Value();
                           },
                           [figure, inhouse](void* row, const jet::Value& value) {
                               auto& oper = *static_cast<OperRow*>(row);
                               if (oper.inhouse == inhouse)
                                   oper.*figure = core::memberOf<std::optional<double>>(value);
                           }};
        one.hidesMoney = !inhouse;
        columns.push_back(std::move(one));
    }
}

const core::DocumentColumns<OperRow>& operColumns() {
    using core::column;
    static const core::DocumentColumns<OperRow> all([] {
        std::vector<DocumentColumn> columns{
            column<OperRow>(u"Description"_s, &OperRow::description),
            column<OperRow>(u"Inhouse"_s, &OperRow::inhouse),
            column<OperRow>(u"Rate"_s, &OperRow::rate).secured(),
            column<OperRow>(u"NewNote"_s, &OperRow::newNote)};
        addFigure(columns, u"Time"_s, &OperRow::time);
        addFigure(columns, u"Estimated"_s, &OperRow::estimated);
        return columns;
    }());
    return all;
}

const core::DocumentColumns<MiscRow>& miscColumns() {
    using core::column;
    static const core::DocumentColumns<MiscRow> all(
        {column<MiscRow>(u"Description"_s, &MiscRow::description),
         column<MiscRow>(u"Unit"_s, &MiscRow::unit),
         column<MiscRow>(u"Quantity"_s, &MiscRow::quantity),
         column<MiscRow>(u"Price"_s, &MiscRow::price).secured(),
         column<MiscRow>(u"Total"_s, &MiscRow::total).secured()});
    return all;
}

/// The members of a catalogue's select, by its number.
QHash<qint64, values::Currency> amounts(jet::Database& database, const QString& table,
                                        const QString& key, const QString& amount,
                                        const QStringList& numbers) {
    QHash<qint64, values::Currency> found;
    if (numbers.isEmpty())
        return found;
    jet::Recordset set = database.openRecordset(
        u"SELECT %1, %2 FROM %3 WHERE %1 IN (%4)"_s.arg(key, amount, table, numbers.join(u", ")),
        jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext())
        found.insert(set[key].toLong(), set[amount].toCurrency());
    return found;
}

template <class Row>
QStringList added(const std::vector<Row>& rows, const std::vector<Row>& stored, qint64 Row::*key) {
    QStringList numbers;
    for (const Row& row : rows) {
        if (std::none_of(stored.begin(), stored.end(),
                         [&](const Row& one) { return one.*key == row.*key; }))
            numbers << QString::number(row.*key);
    }
    return numbers;
}

} // namespace

QJsonObject packRouting(const RoutedLines& lines, const RoutedLines* before, bool withMoney) {
    static const RoutedLines none;
    const RoutedLines& was = before ? *before : none;
    return {{u"operations"_s, core::packLines(operColumns(), &OperRow::operNo, lines.operations,
                                              was.operations, withMoney)},
            {u"fixedCosts"_s, core::packLines(miscColumns(), &MiscRow::itemNo, lines.fixedCosts,
                                              was.fixedCosts, withMoney)}};
}

RoutedLines unpackRouting(const QJsonObject& packed, const RoutedLines& stored) {
    return {stored.documentNo,
            core::unpackLines(operColumns(), &OperRow::operNo, packed[u"operations"_s].toObject(),
                              stored.operations),
            core::unpackLines(miscColumns(), &MiscRow::itemNo, packed[u"fixedCosts"_s].toObject(),
                              stored.fixedCosts)};
}

void completeFromCatalogue(jet::Database& database, const RoutedLines& stored, RoutedLines& lines) {
    const auto rates = amounts(database, u"Operation"_s, u"OperNo"_s, u"OperShopRate"_s,
                               added(lines.operations, stored.operations, &OperRow::operNo));
    for (OperRow& row : lines.operations) {
        if (row.rate == values::Currency())
            row.rate = rates.value(row.operNo);
    }
    const auto prices = amounts(database, u"MiscItems"_s, u"ItemNo"_s, u"UnitPrice"_s,
                                added(lines.fixedCosts, stored.fixedCosts, &MiscRow::itemNo));
    for (MiscRow& row : lines.fixedCosts) {
        if (row.price == values::Currency())
            row.price = prices.value(row.itemNo);
        row.retotal();
    }
}

} // namespace estimating
