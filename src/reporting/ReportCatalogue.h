#pragma once

#include "platform/jet/Database.h"

#include <QString>
#include <QStringList>

namespace reporting {

/// The report types to choose from, in their order.
const QStringList& reportTypes();

/// The rows of `Reports` of a type. "Benchline" is kept under module names that begin with "Tools".
QString reportsOfType(const QString& type);

/// Makes a report the default of its type, and the only one. Types that begin alike share it.
void makeDefault(jet::Database& database, const QString& type, const QString& name);

/// Takes a report out of the catalogue; its file stays.
void removeReport(jet::Database& database, const QString& name);

bool hasReport(jet::Database& database, const QString& name);

struct ImportedReport {
    QString name, description, type;
    QString fileName; ///< without a path
};

/// Adds a report: neither delivered nor a default.
void importReport(jet::Database& database, const ImportedReport& report);

} // namespace reporting
