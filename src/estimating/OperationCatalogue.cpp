#include "estimating/OperationCatalogue.h"

#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

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
    return database.hasRows(QStringLiteral("Select OperNo from OperNote where OperNo = ") +
                            QString::number(operNo));
}

void saveNote(jet::Database& database, qint64 operNo, const QString& note) {
    const QString number = QString::number(operNo);
    if (note.isEmpty()) {
        database.execute(QStringLiteral("Delete from OperNote where OperNo = ") + number);
    } else if (hasNote(database, operNo)) {
        database.execute(QStringLiteral("UPDATE OperNote SET [Note] = '") + quoted(note) +
                         QStringLiteral("' where Operno = ") + number);
    } else {
        database.execute(QStringLiteral("INSERT INTO OperNote (OperNo, [Note]) VALUES(") + number +
                         QStringLiteral(",'") + quoted(note) + QStringLiteral("')"));
    }
}

} // namespace

QString operationTitle(const QString& type) {
    if (type.compare(QStringView(contractorType), Qt::CaseInsensitive) == 0)
        return QStringLiteral("Contracted Operation");
    if (type.compare(QStringView(overheadType), Qt::CaseInsensitive) == 0)
        return QStringLiteral("Overhead Operation");
    return QStringLiteral("Inhouse Operation");
}

std::vector<CatalogueEntry> operationsOfType(jet::Database& database, const QString& type) {
    jet::Recordset set = database.openRecordset(
        QStringLiteral("SELECT operation.*, operdepartment.department FROM operation LEFT JOIN "
                       "operdepartment ON operation.operdepartment_id=operdepartment.id WHERE "
                       "operation.opertype='") +
            quoted(type) + QStringLiteral("' ORDER BY description"),
        jet::RecordsetType::Snapshot);
    std::vector<CatalogueEntry> entries;
    for (; !set.eof(); set.moveNext()) {
        const qint64 operNo = set[u"OperNo"].toLong();
        entries.push_back({operNo, set.text(u"Description"), set[u"OperShopRate"].toCurrency(),
                           set.text(u"department"), hasNote(database, operNo)});
    }
    return entries;
}

std::vector<DepartmentNode> operationsByDepartment(jet::Database& database) {
    jet::Recordset departments =
        database.openRecordset(QStringLiteral("SELECT * FROM operdepartment ORDER BY department"),
                               jet::RecordsetType::Snapshot);
    jet::Recordset operations = database.openRecordset(
        QStringLiteral("SELECT * FROM operation ORDER BY operdepartment_id, description"),
        jet::RecordsetType::Snapshot);
    std::vector<DepartmentNode> nodes;
    for (; !departments.eof(); departments.moveNext()) {
        DepartmentNode node{departments[u"id"].toLong(), departments.text(u"department"), {}};
        operations.findFirst(QStringLiteral("operdepartment_id=") + QString::number(node.id));
        if (!operations.noMatch()) {
            for (; !operations.eof() && operations[u"operdepartment_id"].toLong() == node.id;
                 operations.moveNext()) {
                const qint64 operNo = operations[u"OperNo"].toLong();
                node.operations.push_back({operNo,
                                           operations.text(u"Description"),
                                           operations[u"OperShopRate"].toCurrency(),
                                           {},
                                           hasNote(database, operNo)});
            }
            operations.moveFirst();
        }
        nodes.push_back(std::move(node));
    }
    return nodes;
}

