#include "masters/Screens.h"

#include "masters/FindDialogs.h"
#include "masters/NoteDialog.h"
#include "masters/frmCustomer.h"
#include "platform/screen/Forms.h"

namespace masters {

namespace {

FindForm::Descriptor customerFind() {
    return {QStringLiteral("frmCustFind"),
            QStringLiteral("Goto Customers"),
            QStringLiteral("&Enter the Number or Name Here:"),
            {{QStringLiteral("optFind1"), QStringLiteral("List By Customer &Name"),
              QStringLiteral("SELECT * FROM Customer WHERE Company LIKE '")},
             {QStringLiteral("optFind2"), QStringLiteral("List By Customer N&umber"),
              QStringLiteral("SELECT * FROM Customer WHERE CustID LIKE '")}},
            QStringLiteral("frmCustFound"),
            QStringLiteral("frmCustomer")};
}

FoundForm::Descriptor customerFound() {
    using Kind = controls::GridColumn::Kind;
    return {QStringLiteral("frmCustFound"),
            QStringLiteral("Customer Found"),
            QStringLiteral("sprCustFound"),
            {{.title = QStringLiteral("Cust. #"), .characters = 8, .kind = Kind::Number},
             {.title = QStringLiteral("Company Name"), .characters = 40}},
            {QStringLiteral("Custid"), QStringLiteral("company")}};
}

} // namespace

void registerScreens() {
    using screen::Forms;
    Forms::add<frmCustomer>();
    Forms::add(QStringLiteral("frmCustFind"),
               [] { return std::make_unique<FindForm>(customerFind()); });
    Forms::add(QStringLiteral("frmCustFound"),
               [] { return std::make_unique<FoundForm>(customerFound()); });
    Forms::add(QStringLiteral("frmQuoteRemarks"), [] {
        return std::make_unique<NoteForm>(QStringLiteral("frmQuoteRemarks"),
                                          QStringLiteral("Quote Remarks"),
                                          QStringLiteral("txtRemarks"));
    });
    Forms::add(QStringLiteral("frmQuoteNotes"), [] {
        return std::make_unique<NoteForm>(QStringLiteral("frmQuoteNotes"),
                                          QStringLiteral("Quote Notes"),
                                          QStringLiteral("txtNotes"));
    });
}

} // namespace masters
