#include "core/reference/ReferenceTables.h"

#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

namespace core {

namespace {

using values::quoted;

QString number(qint64 n) {
    return QString::number(n);
}

values::KeyFilter anything() {
    return {};
}

const QString codeColumn = u"Code"_s;

ReferenceTable units() {
    ReferenceTable t;
    t.listForm = u"frmUnitOfMeasure"_s;
    t.listCaption = u"Units of Measure"_s;
    t.dialogForm = u"frmUMAddEdit"_s;
    t.newTitle = u"New Unit Of Measure"_s;
    t.editTitle = u"Edit Unit Of Measure"_s;
    t.table = u"UnitOfMeasure"_s;
    t.key = u"index"_s;
    t.listSelect = u"SELECT * FROM UnitOfMeasure ORDER BY Code"_s;
    t.listColumns = {{u"Unit"_s, codeColumn, 14}, {u"Description"_s, u"description"_s, 36}};
    t.fields = {{.column = u"code"_s,
                 .control = u"txtCode"_s,
                 .label = u"&Unit:"_s,
                 .blankMessage = u"Unit may not be blank!"_s,
                 .unique = true},
                {.column = u"description"_s,
                 .control = u"txtDescription"_s,
                 .label = u"&Description:"_s,
                 .blankMessage = u"Description may not be blank!"_s}};
    t.insert = [](const QStringList& texts) {
        return u"INSERT INTO UnitOfMEasure (code, description) VALUES('"_s + quoted(texts[0]) +
               u"','"_s + quoted(texts[1]) + u"')"_s;
    };
    t.update = [](const QStringList& texts, qint64 key, const QStringList&) {
        return u"UPDATE UnitOfMeasure SET description='"_s + quoted(texts[1]) + u"', Code = '"_s +
               quoted(texts[0]) + u"' WHERE index="_s + number(key);
    };
    t.remove = [](qint64 key, const QStringList&) {
        return u"DELETE FROM unitofmeasure WHERE index="_s + number(key);
    };
    // The dialog was made from the one of fixed cost items and keeps its message.
    t.missingMessage = u" item no. not found! MiscItems table may need to be fixed!"_s;
    return t;
}

bool isFixedLineItem(const QString& text) {
    static const QStringList fixed = {u"Overhead"_s, u"Estimate"_s, u"Job"_s, u"Stock"_s};
    return fixed.contains(text, Qt::CaseInsensitive);
}

ReferenceTable lineItemTypes() {
    ReferenceTable t;
    t.listForm = u"frmLine"_s;
    t.listCaption = u"Line Item Types"_s;
    t.dialogForm = u"frmLineAddEdit"_s;
    t.newTitle = u"New Line Item Type"_s;
    t.editTitle = u"Edit Line Item Type"_s;
    t.table = u"LineItemType"_s;
    t.key = u"index"_s;
    t.listSelect = u"SELECT * FROM LineItemType ORDER BY Code"_s;
    t.listColumns = {{u"Description"_s, codeColumn, 40}};
    t.fields = {{.column = codeColumn,
                 .control = u"txtDescription"_s,
                 .label = u"&Description:"_s,
                 .blankMessage = u"Description may not be blank!"_s,
                 .unique = true}};
    t.insert = [](const QStringList& texts) {
        return u"INSERT INTO LineItemType (Code) VALUES('"_s + quoted(texts[0]) + u"')"_s;
    };
    t.update = [](const QStringList& texts, qint64 key, const QStringList&) {
        return u"UPDATE LineItemType SET Code='"_s + quoted(texts[0]) + u"' WHERE index="_s +
               number(key);
    };
    t.remove = [](qint64 key, const QStringList&) {
        return u"DELETE FROM LineItemType WHERE index="_s + number(key);
    };
    t.missingMessage = u" not found! Line Item Type table may need to be fixed!"_s;
    t.refusalTitle = u"Error"_s;
    t.deleteRefusal = [](jet::Database&, const QString& text) {
        return isFixedLineItem(text) ? u"You cannot delete Overhead, Estimate, Job, "
                                       "or Stock from Line Item Types!"_s
                                     : QString();
    };
    t.editRefusal = [](const QString& text) {
        return isFixedLineItem(text)
                   ? u"You cannot edit Overhead, Estimate, Job, or Stock in Line Item Types!"_s
                   : QString();
    };
    return t;
}

ReferenceTable terms() {
    ReferenceTable t;
    t.listForm = u"frmTerms"_s;
    t.listCaption = u"Terms"_s;
    t.dialogForm = u"frmTermsAddEdit"_s;
    t.newTitle = u"New Terms"_s;
    t.editTitle = u"Edit Terms"_s;
    t.table = u"Terms"_s;
    t.key = u"index"_s;
    t.listSelect = u"SELECT * FROM Terms ORDER BY description"_s;
    t.listColumns = {{u"Description"_s, u"description"_s, 36}, {u"Net Due"_s, u"netdue"_s, 10}};
    t.fields = {{.column = u"description"_s,
                 .control = u"txtDescription"_s,
                 .label = u"&Description:"_s,
                 .blankMessage = u"Description may not be blank!"_s,
                 .unique = true},
                {.column = u"netdue"_s,
                 .control = u"txtNetDue"_s,
                 .label = u"Net due in da&ys:"_s,
                 .filter = values::keys::digits()}};
    // An empty number of days is 0: due at once.
    const auto days = [](const QString& text) { return number(values::cLng(values::val(text))); };
    t.insert = [days](const QStringList& texts) {
        return u"INSERT INTO Terms (netdue,description,QBSent) VALUES("_s + days(texts[1]) +
               u",'"_s + quoted(texts[0]) + u"',0)"_s;
    };
    t.update = [days](const QStringList& texts, qint64 key, const QStringList&) {
        return u"UPDATE Terms SET description='"_s + quoted(texts[0]) + u"', NetDue = '"_s +
               days(texts[1]) + u"' WHERE index="_s + number(key);
    };
    t.remove = [](qint64 key, const QStringList&) {
        return u"DELETE FROM Terms WHERE index="_s + number(key);
    };
    t.missingMessage = u" not found! Terms table may need to be fixed!"_s;
    t.users = {u"frmCustomer"_s, u"frmVendor"_s, u"frmRFQ"_s, u"frmPO"_s};
    return t;
}

ReferenceTable scrapReasons() {
    ReferenceTable t;
    t.listForm = u"frmScrapReasons"_s;
    t.listCaption = u"Scrap Reasons"_s;
    t.dialogForm = u"frmScrapReasonsAddEdit"_s;
    t.newTitle = u"New Scrap Reason"_s;
    t.editTitle = u"Edit Scrap Reason"_s;
    t.table = u"ScrapReasons"_s;
    t.key = u"id"_s;
    t.listSelect = u"SELECT * FROM ScrapReasons ORDER BY description"_s;
    t.listColumns = {{u"Description"_s, u"description"_s, 40}};
    t.fields = {{.column = u"description"_s,
                 .control = u"txtDescription"_s,
                 .label = u"&Description:"_s,
                 .blankMessage = u"Description may not be blank!"_s,
                 .unique = true}};
    t.insert = [](const QStringList& texts) {
        return u"INSERT INTO ScrapReasons (description) VALUES('"_s + quoted(texts[0]) + u"')"_s;
    };
    t.update = [](const QStringList& texts, qint64 key, const QStringList&) {
        return u"UPDATE ScrapReasons SET description='"_s + quoted(texts[0]) + u"' WHERE id="_s +
               number(key);
    };
    t.remove = [](qint64 key, const QStringList&) {
        return u"DELETE FROM ScrapReasons WHERE id = "_s + number(key);
    };
    t.missingMessage = u" not found! Scrap Reasons table may need to be fixed!"_s;
    return t;
}

ReferenceTable manufacturers() {
    ReferenceTable t;
    t.listForm = u"frmManufacturer"_s;
    t.listCaption = u"Manufacturers"_s;
    t.dialogForm = u"frmManuAddEdit"_s;
    t.newTitle = u"Add Manufacturer"_s;
    t.editTitle = u"Edit Manufacturer"_s;
    t.table = u"Manufacturer"_s;
    t.key = u"ID"_s;
    t.listSelect = u"SELECT * FROM Manufacturer ORDER BY Company"_s;
    t.listColumns = {{u"Company Name"_s, u"Company"_s, 44}};
    t.fields = {{.column = u"Company"_s,
                 .control = u"txtCompany"_s,
                 .label = u"&Company Name:"_s,
                 .blankMessage = u"Company Name may not be blank!"_s,
                 .filter = anything(),
                 .unique = true}};
    t.insert = [](const QStringList& texts) {
        return u"INSERT INTO Manufacturer (Company) VALUES ('"_s + quoted(texts[0]) + u"')"_s;
    };
    t.update = [](const QStringList& texts, qint64, const QStringList& stored) {
        return u"Update Manufacturer SET Company = '"_s + quoted(texts[0]) +
               u"' WHERE Company = '"_s + quoted(stored[0]) + u'\'';
    };
    t.remove = [](qint64 key, const QStringList&) {
        return u"DELETE FROM Manufacturer WHERE ID = "_s + number(key);
    };
    t.missingMessage = u" not found! Manufacturer table may need to be fixed!"_s;
    t.duplicateMessage = u"A Manufacturer already exists with that company name."_s;
    t.deleteRefusal = [](jet::Database& database, const QString& text) {
        const QString name = quoted(text) + u'\'';
        const bool used =
            database.hasRows(u"SELECT Manufacturer FROM Items WHERE Manufacturer = '"_s + name) ||
            database.hasRows(u"SELECT Manufacturer FROM POItem WHERE Manufacturer = '"_s + name);
        return used ? u"This manufacturer has been used on an Inventory, PO, or RFQ "
                      "item. It cannot be "
                      "deleted!"_s
                    : QString();
    };
    return t;
}

/// Countries and states differ in the name of the first column only.
ReferenceTable places(const QString& table, const QString& column) {
    ReferenceTable t;
    t.table = table;
    t.key = u"id"_s;
    t.listSelect = u"SELECT * FROM "_s + table + u" ORDER BY "_s + column;
    t.listColumns = {{u"Description"_s, column, 34}, {u"Postal Abbreviation"_s, codeColumn, 20}};
    t.fields = {{.column = column,
                 .control = u"txtDescription"_s,
                 .label = u"&Description:"_s,
                 .blankMessage = u"Description may not be blank!"_s,
                 .unique = true},
                {.column = u"code"_s,
                 .control = u"txtCode"_s,
                 .label = u"&Postal Abbreviation:"_s,
                 .blankMessage = u"Postal Abbreviation may not be blank!"_s,
                 .unique = true}};
    t.insert = [table, column](const QStringList& texts) {
        return u"INSERT INTO "_s + table + u" ("_s + column + u" ,Code) VALUES('"_s +
               quoted(texts[0]) + u"','"_s + quoted(texts[1]) + u"')"_s;
    };
    t.update = [table, column](const QStringList& texts, qint64 key, const QStringList&) {
        return u"UPDATE "_s + table + u" SET "_s + column + u"='"_s + quoted(texts[0]) +
               u"', Code = '"_s + quoted(texts[1]) + u"' WHERE id = "_s + number(key);
    };
    t.remove = [table](qint64, const QStringList& row) {
        return u"DELETE FROM "_s + table + u" WHERE code = '"_s + quoted(row[1]) + u'\'';
    };
    t.users = {u"frmCustomer"_s, u"frmEmployee"_s, u"frmVendor"_s, u"frmRFQ"_s, u"frmPO"_s};
    return t;
}

ReferenceTable countries() {
    ReferenceTable t = places(u"country"_s, u"country"_s);
    t.listForm = u"frmCountry"_s;
    t.listCaption = u"Countries"_s;
    t.dialogForm = u"frmCountryAddEdit"_s;
    t.newTitle = u"New Country"_s;
    t.editTitle = u"Edit Country"_s;
    t.missingMessage = u" ID not found! Country table may need to be fixed!"_s;
    return t;
}

ReferenceTable states() {
    ReferenceTable t = places(u"states"_s, u"description"_s);
    t.listForm = u"frmStates"_s;
    t.listCaption = u"States / Provinces"_s;
    t.dialogForm = u"frmStateAddEdit"_s;
    t.newTitle = u"New State/Province"_s;
    t.editTitle = u"Edit State/Province"_s;
    t.missingMessage = u" ID not found! States table may need to be fixed!"_s;
    return t;
}

} // namespace

const std::vector<ReferenceTable>& referenceTables() {
    static const std::vector<ReferenceTable> tables = {
        units(), lineItemTypes(), terms(), scrapReasons(), manufacturers(), countries(), states()};
    return tables;
}

QString duplicateSelect(const ReferenceTable& table, const ReferenceField& field,
                        const QString& text, qint64 key) {
    QString select = u"SELECT * FROM "_s + table.table + u" WHERE "_s + field.column + u"='"_s +
                     quoted(text) + u'\'';
    if (key != 0)
        select += u" AND "_s + table.key + u" <> "_s + number(key);
    return select;
}

} // namespace core
