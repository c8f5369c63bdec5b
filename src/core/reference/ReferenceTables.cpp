#include "core/reference/ReferenceTables.h"

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

const QString codeColumn = QStringLiteral("Code");

ReferenceTable units() {
    ReferenceTable t;
    t.listForm = QStringLiteral("frmUnitOfMeasure");
    t.listCaption = QStringLiteral("Units of Measure");
    t.dialogForm = QStringLiteral("frmUMAddEdit");
    t.newTitle = QStringLiteral("New Unit Of Measure");
    t.editTitle = QStringLiteral("Edit Unit Of Measure");
    t.table = QStringLiteral("UnitOfMeasure");
    t.key = QStringLiteral("index");
    t.listSelect = QStringLiteral("SELECT * FROM UnitOfMeasure ORDER BY Code");
    t.listColumns = {{QStringLiteral("Unit"), codeColumn, 14},
                     {QStringLiteral("Description"), QStringLiteral("description"), 36}};
    t.fields = {{.column = QStringLiteral("code"),
                 .control = QStringLiteral("txtCode"),
                 .label = QStringLiteral("&Unit:"),
                 .blankMessage = QStringLiteral("Unit may not be blank!"),
                 .unique = true},
                {.column = QStringLiteral("description"),
                 .control = QStringLiteral("txtDescription"),
                 .label = QStringLiteral("&Description:"),
                 .blankMessage = QStringLiteral("Description may not be blank!")}};
    t.insert = [](const QStringList& texts) {
        return QStringLiteral("INSERT INTO UnitOfMEasure (code, description) VALUES('") +
               quoted(texts[0]) + QStringLiteral("','") + quoted(texts[1]) + QStringLiteral("')");
    };
    t.update = [](const QStringList& texts, qint64 key, const QStringList&) {
        return QStringLiteral("UPDATE UnitOfMeasure SET description='") + quoted(texts[1]) +
               QStringLiteral("', Code = '") + quoted(texts[0]) + QStringLiteral("' WHERE index=") +
               number(key);
    };
    t.remove = [](qint64 key, const QStringList&) {
        return QStringLiteral("DELETE FROM unitofmeasure WHERE index=") + number(key);
    };
    // The dialog was made from the one of fixed cost items and keeps its message.
    t.missingMessage = QStringLiteral(" item no. not found! MiscItems table may need to be fixed!");
    return t;
}

bool isFixedLineItem(const QString& text) {
    static const QStringList fixed = {QStringLiteral("Overhead"), QStringLiteral("Estimate"),
                                      QStringLiteral("Job"), QStringLiteral("Stock")};
    return fixed.contains(text, Qt::CaseInsensitive);
}

ReferenceTable lineItemTypes() {
    ReferenceTable t;
    t.listForm = QStringLiteral("frmLine");
    t.listCaption = QStringLiteral("Line Item Types");
    t.dialogForm = QStringLiteral("frmLineAddEdit");
    t.newTitle = QStringLiteral("New Line Item Type");
    t.editTitle = QStringLiteral("Edit Line Item Type");
    t.table = QStringLiteral("LineItemType");
    t.key = QStringLiteral("index");
    t.listSelect = QStringLiteral("SELECT * FROM LineItemType ORDER BY Code");
    t.listColumns = {{QStringLiteral("Description"), codeColumn, 40}};
    t.fields = {{.column = codeColumn,
                 .control = QStringLiteral("txtDescription"),
                 .label = QStringLiteral("&Description:"),
                 .blankMessage = QStringLiteral("Description may not be blank!"),
                 .unique = true}};
    t.insert = [](const QStringList& texts) {
        return QStringLiteral("INSERT INTO LineItemType (Code) VALUES('") + quoted(texts[0]) +
               QStringLiteral("')");
    };
    t.update = [](const QStringList& texts, qint64 key, const QStringList&) {
        return QStringLiteral("UPDATE LineItemType SET Code='") + quoted(texts[0]) +
               QStringLiteral("' WHERE index=") + number(key);
    };
    t.remove = [](qint64 key, const QStringList&) {
        return QStringLiteral("DELETE FROM LineItemType WHERE index=") + number(key);
    };
    t.missingMessage = QStringLiteral(" not found! Line Item Type table may need to be fixed!");
    t.refusalTitle = QStringLiteral("Error");
    t.deleteRefusal = [](jet::Database&, const QString& text) {
        return isFixedLineItem(text) ? QStringLiteral("You cannot delete Overhead, Estimate, Job, "
                                                      "or Stock from Line Item Types!")
                                     : QString();
    };
    t.editRefusal = [](const QString& text) {
        return isFixedLineItem(text)
                   ? QStringLiteral(
                         "You cannot edit Overhead, Estimate, Job, or Stock in Line Item Types!")
                   : QString();
    };
    return t;
}

