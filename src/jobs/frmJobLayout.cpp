#include "jobs/frmJob.h"
#include "platform/values/Literals.h"

#include "jobs/StatusPicture.h"
#include "platform/screen/Forms.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace jobs {

using controls::MemoField;
using core::Role;
using screen::named;

namespace {

core::ModuleDescriptor describe() {
    core::ModuleDescriptor module;
    module.formName = QString::fromLatin1(frmJob::formName);
    module.caption = u"Job"_s;
    module.moduleWord = u"Job"_s;
    module.table = u"Job"_s;
    module.keyColumn = u"JobNo"_s;
    module.select = jobRows(false);
    module.newKeyText = u"New"_s;
    module.copyWord = u"CopyJob"_s;
    module.dataControlName = u"datJob"_s;
    module.modeLabelName = u"lblJobMode"_s;
    module.queryScreen = u"frmJobQuery"_s;
    module.reportModule = u"Jobs"_s;
    module.reportTitle = u"Job Report"_s;
    module.reportKey = u"Job.JobNo"_s;
    module.deleteTitle = u"Delete"_s;
    module.deleteText = u"You are about to delete the current Job. Are you sure?"_s;
    module.emptyTableCloses = true;
    return module;
}

} // namespace

frmJob::frmJob() : RoutedDocument(describe(), estimating::jobRouting(), jobColumns()) {
    auto* outside = new QVBoxLayout(this);
    outside->setContentsMargins(6, 6, 6, 6);
    outside->setSpacing(4);

    auto* title = new QHBoxLayout;
    outside->addLayout(title);
    makeNumber(title, u"lblJobNo"_s, u"Job No."_s);
    makeMark(title, u"lblEstNo"_s, u"Estimate No."_s);
    lblAssembly = makeMark(title, u"lblAssembly"_s, u"Assembly"_s);
    auto* fraShow = named(new QWidget(this), u"fraShow"_s, u"Jobs shown"_s);
    auto* show = new QHBoxLayout(fraShow);
    show->setContentsMargins(0, 0, 0, 0);
    const char16_t* views[] = {u"Show Active Jobs Only", u"Show Active and Inactive Jobs"};
    QRadioButton* optShow[2] = {};
    for (int i = 0; i < 2; ++i) {
        optShow[i] = named(new QRadioButton(QString::fromUtf16(views[i]), fraShow),
                           u"optShow("_s + QString::number(i) + u")"_s);
        show->addWidget(optShow[i]);
    }
    optShow[0]->setChecked(true);
    bindView({.all = optShow[1],
              .active = optShow[0],
              .select = jobRows(true),
              .none = u"There are no active jobs."_s});
    title->addWidget(fraShow);
    title->addSpacing(16);
    title->addWidget(datMain());

    auto* top = new QHBoxLayout;
    outside->addLayout(top);
    makeHead(top);
    top->addWidget(notePane(), 2);

    m_routing = new estimating::RoutingPanel(*this, estimating::jobRouting(), Qt::Horizontal);
    outside->addWidget(m_routing, 1);

    auto* bottom = new QHBoxLayout;
    outside->addLayout(bottom);
    makeFigures(bottom);
    bottom->addStretch();
    bottom->addWidget(buttonPane());
    wire();
}

QSize frmJob::sizeHint() const {
    return QSize(1230, 640).expandedTo(RoutedModule::sizeHint());
}

void frmJob::makeHead(QBoxLayout* across) {
    screen::Fields head(this, across);
    across->setStretch(0, 3);
    head.tight();
    makeCustomer(head);
    head.text(u"txtPONo"_s, u"PO No."_s);
    head.text(u"txtPartno"_s, u"&Part No."_s);
    head.text(u"txtDescription"_s, u"Descr&iption"_s);
    head.at(0, 1).longDate(u"txtJobDateIn"_s, u"Date In"_s);
    head.longDate(u"txtJobDueDate"_s, u"Due Date"_s);
    txtQuantity = head.text(u"txtQuantity"_s, u"Quantity"_s, screen::number(u"#####0"_s, 10));
    txtJobShopRate =
        head.text(u"txtJobShopRate"_s, u"&Hourly Rate"_s, screen::number(u"#####0.00"_s, 12));
    head.nextRow();
    auto* marks = new QHBoxLayout;
    marks->addWidget(named(new QCheckBox(u"Sequential"_s, this), u"chkSequential"_s));
    marks->addStretch();
    chkShipped = named(new QCheckBox(u"Completed and Shipped?"_s, this), u"chkShipped"_s);
    marks->addWidget(chkShipped);
    head.add(marks);
    head.at(4, 1);
    txtShipDate = head.longDate(u"txtShipDate"_s, u"Ship Date"_s);
    head.grid()->setColumnStretch(1, 3);
    head.grid()->setColumnStretch(3, 2);

    header().use(
        u"txtShipDate"_s,
        {[this](const jet::Value& value) { txtShipDate->setValue(value); },
         [this] { return txtShipDate->value(); }, [this] { txtShipDate->clear(); },
         [this](bool locked) { txtShipDate->setLocked(locked || !chkShipped->isChecked()); },
         txtShipDate});
}

