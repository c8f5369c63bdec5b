#pragma once

#include "estimating/EstimateStore.h"
#include "platform/jet/Database.h"
#include "platform/values/Currency.h"

#include <QString>

#include <optional>
#include <vector>

namespace estimating {

/// Kinds of work in the catalogue, by the letter that the tables hold.
inline constexpr char16_t inhouseType[] = u"I";    ///< done in the shop, under a department
inline constexpr char16_t contractorType[] = u"C"; ///< done outside
inline constexpr char16_t overheadType[] = u"O";   ///< floor time that no job pays

/// "Inhouse Operation", "Contracted Operation" or "Overhead Operation".
QString operationTitle(const QString& type);

/// A line of the catalogue as the lists show it.
struct CatalogueEntry {
    qint64 operNo = 0;
    QString type; ///< as it is stored, in whatever case
    QString description;
    values::Currency rate; ///< per hour; in-house only
    qint64 departmentId = 0;
    QString department; ///< name; empty where there is none
    bool hasNote = false;
};

struct DepartmentNode {
    qint64 id = 0;
    QString name;
};

/// All operations and all departments, both by name.
struct OperationCatalogue {
    std::vector<CatalogueEntry> operations;
    std::vector<DepartmentNode> departments;

    std::vector<CatalogueEntry> ofType(const QString& type) const;
    std::vector<CatalogueEntry> ofDepartment(qint64 id) const;
};

OperationCatalogue loadCatalogue(jet::Database& database);

/// An operation as the dialog holds it.
struct OperationDraft {
    qint64 operNo = 0; ///< 0 for a new one
    QString type = QString::fromUtf16(inhouseType);
    QString description;
    QString rate;            ///< as typed, thousands may be parted by commas; in-house only
    qint64 departmentId = 0; ///< 0 for none; in-house only
    QString note;            ///< proposed whenever the operation enters a routing
};

/// The operation as stored, its rate without a mask; nothing if it is gone.
std::optional<OperationDraft> loadOperation(jet::Database& database, qint64 operNo);
/// First fault in the order of the fields. A description belongs to one operation, whatever the
/// types.
std::optional<Complaint> checkOperation(jet::Database& database, const OperationDraft& draft);
/// Writes the operation and its note in one transaction; an empty note leaves no row. The type and,
/// of other than in-house operations, rate and department of a stored operation stay. Returns its
/// number.
qint64 saveOperation(jet::Database& database, const OperationDraft& draft);

std::optional<Complaint> checkDepartment(jet::Database& database, qint64 id, const QString& name);
/// `id` is 0 for a new department.
void saveDepartment(jet::Database& database, qint64 id, const QString& name);

/// Why an operation must stay; empty if it may go. In-house and contractor operations are looked
/// for on jobs, estimates and default sets, but not in time records; overhead operations in time
/// records alone.
QString operationInUse(jet::Database& database, qint64 operNo, const QString& type);
/// Its default note stays behind.
void deleteOperation(jet::Database& database, qint64 operNo);
void deleteDepartment(jet::Database& database, qint64 id);

} // namespace estimating
