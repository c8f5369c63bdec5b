#include "platform/values/Literals.h"
#include "sample/Shop.h"

namespace sample {

namespace {

const QStringList& companies() {
    static const QStringList all = {
        u"Kestrel Tool"_s,         u"D'Amico Präzision"_s,    u"Northgate Hydraulics"_s,
        u"Alder & Sons"_s,         u"Ångström Instruments"_s, u"Bluewater Pumps"_s,
        u"Harper's Die Casting"_s, u"Quarry Road Mold"_s,     u"Vega Aerospace"_s,
        u"Façonnage du Nord"_s,    u"Pine Street Medical"_s,  u"Rutherford Gear"_s,
        u"Silver Lake Optics"_s,   u"Tamarack Fixtures"_s,    u"Union Valve"_s,
        u"Westbrook Stamping"_s,   u"Zeller Automation"_s,    u"Cobalt Robotics"_s,
        u"Eastline Packaging"_s,   u"Fjord Marine"_s};
    return all;
}

const QStringList& firstNames() {
    static const QStringList all = {u"Anna"_s,  u"Ben"_s,   u"Carla"_s, u"Dieter"_s,
                                    u"Elena"_s, u"Frank"_s, u"Grace"_s, u"Héctor"_s,
                                    u"Ivan"_s,  u"Joan"_s,  u"Kurt"_s,  u"Lucía"_s};
    return all;
}

const QStringList& lastNames() {
    static const QStringList all = {u"Abbott"_s, u"Brandt"_s,  u"O'Connor"_s, u"Delgado"_s,
                                    u"Evans"_s,  u"Fischer"_s, u"Grünwald"_s, u"Haines"_s,
                                    u"Ibarra"_s, u"Jansen"_s,  u"Kowalski"_s, u"Larsen"_s,
                                    u"Moreau"_s, u"Nguyen"_s};
    return all;
}

const QStringList& towns() {
    static const QStringList all = {u"Springfield"_s, u"Cedar Falls"_s, u"Ashland"_s,
                                    u"Milford"_s,     u"Georgetown"_s,  u"St. Paul"_s};
    return all;
}

QString phone(Random& random) {
    return u"(%1) 555-%2"_s.arg(random.between(201, 989))
        .arg(random.between(100, 199), 4, 10, QChar(u'0'));
}

QString person(Random& random) {
    return random.of(firstNames()) + u' ' + random.of(lastNames());
}

Row addressed(const char16_t* table, Random& random) {
    static const QStringList states = {u"OH"_s, u"MI"_s, u"MN"_s, u"PA"_s, u"IL"_s};
    Row row(table);
    row.set(u"Address1", QString::number(random.between(10, 9900)) + u" Mill Road"_s)
        .set(u"City", random.of(towns()))
        .set(u"State", random.of(states))
        .set(u"Zip", QString::number(random.between(43000, 61999)))
        .set(u"Country", u"United States")
        .set(u"Phone", phone(random));
    return row;
}

QString companyName(int i) {
    static const QStringList branches = {QString(), u" East"_s, u" of Ohio"_s, u" Division 2"_s};
    const int names = static_cast<int>(companies().size());
    const int round = i / names;
    QString name = companies()[i % names];
    return round < branches.size() ? name + branches[round] : name + u' ' + QString::number(round);
}

void makeEmployee(Shop& shop, int i, qint64 shift) {
    Random& random = shop.random;
    static const std::vector<const char16_t*> titles = {u"Machinist", u"Toolmaker", u"Inspector",
                                                        u"Programmer"};
    const bool terminated = i % 9 == 8;
    const values::Currency startPay = values::Currency::fromDouble(random.between(18, 30) + 0.5);
    const values::Currency pay =
        startPay + values::Currency::fromDouble(random.between(0, 12) * 0.75);
    const QDate hired = shop.start.addDays(-random.between(100, 3000));
    Row row = addressed(u"Employee", random);
    row.set(u"firstname", firstNames()[i % firstNames().size()])
        .set(u"lastname", lastNames()[(i * 5 + i / 12) % lastNames().size()])
        .set(u"Position", i % 8 == 0 ? u"Supervisor" : u"Employee")
        .set(u"Title", random.of(titles))
        .set(u"EmpStatus", terminated     ? u"Terminated"
                           : i % 17 == 16 ? u"Suspended"
                                          : u"Active")
        .set(u"multijobs", i % 8 == 0)
        .set(u"locateflag", random.chance(30))
        .set(u"shiftsid", shift)
        .set(u"SSN", u"9%1"_s.arg(random.between(10000000, 99999999)))
        .set(u"MaritalStatus", u"Single")
        .set(u"HireDate", hired)
        .set(u"EntryDate", hired)
        .set(u"StartPay", startPay)
        .set(u"StartFrq", u"Hourly")
        .set(u"CurrPay", pay)
        .set(u"CurrFrq", u"Hourly")
        .set(u"ExempState", 1)
        .set(u"ExempFed", 1)
        .set(u"ExempOther", 0);
    if (terminated)
        row.set(u"Terminate", shop.today.addDays(-random.between(5, 300)));
    const qint64 empID = row.insert(shop.database);
    Row(u"EmployeeSalary")
        .set(u"EmpID", empID)
        .set(u"SalaryDate", hired)
        .set(u"SalaryAmount", startPay)
        .set(u"SalaryFrequency", u"Hourly")
        .insert(shop.database);
    if (pay != startPay) {
        Row(u"EmployeeSalary")
            .set(u"EmpID", empID)
            .set(u"SalaryDate", shop.start.addDays(random.between(1, 200)))
            .set(u"SalaryAmount", pay)
            .set(u"SalaryFrequency", u"Hourly")
            .insert(shop.database);
    }
    if (!terminated)
        shop.employees.push_back(empID);
}

} // namespace

void makeMasters(Shop& shop) {
    jet::Database& db = shop.database;
    Random& random = shop.random;
    db.execute(u"UPDATE SystemSettings SET CompanyName = 'Sample Tool & Die', "
               "CompanyAddress1 = '1200 Foundry Lane', "
               "CompanyCity = 'Springfield', CompanyState = 'OH', companycountry = "
               "'United States', companyzip = '45501', "
               "CompanyPhone = '(937) 555-0100', CompanyFax = '(937) 555-0101', "
               "CompanyEmail = 'office@sampletool.example', "
               "poshiptoname = 'Sample Tool & Die', poshiptoaddress1 = '1200 "
               "Foundry Lane', poshiptocity = 'Springfield', "
               "poshiptostate = 'OH', poshiptozip = '45501', poshiptocountry = "
               "'United States', SecurityCode = 'K7'"_s);

    const int customerCount = std::clamp(shop.options.jobs / 8, 30, 900);
    static const QStringList terms = {u"Net 30"_s, u"Net 45"_s, u"Net 10"_s};
    std::vector<qint64> gone;
    for (int i = 0; i < customerCount; ++i) {
        const QString name = companyName(i);
        const QString contact = person(random);
        Row row = addressed(u"Customer", random);
        row.set(u"company", name)
            .set(u"Contact", contact)
            .set(u"Email", u"purchasing@"_s + u"customer%1.example"_s.arg(i + 1))
            .set(u"attention", u"Receiving")
            .set(u"Shipping", u"Best way")
            .set(u"Terms", random.of(terms))
            .set(u"FOB", u"Our dock")
            .set(u"qteHeader", u"We are pleased to quote as follows:")
            .set(u"qtevalid", u"This quote is valid for 30 days.")
            .set(u"InContact", contact)
            .set(u"QBSent", 0);
        if (i % 7 == 3)
            row.set(u"QteRemark", u"Prices include material unless stated.\r\nDelivery counts from "
                                  u"receipt of order.");
        if (i % 11 == 5)
            row.set(u"OurNotes", u"Pays late. Ask for half up front on tooling above 10,000.");
        const qint64 custID = row.insert(db);
        if (i % 13 == 12)
            gone.push_back(custID); // a gap in the numbers
        else if (i != 4)            // one customer has nothing at all
            shop.customers.push_back(custID);
    }
    for (const qint64 custID : gone)
        db.execute(u"DELETE * FROM Customer WHERE CustID = "_s + QString::number(custID));

    static const QStringList trades = {u" Steel"_s, u" Supply"_s, u" Heat Treating"_s,
                                       u" Plating"_s, u" Industrial"_s};
    const int vendorCount = std::clamp(shop.options.jobs / 12, 20, 300);
    for (int i = 0; i < vendorCount; ++i) {
        const bool contractor = i % 5 == 2 || i % 5 == 3;
        const qint64 vendID =
            addressed(u"Vendor", random)
                .set(u"company", random.of(lastNames()) + trades[i % 5] +
                                     (i < 5 ? QString() : u' ' + QString::number(i)))
                .set(u"Contact", person(random))
                .set(u"Shipping", u"Best way")
                .set(u"Terms", u"Net 30")
                .set(u"FOB", u"Destination")
                .set(u"cotr", contractor)
                .set(u"QBSent", 0)
                .insert(db);
        shop.vendors.push_back(vendID);
        if (contractor)
            shop.contractors.push_back(vendID);
    }

    const qint64 shift = db.lookup(u"SELECT TOP 1 ID FROM Shifts ORDER BY ID"_s).toLong();
    const double jobsADay = shop.options.jobs / (shop.options.years * 250.0);
    const int employeeCount = std::clamp(static_cast<int>(jobsADay * 4.2), 14, 200);
    for (const auto& [time, type] :
         {std::pair{u"12:00 PM", u"Suspend"}, std::pair{u"05:30 PM", u"Signout"}})
        Row(u"ShiftsTimer")
            .set(u"ShiftsID", shift)
            .set(u"RunTime", time)
            .set(u"RunType", type)
            .insert(db);
    for (int i = 0; i < employeeCount; ++i)
        makeEmployee(shop, i, shift);

    for (const auto* name :
         {u"Kestrel", u"Harrow Bearings", u"Brightline Fasteners", u"Osprey Carbide"})
        Row(u"Manufacturer").set(u"Company", name).insert(db);
}

void makeUsers(Shop& shop) {
    jet::Database& db = shop.database;
    const qint64 office = Row(u"Groups").set(u"groupname", u"Office").insert(db);
    const qint64 floor = Row(u"Groups").set(u"groupname", u"Shop floor").insert(db);
    Row(u"Users")
        .set(u"UserID", u"planner")
        .set(u"username", u"Pat Planner")
        .set(u"password", u"gears")
        .set(u"usergroupid", office)
        .insert(db);
    Row(u"Users")
        .set(u"UserID", u"floor")
        .set(u"username", u"Sam O'Hara")
        .set(u"password", u"lathe")
        .set(u"usergroupid", floor)
        .insert(db);
    const qint64 loner = Row(u"Users")
                             .set(u"UserID", u"loner")
                             .set(u"username", u"Lee Loner")
                             .set(u"password", u"solo")
                             .set(u"usergroupid", 0)
                             .insert(db);
    db.execute(u"INSERT INTO SecurityUsers (id, objectID) SELECT %1 AS id, objectid "
               "FROM SecurityObjects WHERE securitycode IN ('mnuAddOns', "
               "'mnuFileCustomer', 'ShowDollar')"_s.arg(loner));
    const auto grant = [&](qint64 group, const QString& condition) {
        db.execute(u"INSERT INTO SecurityGroups (groupid, objectID) SELECT "_s +
                   QString::number(group) + u" AS groupid, objectid FROM SecurityObjects WHERE "_s +
                   condition);
    };
    grant(office, u"securitycode <> 'mnuUtilitiesLoginSetup' AND securitycode <> "
                  "'mnuUtilitiesDMCompact'"_s);
    grant(floor, u"securitycode IN ('mnuAddOns', 'mnuFileJob', 'mnuFileEstimate', 'mnuSchedule', "
                 "'mnuFileTimeManagement')"_s);
}

} // namespace sample
