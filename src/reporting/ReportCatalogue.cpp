#include "reporting/ReportCatalogue.h"

#include "platform/values/Literals.h"
#include "platform/values/Text.h"

namespace reporting {

using values::quoted;

namespace {

/// What the modules of a type look like, between the quotes of a LIKE.
QString modulePattern(const QString& type) {
    return type == u"Benchline" ? u"Tools*"_s : quoted(type) + u'*';
}

} // namespace

const QStringList& reportTypes() {
    static const QStringList types = {
        u"Customer"_s, u"Employee"_s,    u"Estimates"_s,       u"Inventory"_s, u"Jobs"_s,  u"RFQ"_s,
        u"Schedule"_s, u"Spare Parts"_s, u"Time Management"_s, u"Benchline"_s, u"Vendor"_s};
    return types;
}

QString reportsOfType(const QString& type) {
    return u"SELECT * FROM Reports WHERE Reports.Module LIKE '"_s + modulePattern(type) + u'\'';
}

void makeDefault(jet::Database& database, const QString& type, const QString& name) {
    jet::Transaction transaction(database);
    database.execute(u"UPDATE Reports SET Default = False WHERE Module LIKE '"_s +
                     modulePattern(type) + u'\'');
    database.execute(u"UPDATE Reports SET Default = True WHERE Name = '"_s + quoted(name) + u'\'');
    transaction.commit();
}

void removeReport(jet::Database& database, const QString& name) {
    database.execute(u"DELETE * FROM Reports WHERE Name = '"_s + quoted(name) + u'\'');
}

bool hasReport(jet::Database& database, const QString& name) {
    return database.hasRows(u"SELECT Name FROM Reports WHERE Name = '"_s + quoted(name) + u'\'');
}

void importReport(jet::Database& database, const ImportedReport& report) {
    jet::Recordset rows = database.openRecordset(u"SELECT * FROM Reports WHERE Name = ''"_s);
    rows.addNew();
    rows.set(u"name", report.name);
    rows.set(u"description", report.description);
    rows.set(u"Module", report.type);
    rows.set(u"FileName", report.fileName);
    rows.update();
}

} // namespace reporting