std::optional<OperationDraft> loadOperation(jet::Database& database, qint64 operNo) {
    const QString number = QString::number(operNo);
    jet::Recordset set =
        database.openRecordset(QStringLiteral("SELECT * FROM operation WHERE operno=") + number,
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
        database.lookup(QStringLiteral("Select [Note] from OperNote where OperNo = ") + number)
            .toText();
    return draft;
}

std::optional<Complaint> checkOperation(jet::Database& database, const OperationDraft& draft) {
    const QString description = draft.description.trimmed();
    const QString descriptionField = QStringLiteral("txtDescription");
    if (description.isEmpty())
        return Complaint{QStringLiteral("Description may not be blank!"), descriptionField};
    QString same = QStringLiteral("SELECT * FROM operation WHERE description='") +
                   quoted(description) + QStringLiteral("'");
    if (draft.operNo != 0)
        same += QStringLiteral(" AND operno<>") + QString::number(draft.operNo);
    if (database.hasRows(same))
        return Complaint{description + QStringLiteral(" already exists!"), descriptionField};
    if (!isInhouse(draft.type))
        return std::nullopt;
    if (!values::isNumeric(draft.rate))
        return Complaint{QStringLiteral("Invalid Shop Rate!"), QStringLiteral("txtOperShopRate")};
    if (draft.departmentId == 0)
        return Complaint{QStringLiteral("Department may not be blank!"), QStringLiteral("cboDept")};
    return std::nullopt;
}

qint64 saveOperation(jet::Database& database, const OperationDraft& draft) {
    const QString description = quoted(draft.description.trimmed());
    const QString where = QStringLiteral(" WHERE operno=") + QString::number(draft.operNo);
    const QString insert = QStringLiteral("INSERT INTO operation (description, opertype, "
                                          "opershoprate, operdepartment_id) VALUES('") +
                           description;
    QString sql;
    if (isInhouse(draft.type)) {
        const QString rate = rateOf(draft.rate).toText();
        const QString department = QString::number(draft.departmentId);
        sql = draft.operNo == 0 ? insert + QStringLiteral("','I',") + rate + QStringLiteral(",") +
                                      department + QStringLiteral(")")
                                : QStringLiteral("UPDATE operation SET description='") +
                                      description + QStringLiteral("', opershoprate=") + rate +
                                      QStringLiteral(", operdepartment_id=") + department + where;
    } else {
        sql = draft.operNo == 0
                  ? insert + QStringLiteral("','") + quoted(draft.type) + QStringLiteral("',0,0)")
                  : QStringLiteral("UPDATE operation SET description='") + description +
                        QStringLiteral("'") + where;
    }

    jet::Transaction transaction(database);
    database.execute(sql);
    // The description is unique, so it leads to the number that a new row was given.
    const qint64 operNo =
        database
            .lookup(QStringLiteral("Select OperNo from Operation where description = '") +
                    description + QStringLiteral("'"))
            .toLong();
    saveNote(database, operNo, draft.note);
    transaction.commit();
    return operNo;
}

std::optional<Complaint> checkDepartment(jet::Database& database, qint64 id, const QString& name) {
    const QString trimmed = name.trimmed();
    const QString field = QStringLiteral("txtDescription");
    if (trimmed.isEmpty())
        return Complaint{QStringLiteral("Description may not be blank!"), field};
    QString same = QStringLiteral("SELECT * FROM operdepartment WHERE department='") +
                   quoted(trimmed) + QStringLiteral("'");
    if (id != 0)
        same += QStringLiteral(" AND id<>") + QString::number(id);
    if (database.hasRows(same))
        return Complaint{trimmed + QStringLiteral(" already exists!"), field};
    return std::nullopt;
}

void saveDepartment(jet::Database& database, qint64 id, const QString& name) {
    const QString text = quoted(name.trimmed());
    database.execute(id == 0 ? QStringLiteral("INSERT INTO operdepartment (department) VALUES('") +
                                   text + QStringLiteral("')")
                             : QStringLiteral("UPDATE operdepartment SET department='") + text +
                                   QStringLiteral("' WHERE id=") + QString::number(id));
}

QString operationInUse(jet::Database& database, qint64 operNo, const QString& type) {
    const auto booked = [&](const char16_t* table) {
        return database.hasRows(QStringLiteral("SELECT * FROM ") + QString::fromUtf16(table) +
                                QStringLiteral(" WHERE operno=") + QString::number(operNo));
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
                return QStringLiteral("This operation has been included in ") +
                       QString::fromUtf16(place.word) + QStringLiteral(". It cannot be deleted!");
            }
        }
        return QString();
    };
    if (type.compare(QStringView(overheadType), Qt::CaseInsensitive) == 0)
        return refusal(timeRecords);
    return refusal(routings);
}

void deleteOperation(jet::Database& database, qint64 operNo) {
    database.execute(QStringLiteral("DELETE FROM operation WHERE operno=") +
                     QString::number(operNo));
}

void deleteDepartment(jet::Database& database, qint64 id) {
    database.execute(QStringLiteral("DELETE FROM operdepartment WHERE id=") + QString::number(id));
}

} // namespace estimating
