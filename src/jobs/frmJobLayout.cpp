#include "jobs/frmJob.h"
#include "platform/values/Literals.h"

#include "jobs/StatusPicture.h"
#include "platform/screen/Forms.h"
#include "platform/values/Format.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace jobs {

using controls::DateField;
using controls::MemoField;
using controls::TextField;
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

/// Puts fields into a grid, each with a label in front of it.
class Pane {
  public:
    explicit Pane(QWidget* widget) : m_widget(widget), m_grid(new QGridLayout(widget)) {
        m_grid->setContentsMargins(0, 0, 0, 0);
        m_grid->setVerticalSpacing(3);
    }
    QGridLayout* grid() const { return m_grid; }

    /// The label, which hides with its field where money isn't shown.
    QLabel* put(QWidget* field, const char16_t* name, const QString& label, int row, int column,
                QLayout* in = nullptr) {
        auto* caption = new QLabel(label, m_widget);
        caption->setBuddy(field);
        QString spoken = label;
        named(field, QString::fromUtf16(name),
              spoken.remove(QLatin1Char('&')).remove(QLatin1Char(':')));
        m_grid->addWidget(caption, row, column);
        if (in)
            m_grid->addLayout(in, row, column + 1);
        else
            m_grid->addWidget(field, row, column + 1);
        return caption;
    }
    QLabel* shown(const char16_t* name, const QString& label, int row, int column,
                  std::vector<QWidget*>* secured = nullptr) {
        auto* value = new QLabel(m_widget);
        value->setTextFormat(Qt::PlainText);
        value->setTextInteractionFlags(Qt::TextSelectableByMouse);
        value->setFrameShape(QFrame::StyledPanel);
        value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        value->setMinimumWidth(96);
        value->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        QLabel* caption = put(value, name, label, row, column);
        if (secured) {
            secured->push_back(caption);
            secured->push_back(value);
        }
        return value;
    }

  private:
    QWidget* m_widget;
    QGridLayout* m_grid;
};

TextField* numberField(QWidget* parent, const QString& mask, int limit) {
    auto* field = new TextField(parent);
    field->setKeyFilter(values::keys::decimal());
    field->setNumberMask(mask);
    field->setLimit(limit);
    field->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return field;
}

DateField* longDate(QWidget* parent) {
    auto* field = new DateField(parent);
    field->setShown(DateField::Shown::Long);
    return field;
}

} // namespace

frmJob::frmJob() : RoutedDocument(describe(), estimating::jobRouting(), jobColumns()) {
    auto* outside = new QVBoxLayout(this);
    outside->setContentsMargins(6, 6, 6, 6);
    outside->setSpacing(4);

    auto* title = new QHBoxLayout;
    outside->addLayout(title);
    const auto mark = [&](const char16_t* name, const QString& text) {
        auto* value = named(new QLabel(this), QString::fromUtf16(name), text);
        title->addWidget(new QLabel(text + u":"_s, this));
        title->addWidget(value);
        title->addSpacing(16);
        return value;
    };
    QLabel* lblJobNo = mark(u"lblJobNo", u"Job No."_s);
    QFont large = lblJobNo->font();
    large.setBold(true);
    lblJobNo->setFont(large);
    bindKey(lblJobNo);
    title->addWidget(modeLabel());
    title->addStretch();
    mark(u"lblEstNo", u"Estimate No."_s);
    lblAssembly = mark(u"lblAssembly", u"Assembly"_s);
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
    top->addWidget(headerPane(), 3);
    top->addWidget(notePane(), 2);

    m_routing = new estimating::RoutingPanel(*this, estimating::jobRouting(), Qt::Horizontal);
    outside->addWidget(m_routing, 1);

    auto* bottom = new QHBoxLayout;
    outside->addLayout(bottom);
    bottom->addWidget(figuresPane());
    bottom->addStretch();
    bottom->addWidget(buttonPane());
    wire();
}

QSize frmJob::sizeHint() const {
    return QSize(1230, 640).expandedTo(RoutedModule::sizeHint());
}