ReferenceTable terms() {
    ReferenceTable t;
    t.listForm = QStringLiteral("frmTerms");
    t.listCaption = QStringLiteral("Terms");
    t.dialogForm = QStringLiteral("frmTermsAddEdit");
    t.newTitle = QStringLiteral("New Terms");
    t.editTitle = QStringLiteral("Edit Terms");
    t.table = QStringLiteral("Terms");
    t.key = QStringLiteral("index");
    t.listSelect = QStringLiteral("SELECT * FROM Terms ORDER BY description");
    t.listColumns = {{QStringLiteral("Description"), QStringLiteral("description"), 36},
                     {QStringLiteral("Net Due"), QStringLiteral("netdue"), 10}};
    t.fields = {{.column = QStringLiteral("description"),
                 .control = QStringLiteral("txtDescription"),
                 .label = QStringLiteral("&Description:"),
                 .blankMessage = QStringLiteral("Description may not be blank!"),
                 .unique = true},
                {.column = QStringLiteral("netdue"),
                 .control = QStringLiteral("txtNetDue"),
                 .label = QStringLiteral("Net due in da&ys:"),
                 .filter = values::keys::digits()}};
    // An empty number of days is 0: due at once.
    const auto days = [](const QString& text) { return number(values::cLng(values::val(text))); };
    t.insert = [days](const QStringList& texts) {
        return QStringLiteral("INSERT INTO Terms (netdue,description,QBSent) VALUES(") +
               days(texts[1]) + QStringLiteral(",'") + quoted(texts[0]) + QStringLiteral("',0)");
    };
    t.update = [days](const QStringList& texts, qint64 key, const QStringList&) {
        return QStringLiteral("UPDATE Terms SET description='") + quoted(texts[0]) +
               QStringLiteral("', NetDue = '") + days(texts[1]) + QStringLiteral("' WHERE index=") +
               number(key);
    };
    t.remove = [](qint64 key, const QStringList&) {
        return QStringLiteral("DELETE FROM Terms WHERE index=") + number(key);
    };
    t.missingMessage = QStringLiteral(" not found! Terms table may need to be fixed!");
    t.users = {QStringLiteral("frmCustomer"), QStringLiteral("frmVendor"), QStringLiteral("frmRFQ"),
               QStringLiteral("frmPO")};
    return t;
}

ReferenceTable scrapReasons() {
    ReferenceTable t;
    t.listForm = QStringLiteral("frmScrapReasons");
    t.listCaption = QStringLiteral("Scrap Reasons");
    t.dialogForm = QStringLiteral("frmScrapReasonsAddEdit");
    t.newTitle = QStringLiteral("New Scrap Reason");
    t.editTitle = QStringLiteral("Edit Scrap Reason");
    t.table = QStringLiteral("ScrapReasons");
    t.key = QStringLiteral("id");
    t.listSelect = QStringLiteral("SELECT * FROM ScrapReasons ORDER BY description");
    t.listColumns = {{QStringLiteral("Description"), QStringLiteral("description"), 40}};
    t.fields = {{.column = QStringLiteral("description"),
                 .control = QStringLiteral("txtDescription"),
                 .label = QStringLiteral("&Description:"),
                 .blankMessage = QStringLiteral("Description may not be blank!"),
                 .unique = true}};
    t.insert = [](const QStringList& texts) {
        return QStringLiteral("INSERT INTO ScrapReasons (description) VALUES('") +
               quoted(texts[0]) + QStringLiteral("')");
    };
    t.update = [](const QStringList& texts, qint64 key, const QStringList&) {
        return QStringLiteral("UPDATE ScrapReasons SET description='") + quoted(texts[0]) +
               QStringLiteral("' WHERE id=") + number(key);
    };
    t.remove = [](qint64 key, const QStringList&) {
        return QStringLiteral("DELETE FROM ScrapReasons WHERE id = ") + number(key);
    };
    t.missingMessage = QStringLiteral(" not found! Scrap Reasons table may need to be fixed!");
    return t;
}

