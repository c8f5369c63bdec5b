#include "purchasing/OrderDocument.h"

namespace purchasing {

using core::column;

namespace {

struct Place {
    QString column;
    QString control;
    QString words;
};

const std::array<Place, 9>& shipToPlaces() {
    static const std::array<Place, 9> places{
        {{u"Name"_s, u"txtShip2Name"_s, u"Ship To Name"_s},
         {u"Address1"_s, u"txtShip2Address1"_s, u"Ship To Address 1"_s},
         {u"Address2"_s, u"txtShip2Address2"_s, u"Ship To Address 2"_s},
         {u"Address3"_s, u"txtShip2Address3"_s, u"Ship To Address 3"_s},
         {u"City"_s, u"txtShip2City"_s, u"Ship To City"_s},
         {u"State"_s, u"dbcShip2State"_s, u"Ship To State / Province"_s},
         {u"Zip"_s, u"txtShip2Zip"_s, u"Ship To Postal Code"_s},
         {u"Country"_s, u"dbcShip2Country"_s, u"Ship To Country"_s},
         {u"Email"_s, u"txtShip2Email"_s, u"Ship To Email"_s}}};
    return places;
}

const std::array<Place, 15>& copiedPlaces() {
    static const std::array<Place, 15> places{
        {{u"MailAddress1"_s, u"txtVMailAddress1"_s, u"Address 1"_s},
         {u"MailAddress2"_s, u"txtVMailAddress2"_s, u"Address 2"_s},
         {u"MailAddress3"_s, u"txtVMailAddress3"_s, u"Address 3"_s},
         {u"MailCity"_s, u"txtVMailCity"_s, u"City"_s},
         {u"MailState"_s, u"dbcState"_s, u"State / Province"_s},
         {u"MailZip"_s, u"txtZip"_s, u"Postal Code"_s},
         {u"MailCountry"_s, u"dbcMailCountry"_s, u"Country"_s},
         {u"Contact"_s, u"txtVContact"_s, u"Contact"_s},
         {u"Phone"_s, u"txtvPhone"_s, u"Phone"_s},
         {u"Fax"_s, u"txtvFax"_s, u"Fax"_s},
         {u"Email"_s, u"txtEmail"_s, u"Email"_s},
         {u"Terms"_s, u"dbcTerms"_s, u"Terms"_s},
         {u"Shipping"_s, u"txtVShipping"_s, u"Shipping"_s},
         {u"FOB"_s, u"txtVFOB"_s, u"FOB"_s},
         {u"Notes"_s, u"txtVNotes"_s, u"Notes"_s}}};
    return places;
}

core::DocumentColumns<OrderVendor> makeVendorColumns(bool ofRequest) {
    std::vector<core::DocumentColumn> columns;
    if (ofRequest) {
        columns.push_back(column<OrderVendor>(u"VOrderKey"_s, &OrderVendor::requestKey)
                              .field(u"txtRFQNum"_s)
                              .locked());
        columns.push_back(
            column<OrderVendor>(u"VendorID"_s, &OrderVendor::vendorId).field(u"txtVID"_s).locked());
        columns.push_back(column<OrderVendor>(u"Company"_s, &OrderVendor::company));
    } else {
        columns.push_back(column<OrderVendor>(u"VendorID"_s, &OrderVendor::vendorId)
                              .field(u"lblVnum"_s, u"Vendor Number"_s));
        columns.push_back(column<OrderVendor>(u"Company"_s, &OrderVendor::company)
                              .field(u"dbcVend"_s, u"Vendor"_s));
    }
    for (std::size_t i = 0; i < copiedPlaces().size(); ++i) {
        const Place& place = copiedPlaces()[i];
        columns.push_back(column<OrderVendor>(
                              place.column, [i](auto& vendor) -> auto& { return vendor.copied[i]; })
                              .field(place.control, place.words));
    }
    return core::DocumentColumns<OrderVendor>(std::move(columns));
}

} // namespace

const std::array<QString, 9>& shipToColumns() {
    static const std::array<QString, 9> columns = [] {
        std::array<QString, 9> names;
        for (std::size_t i = 0; i < names.size(); ++i)
            names[i] = shipToPlaces()[i].column;
        return names;
    }();
    return columns;
}

const core::DocumentColumns<OrderHeader>& orderColumns() {
    static const core::DocumentColumns<OrderHeader> all = [] {
        using Header = OrderHeader;
        std::vector<core::DocumentColumn> columns{
            column<Header>(u"Title"_s, &Header::title).field(u"txtTitle"_s, u"Description"_s),
            column<Header>(u"PODate"_s, &Header::issued).field(u"txtPODate"_s, u"Date Issued"_s),
            column<Header>(u"ReqDate"_s, &Header::required)
                .field(u"txtReqDate"_s, u"Date Required"_s)};
        for (std::size_t i = 0; i < shipToPlaces().size(); ++i) {
            const Place& place = shipToPlaces()[i];
            columns.push_back(column<Header>(
                                  u"Ship2"_s + place.column,
                                  [i](auto& header) -> auto& { return header.shipTo[i]; })
                                  .field(place.control, place.words));
        }
        return core::DocumentColumns<Header>(std::move(columns));
    }();
    return all;
}

const core::DocumentColumns<OrderVendor>& vendorColumns(const OrderKind& kind) {
    static const auto ofRequest = makeVendorColumns(true);
    static const auto ofOrder = makeVendorColumns(false);
    return kind.itemTable == rfqKind().itemTable ? ofRequest : ofOrder;
}

const core::DocumentLines<OrderLine>& orderLines() {
    static const core::DocumentLines<OrderLine> lines{
        lineColumns(), &OrderLine::id,
        [](const OrderLine& line) { return u"The item "_s + line.partNumber; }};
    return lines;
}

bool sameOrder(const OrderKind& kind, const OrderDocument& a, const OrderDocument& b) {
    return orderColumns().same(a.header, b.header) &&
           vendorColumns(kind).same(a.vendor, b.vendor) &&
           std::equal(a.lines.begin(), a.lines.end(), b.lines.begin(), b.lines.end(),
                      [](const OrderLine& one, const OrderLine& other) {
                          return lineColumns().same(one, other);
                      });
}

} // namespace purchasing
