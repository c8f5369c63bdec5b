#include "estimating/OperationCatalogue.h"

#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

#include <QSet>

#include <algorithm>
#include <iterator>

#include <array>

namespace estimating {

using values::Currency;
using values::quoted;

namespace {

bool isInhouse(const QString& type) {
    return type.compare(QStringView(inhouseType), Qt::CaseInsensitive) == 0;
}

Currency rateOf(const QString& typed) {
    return Currency::fromText(QString(typed).remove(QLatin1Char(',')));
}

bool hasNote(jet::Database& database, qint64 operNo) {
    return database.hasRows(u"Select OperNo from OperNote where OperNo = "_s +
                            QString::number(operNo));
}

void saveNote(jet::Database& database, qint64 operNo, const QString& note) {
    const QString number = QString::number(operNo);
    if (note.isEmpty()) {
        database.execute(u"Delete from OperNote where OperNo = "_s + number);
    } else if (hasNote(database, operNo)) {
        database.execute(u"UPDATE OperNote SET [Note] = '"_s + quoted(note) +
                         u"' where Operno = "_s + number);
    } else {
        database.execute(u"INSERT INTO OperNote (OperNo, [Note]) VALUES("_s + number + u",'"_s +
                         quoted(note) + u"')"_s);
    }
}

} // namespace

QString operationTitle(const QString& type) {
    if (type.compare(QStringView(contractorType), Qt::CaseInsensitive) == 0)
        return u"Contracted Operation"_s;
    if (type.compare(QStringView(overheadType), Qt::CaseInsensitive) == 0)
        return u"Overhead Operation"_s;
    return u"Inhouse Operation"_s;
}

namespace {

template <class Test>
std::vector<CatalogueEntry> selected(const std::vector<CatalogueEntry>& from, Test test) {
    std::vector<CatalogueEntry> entries;
    std::copy_if(from.begin(), from.end(), std::back_inserter(entries), test);
    return entries;
}

} // namespace

std::vector<CatalogueEntry> OperationCatalogue::ofType(const QString& type) const {
    return selected(operations, [&](const CatalogueEntry& entry) {
        return entry.type.compare(type, Qt::CaseInsensitive) == 0;
    });
}

std::vector<CatalogueEntry> OperationCatalogue::ofDepartment(qint64 id) const {
    return selected(operations,
                    [id](const CatalogueEntry& entry) { return entry.departmentId == id; });
}

OperationCatalogue loadCatalogue(jet::Database& database) {
    std::vector<jet::Recordset> read = database.together(
        {u"SELECT operation.*, operdepartment.department FROM operation LEFT JOIN operdepartment "
         "ON operation.operdepartment_id=operdepartment.id ORDER BY description"_s,
         u"SELECT * FROM operdepartment ORDER BY department"_s, u"Select OperNo from OperNote"_s});
    QSet<qint64> noted;
    for (jet::Recordset& note = read[2]; !note.eof(); note.moveNext())
        noted.insert(note[u"OperNo"].toLong());
    OperationCatalogue catalogue;
    for (jet::Recordset& row = read[0]; !row.eof(); row.moveNext()) {
        const qint64 operNo = row[u"OperNo"].toLong();
        catalogue.operations.push_back({operNo, row.text(u"OperType"), row.text(u"Description"),
                                        row[u"OperShopRate"].toCurrency(),
                                        row[u"operdepartment_id"].toLong(), row.text(u"department"),
                                        noted.contains(operNo)});
    }
    for (jet::Recordset& row = read[1]; !row.eof(); row.moveNext())
        catalogue.departments.push_back({row[u"id"].toLong(), row.text(u"department")});
    return catalogue;
}

std::optional<OperationDraft> loadOperation(jet::Database& database, qint64 operNo) {
    const QString number = QString::number(operNo);
    jet::Recordset set = database.openRecordset(u"SELECT * FROM operation WHERE operno="_s + number,
                                                jet::RecordsetType::Snapshot);
    if (set.isEmpty())
        return std::nullopt;
    OperationDraft draft;
    draft.operNo = operNo;
    draft.type = set.text(u"OperType");
    draft.description = set.text(u"Description");
    draft.rate = set[u"OperShopRate"].toCurrency().toText();
    draft.departmentId = set[u"operdepartment_id"].toLong();
    draft.note =
        database.lookup(u"Select [Note] from OperNote where OperNo = "_s + number).toText();
    return draft;
}

std::optional<Complaint> checkOperation(jet::Database& database, const OperationDraft& draft) {
    const QString description = draft.description.trimmed();
    const QString descriptionField = u"txtDescription"_s;
    if (description.isEmpty())
        return Complaint{u"Description may not be blank!"_s, descriptionField};
    QString same = u"SELECT * FROM operation WHERE description='"_s + quoted(description) + u"'"_s;
    if (draft.operNo != 0)
        same += u" AND operno<>"_s + QString::number(draft.operNo);
    if (database.hasRows(same))
        return Complaint{description + u" already exists!"_s, descriptionField};
    if (!isInhouse(draft.type))
        return std::nullopt;
    if (!values::isNumeric(draft.rate))
        return Complaint{u"Invalid Shop Rate!"_s, u"txtOperShopRate"_s};
    if (draft.departmentId == 0)
        return Complaint{u"Department may not be blank!"_s, u"cboDept"_s};
    return std::nullopt;
}

qint64 saveOperation(jet::Database& database, const OperationDraft& draft) {
    const QString description = quoted(draft.description.trimmed());
    const QString where = u" WHERE operno="_s + QString::number(draft.operNo);
    const QString insert = u"INSERT INTO operation (description, opertype, "
                           "opershoprate, operdepartment_id) VALUES('"_s +
                           description;
    QString sql;
    if (isInhouse(draft.type)) {
        const QString rate = rateOf(draft.rate).toText();
        const QString department = QString::number(draft.departmentId);
        sql = draft.operNo == 0
                  ? insert + u"','I',"_s + rate + u","_s + department + u")"_s
                  : u"UPDATE operation SET description='"_s + description + u"', opershoprate="_s +
                        rate + u", operdepartment_id="_s + department + where;
    } else {
        sql = draft.operNo == 0
                  ? insert + u"','"_s + quoted(draft.type) + u"',0,0)"_s
                  : u"UPDATE operation SET description='"_s + description + u"'"_s + where;
    }

    jet::Transaction transaction(database);
    database.execute(sql);
    // The description is unique, so it leads to the number that a new row was given.
    const qint64 operNo =
        database
            .lookup(u"Select OperNo from Operation where description = '"_s + description + u"'"_s)
            .toLong();
    saveNote(database, operNo, draft.note);
    transaction.commit();
    return operNo;
}

std::optional<Complaint> checkDepartment(jet::Database& database, qint64 id, const QString& name) {
    const QString trimmed = name.trimmed();
    const QString field = u"txtDescription"_s;
    if (trimmed.isEmpty())
        return Complaint{u"Description may not be blank!"_s, field};
    QString same = u"SELECT * FROM operdepartment WHERE department='"_s + quoted(trimmed) + u"'"_s;
    if (id != 0)
        same += u" AND id<>"_s + QString::number(id);
    if (database.hasRows(same))
        return Complaint{trimmed + u" already exists!"_s, field};
    return std::nullopt;
}

void saveDepartment(jet::Database& database, qint64 id, const QString& name) {
    const QString text = quoted(name.trimmed());
    database.execute(id == 0
                         ? u"INSERT INTO operdepartment (department) VALUES('"_s + text + u"')"_s
                         : u"UPDATE operdepartment SET department='"_s + text + u"' WHERE id="_s +
                               QString::number(id));
}

QString operationInUse(jet::Database& database, qint64 operNo, const QString& type) {
    const auto booked = [&](const char16_t* table) {
        return database.hasRows(u"SELECT * FROM "_s + QString::fromUtf16(table) +
                                u" WHERE operno="_s + QString::number(operNo));
    };
    struct Place {
        const char16_t* table;
        const char16_t* word;
    };
    static constexpr std::array<Place, 3> routings{
        {{u"joboper", u"Job"},
         {u"estoper", u"Estimate"},
         {u"defaultsetoper", u"Default Operations for Estimate/Job"}}};
    static constexpr std::array<Place, 1> timeRecords{{{u"timelog", u"time management"}}};

    const auto refusal = [&](const auto& places) {
        for (const Place& place : places) {
            if (booked(place.table)) {
                return u"This operation has been included in "_s + QString::fromUtf16(place.word) +
                       u". It cannot be deleted!"_s;
            }
        }
        return QString();
    };
    if (type.compare(QStringView(overheadType), Qt::CaseInsensitive) == 0)
        return refusal(timeRecords);
    return refusal(routings);
}

void deleteOperation(jet::Database& database, qint64 operNo) {
    database.execute(u"DELETE FROM operation WHERE operno="_s + QString::number(operNo));
}

void deleteDepartment(jet::Database& database, qint64 id) {
    database.execute(u"DELETE FROM operdepartment WHERE id="_s + QString::number(id));
}

} // namespace estimating