ReferenceTable manufacturers() {
    ReferenceTable t;
    t.listForm = QStringLiteral("frmManufacturer");
    t.listCaption = QStringLiteral("Manufacturers");
    t.dialogForm = QStringLiteral("frmManuAddEdit");
    t.newTitle = QStringLiteral("Add Manufacturer");
    t.editTitle = QStringLiteral("Edit Manufacturer");
    t.table = QStringLiteral("Manufacturer");
    t.key = QStringLiteral("ID");
    t.listSelect = QStringLiteral("SELECT * FROM Manufacturer ORDER BY Company");
    t.listColumns = {{QStringLiteral("Company Name"), QStringLiteral("Company"), 44}};
    t.fields = {{.column = QStringLiteral("Company"),
                 .control = QStringLiteral("txtCompany"),
                 .label = QStringLiteral("&Company Name:"),
                 .blankMessage = QStringLiteral("Company Name may not be blank!"),
                 .filter = anything(),
                 .unique = true}};
    t.insert = [](const QStringList& texts) {
        return QStringLiteral("INSERT INTO Manufacturer (Company) VALUES ('") + quoted(texts[0]) +
               QStringLiteral("')");
    };
    t.update = [](const QStringList& texts, qint64, const QStringList& stored) {
        return QStringLiteral("Update Manufacturer SET Company = '") + quoted(texts[0]) +
               QStringLiteral("' WHERE Company = '") + quoted(stored[0]) + u'\'';
    };
    t.remove = [](qint64 key, const QStringList&) {
        return QStringLiteral("DELETE FROM Manufacturer WHERE ID = ") + number(key);
    };
    t.missingMessage = QStringLiteral(" not found! Manufacturer table may need to be fixed!");
    t.duplicateMessage = QStringLiteral("A Manufacturer already exists with that company name.");
    t.deleteRefusal = [](jet::Database& database, const QString& text) {
        const QString name = quoted(text) + u'\'';
        const bool used =
            database.hasRows(
                QStringLiteral("SELECT Manufacturer FROM Items WHERE Manufacturer = '") + name) ||
            database.hasRows(
                QStringLiteral("SELECT Manufacturer FROM POItem WHERE Manufacturer = '") + name);
        return used ? QStringLiteral("This manufacturer has been used on an Inventory, PO, or RFQ "
                                     "item. It cannot be "
                                     "deleted!")
                    : QString();
    };
    return t;
}

/// Countries and states differ in the name of the first column only.
ReferenceTable places(const QString& table, const QString& column) {
    ReferenceTable t;
    t.table = table;
    t.key = QStringLiteral("id");
    t.listSelect = QStringLiteral("SELECT * FROM ") + table + QStringLiteral(" ORDER BY ") + column;
    t.listColumns = {{QStringLiteral("Description"), column, 34},
                     {QStringLiteral("Postal Abbreviation"), codeColumn, 20}};
    t.fields = {{.column = column,
                 .control = QStringLiteral("txtDescription"),
                 .label = QStringLiteral("&Description:"),
                 .blankMessage = QStringLiteral("Description may not be blank!"),
                 .unique = true},
                {.column = QStringLiteral("code"),
                 .control = QStringLiteral("txtCode"),
                 .label = QStringLiteral("&Postal Abbreviation:"),
                 .blankMessage = QStringLiteral("Postal Abbreviation may not be blank!"),
                 .unique = true}};
    t.insert = [table, column](const QStringList& texts) {
        return QStringLiteral("INSERT INTO ") + table + QStringLiteral(" (") + column +
               QStringLiteral(" ,Code) VALUES('") + quoted(texts[0]) + QStringLiteral("','") +
               quoted(texts[1]) + QStringLiteral("')");
    };
    t.update = [table, column](const QStringList& texts, qint64 key, const QStringList&) {
        return QStringLiteral("UPDATE ") + table + QStringLiteral(" SET ") + column +
               QStringLiteral("='") + quoted(texts[0]) + QStringLiteral("', Code = '") +
               quoted(texts[1]) + QStringLiteral("' WHERE id = ") + number(key);
    };
    t.remove = [table](qint64, const QStringList& row) {
        return QStringLiteral("DELETE FROM ") + table + QStringLiteral(" WHERE code = '") +
               quoted(row[1]) + u'\'';
    };
    t.users = {QStringLiteral("frmCustomer"), QStringLiteral("frmEmployee"),
               QStringLiteral("frmVendor"), QStringLiteral("frmRFQ"), QStringLiteral("frmPO")};
    return t;
}

ReferenceTable countries() {
    ReferenceTable t = places(QStringLiteral("country"), QStringLiteral("country"));
    t.listForm = QStringLiteral("frmCountry");
    t.listCaption = QStringLiteral("Countries");
    t.dialogForm = QStringLiteral("frmCountryAddEdit");
    t.newTitle = QStringLiteral("New Country");
    t.editTitle = QStringLiteral("Edit Country");
    t.missingMessage = QStringLiteral(" ID not found! Country table may need to be fixed!");
    return t;
}

ReferenceTable states() {
    ReferenceTable t = places(QStringLiteral("states"), QStringLiteral("description"));
    t.listForm = QStringLiteral("frmStates");
    t.listCaption = QStringLiteral("States / Provinces");
    t.dialogForm = QStringLiteral("frmStateAddEdit");
    t.newTitle = QStringLiteral("New State/Province");
    t.editTitle = QStringLiteral("Edit State/Province");
    t.missingMessage = QStringLiteral(" ID not found! States table may need to be fixed!");
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
    QString select = QStringLiteral("SELECT * FROM ") + table.table + QStringLiteral(" WHERE ") +
                     field.column + QStringLiteral("='") + quoted(text) + u'\'';
    if (key != 0)
        select += QStringLiteral(" AND ") + table.key + QStringLiteral(" <> ") + number(key);
    return select;
}

} // namespace core
