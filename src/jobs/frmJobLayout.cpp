#include "jobs/frmJob.h"

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
using masters::Role;
using screen::named;

namespace {

masters::ModuleDescriptor describe() {
    masters::ModuleDescriptor module;
    module.formName = QString::fromLatin1(frmJob::formName);
    module.caption = QStringLiteral("Job");
    module.moduleWord = QStringLiteral("Job");
    module.table = QStringLiteral("Job");
    module.keyColumn = QStringLiteral("JobNo");
    module.select = jobRows(true);
    module.newKeyText = QStringLiteral("New");
    module.dataControlName = QStringLiteral("datJob");
    module.modeLabelName = QStringLiteral("lblJobMode");
    module.queryScreen = QStringLiteral("frmJobQuery");
    module.reportModule = QStringLiteral("Jobs");
    module.reportTitle = QStringLiteral("Job Report");
    module.reportKey = QStringLiteral("Job.JobNo");
    module.deleteTitle = QStringLiteral("Delete");
    module.deleteText = QStringLiteral("You are about to delete the current Job. Are you sure?");
    module.deleteDefault = screen::Answer::No;
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

frmJob::frmJob() : RoutedModule(describe()) {
    auto* outside = new QVBoxLayout(this);
    outside->setContentsMargins(6, 6, 6, 6);
    outside->setSpacing(4);

    auto* title = new QHBoxLayout;
    outside->addLayout(title);
    const auto mark = [&](const char16_t* name, const QString& text) {
        auto* value = named(new QLabel(this), QString::fromUtf16(name), text);
        title->addWidget(new QLabel(text + QStringLiteral(":"), this));
        title->addWidget(value);
        title->addSpacing(16);
        return value;
    };
    lblJobNo = mark(u"lblJobNo", QStringLiteral("Job No."));
    QFont large = lblJobNo->font();
    large.setBold(true);
    lblJobNo->setFont(large);
    bindKey(lblJobNo);
    title->addWidget(modeLabel());
    title->addStretch();
    lblEstNo = mark(u"lblEstNo", QStringLiteral("Estimate No."));
    lblAssembly = mark(u"lblAssembly", QStringLiteral("Assembly"));
    fields().bind({QStringLiteral("EstNo"),
                   [this](const jet::Value& value) {
                       lblEstNo->setText(value.toLong() == 0 ? QString() : value.toText());
                   },
                   {},
                   [this] { lblEstNo->clear(); },
                   {},
                   nullptr});
    fraShow = named(new QWidget(this), QStringLiteral("fraShow"), QStringLiteral("Jobs shown"));
    auto* show = new QHBoxLayout(fraShow);
    show->setContentsMargins(0, 0, 0, 0);
    const char16_t* views[] = {u"Show Active Jobs Only", u"Show Active and Inactive Jobs"};
    for (int i = 0; i < 2; ++i) {
        optShow[i] = named(new QRadioButton(QString::fromUtf16(views[i]), fraShow),
                           QStringLiteral("optShow(") + QString::number(i) + QStringLiteral(")"));
        show->addWidget(optShow[i]);
    }
    optShow[0]->setChecked(true);
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

void frmJob::bindFigure(const QString& column, QLabel* label, const QString& mask) {
    fields().bind({column,
                   [label, mask](const jet::Value& value) {
                       label->setText(values::format(value.toDouble(), mask));
                   },
                   {},
                   [label] { label->clear(); },
                   {},
                   nullptr});
}

QWidget* frmJob::headerPane() {
    auto* widget = new QWidget(this);
    Pane pane(widget);

    QLayout* customer = makeCustomer(widget);
    pane.put(dbcCustomer, u"dbcCustomer", QStringLiteral("C&ustomer:"), 0, 0, customer);
    txtPONo = new TextField(widget);
    pane.put(txtPONo, u"txtPONo", QStringLiteral("PO No.:"), 1, 0);
    txtPartno = new TextField(widget);
    pane.put(txtPartno, u"txtPartno", QStringLiteral("&Part No.:"), 2, 0);
    txtDescription = new TextField(widget);
    pane.put(txtDescription, u"txtDescription", QStringLiteral("Descr&iption:"), 3, 0);

    txtJobDateIn = longDate(widget);
    pane.put(txtJobDateIn, u"txtJobDateIn", QStringLiteral("Date In:"), 0, 2);
    txtJobDueDate = longDate(widget);
    pane.put(txtJobDueDate, u"txtJobDueDate", QStringLiteral("Due Date:"), 1, 2);
    txtQuantity = numberField(widget, QStringLiteral("#####0"), 10);
    pane.put(txtQuantity, u"txtQuantity", QStringLiteral("&Quantity:"), 2, 2);
    txtJobShopRate = numberField(widget, QStringLiteral("#####0.00"), 12);
    m_secured.push_back(
        pane.put(txtJobShopRate, u"txtJobShopRate", QStringLiteral("&Hourly Rate:"), 3, 2));
    m_secured.push_back(txtJobShopRate);

    chkSequential =
        named(new QCheckBox(QStringLiteral("Sequential"), widget), QStringLiteral("chkSequential"));
    chkShipped = named(new QCheckBox(QStringLiteral("Completed and Shipped?"), widget),
                       QStringLiteral("chkShipped"));
    auto* marks = new QHBoxLayout;
    marks->addWidget(chkSequential);
    marks->addStretch();
    marks->addWidget(chkShipped);
    pane.grid()->addLayout(marks, 4, 0, 1, 2);
    txtShipDate = longDate(widget);
    pane.put(txtShipDate, u"txtShipDate", QStringLiteral("Ship Date:"), 4, 2);
    pane.grid()->setColumnStretch(1, 3);
    pane.grid()->setColumnStretch(3, 2);

    masters::BoundFields& bound = fields();
    bound.bind(QStringLiteral("PONo"), txtPONo);
    bound.bind(QStringLiteral("PartNo"), txtPartno);
    bound.bind(QStringLiteral("Description"), txtDescription);
    bound.bind(QStringLiteral("JobDateIn"), txtJobDateIn);
    bound.bind(QStringLiteral("JobDueDate"), txtJobDueDate);
    bindNumber(QStringLiteral("Quantity"), txtQuantity, QStringLiteral("#####0"));
    bindNumber(QStringLiteral("JobShopRate"), txtJobShopRate, QStringLiteral("#####0.00"));
    bound.bind(QStringLiteral("OrderRequired"), chkSequential);
    bound.bind(QStringLiteral("Shipped"), chkShipped);
    bound.bind({QStringLiteral("ShipDate"),
                [this](const jet::Value& value) { txtShipDate->setValue(value); },
                {},
                [this] { txtShipDate->setDate(std::nullopt); },
                [this](bool locked) { txtShipDate->setLocked(locked || !chkShipped->isChecked()); },
                txtShipDate});
    return widget;
}

QTabWidget* frmJob::notePane() {
    auto* tabs = named(new QTabWidget(this), QStringLiteral("SSTabNotes"), QStringLiteral("Notes"));
    // As high as the fields beside it.
    tabs->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    const auto page = [&](const char16_t* name, const char16_t* title, const char16_t* spoken,
                          const char16_t* column) {
        auto* field =
            named(new MemoField(tabs), QString::fromUtf16(name), QString::fromUtf16(spoken));
        tabs->addTab(field, QString::fromUtf16(title));
        fields().bind(QString::fromUtf16(column), field);
        return field;
    };
    txtMaterial =
        page(u"txtMaterial", u"Special Material Notes", u"Special Material Notes", u"Material");
    txtTravelerNotes = page(u"txtTravelerNotes", u"Traveler", u"Traveler notes", u"TravelerNotes");
    txtJobNotes = page(u"txtJobNotes", u"Job", u"Job notes", u"JobNotes");
    return tabs;
}

QWidget* frmJob::figuresPane() {
    auto* widget = new QWidget(this);
    Pane pane(widget);
    pane.grid()->setHorizontalSpacing(10);
    lblTotalHours = pane.shown(u"lblTotalHours", QStringLiteral("Total Hours:"), 0, 0);
    lblCalc_OutContr =
        pane.shown(u"lblCalc_OutContr", QStringLiteral("Outside Contr Cost:"), 1, 0, &m_secured);
    lblCalc_Fixed =
        pane.shown(u"lblCalc_Fixed", QStringLiteral("Fixed Cost and Material:"), 2, 0, &m_secured);
    lblJobShopCost =
        pane.shown(u"lblJobShopCost", QStringLiteral("Shop Cost Each:"), 3, 0, &m_secured);
    lblQtyQuotedPrice =
        pane.shown(u"lblQtyQuotedPrice", QStringLiteral("Quoted Price Each:"), 0, 2, &m_secured);
    txtInvoiceEach = numberField(widget, QStringLiteral("######0.0000"), 14);
    m_secured.push_back(
        pane.put(txtInvoiceEach, u"txtInvoiceEach", QStringLiteral("Invoice Amount Each:"), 1, 2));
    m_secured.push_back(txtInvoiceEach);
    lblInvoiceTotal =
        pane.shown(u"lblInvoiceTotal", QStringLiteral("Invoice Total:"), 2, 2, &m_secured);

    bindFigure(QStringLiteral("QtyQuotedPrice"), lblQtyQuotedPrice, QStringLiteral("#####0.0000"));
    bindFigure(QStringLiteral("TotalHours"), lblTotalHours, QStringLiteral("######0.00"));
    bindFigure(QStringLiteral("JobShopCost"), lblJobShopCost, QStringLiteral("######0.0000"));
    bindNumber(QStringLiteral("InvoiceEach"), txtInvoiceEach, QStringLiteral("######0.0000"));
    bindFigure(QStringLiteral("InvoiceTotal"), lblInvoiceTotal, QStringLiteral("######0.00"));
    return widget;
}

QWidget* frmJob::buttonPane() {
    return makeButtonPane(
        {{{Role::New, QStringLiteral("cmdNew"), QStringLiteral("&New")},
          {Role::Edit, QStringLiteral("cmdEdit"), QStringLiteral("&Edit")},
          {Role::Delete, QStringLiteral("cmdDelete"), QStringLiteral("&Delete")},
          {Role::Close, QStringLiteral("cmdClose"), QStringLiteral("D&one")}},
         {{Role::Find, QStringLiteral("cmdFind"), QStringLiteral("&Goto Job")},
          {Role::BrowseOnly, QStringLiteral("cmdGotoPart"), QStringLiteral("Goto Par&t")},
          {Role::Free, QStringLiteral("cmdAssembly"), QStringLiteral("Assembl&y Tree")},
          {Role::Free, QStringLiteral("cmdSchedule"), QStringLiteral("Schedu&le")}},
         {{Role::Free, QStringLiteral("cmdInvoice"), QStringLiteral("In&voice")},
          {Role::BrowseOnly, QStringLiteral("cmdTraveler"), QStringLiteral("Tr&aveler...")},
          {Role::Free, QStringLiteral("cmdShippingHistory"), QStringLiteral("&Shipping History")},
          {Role::List, QStringLiteral("cmdList"), QStringLiteral("Query/Report")},
          {Role::PrintShown, QStringLiteral("cmdQuery"), QStringLiteral("Quick &Report Shown")}}});
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

    for (QRadioButton* option : optShow)
        on(option, &frmJob::optShow_Click);
    connect(chkShipped, &QCheckBox::toggled, this,
            [this] { guarded([this] { chkShipped_Click(); }); });
    wireCustomer();
    const auto left = [this] {
        if (!isBrowse())
            calcJob();
    };
    on(txtJobShopRate->left, left);
    on(txtQuantity->left, left);
    on(txtInvoiceEach->left, left);
    on(m_routing->costChanged, &frmJob::calcJob);
    on(m_routing->fixedCostsChanged, &frmJob::calcJob);
    m_routing->mayRemove = [this](const estimating::OperRow& row) { return mayRemove(row); };
    m_routing->statusPicture = statusPicture;
}

} // namespace jobs
