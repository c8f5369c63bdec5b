#include "masters/AddressFields.h"

#include "core/MirsaMain.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Literals.h"

namespace masters {

screen::Line wide(int characters) {
    screen::Line line;
    line.characters = characters;
    return line;
}

void keepTogether(const screen::Fields& fields) {
    fields.grid()->setRowStretch(fields.grid()->rowCount(), 1);
}

bool mayOverwrite(const controls::TextField& target, const QString& question) {
    return target.text().isEmpty() ||
           screen::MsgBox(question, screen::Buttons::OkCancel, screen::Icon::Question,
                          u"Overwrite Information?"_s) == screen::Answer::Ok;
}

AddressFields AddressFields::main(screen::Fields& fields) {
    AddressFields made;
    made.line1 = fields.text(u"txtAdd1"_s, u"Address &1:"_s, wide(36));
    made.line2 = fields.text(u"txtAdd2"_s, u"Address &2:"_s, wide(36));
    made.line3 = fields.text(u"txtAdd3"_s, u"Address &3:"_s, wide(36));
    made.city = fields.text(u"txtCity"_s, u"City:"_s, wide(24));
    made.state = fields.dataCombo(u"dbcState"_s, u"State / Pro&vince:"_s, wide(12));
    made.zip = fields.text(u"txtZip1"_s, u"&Zip:"_s, wide(12));
    made.country = fields.dataCombo(u"dbcCountry"_s, u"Country:"_s, wide(24));
    keepTogether(fields);
    return made;
}

AddressFields AddressFields::other(screen::Fields& fields, const QString& prefix,
                                   const QString& zipName, bool thirdLine) {
    const QString text = u"txt"_s + prefix;
    const QString combo = u"dbc"_s + prefix;
    AddressFields made;
    made.line1 = fields.text(text + u"Address1"_s, u"Address 1:"_s, wide(24));
    made.line2 = fields.text(text + u"Address2"_s, u"Address 2:"_s, wide(24));
    if (thirdLine)
        made.line3 = fields.text(text + u"Address3"_s, u"Address 3:"_s, wide(24));
    made.city = fields.text(text + u"City"_s, u"City:"_s, wide(20));
    made.state = fields.dataCombo(combo + u"State"_s, u"State:"_s, wide(12));
    made.zip = fields.text(text + zipName, u"Postal Code:"_s, wide(12));
    made.country = fields.dataCombo(combo + u"Country"_s, u"Country:"_s, wide(20));
    keepTogether(fields);
    return made;
}

void AddressFields::bind(screen::BoundFields& fields, const QString& prefix) const {
    fields.bind(prefix + u"Address1"_s, line1);
    fields.bind(prefix + u"Address2"_s, line2);
    if (line3)
        fields.bind(prefix + u"Address3"_s, line3);
    fields.bind(prefix + u"City"_s, city);
    fields.bind(prefix + u"State"_s, state);
    fields.bind(prefix + u"Zip"_s, zip);
    fields.bind(prefix + u"Country"_s, country);
}

void AddressFields::copyTo(const AddressFields& other) const {
    other.line1->setText(line1->text());
    other.line2->setText(line2->text());
    if (line3 && other.line3)
        other.line3->setText(line3->text());
    other.city->setText(city->text());
    other.zip->setText(zip->text());
    other.state->setText(state->text());
    other.country->setText(country->text());
}

void AddressFields::fillLists(const std::vector<AddressFields>& addresses) {
    jet::Database& database = core::MainDatabase();
    const jet::Recordset states = database.openRecordset(u"Select * from States order by code"_s,
                                                         jet::RecordsetType::Snapshot);
    const jet::Recordset countries = database.openRecordset(
        u"Select * from Country order by Country"_s, jet::RecordsetType::Snapshot);
    for (const AddressFields& address : addresses) {
        address.state->setRows(states, u"code"_s, u"code"_s);
        address.country->setRows(countries, u"country"_s, u"country"_s);
    }
}

bool AddressFields::listsFrom(const QString& table) {
    return table.compare(u"States", Qt::CaseInsensitive) == 0 ||
           table.compare(u"Country", Qt::CaseInsensitive) == 0;
}

} // namespace masters
