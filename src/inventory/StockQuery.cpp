#include "inventory/StockQuery.h"

#include "inventory/Sql.h"
#include "platform/values/Format.h"

namespace inventory {

namespace {

QString hashed(const std::optional<QDate>& date) {
    return u"#"_s + values::sqlDate(date.value_or(QDate())) + u"#"_s;
}

QString textClause(const QString& column, const StockCriterion& asked) {
    if (!asked.used)
        return {};
    return asked.range ? u" and "_s + column + u" between "_s + sqlText(asked.first) + u" and "_s +
                             sqlText(asked.second)
                       : u" and "_s + column + u" = "_s + sqlText(asked.first);
}

QString folderClause(const QString& table, const StockCriterion& asked) {
    if (asked.used && !asked.range)
        return u" and Items.ID IN (SELECT ID FROM ItemQuery)"_s;
    return textClause(table + u".Description"_s, asked);
}

QString dateClause(const QString& table, const StockCriterion& asked) {
    if (!asked.used)
        return {};
    return u" AND Items.ID IN (SELECT ItemID FROM "_s + table +
           (asked.range
                ? u" WHERE [DATE] BETWEEN "_s + hashed(asked.from) + u" AND "_s + hashed(asked.to)
                : u" WHERE [Date] = "_s + hashed(asked.from)) +
           u")"_s;
}

/// Puts the items of single folders into the work table.
void fillQuery(jet::Database& database, const StockQuestion& question) {
    std::vector<std::pair<const View*, qint64>> wanted;
    if (question.location.used && !question.location.range)
        wanted.emplace_back(&locationView(), question.location.folder);
    if (question.type.used && !question.type.range)
        wanted.emplace_back(&typeView(), question.type.folder);
    std::vector<jet::WantedSet> selects;
    selects.reserve(wanted.size());
    for (const auto& [view, folder] : wanted)
        selects.emplace_back(u"SELECT ID, Parent FROM "_s + view->table);
    if (selects.empty())
        return;
    const auto sets = database.together(selects);
    for (std::size_t i = 0; i < wanted.size(); ++i)
        database.execute(u"INSERT INTO ItemQuery (ID) SELECT Items.ID FROM Items WHERE Items."_s +
                         wanted[i].first->word + u" IN ("_s +
                         listOf(foldersBelow(sets[i], wanted[i].second)) + u")"_s);
}

} // namespace

bool StockQuestion::isEmpty() const {
    return !(description.used || part.used || location.used || type.used || manufacturer.used ||
             issued.used || stocked.used);
}

QString stockStatement(const StockQuestion& question) {
    QString where = textClause(u"Items.description"_s, question.description) +
                    textClause(u"Items.PartNumber"_s, question.part) +
                    folderClause(u"ItemLocations"_s, question.location) +
                    folderClause(u"ItemTypes"_s, question.type) +
                    textClause(u"Items.Manufacturer"_s, question.manufacturer) +
                    dateClause(u"ItemIssue"_s, question.issued) +
                    dateClause(u"ItemReStock"_s, question.stocked);
    if (!where.isEmpty())
        where.replace(0, 5, u" WHERE "_s);
    return itemSelect(where.trimmed() + u" ORDER BY Items.Description"_s);
}

std::vector<ItemRow> findStock(jet::Database& database, const StockQuestion& question) {
    jet::Transaction transaction(database);
    forgetQuery(database);
    fillQuery(database, question);
    auto found = readItems(database, stockStatement(question));
    if (found.empty())
        forgetQuery(database);
    transaction.commit();
    return found;
}

void forgetQuery(jet::Database& database) {
    database.execute(u"Delete * from ItemQuery"_s);
}

QString stockFormula(const StockQuestion& question, const QString& module,
                     const std::vector<qint64>& items) {
    QStringList keys;
    for (const qint64 item : items)
        keys << u"{Items.ID} = "_s + num(item);
    QString formula = u"("_s + keys.join(u" OR "_s) + u")"_s;
    const bool issues = module.compare(u"Inventory Issue"_s, Qt::CaseInsensitive) == 0;
    const bool receipts = module.compare(u"Inventory Stock"_s, Qt::CaseInsensitive) == 0;
    const StockCriterion& asked = issues ? question.issued : question.stocked;
    if ((!issues && !receipts) || !asked.used)
        return formula;
    const QString date = issues ? u"{ItemIssue.Date}"_s : u"{ItemReStock.Date}"_s;
    return formula + u" AND "_s + date +
           (asked.range ? u" in "_s + hashed(asked.from) + u" to "_s + hashed(asked.to)
                        : u" = "_s + hashed(asked.from));
}

} // namespace inventory
