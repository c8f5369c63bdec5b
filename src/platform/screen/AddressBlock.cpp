#include "platform/screen/AddressBlock.h"

#include "platform/values/Literals.h"

namespace screen {

AddressBlock AddressBlock::main(Fields& fields) {
    AddressBlock made;
    made.line1 = fields.text(u"txtAdd1"_s, u"Address &1:"_s, wide(36));
    made.line2 = fields.text(u"txtAdd2"_s, u"Address &2:"_s, wide(36));
    made.line3 = fields.text(u"txtAdd3"_s, u"Address &3:"_s, wide(36));
    made.city = fields.text(u"txtCity"_s, u"City:"_s, wide(24));
    made.state = fields.dataCombo(u"dbcState"_s, u"State / Pro&vince:"_s, wide(12));
    made.zip = fields.text(u"txtZip1"_s, u"&Zip:"_s, wide(12));
    made.country = fields.dataCombo(u"dbcCountry"_s, u"Country:"_s, wide(24));
    fields.keepTogether();
    return made;
}

AddressBlock AddressBlock::other(Fields& fields, const QString& prefix, const QString& zipName,
                                 bool thirdLine) {
    const QString text = u"txt"_s + prefix;
    const QString combo = u"dbc"_s + prefix;
    AddressBlock made;
    made.line1 = fields.text(text + u"Address1"_s, u"Address 1:"_s, wide(24));
    made.line2 = fields.text(text + u"Address2"_s, u"Address 2:"_s, wide(24));
    if (thirdLine)
        made.line3 = fields.text(text + u"Address3"_s, u"Address 3:"_s, wide(24));
    made.city = fields.text(text + u"City"_s, u"City:"_s, wide(20));
    made.state = fields.dataCombo(combo + u"State"_s, u"State:"_s, wide(12));
    made.zip = fields.text(text + zipName, u"Postal Code:"_s, wide(12));
    made.country = fields.dataCombo(combo + u"Country"_s, u"Country:"_s, wide(20));
    fields.keepTogether();
    return made;
}

void AddressBlock::bind(BoundFields& fields, const QString& prefix) const {
    fields.bind(prefix + u"Address1"_s, line1);
    fields.bind(prefix + u"Address2"_s, line2);
    if (line3)
        fields.bind(prefix + u"Address3"_s, line3);
    fields.bind(prefix + u"City"_s, city);
    fields.bind(prefix + u"State"_s, state);
    fields.bind(prefix + u"Zip"_s, zip);
    fields.bind(prefix + u"Country"_s, country);
}

void AddressBlock::copyTo(const AddressBlock& other) const {
    other.line1->setText(line1->text());
    other.line2->setText(line2->text());
    if (line3 && other.line3)
        other.line3->setText(line3->text());
    other.city->setText(city->text());
    other.zip->setText(zip->text());
    other.state->setText(state->text());
    other.country->setText(country->text());
}

} // namespace screen
