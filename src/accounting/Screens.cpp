#include "accounting/Screens.h"

#include "accounting/DisplayXML.h"
#include "accounting/ImportExportForm.h"
#include "accounting/SentRecordForm.h"
#include "accounting/frmAP.h"
#include "accounting/frmInvoice.h"
#include "platform/screen/Forms.h"

namespace accounting {

void registerScreens() {
    using screen::Forms;
    Forms::add<DisplayXML>();
    Forms::add<frmInvoice>();
    Forms::add<frmAP>();
    Forms::add(u"frmInvoiceRecord"_s, [] {
        return std::make_unique<SentRecordForm>(SentRecordForm::Kind{
            u"frmInvoiceRecord"_s, u"Invoice History"_s, SentKind::Invoice,
            u"Delete selected Invoice record(s)?"_s, u"DELETE * FROM SentInvoice"_s,
            u"Invoices_Sent.rpt"_s, u"Invoices Sent"_s});
    });
    Forms::add(u"frmAPRecord"_s, [] {
        return std::make_unique<SentRecordForm>(SentRecordForm::Kind{
            u"frmAPRecord"_s, u"Payables History"_s, SentKind::Bill,
            u"Delete selected Accounts Payable record?"_s, u"DELETE * FROM SentAP"_s,
            u"Payables_Sent.rpt"_s, u"Payables Sent"_s});
    });
    for (const ImportMember& member : importMembers())
        Forms::add(member.formName,
                   [&member] { return std::make_unique<ImportExportForm>(member); });
}

} // namespace accounting
