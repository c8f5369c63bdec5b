#include "accounting/Records.h"

#include "platform/values/Literals.h"

#include <algorithm>

namespace accounting {

namespace {

using Kind = Element::Kind;

/// An address block. `line1` is the name that stands on top, the others are columns behind the
/// prefix.
Group address(const QString& aggregate, const QString& name, const QStringList& lines,
              const QString& prefix, const QString& words) {
    Group group{aggregate, {}};
    auto& elements = group.elements;
    int number = 0;
    if (!name.isEmpty())
        elements.push_back({u"Addr1"_s, name, 41, u"the name"_s});
    for (const QString& line : lines) {
        ++number;
        elements.push_back({u"Addr%1"_s.arg(elements.size() + 1), line, 41,
                            words + u", line "_s + QString::number(number)});
    }
    elements.push_back({u"City"_s, prefix + u"city"_s, 31, words + u", city"_s});
    elements.push_back({u"State"_s, prefix + u"state"_s, 21, words + u", state"_s});
    elements.push_back({u"PostalCode"_s, prefix + u"zip"_s, 13, words + u", postal code"_s});
    return group;
}

Group withCountry(Group group, const QString& column, const QString& words) {
    group.elements.push_back({u"Country"_s, column, 31, words + u", country"_s});
    return group;
}

QString joined(const QString& a, const QString& b) {
    return a.isEmpty() || b.isEmpty() ? a + b : a + u", "_s + b;
}

/// The bill-to address and contact; where there is none at all, the main ones.
void deriveVendor(FieldTexts& fields) {
    const QStringList parts{u"address1"_s, u"address2"_s, u"address3"_s, u"city"_s,
                            u"state"_s,    u"zip"_s,      u"country"_s};
    const bool billed = std::any_of(parts.begin(), parts.end(), [&](const QString& part) {
        return !fields.value(u"bill"_s + part).isEmpty();
    });
    for (const QString& part : parts)
        fields[u"to "_s + part] = fields.value(billed ? u"bill"_s + part : part);
    // QuickBooks has no room for a third line below the name.
    fields[u"to address2"_s] =
        joined(fields.value(u"to address2"_s), fields.value(u"to address3"_s));
    for (const QString& part : {u"contact"_s, u"phone"_s, u"fax"_s, u"email"_s}) {
        const QString bill = fields.value(u"bill"_s + part);
        fields[u"to "_s + part] = bill.isEmpty() ? fields.value(part) : bill;
    }
}

void deriveEmployee(FieldTexts& fields) {
    fields[u"name"_s] =
        (fields.value(u"firstname"_s) + u' ' + fields.value(u"lastname"_s)).trimmed();
    fields[u"to address2"_s] = joined(fields.value(u"address2"_s), fields.value(u"address3"_s));
    QString ssn = fields.value(u"ssn"_s);
    if (ssn.size() == 9)
        ssn.insert(5, u'-').insert(3, u'-');
    fields[u"to ssn"_s] = ssn;
}

} // namespace

const std::vector<Group>& customerAddresses() {
    static const std::vector<Group> blocks{
        withCountry(address(u"BillAddress"_s, u"company"_s, {u"billaddress1"_s, u"billaddress2"_s},
                            u"bill"_s, u"bill address"_s),
                    u"billcountry"_s, u"bill address"_s),
        withCountry(address(u"ShipAddress"_s, u"company"_s, {u"shipaddress1"_s, u"shipaddress2"_s},
                            u"ship"_s, u"ship address"_s),
                    u"shipcountry"_s, u"ship address"_s)};
    return blocks;
}

const RecordKind& customerKind() {
    static const RecordKind kind = [] {
        RecordKind made{u"Customer"_s, u"company"_s, u"Customer"_s, {}, true};
        made.groups.push_back({{},
                               {{u"Name"_s, u"company"_s, 41, u"the name"_s},
                                {u"CompanyName"_s, u"company"_s, 41, u"the name"_s}}});
        made.groups.insert(made.groups.end(), customerAddresses().begin(),
                           customerAddresses().end());
        made.groups.push_back({{},
                               {{u"Phone"_s, u"inphone"_s, 21, u"invoice phone"_s},
                                {u"AltPhone"_s, u"inaltphone"_s, 21, u"alternate phone"_s},
                                {u"Fax"_s, u"infax"_s, 21, u"invoice fax"_s},
                                {u"Email"_s, u"inemail"_s, 99, u"invoice e-mail"_s},
                                {u"Contact"_s, u"incontact"_s, 41, u"invoice contact"_s},
                                {u"AltContact"_s, u"inaltcontact"_s, 41, u"alternate contact"_s}}});
        return made;
    }();
    return kind;
}

const RecordKind& vendorKind() {
    static const RecordKind kind = [] {
        RecordKind made{u"Vendor"_s, u"company"_s, u"Vendor"_s, {}, true, deriveVendor};
        made.groups = {
            {{},
             {{u"Name"_s, u"company"_s, 41, u"the name"_s},
              {u"CompanyName"_s, u"company"_s, 41, u"the name"_s}}},
            withCountry(address(u"VendorAddress"_s, u"company"_s,
                                {u"to address1"_s, u"to address2"_s}, u"to "_s, u"address"_s),
                        u"to country"_s, u"address"_s),
            {{},
             {{u"Phone"_s, u"to phone"_s, 21, u"phone"_s},
              {u"AltPhone"_s, u"altphone"_s, 21, u"alternate phone"_s},
              {u"Fax"_s, u"to fax"_s, 21, u"fax"_s},
              {u"Email"_s, u"to email"_s, 99, u"e-mail"_s},
              {u"Contact"_s, u"to contact"_s, 41, u"contact"_s},
              {u"AltContact"_s, u"altcontact"_s, 41, u"alternate contact"_s},
              {u"NameOnCheck"_s, u"company"_s, 41, u"the name"_s}}}};
        return made;
    }();
    return kind;
}

const RecordKind& employeeKind() {
    static const RecordKind kind = [] {
        RecordKind made{u"Employee"_s, u"name"_s, u"Employee"_s, {}, false, deriveEmployee, true};
        // No Name: QuickBooks makes it of the two, and its later versions take none from others.
        made.groups = {
            {{},
             {{u"FirstName"_s, u"firstname"_s, 25, u"first name"_s},
              {u"LastName"_s, u"lastname"_s, 25, u"last name"_s}}},
            address(u"EmployeeAddress"_s, {}, {u"address1"_s, u"to address2"_s}, {}, u"address"_s),
            {{},
             {{u"Phone"_s, u"phone"_s, 21, u"phone"_s},
              {u"SSN"_s, u"to ssn"_s, 15, u"S.S.N."_s},
              {u"HiredDate"_s, u"hiredate"_s, 0, u"hire date"_s, Kind::Date},
              {u"ReleasedDate"_s, u"terminate"_s, 0, u"termination date"_s, Kind::Date}}}};
        return made;
    }();
    return kind;
}

const RecordKind& termsKind() {
    static const RecordKind kind{
        u"StandardTerms"_s,
        u"description"_s,
        u"Terms"_s,
        {{{},
          {{u"Name"_s, u"description"_s, 31, u"the description"_s},
           {u"StdDueDays"_s, u"netdue"_s, 0, u"the days"_s, Kind::Whole}}}}};
    return kind;
}

FieldTexts fieldsOf(const RecordKind& kind, const jet::Recordset& row) {
    FieldTexts fields;
    const QStringList names = row.fieldNames();
    for (const QString& name : names)
        fields[name.toLower()] = row.text(name);
    if (kind.derive)
        kind.derive(fields);
    return fields;
}

Message addRequest(const RecordKind& kind, const FieldTexts& fields) {
    Message message(kind.record + u"AddRq"_s,
                    kind.words + u' ' + fields.value(kind.name) + u": "_s);
    message.open(kind.record + u"Add"_s);
    if (kind.tellsActive)
        message.truth(u"IsActive"_s, fields.value(u"empstatus"_s) == u"Active");
    if (fields.value(kind.name).isEmpty())
        message.complain(u"The name is empty."_s);
    if (kind.tellsActive) // the name is joined by QuickBooks, and has to fit there
        message.check(fields.value(kind.name), 41, u"the name"_s);
    message.groups(kind.groups, fields);
    if (kind.hasTerms)
        message.reference(u"TermsRef"_s, fields.value(u"terms"_s), 31, u"terms"_s);
    return message;
}

Message addTermsRequest(const QString& terms, const QString& netDue) {
    return addRequest(termsKind(), {{u"description"_s, terms}, {u"netdue"_s, netDue}});
}

} // namespace accounting
