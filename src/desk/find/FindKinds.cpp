#include "desk/find/FindKinds.h"

#include "platform/values/Literals.h"

namespace desk {

namespace {

/// All lines below a record as one text; LINES( is written for the engine by textOf().
QByteArray linesOf(const QByteArray& text, const QByteArray& from) {
    return "(SELECT LINES(" + text + ") FROM " + from + ")";
}

QByteArray company(const QByteArray& id) {
    return "(SELECT company FROM Customer WHERE Custid = " + id + ")";
}

FindKind companies(const QString& module, const QString& word, const QByteArray& key) {
    const QByteArray table = word.toLatin1();
    return {module,
            word,
            table,
            key,
            {"company", "Contact", "City", "Phone", "InPhone", "Email", "Address1", "OurNotes"},
            "City",
            {{table, key, "company"}},
            {{table, key,
              "coalesce(company::text,'') || ' ' || coalesce(Contact::text,'') || ' ' || "
              "coalesce(City::text,'') || ' ' || coalesce(Phone::text,'') || ' ' || "
              "coalesce(Email::text,'') || ' ' || coalesce(Address1::text,'') || ' ' || "
              "coalesce(OurNotes::text,'')"}},
            "1 = 1"};
}

} // namespace

const std::vector<FindKind>& findKinds() {
    static const std::vector<FindKind> all = [] {
        FindKind customers = companies(u"frmCustomer"_s, u"Customer"_s, "Custid");
        FindKind vendors = companies(u"frmVendor"_s, u"Vendor"_s, "VendID");
        for (FindKind* each : {&customers, &vendors})
            std::erase(each->texts, "InPhone");
        return std::vector<FindKind>{
            std::move(customers),
            std::move(vendors),
            {u"frmEmployee"_s,
             u"Employee"_s,
             "Employee",
             "EmpID",
             {"coalesce(lastname,'') || ', ' || coalesce(firstname,'')", "\"position\"", "Phone"},
             "EmpStatus",
             {{"Employee", "EmpID", "lastname"}},
             {{"Employee", "EmpID",
               "coalesce(lastname::text,'') || ', ' || coalesce(firstname::text,'') || ' ' || "
               "coalesce(\"position\"::text,'') || ' ' || coalesce(Phone::text,'')"}},
             "1 = 1"},
            {u"frmJob"_s,
             u"Job"_s,
             "Job",
             "JobNo",
             {"PartNo", "Description", "PONo", "JobNotes", "TravelerNotes", "Material"},
             company("Job.CustID"),
             {{"Job", "JobNo", "PONo"}, {"Job", "JobNo", "PartNo"}},
             {{"Job", "JobNo",
               "coalesce(PartNo::text,'') || ' ' || coalesce(Description::text,'') || ' ' || "
               "coalesce(PONo::text,'') || ' ' || coalesce(JobNotes::text,'') || ' ' || "
               "coalesce(TravelerNotes::text,'') || ' ' || coalesce(Material::text,'')"}},
             "Shipped = 0"},
            {u"frmEstimate"_s,
             u"Estimate"_s,
             "Estimate",
             "EstNo",
             {"PartNo", "Description", "RFQNo", "PONo", "EstNotes", "JobNotes", "TravelerNotes",
              "Material"},
             company("Estimate.CustID"),
             {{"Estimate", "EstNo", "PartNo"}},
             {{"Estimate", "EstNo",
               "coalesce(PartNo::text,'') || ' ' || coalesce(Description::text,'') || ' ' || "
               "coalesce(RFQNo::text,'') || ' ' || coalesce(PONo::text,'') || ' ' || "
               "coalesce(EstNotes::text,'') || ' ' || coalesce(JobNotes::text,'') || ' ' || "
               "coalesce(TravelerNotes::text,'') || ' ' || coalesce(Material::text,'')"}}},
            {u"frmPO"_s,
             u"PO"_s,
             "PO",
             "PONumber",
             {linesOf("Company", "POVendor WHERE OrderNumber = PO.PONumber"), "Title",
              linesOf("coalesce(PartNumber,'') || '  ' || coalesce(Description,'') || '  ' || "
                      "coalesce(Manufacturer,'') || '  ' || coalesce(ItemNotes,'')",
                      "POItem WHERE POItem.PONumber = PO.PONumber")},
             {},
             {{"POItem", "PONumber", "PartNumber"}},
             {{"PO", "PONumber", "coalesce(Title::text,'')"},
              {"POVendor", "OrderNumber", "coalesce(Company::text,'')"},
              {"POItem", "PONumber",
               "coalesce(PartNumber::text,'') || ' ' || coalesce(Description::text,'') || ' ' || "
               "coalesce(Manufacturer::text,'') || ' ' || coalesce(ItemNotes::text,'')"}},
             "Active <> 0"},
            {u"frmRFQ"_s,
             u"RFQ"_s,
             "RFQ",
             "PONumber",
             {"Title", linesOf("Company", "RFQVendor WHERE OrderNumber = RFQ.PONumber"),
              linesOf("coalesce(PartNumber,'') || '  ' || coalesce(Description,'') || '  ' || "
                      "coalesce(Manufacturer,'') || '  ' || coalesce(ItemNotes,'')",
                      "RFQItem WHERE RFQItem.OrderNumber = RFQ.PONumber")},
             {},
             {{"RFQItem", "OrderNumber", "PartNumber"}},
             {{"RFQ", "PONumber", "coalesce(Title::text,'')"},
              {"RFQVendor", "OrderNumber", "coalesce(Company::text,'')"},
              {"RFQItem", "OrderNumber",
               "coalesce(PartNumber::text,'') || ' ' || coalesce(Description::text,'') || ' ' || "
               "coalesce(Manufacturer::text,'') || ' ' || coalesce(ItemNotes::text,'')"}},
             "Complete = 0"},
            {u"frmInventory"_s,
             u"Item"_s,
             "Items",
             "ID",
             {"PartNumber", "Description", "Manufacturer"},
             "Manufacturer",
             {{"Items", "ID", "PartNumber"}, {"Items", "ID", "Description"}},
             {{"Items", "ID",
               "coalesce(Description::text,'') || ' ' || coalesce(PartNumber::text,'') || ' ' || "
               "coalesce(Manufacturer::text,'')"}}},
            {u"frmSpareParts"_s,
             u"Spare"_s,
             "SpareParts",
             "\"index\"",
             {"SPartNo", "SLocation", "SPoNo", "Notes"},
             company("SpareParts.SCustID"),
             {{"SpareParts", "\"index\"", "SPartNo"}},
             {{"SpareParts", "\"index\"",
               "coalesce(SPartNo::text,'') || ' ' || coalesce(SLocation::text,'') || ' ' || "
               "coalesce(SPoNo::text,'') || ' ' || coalesce(Notes::text,'')"}}}};
    }();
    return all;
}

QByteArray textOf(const FindKind& kind, bool server) {
    QByteArray all;
    for (const QByteArray& text : kind.texts) {
        QByteArray one = text;
        if (const auto at = one.indexOf("LINES("); at >= 0) {
            // Its closing bracket stands in front of the FROM.
            const auto from = one.indexOf(") FROM ", at);
            one = one.left(at) + (server ? "string_agg(" : "group_concat(") +
                  one.mid(at + 6, from - at - 6) + (server ? ", chr(10))" : ", char(10))") +
                  one.mid(from + 1);
        }
        if (!all.isEmpty())
            all += QByteArray(" || '") + textMark + "' || ";
        constexpr char longest[] = ", 1, 4000), '')"; // of a note
        all += "coalesce(substr(CAST(" + one + " AS text)" + longest;
    }
    return all;
}

} // namespace desk
