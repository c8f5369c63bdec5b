#include "purchasing/Screens.h"

#include "platform/screen/Forms.h"
#include "purchasing/CopyTreeForm.h"
#include "purchasing/ItemForm.h"
#include "purchasing/OrderDialogs.h"
#include "purchasing/frmPO.h"
#include "purchasing/frmPOaddRec.h"
#include "purchasing/frmRFQ.h"
#include "purchasing/frmRFQMatrix.h"
#include "purchasing/frmRecHistory.h"

namespace purchasing {

namespace {

template <class F, class Descriptor>
void addMember(const Descriptor& descriptor) {
    screen::Forms::add(descriptor.formName,
                       [descriptor] { return std::unique_ptr<screen::Form>(new F(descriptor)); });
}

void addItemDialog(const QString& name, const QString& caption, const OrderKind& kind) {
    screen::Forms::add(name, [name, caption, &kind] {
        return std::unique_ptr<screen::Form>(new ItemForm(name, caption, kind));
    });
}

} // namespace

void registerScreens() {
    using screen::Forms;
    Forms::add<frmRFQ>();
    Forms::add<frmRfqVendorSelect>();
    Forms::add<frmRFQDelete>();
    Forms::add<frmRFQMatrix>();
    Forms::add<frmPO>();
    Forms::add<frmRecHistory>();
    Forms::add<frmPOaddRec>();

    addItemDialog(u"frmRFQaddItem"_s, u"Add Item"_s, rfqKind());
    addItemDialog(u"frmRFQEditItem"_s, u"Edit Item"_s, rfqKind());
    addItemDialog(u"frmPOaddItem"_s, u"Add Item"_s, poKind());
    addItemDialog(u"frmPOEditItem"_s, u"Edit Item"_s, poKind());

    addMember<NewOrderForm>(NewOrderForm::Descriptor{
        u"frmRFQNew"_s,
        u"New RFQ"_s,
        {{u"optNew(0)"_s, u"Create a &New Group"_s, u"allnew"_s},
         {u"optNew(1)"_s, u"Create a New Group using the current Group as a template."_s,
          u"newgroupcopy"_s},
         {u"optNew(2)"_s, u"Create a New RFQ  in current Group. (Add Vendor)"_s, u"newvendor"_s}},
        u"newvendorcopy"_s,
        u"Carry Forward Line Items from current RFQ."_s});
    addMember<NewOrderForm>(NewOrderForm::Descriptor{
        u"frmPONew"_s,
        u"New Purchase Order"_s,
        {{u"optNew(0)"_s, u"Create a &New Purchase Order"_s, u"allnew"_s},
         {u"optNew(1)"_s,
          u"Create a New Purchase Order using the current Purchase Order as a template."_s,
          u"copy"_s}}});

    addMember<GotoForm>(GotoForm::Descriptor{
        u"frmRFQGoto"_s, u"Goto RFQ Group"_s, u"RFQ &Group Number:"_s, u"frmRFQ"_s,
        u"No Group numbers match! Would you like to try a different number?"_s, true});
    addMember<GotoForm>(
        GotoForm::Descriptor{u"frmPOGoto"_s, u"Goto Purchase Order"_s, u"PO &Number:"_s, u"frmPO"_s,
                             u"No PO numbers match or the number you entered is for an inactive "
                             "job! Would you like to try a different number?"_s});

    addMember<CopyTreeForm>(CopyTreeForm::Descriptor{u"frmRFQCopyTree"_s, u"New Group Template"_s,
                                                     u"RFQ"_s, false, false, false});
    addMember<CopyTreeForm>(CopyTreeForm::Descriptor{u"frmPOcopyTree"_s, u"Select Items to copy."_s,
                                                     u"PO "_s, true, false, true});
    addMember<CopyTreeForm>(CopyTreeForm::Descriptor{
        u"frmRFQ2POtree"_s, u"Select Items to Copy into PO"_s, u"RFQ"_s, false, true, true});
}

} // namespace purchasing