QTabWidget* frmJob::notePane() {
    auto* tabs = named(new QTabWidget(this), u"SSTabNotes"_s, u"Notes"_s);
    // As high as the fields beside it.
    tabs->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    const auto page = [&](const char16_t* name, const char16_t* title, const char16_t* spoken) {
        tabs->addTab(
            named(new MemoField(tabs), QString::fromUtf16(name), QString::fromUtf16(spoken)),
            QString::fromUtf16(title));
    };
    page(u"txtMaterial", u"Special Material Notes", u"Special Material Notes");
    page(u"txtTravelerNotes", u"Traveler", u"Traveler notes");
    page(u"txtJobNotes", u"Job", u"Job notes");
    return tabs;
}

void frmJob::makeFigures(QBoxLayout* across) {
    screen::Fields figures(this, across);
    figures.tight();
    figures.grid()->setHorizontalSpacing(10);
    lblTotalHours = figures.figure(u"lblTotalHours"_s, u"Total Hours"_s);
    lblCalc_OutContr =
        figures.secured(m_secured).figure(u"lblCalc_OutContr"_s, u"Outside Contr Cost"_s);
    lblCalc_Fixed =
        figures.secured(m_secured).figure(u"lblCalc_Fixed"_s, u"Fixed Cost and Material"_s);
    lblJobShopCost = figures.figure(u"lblJobShopCost"_s, u"Shop Cost Each"_s);
    figures.nextColumn();
    figures.figure(u"lblQtyQuotedPrice"_s, u"Quoted Price Each"_s);
    txtInvoiceEach = figures.text(u"txtInvoiceEach"_s, u"Invoice Amount Each"_s,
                                  screen::number(u"######0.0000"_s, 14, 12));
    lblInvoiceTotal = figures.figure(u"lblInvoiceTotal"_s, u"Invoice Total"_s);
}

QWidget* frmJob::buttonPane() {
    return makeButtonPane({{{Role::New, u"cmdNew"_s, u"&New"_s},
                            {Role::Edit, u"cmdEdit"_s, u"&Edit"_s},
                            {Role::Delete, u"cmdDelete"_s, u"&Delete"_s},
                            {Role::Close, u"cmdClose"_s, u"Do&ne"_s}},
                           {{Role::Find, u"cmdFind"_s, u"&Goto Job"_s},
                            {Role::BrowseOnly, u"cmdGotoPart"_s, u"G&oto Part"_s},
                            {Role::Free, u"cmdAssembly"_s, u"Assembl&y Tree"_s},
                            {Role::Free, u"cmdSchedule"_s, u"Schedu&le"_s}},
                           {{Role::Free, u"cmdInvoice"_s, u"In&voice"_s},
                            {Role::BrowseOnly, u"cmdTraveler"_s, u"Tr&aveler..."_s},
                            {Role::Free, u"cmdShippingHistory"_s, u"&Shipping History"_s},
                            {Role::List, u"cmdList"_s, u"&Query/Report"_s},
                            {Role::PrintShown, u"cmdQuery"_s, u"Quick &Report Shown"_s}}});
}

void frmJob::wire() {
    const auto push = [this](const char16_t* name) {
        return control<QPushButton>(QString::fromUtf16(name));
    };
    on(push(u"cmdGotoPart"), &frmJob::cmdGotoPart_Click);
    on(push(u"cmdTraveler"), &frmJob::cmdTraveler_Click);
    // These work where their screens are part of the program.
    const auto opens = [&](const char16_t* name, const char16_t* screenName,
                           void (frmJob::*handler)()) {
        push(name)->setEnabled(screen::Forms::isKnown(QString::fromUtf16(screenName)));
        on(push(name), handler);
    };
    opens(u"cmdAssembly", u"frmAssemblyInfo", &frmJob::cmdAssembly_Click);
    opens(u"cmdSchedule", u"frmSchedule", &frmJob::cmdSchedule_Click);
    opens(u"cmdInvoice", u"frmInvoice", &frmJob::cmdInvoice_Click);
    opens(u"cmdShippingHistory", u"frmJobShip", &frmJob::cmdShippingHistory_Click);

    on(chkShipped, &QCheckBox::toggled, [this] { chkShipped_Click(); });
    wireCustomer();
    const auto left = [this] {
        if (!isBrowse())
            calculate();
    };
    m_header.bind(*this, fields());
    on(txtJobShopRate->left, left);
    on(txtQuantity->left, left);
    on(txtInvoiceEach->left, left);
    on(m_routing->costChanged, &frmJob::calculate);
    on(m_routing->fixedCostsChanged, &frmJob::calculate);
    m_routing->mayRemove = [this](const estimating::OperRow& row) { return mayRemove(row); };
    m_routing->statusPicture = statusPicture;
}

} // namespace jobs
