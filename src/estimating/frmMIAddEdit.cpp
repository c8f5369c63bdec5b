#include "estimating/frmMIAddEdit.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QVBoxLayout>

namespace estimating {

using values::quoted;

frmMIAddEdit::frmMIAddEdit()
    : AddEditForm(QString::fromLatin1(formName), u"New Fixed Cost Item"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* body = new QWidget(this);
    outside->addWidget(body);
    const int width = core::MainDatabase().width(u"MiscItems", u"Description");
    screen::Fields fields(body);
    txtDescription =
        fields.text(u"txtDescription"_s, u"D&escription:"_s,
                    {.limit = width, .filter = values::keys::description(), .characters = 36});
    fields.nextRow();
    cboUnitofMeasure = fields.dataCombo(u"cboUnitofMeasure"_s, u"&Unit of Measure:"_s);
    cboUnitofMeasure->setUpperCase(true);
    cboUnitofMeasure->setLimit(10);
    cboUnitofMeasure->setKeyFilter(values::keys::description());
    fields.nextRow();
    txtUnitPrice = fields.text(
        u"txtUnitPrice"_s, u"Unit &Price:"_s,
        {.limit = 14, .filter = values::keys::decimal(), .mask = u"#0.0000"_s, .characters = 14});
    outside->addStretch();

    makeButtons(outside);
    on(cboUnitofMeasure->left, &frmMIAddEdit::cboUnitofMeasure_LostFocus);
}

bool frmMIAddEdit::ShowForm(qint64 itemNo) {
    m_itemNo = itemNo;
    jet::Database& database = core::MainDatabase();
    m_units = {QString()};
    jet::Recordset units = database.openRecordset(u"Select * from UnitofMeasure order by code"_s,
                                                  jet::RecordsetType::Snapshot);
    for (; !units.eof(); units.moveNext())
        m_units << units.text(u"code");
    cboUnitofMeasure->setItems(m_units);
    clearFields();
    if (itemNo != 0) {
        setWindowTitle(u"Edit Fixed Cost Item"_s);
        setAdding(false);
        const jet::Recordset item = database.openRecordset(
            u"SELECT * FROM miscitems WHERE itemno="_s + QString::number(itemNo),
            jet::RecordsetType::Snapshot);
        if (item.isEmpty()) {
            screen::MsgBox(QString::number(itemNo) +
                               u" item no. not found! MiscItems table may need to be "
                               "fixed!"_s,
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
    txtUnitPrice->setText(u"0.0000"_s);
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
        complain(u"Description may not be blank!"_s, txtDescription);
        return false;
    }
    if (unit.trimmed().isEmpty()) {
        complain(u"Units may not be blank!"_s, cboUnitofMeasure);
        return false;
    }
    const QString itemNo = QString::number(m_itemNo);
    jet::Database& database = core::MainDatabase();
    QString same = u"SELECT * FROM miscitems WHERE description='"_s + quoted(description) + u"'"_s;
    if (m_itemNo != 0)
        same += u" AND itemno<>"_s + itemNo;
    if (database.hasRows(same)) {
        complain(description + u" already exists!"_s, txtDescription);
        return false;
    }
    const QString price =
        values::format(values::Currency::fromText(txtUnitPrice->text()), u"#0.0000");
    if (m_itemNo == 0) {
        database.execute(u"INSERT INTO miscitems (description, unitofmeasure, unitprice) "
                         "VALUES('"_s +
                         quoted(description) + u"','"_s + quoted(unit) + u"',"_s + price + u" )"_s);
    } else {
        // The blank behind the unit stands in the rows of every shop; it stays.
        database.execute(u"UPDATE miscitems SET description='"_s + quoted(description) +
                         u"', unitofmeasure='"_s + quoted(unit) + u" ', unitprice="_s + price +
                         u" WHERE itemno="_s + itemNo);
    }
    return true;
}

void frmMIAddEdit::startNext() {
    clearFields();
    txtDescription->setFocus();
}

} // namespace estimating
