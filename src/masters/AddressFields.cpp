#include "masters/AddressFields.h"

#include "core/MirsaMain.h"
#include "platform/screen/MsgBox.h"

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
                          QStringLiteral("Overwrite Information?")) == screen::Answer::Ok;
}

AddressFields AddressFields::main(screen::Fields& fields) {
    AddressFields made;
    made.line1 = fields.text(QStringLiteral("txtAdd1"), QStringLiteral("Address &1:"), wide(36));
    made.line2 = fields.text(QStringLiteral("txtAdd2"), QStringLiteral("Address &2:"), wide(36));
    made.line3 = fields.text(QStringLiteral("txtAdd3"), QStringLiteral("Address &3:"), wide(36));
    made.city = fields.text(QStringLiteral("txtCity"), QStringLiteral("City:"), wide(24));
    made.state = fields.dataCombo(QStringLiteral("dbcState"), QStringLiteral("State / Pro&vince:"),
                                  wide(12));
    made.zip = fields.text(QStringLiteral("txtZip1"), QStringLiteral("&Zip:"), wide(12));
    made.country =
        fields.dataCombo(QStringLiteral("dbcCountry"), QStringLiteral("Country:"), wide(24));
    keepTogether(fields);
    return made;
}

AddressFields AddressFields::other(screen::Fields& fields, const QString& prefix,
                                   const QString& zipName, bool thirdLine) {
    const QString text = QStringLiteral("txt") + prefix;
    const QString combo = QStringLiteral("dbc") + prefix;
    AddressFields made;
    made.line1 =
        fields.text(text + QStringLiteral("Address1"), QStringLiteral("Address 1:"), wide(24));
    made.line2 =
        fields.text(text + QStringLiteral("Address2"), QStringLiteral("Address 2:"), wide(24));
    if (thirdLine)
        made.line3 =
            fields.text(text + QStringLiteral("Address3"), QStringLiteral("Address 3:"), wide(24));
    made.city = fields.text(text + QStringLiteral("City"), QStringLiteral("City:"), wide(20));
    made.state =
        fields.dataCombo(combo + QStringLiteral("State"), QStringLiteral("State:"), wide(12));
    made.zip = fields.text(text + zipName, QStringLiteral("Postal Code:"), wide(12));
    made.country =
        fields.dataCombo(combo + QStringLiteral("Country"), QStringLiteral("Country:"), wide(20));
    keepTogether(fields);
    return made;
}

void AddressFields::bind(BoundFields& fields, const QString& prefix) const {
    fields.bind(prefix + QStringLiteral("Address1"), line1);
    fields.bind(prefix + QStringLiteral("Address2"), line2);
    if (line3)
        fields.bind(prefix + QStringLiteral("Address3"), line3);
    fields.bind(prefix + QStringLiteral("City"), city);
    fields.bind(prefix + QStringLiteral("State"), state);
    fields.bind(prefix + QStringLiteral("Zip"), zip);
    fields.bind(prefix + QStringLiteral("Country"), country);
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
    const jet::Recordset states = database.openRecordset(
        QStringLiteral("Select * from States order by code"), jet::RecordsetType::Snapshot);
    const jet::Recordset countries = database.openRecordset(
        QStringLiteral("Select * from Country order by Country"), jet::RecordsetType::Snapshot);
    for (const AddressFields& address : addresses) {
        address.state->setRows(states, QStringLiteral("code"), QStringLiteral("code"));
        address.country->setRows(countries, QStringLiteral("country"), QStringLiteral("country"));
    }
}

bool AddressFields::listsFrom(const QString& table) {
    return table.compare(u"States", Qt::CaseInsensitive) == 0 ||
           table.compare(u"Country", Qt::CaseInsensitive) == 0;
}

} // namespace masters
