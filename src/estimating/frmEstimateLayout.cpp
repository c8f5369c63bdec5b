#include "estimating/frmEstimate.h"
#include "platform/values/Literals.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <functional>

namespace estimating {

using controls::CurrencyField;
using controls::TextField;
using core::Role;
using screen::named;

namespace {

core::ModuleDescriptor describe() {
    core::ModuleDescriptor module;
    module.formName = QString::fromLatin1(frmEstimate::formName);
    module.caption = u"Estimate"_s;
    module.moduleWord = u"Estimate"_s;
    module.table = u"Estimate"_s;
    module.keyColumn = u"EstNo"_s;
    module.select = estimateRows();
    module.newKeyText = u"New"_s;
    module.copyWord = u"CopyEst"_s;
    module.dataControlName = u"datEstimate"_s;
    module.modeLabelName = u"lblEstimateMode"_s;
    module.queryScreen = u"frmEstQuery"_s;
    module.reportModule = u"Estimates"_s;
    module.reportTitle = u"Estimate Report"_s;
    module.reportKey = u"Estimate.Estno"_s;
    module.deleteTitle = u"Delete Estimate"_s;
    module.deleteText = u"You are about to delete the current Estimate. Are you sure?"_s;
    module.emptyTableCloses = true;
    return module;
}

QString indexed(const char16_t* name, std::size_t index) {
    return QString::fromUtf16(name) + u"("_s + QString::number(index) + u")"_s;
}

QString breakLetter(std::size_t i) {
    return QString(QChar(u'A' + static_cast<char16_t>(i)));
}

} // namespace

frmEstimate::frmEstimate()
    : RoutedDocument(describe(), estimateRouting(), estimateColumns()),
      m_memory(
          *this, [this] { return forMemory(); },
          [this](qint64 operNo, double figure) { m_routing->bringTime(operNo, figure); }) {
    auto* outside = new QVBoxLayout(this);
    outside->setContentsMargins(6, 6, 6, 6);
    outside->setSpacing(4);

    auto* title = new QHBoxLayout;
    outside->addLayout(title);
    makeNumber(title, u"lblEstno"_s, u"Estimate No."_s);
    lblAssembly = makeMark(title, u"lblAssembly"_s, u"Assembly"_s);
    auto* jobsLabel = new QLabel(u"Jobs Created:"_s, this);
    dbcJobsCreated = named(new controls::DataCombo(this), u"dbcJobsCreated"_s, u"Jobs Created"_s);
    dbcJobsCreated->setTypingAllowed(false);
    jobsLabel->setBuddy(dbcJobsCreated);
    title->addWidget(jobsLabel);
    title->addWidget(dbcJobsCreated);
    title->addSpacing(16);
    auto* cmdMemory = named(new QPushButton(u"Memory"_s, this), u"cmdMemory"_s);
    cmdMemory->setToolTip(u"What the shop took before for this part and its operations (Ctrl+M)"_s);
    on(cmdMemory, &frmEstimate::showMemory);
    title->addWidget(cmdMemory);
    title->addSpacing(16);
    title->addWidget(datMain());

    auto* top = new QHBoxLayout;
    outside->addLayout(top);
    makeHead(top);
    top->addWidget(notePane(), 2);

    m_routing = new RoutingPanel(*this, estimateRouting(), Qt::Horizontal);
    outside->addWidget(m_routing, 1);

    auto* bottom = new QHBoxLayout;
    outside->addLayout(bottom);
    bottom->addWidget(breakPane());
    bottom->addStretch();
    bottom->addWidget(buttonPane());
    wire();
}

QSize frmEstimate::sizeHint() const {
    return {1230, 660};
}

void frmEstimate::makeHead(QBoxLayout* across) {
    screen::Fields head(this, across);
    across->setStretch(0, 3);
    head.tight();
    makeCustomer(head);
    txtRfqno = head.text(u"txtRfqno"_s, u"R&FQ No."_s);
    cmdRfqno = head.pick(u"cmdRfqno"_s, u"Select RFQ No."_s);
    txtPartno = head.text(u"txtPartno"_s, u"&Part No."_s);
    cmdPartno = head.pick(u"cmdPartno"_s, u"Select Part No."_s);
    head.at(0, 1).longDate(u"txtEstDate"_s, u"Da&te"_s);
    txtQuantity = head.text(u"txtQuantity"_s, u"Qu&antity"_s, screen::number(u"#####0"_s, 9));
    txtEstShopRate =
        head.text(u"txtEstShopRate"_s, u"&Hourly Rate"_s, screen::number(u"#####0.00"_s, 12));
    head.nextRow();
    head.span(2).text(u"txtDescription"_s, u"Descript&ion"_s);
    auto* material = head.span(2).memo(u"txtMaterial"_s, u"Special &Material Notes"_s, 2);
    material->setFixedHeight(material->minimumHeight());
    head.grid()->setColumnStretch(1, 3);
    head.grid()->setColumnStretch(3, 2);
}

QTabWidget* frmEstimate::notePane() {
    auto* tabs = named(new QTabWidget(this), u"SSTabNotes"_s, u"Notes"_s);
    // As high as the fields beside it.
    tabs->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    const std::array<const char16_t*, 4> titles{u"Quote", u"Traveler", u"R.F.Q.", u"Job"};
    for (std::size_t i = 0; i < titles.size(); ++i) {
        const QString title = QString::fromUtf16(titles[i]);
        txtNotes[i] =
            named(new controls::MemoField(tabs), indexed(u"txtNotes", i), title + u" notes"_s);
        tabs->addTab(txtNotes[i], title);
    }
    return tabs;
}

QWidget* frmEstimate::breakPane() {
    auto* pane = named(new QGroupBox(u"Price Breaks"_s, this), u"fraBreaks"_s);
    auto* grid = new QGridLayout(pane);
    grid->setContentsMargins(6, 2, 6, 4);
    grid->setVerticalSpacing(2);
    grid->setHorizontalSpacing(4);
    const auto place = [&](TextField* field, const QString& name, const QString& spoken, int row,
                           int column) {
        named(field, name, spoken);
        field->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        field->setFixedWidth(field->fontMetrics().averageCharWidth() * 12 + 16);
        grid->addWidget(field, row, column);
    };
    for (std::size_t i = 0; i < breakCount; ++i) {
        auto* head = new QLabel(breakLetter(i), pane);
        head->setAlignment(Qt::AlignCenter);
        grid->addWidget(head, 0, static_cast<int>(i) + 1);
    }
    // Column by column for the eye, row by row for Tab. `make` makes the field of one break.
    const auto row = [&](const char16_t* name, const QString& words, bool secured,
                         const std::function<TextField*(std::size_t)>& make) {
        const int at = grid->rowCount();
        auto* label = new QLabel(words, pane);
        grid->addWidget(label, at, 0);
        if (secured)
            m_secured.push_back(label);
        for (std::size_t i = 0; i < breakCount; ++i)
            place(make(i), indexed(name, i), words + u" of break "_s + breakLetter(i), at,
                  static_cast<int>(i) + 1);
    };
    const auto typed = [pane](TextField* field, int limit) {
        field->setParent(pane);
        field->setKeyFilter(values::keys::decimal());
        field->setLimit(limit);
        return field;
    };
    const auto money = [pane](const QString& mask) {
        auto* field = new CurrencyField(pane);
        field->setMask(mask);
        return field;
    };
    row(u"txtQtyBreak", u"Quantity"_s, false, [&](std::size_t i) {
        txtQtyBreak[i] = typed(new TextField, 9);
        if (i > 0)
            txtQtyBreak[i]->setNumberMask(u"#####0"_s);
        return txtQtyBreak[i];
    });
    row(u"txtQtyDiscount", u"Discount %"_s, false,
        [&](std::size_t i) { return txtQtyDiscount[i] = typed(new TextField, 9); });
    row(u"fpQtyPrice", u"Est Price Each"_s, true,
        [&](std::size_t) { return money(u"#####0.0000"_s); });
    row(u"fpQtyQP", u"Quoted Price"_s, true, [&](std::size_t i) {
        fpQtyQP[i] = money(u"#####0.0000"_s);
        typed(fpQtyQP[i], 14);
        return fpQtyQP[i];
    });
    row(u"fpQtyTotal", u"Total"_s, true, [&](std::size_t) { return money(u"#####0.00##"_s); });

    const auto shown = [&](const char16_t* name, const char16_t* text, int row) {
        auto* caption = new QLabel(QString::fromUtf16(text), pane);
        auto* field = money(u"#####0.00##"_s);
        grid->addWidget(caption, row, 6);
        place(field, QString::fromUtf16(name), QString::fromUtf16(text), row + 1, 6);
        field->setLocked(true);
        field->setFocusPolicy(Qt::ClickFocus);
        m_secured.push_back(caption);
        m_secured.push_back(field);
        return field;
    };
    fpOutContr = shown(u"fpOutContr", u"Outside Contr Cost", 0);
    fpFixed = shown(u"fpFixed", u"Fixed Cost and Material", 2);
    return pane;
}

QWidget* frmEstimate::buttonPane() {
    return makeButtonPane({{{Role::New, u"cmdNew"_s, u"&New"_s},
                            {Role::Edit, u"cmdEdit"_s, u"&Edit"_s},
                            {Role::Delete, u"cmdDelete"_s, u"&Delete"_s},
                            {Role::Close, u"cmdClose"_s, u"Do&ne"_s}},
                           {{Role::Find, u"cmdFind"_s, u"&Goto Est"_s},
                            {Role::BrowseOnly, u"cmdGotoPart"_s, u"G&oto Part"_s},
                            {Role::Free, u"cmdAssembly"_s, u"Assembl&y Tree"_s},
                            {Role::Free, u"cmdCreateJob"_s, u"Create &Job"_s}},
                           {{Role::List, u"cmdQuery"_s, u"&Query/Report"_s},
                            {Role::PrintShown, u"cmdPrintScr"_s, u"Quick &Report Shown"_s},
                            {Role::BrowseOnly, u"cmdPrintBOM"_s, u"Print BOM"_s}}});
}

void frmEstimate::wire() {
    const auto push = [this](const char16_t* name) {
        return control<QPushButton>(QString::fromUtf16(name));
    };
    cmdCreateJob = push(u"cmdCreateJob");
    on(push(u"cmdGotoPart"), &frmEstimate::cmdGotoPart_Click);
    cmdAssembly = push(u"cmdAssembly");
    on(cmdAssembly, &frmEstimate::cmdAssembly_Click);
    on(push(u"cmdPrintBOM"), &frmEstimate::cmdPrintBOM_Click);
    on(cmdCreateJob, &frmEstimate::cmdCreateJob_Click);
    on(cmdPartno, &frmEstimate::cmdPartno_Click);
    on(cmdRfqno, &frmEstimate::cmdRfqno_Click);

    m_header.bind(*this, fields());
    wireCustomer();
    on(txtRfqno->left, &frmEstimate::txtRfqno_LostFocus);
    const auto left = [this] {
        if (!isBrowse())
            calculate();
    };
    on(txtEstShopRate->left, left);
    on(txtQuantity->left, left);
    for (std::size_t i = 1; i < breakCount; ++i) {
        on(txtQtyBreak[i]->left, left);
        on(txtQtyDiscount[i]->left, [this, i] {
            if (isBrowse())
                return;
            txtQtyDiscount[i]->setText(discountText(txtQtyDiscount[i]->text()));
            calculate();
        });
    }
    for (CurrencyField* field : fpQtyQP)
        on(field->left, left);
    on(m_routing->operationsFollowed, [this] { m_memory.followLater(); });
    on(txtPartno->left, [this] { m_memory.followLater(); });
    on(m_routing->costChanged, &frmEstimate::calculate);
    on(m_routing->fixedCostsChanged, &frmEstimate::calculate);
}

} // namespace estimating
