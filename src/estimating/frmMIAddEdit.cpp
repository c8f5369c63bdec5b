#include "estimating/frmMIAddEdit.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Format.h"
#include "platform/values/Text.h"

#include <QVBoxLayout>

namespace estimating {

using values::quoted;

frmMIAddEdit::frmMIAddEdit()
    : AddEditForm(QString::fromLatin1(formName), QStringLiteral("New Fixed Cost Item")) {
    auto* outside = new QVBoxLayout(this);
    auto* body = new QWidget(this);
    outside->addWidget(body);
    const int width = core::MainDatabase().width(u"MiscItems", u"Description");
    screen::Fields fields(body);
    txtDescription =
        fields.text(QStringLiteral("txtDescription"), QStringLiteral("D&escription:"),
                    {.limit = width, .filter = values::keys::description(), .characters = 36});
    fields.nextRow();
    cboUnitofMeasure =
        fields.dataCombo(QStringLiteral("cboUnitofMeasure"), QStringLiteral("&Unit of Measure:"));
    cboUnitofMeasure->setUpperCase(true);
    cboUnitofMeasure->setLimit(10);
    cboUnitofMeasure->setKeyFilter(values::keys::description());
    fields.nextRow();
    txtUnitPrice = fields.text(QStringLiteral("txtUnitPrice"), QStringLiteral("Unit &Price:"),
                               {.limit = 14,
                                .filter = values::keys::decimal(),
                                .mask = QStringLiteral("#0.0000"),
                                .characters = 14});
    outside->addStretch();

    makeButtons(outside);
    on(cboUnitofMeasure->left, &frmMIAddEdit::cboUnitofMeasure_LostFocus);
}

bool frmMIAddEdit::ShowForm(qint64 itemNo) {
    m_itemNo = itemNo;
    jet::Database& database = core::MainDatabase();
    m_units = {QString()};
    jet::Recordset units = database.openRecordset(
        QStringLiteral("Select * from UnitofMeasure order by code"), jet::RecordsetType::Snapshot);
    for (; !units.eof(); units.moveNext())
        m_units << units.text(u"code");
    cboUnitofMeasure->setItems(m_units);
    clearFields();
    if (itemNo != 0) {
        setWindowTitle(QStringLiteral("Edit Fixed Cost Item"));
        setAdding(false);
        const jet::Recordset item = database.openRecordset(
            QStringLiteral("SELECT * FROM miscitems WHERE itemno=") + QString::number(itemNo),
            jet::RecordsetType::Snapshot);
        if (item.isEmpty()) {
            screen::MsgBox(QString::number(itemNo) +
                               QStringLiteral(" item no. not found! MiscItems table may need to be "
                                              "fixed!"),
                           screen::Buttons::Ok, screen::Icon::Critical);
            return false;
        }
        txtDescription->setText(item.text(u"Description"));
        cboUnitofMeasure->setText(item.text(u"UnitOfMeasure").trimmed());
        cboUnitofMeasure_LostFocus();
        txtUnitPrice->setText(values::format(item[u"UnitPrice"].toCurrency(), u"#0.0000"));
    }
    txtDescription->setFocus();
    return run();
}

void frmMIAddEdit::clearFields() {
    txtDescription->setText(QString());
    cboUnitofMeasure->setText(QString());
    txtUnitPrice->setText(QStringLiteral("0.0000"));
}

void frmMIAddEdit::cboUnitofMeasure_LostFocus() {
    const QString unit = cboUnitofMeasure->text();
    if (unit.isEmpty() || m_units.contains(unit))
        return;
    m_units << unit;
    cboUnitofMeasure->setItems(m_units);
    cboUnitofMeasure->setText(unit);
}

bool frmMIAddEdit::save() {
    const QString description = txtDescription->text();
    const QString unit = cboUnitofMeasure->text();
    if (description.trimmed().isEmpty()) {
        complain(QStringLiteral("Description may not be blank!"), txtDescription);
        return false;
    }
    if (unit.trimmed().isEmpty()) {
        complain(QStringLiteral("Units may not be blank!"), cboUnitofMeasure);
        return false;
    }
    const QString itemNo = QString::number(m_itemNo);
    jet::Database& database = core::MainDatabase();
    QString same = QStringLiteral("SELECT * FROM miscitems WHERE description='") +
                   quoted(description) + QStringLiteral("'");
    if (m_itemNo != 0)
        same += QStringLiteral(" AND itemno<>") + itemNo;
    if (database.hasRows(same)) {
        complain(description + QStringLiteral(" already exists!"), txtDescription);
        return false;
    }
    const QString price =
        values::format(values::Currency::fromText(txtUnitPrice->text()), u"#0.0000");
    if (m_itemNo == 0) {
        database.execute(
            QStringLiteral("INSERT INTO miscitems (description, unitofmeasure, unitprice) "
                           "VALUES('") +
            quoted(description) + QStringLiteral("','") + quoted(unit) + QStringLiteral("',") +
            price + QStringLiteral(" )"));
    } else {
        // The blank behind the unit stands in the rows of every shop; it stays.
        database.execute(QStringLiteral("UPDATE miscitems SET description='") +
                         quoted(description) + QStringLiteral("', unitofmeasure='") + quoted(unit) +
                         QStringLiteral(" ', unitprice=") + price +
                         QStringLiteral(" WHERE itemno=") + itemNo);
    }
    return true;
}

void frmMIAddEdit::startNext() {
    clearFields();
    txtDescription->setFocus();
}

} // namespace estimating
