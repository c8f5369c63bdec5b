#include "sample/PracticeCompany.h"

#include "accounting/ImportMembers.h"
#include "accounting/Literals.h"
#include "platform/values/Literals.h"
#include "qbcompany/Company.h"

#include <QDir>
#include <QFile>

namespace sample {

namespace {

/// Adds the records that QuickBooks takes, but every `leftOut`th; gives their numbers.
std::vector<qint64> add(qbcompany::Company& company, jet::Database& database,
                        const accounting::ImportMember& member, int leftOut) {
    std::vector<qint64> added;
    jet::Recordset rows = database.openRecordset(u"SELECT * FROM "_s + member.table +
                                                     u" ORDER BY ["_s + member.key + u']',
                                                 jet::RecordsetType::Snapshot);
    for (int number = 1; !rows.eof(); rows.moveNext(), ++number) {
        auto message =
            accounting::addRequest(member.kind(), accounting::fieldsOf(member.kind(), rows));
        if ((leftOut > 0 && number % leftOut == 0) || !message.complaints().isEmpty())
            continue;
        if (company.answer(message.finish()).contains(u"statusCode=\"0\""))
            added.push_back(rows[member.key].toLong());
    }
    return added;
}

} // namespace

bool makePracticeCompany(jet::Database& database, const QString& folder) {
    const QString file = u"Practice.company"_s;
    const QString path = QDir(folder).filePath(file);
    QFile door(QDir(folder).filePath(u"Mirsa.quickbooks"_s));
    if (QFile::exists(path) || door.exists())
        return true;
    qbcompany::Company company;
    const std::vector<std::pair<QString, QString>> items{{u"Service"_s, u"Machining"_s},
                                                         {u"Service"_s, u"Tooling"_s},
                                                         {u"NonInventory"_s, u"Parts"_s},
                                                         {u"NonInventory"_s, u"Material"_s},
                                                         {u"OtherCharge"_s, u"Freight"_s}};
    for (const auto& [kind, name] : items)
        company.addItem(kind, name, u"0.00"_s);
    company.addItem(u"Discount"_s, u"Early payment"_s, u"2.0"_s);
    company.setLastInvoice(
        database.lookup(u"SELECT MAX(InvoiceNo) FROM SentInvoice"_s).toText().toInt());
    const auto& members = accounting::importMembers();
    add(company, database, members[3], 0); // terms first, since the others refer to them
    jet::Transaction transaction(database);
    const std::vector<std::pair<const accounting::ImportMember*, int>> lists{
        {&members[0], 6}, {&members[1], 6}, {&members[2], 5}};
    for (const auto& [member, leftOut] : lists) {
        const auto numbers = add(company, database, *member, leftOut);
        if (!numbers.empty())
            database.execute(u"UPDATE "_s + member->table + u" SET QBSent = 1 WHERE "_s +
                             member->key + u" IN ("_s + accounting::numberList(numbers) + u')');
    }
    const QByteArray lines =
        "# The program that carries messages to QuickBooks: here a company to practise on.\n"
        "mirsa-qb-company Practice.company\n";
    if (!company.save(path) || !door.open(QIODevice::WriteOnly) || door.write(lines) < 0)
        return false;
    transaction.commit();
    return true;
}

} // namespace sample
