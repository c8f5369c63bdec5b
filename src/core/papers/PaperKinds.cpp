#include "core/papers/PaperKinds.h"

#include "platform/values/Literals.h"

namespace core {

const std::vector<PaperKind>& paperKinds() {
    static const std::vector<PaperKind> kinds = {
        {u"Estimate"_s, u"Estimate"_s, u"frmEstimate"_s, u"mnuFileEstimate"_s, u"Estimate"_s,
         u"EstNo"_s, u"Estimate"_s, u"EstNo"_s, u"PartNo"_s, true},
        {u"Job"_s, u"Job"_s, u"frmJob"_s, u"mnuFileJob"_s, u"Job"_s, u"JobNo"_s, u"Job"_s,
         u"JobNo"_s, u"PartNo"_s, true},
        {u"Item"_s, u"Item"_s, u"frmInventory"_s, u"mnuInventory"_s, u"Items"_s, u"ID"_s,
         u"Items"_s, u"ID"_s, u"PartNumber"_s},
        {u"RFQ"_s, u"RFQ"_s, u"frmRFQ"_s, u"mnuFileRequest"_s, u"RFQ"_s, u"PONumber"_s,
         u"RFQItem"_s, u"OrderNumber"_s, u"PartNumber"_s},
        {u"PO"_s, u"Purchase order"_s, u"frmPO"_s, u"mnuFilePurchaseOrder"_s, u"PO"_s,
         u"PONumber"_s, u"POItem"_s, u"PONumber"_s, u"PartNumber"_s},
        {u"Customer"_s, u"Customer"_s, u"frmCustomer"_s, u"mnuFileCustomer"_s, u"Customer"_s,
         u"Custid"_s},
        {u"Vendor"_s, u"Vendor"_s, u"frmVendor"_s, u"mnuFileVendor"_s, u"Vendor"_s, u"VendID"_s},
    };
    return kinds;
}

const PaperKind* paperKind(const QString& name) {
    for (const PaperKind& kind : paperKinds())
        if (kind.name.compare(name, Qt::CaseInsensitive) == 0)
            return &kind;
    return nullptr;
}

const PaperKind* paperKindOf(const QString& screen) {
    for (const PaperKind& kind : paperKinds())
        if (kind.screen.compare(screen, Qt::CaseInsensitive) == 0)
            return &kind;
    return nullptr;
}

} // namespace core
