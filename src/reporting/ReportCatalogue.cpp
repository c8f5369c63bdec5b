#include "reporting/ReportCatalogue.h"

#include "platform/values/Text.h"

namespace reporting {

using values::quoted;

namespace {

/// What the modules of a type look like, between the quotes of a LIKE.
QString modulePattern(const QString& type) {
    return type == u"Benchline" ? QStringLiteral("Tools*") : quoted(type) + u'*';
}

} // namespace

const QStringList& reportTypes() {
    static const QStringList types = {QStringLiteral("Customer"),
                                      QStringLiteral("Employee"),
                                      QStringLiteral("Estimates"),
                                      QStringLiteral("Inventory"),
                                      QStringLiteral("Jobs"),
                                      QStringLiteral("RFQ"),
                                      QStringLiteral("Schedule"),
                                      QStringLiteral("Spare Parts"),
                                      QStringLiteral("Time Management"),
                                      QStringLiteral("Benchline"),
                                      QStringLiteral("Vendor")};
    return types;
}

QString reportsOfType(const QString& type) {
    return QStringLiteral("SELECT * FROM Reports WHERE Reports.Module LIKE '") +
           modulePattern(type) + u'\'';
}

void makeDefault(jet::Database& database, const QString& type, const QString& name) {
    jet::Transaction transaction(database);
    database.execute(QStringLiteral("UPDATE Reports SET Default = False WHERE Module LIKE '") +
                     modulePattern(type) + u'\'');
    database.execute(QStringLiteral("UPDATE Reports SET Default = True WHERE Name = '") +
                     quoted(name) + u'\'');
    transaction.commit();
}

void removeReport(jet::Database& database, const QString& name) {
    database.execute(QStringLiteral("DELETE * FROM Reports WHERE Name = '") + quoted(name) + u'\'');
}

bool hasReport(jet::Database& database, const QString& name) {
    return database.hasRows(QStringLiteral("SELECT Name FROM Reports WHERE Name = '") +
                            quoted(name) + u'\'');
}

void importReport(jet::Database& database, const ImportedReport& report) {
    jet::Recordset rows =
        database.openRecordset(QStringLiteral("SELECT * FROM Reports WHERE Name = ''"));
    rows.addNew();
    rows.set(u"name", report.name);
    rows.set(u"description", report.description);
    rows.set(u"Module", report.type);
    rows.set(u"FileName", report.fileName);
    rows.update();
}

} // namespace reporting