QWidget* frmJob::headerPane() {
    auto* widget = new QWidget(this);
    Pane pane(widget);

    QLayout* customer = makeCustomer(widget);
    pane.put(dbcCustomer, u"dbcCustomer", u"C&ustomer:"_s, 0, 0, customer);
    pane.put(new TextField(widget), u"txtPONo", u"PO No.:"_s, 1, 0);
    pane.put(new TextField(widget), u"txtPartno", u"&Part No.:"_s, 2, 0);
    pane.put(new TextField(widget), u"txtDescription", u"Descr&iption:"_s, 3, 0);

    pane.put(longDate(widget), u"txtJobDateIn", u"Date In:"_s, 0, 2);
    pane.put(longDate(widget), u"txtJobDueDate", u"Due Date:"_s, 1, 2);
    txtQuantity = numberField(widget, u"#####0"_s, 10);
    pane.put(txtQuantity, u"txtQuantity", u"&Quantity:"_s, 2, 2);
    txtJobShopRate = numberField(widget, u"#####0.00"_s, 12);
    pane.put(txtJobShopRate, u"txtJobShopRate", u"&Hourly Rate:"_s, 3, 2);

    auto* chkSequential = named(new QCheckBox(u"Sequential"_s, widget), u"chkSequential"_s);
    chkShipped = named(new QCheckBox(u"Completed and Shipped?"_s, widget), u"chkShipped"_s);
    auto* marks = new QHBoxLayout;
    marks->addWidget(chkSequential);
    marks->addStretch();
    marks->addWidget(chkShipped);
    pane.grid()->addLayout(marks, 4, 0, 1, 2);
    txtShipDate = longDate(widget);
    pane.put(txtShipDate, u"txtShipDate", u"Ship Date:"_s, 4, 2);
    pane.grid()->setColumnStretch(1, 3);
    pane.grid()->setColumnStretch(3, 2);

    header().use(
        u"txtShipDate"_s,
        {[this](const jet::Value& value) { txtShipDate->setValue(value); },
         [this] { return txtShipDate->value(); }, [this] { txtShipDate->clear(); },
         [this](bool locked) { txtShipDate->setLocked(locked || !chkShipped->isChecked()); },
         txtShipDate});
    return widget;
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

QWidget* frmJob::figuresPane() {
    auto* widget = new QWidget(this);
    Pane pane(widget);
    pane.grid()->setHorizontalSpacing(10);
    lblTotalHours = pane.shown(u"lblTotalHours", u"Total Hours:"_s, 0, 0);
    lblCalc_OutContr = pane.shown(u"lblCalc_OutContr", u"Outside Contr Cost:"_s, 1, 0, &m_secured);
    lblCalc_Fixed = pane.shown(u"lblCalc_Fixed", u"Fixed Cost and Material:"_s, 2, 0, &m_secured);
    lblJobShopCost = pane.shown(u"lblJobShopCost", u"Shop Cost Each:"_s, 3, 0);
    pane.shown(u"lblQtyQuotedPrice", u"Quoted Price Each:"_s, 0, 2);
    txtInvoiceEach = numberField(widget, u"######0.0000"_s, 14);
    pane.put(txtInvoiceEach, u"txtInvoiceEach", u"Invoice Amount Each:"_s, 1, 2);
    lblInvoiceTotal = pane.shown(u"lblInvoiceTotal", u"Invoice Total:"_s, 2, 2);
    return widget;
}

QWidget* frmJob::buttonPane() {
    return makeButtonPane({{{Role::New, u"cmdNew"_s, u"&New"_s},
                            {Role::Edit, u"cmdEdit"_s, u"&Edit"_s},
                            {Role::Delete, u"cmdDelete"_s, u"&Delete"_s},
                            {Role::Close, u"cmdClose"_s, u"D&one"_s}},
                           {{Role::Find, u"cmdFind"_s, u"&Goto Job"_s},
                            {Role::BrowseOnly, u"cmdGotoPart"_s, u"Goto Par&t"_s},
                            {Role::Free, u"cmdAssembly"_s, u"Assembl&y Tree"_s},
                            {Role::Free, u"cmdSchedule"_s, u"Schedu&le"_s}},
                           {{Role::Free, u"cmdInvoice"_s, u"In&voice"_s},
                            {Role::BrowseOnly, u"cmdTraveler"_s, u"Tr&aveler..."_s},
                            {Role::Free, u"cmdShippingHistory"_s, u"&Shipping History"_s},
                            {Role::List, u"cmdList"_s, u"Query/Report"_s},
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
