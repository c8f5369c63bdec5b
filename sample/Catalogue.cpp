#include "sample/Shop.h"

namespace sample {

namespace {

struct Department {
    const char16_t* name;
    std::vector<std::pair<const char16_t*, int>> operations; ///< name and rate per hour
};

const std::vector<Department>& departments() {
    static const std::vector<Department> all = {
        {u"Sawing", {{u"Saw to length", 38}, {u"Plasma cut", 52}}},
        {u"Milling",
         {{u"CNC mill, 3 axis", 75},
          {u"CNC mill, 5 axis", 110},
          {u"Manual mill", 55},
          {u"Drill and tap", 48}}},
        {u"Turning", {{u"CNC lathe", 72}, {u"Manual lathe", 54}, {u"Swiss turning", 95}}},
        {u"Grinding", {{u"Surface grind", 62}, {u"Cylindrical grind", 68}, {u"Jig grind", 88}}},
        {u"EDM", {{u"Wire EDM", 85}, {u"Sinker EDM", 82}}},
        {u"Tool room",
         {{u"Toolmaker bench work", 78}, {u"Polish cavity", 65}, {u"Fit and assemble", 70}}},
        {u"Inspection",
         {{u"First piece inspection", 58}, {u"Final inspection", 58}, {u"CMM inspection", 80}}},
        {u"Engineering", {{u"Design and CAD", 90}, {u"CNC programming", 85}}},
    };
    return all;
}

} // namespace

void makeCatalogue(Shop& shop) {
    jet::Database& db = shop.database;
    for (const Department& department : departments()) {
        const qint64 id = Row(u"OperDepartment").set(u"department", department.name).insert(db);
        for (const auto& [name, rate] : department.operations) {
            Operation operation{0, QString::fromUtf16(name), u'I',
                                values::Currency::fromInteger(rate)};
            operation.operNo = Row(u"Operation")
                                   .set(u"Description", operation.description)
                                   .set(u"OperType", u"I")
                                   .set(u"OperShopRate", operation.rate)
                                   .set(u"operdepartment_id", id)
                                   .insert(db);
            shop.inhouse.push_back(operation);
        }
    }
    const auto flat = [&](const char16_t* name, const char16_t* type,
                          std::vector<Operation>& into) {
        Operation operation{0, QString::fromUtf16(name), QChar(type[0]), {}};
        operation.operNo = Row(u"Operation")
                               .set(u"Description", operation.description)
                               .set(u"OperType", type)
                               .set(u"OperShopRate", 0)
                               .set(u"operdepartment_id", 0)
                               .insert(db);
        into.push_back(operation);
    };
    for (const auto* name :
         {u"Heat treat", u"Black oxide", u"Anodize", u"Nickel plate", u"Gun drill"})
        flat(name, u"C", shop.outside);
    for (const auto* name : {u"Clean-up", u"Machine maintenance", u"Meeting", u"Training"})
        flat(name, u"O", shop.overhead);

    const auto note = [&](const Operation& operation, const char16_t* text) {
        Row(u"OperNote").set(u"OperNo", operation.operNo).set(u"Note", text).insert(db);
    };
    note(shop.inhouse[2], u"Deburr all edges 0.2 mm unless the print says otherwise.");
    note(shop.inhouse[6],
         u"Check the first piece with the gage on the cart.\r\nDon't use the soft jaws twice.");
    note(shop.inhouse[9], u"Spark out; Ra 0.4.");
    note(shop.inhouse[17], u"Report to the office before the lot goes on.");
    note(shop.outside[0], u"56 - 58 HRC, certificate required.");
    note(shop.outside[2], u"Type II, clear; mask threads.");

    const std::vector<std::tuple<const char16_t*, const char16_t*, double>> items = {
        {u"Tool steel D2, bar", u"LB", 6.85},       {u"Tool steel A2, plate", u"LB", 5.4},
        {u"Aluminum 6061-T6, plate", u"LB", 4.125}, {u"Stainless 303, bar", u"LB", 3.9575},
        {u"Brass C360, bar", u"LB", 5.2},           {u"Delrin, white", u"FT", 7.75},
        {u"End mill, carbide 1/2\"", u"EA", 48.5},  {u"Wire, brass 0.25 mm", u"KG", 14.2},
        {u"Dowel pins, assorted", u"LOT", 12.0},    {u"Packing and crate", u"EA", 35.0},
        {u"Material certificate", u"EA", 25.0},     {u"Freight in", u"LOT", 60.0},
    };
    for (const auto& [name, unit, price] : items) {
        estimating::MiscRow item;
        item.description = QString::fromUtf16(name);
        item.unit = QString::fromUtf16(unit);
        item.price = values::Currency::fromDouble(price);
        item.itemNo = Row(u"MiscItems")
                          .set(u"Description", item.description)
                          .set(u"UnitOfMeasure", item.unit)
                          .set(u"UnitPrice", item.price)
                          .insert(db);
        shop.fixedCosts.push_back(item);
    }

    const std::vector<std::pair<const char16_t*, std::vector<std::size_t>>> sets = {
        {u"Milled part", {0, 2, 5, 18}},
        {u"Turned part", {0, 6, 10, 18}},
        {u"Punch and die", {19, 0, 2, 12, 9, 14}}};
    for (const auto& [name, operations] : sets) {
        const qint64 setNo = Row(u"DefaultSet").set(u"SetDescription", name).insert(db);
        int seqNo = 0;
        for (const std::size_t index : operations) {
            Row(u"DefaultSetOper")
                .set(u"SetNo", setNo)
                .set(u"OperNo", shop.inhouse[index].operNo)
                .set(u"SeqNo", ++seqNo)
                .insert(db);
        }
    }
}

} // namespace sample
