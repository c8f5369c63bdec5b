#include "estimating/frmEstimate.h"
#include "platform/values/Literals.h"

#include "platform/values/Format.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

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

/// A field with a small button behind it.
QHBoxLayout* beside(QWidget* field, QPushButton* button) {
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    row->addWidget(field, 1);
    row->addWidget(button);
    return row;
}

} // namespace

frmEstimate::frmEstimate() : RoutedDocument(describe(), estimateRouting(), estimateColumns()) {
    auto* outside = new QVBoxLayout(this);
    outside->setContentsMargins(6, 6, 6, 6);
    outside->setSpacing(4);

    auto* title = new QHBoxLayout;
    outside->addLayout(title);
    auto* numberLabel = new QLabel(u"Estimate No.:"_s, this);
    auto* lblEstno = named(new QLabel(this), u"lblEstno"_s, u"Estimate No."_s);
    QFont large = lblEstno->font();
    large.setBold(true);
    lblEstno->setFont(large);
    bindKey(lblEstno);
    auto* assemblyLabel = new QLabel(u"Assembly:"_s, this);
    lblAssembly = named(new QLabel(this), u"lblAssembly"_s, u"Assembly"_s);
    auto* jobsLabel = new QLabel(u"Jobs Created:"_s, this);
    dbcJobsCreated = named(new controls::DataCombo(this), u"dbcJobsCreated"_s, u"Jobs Created"_s);
    dbcJobsCreated->setTypingAllowed(false);
    jobsLabel->setBuddy(dbcJobsCreated);
    title->addWidget(numberLabel);
    title->addWidget(lblEstno);
    title->addSpacing(16);
    title->addWidget(modeLabel());
    title->addStretch();
    title->addWidget(assemblyLabel);
    title->addWidget(lblAssembly);
    title->addSpacing(16);
    title->addWidget(jobsLabel);
    title->addWidget(dbcJobsCreated);
    title->addSpacing(16);
    title->addWidget(datMain());

    auto* top = new QHBoxLayout;
    outside->addLayout(top);
    top->addWidget(headerPane(), 3);
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

QWidget* frmEstimate::headerPane() {
    auto* pane = new QWidget(this);
    auto* grid = new QGridLayout(pane);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(3);

    const auto label = [&](const QString& text, QWidget* buddy, int row, int column) {
        auto* made = new QLabel(text, pane);
        made->setBuddy(buddy);
        grid->addWidget(made, row, column);
        return made;
    };
    const auto line = [&](const char16_t* name, const char16_t* spoken) {
        return named(new TextField(pane), QString::fromUtf16(name), QString::fromUtf16(spoken));
    };
    const auto pick = [&](const char16_t* name, const char16_t* spoken) {
        auto* made = named(new QPushButton(u"..."_s, pane), QString::fromUtf16(name),
                           QString::fromUtf16(spoken));
        made->setAutoDefault(false);
        made->setMaximumWidth(32);
        made->setToolTip(QString::fromUtf16(spoken));
        return made;
    };

    QLayout* customer = makeCustomer(pane);
    txtRfqno = line(u"txtRfqno", u"RFQ No.");
    cmdRfqno = pick(u"cmdRfqno", u"Select RFQ No.");
    txtPartno = line(u"txtPartno", u"Part No.");
    cmdPartno = pick(u"cmdPartno", u"Select Part No.");
    TextField* txtDescription = line(u"txtDescription", u"Description");
    auto* txtEstDate = named(new controls::DateField(pane), u"txtEstDate"_s, u"Estimate Date"_s);
    txtEstDate->setShown(controls::DateField::Shown::Long);
    txtQuantity = line(u"txtQuantity", u"Quantity");
    txtEstShopRate = line(u"txtEstShopRate", u"Hourly Rate");
    auto* txtMaterial =
        named(new controls::MemoField(pane), u"txtMaterial"_s, u"Special Material Notes"_s);
    for (TextField* one : {txtQuantity, txtEstShopRate}) {
        one->setKeyFilter(values::keys::decimal());
        one->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        one->setMaximumWidth(130);
    }
    txtQuantity->setNumberMask(u"#####0"_s);
    txtQuantity->setLimit(9);
    txtEstShopRate->setNumberMask(u"#####0.00"_s);
    txtEstShopRate->setLimit(12);
    txtMaterial->setMinimumHeight(txtMaterial->fontMetrics().lineSpacing() * 2 + 12);
    txtMaterial->setMaximumHeight(txtMaterial->fontMetrics().lineSpacing() * 4 + 12);

    label(u"C&ustomer:"_s, dbcCustomer, 0, 0);
    grid->addLayout(customer, 0, 1);
    label(u"R&FQ No.:"_s, txtRfqno, 1, 0);
    grid->addLayout(beside(txtRfqno, cmdRfqno), 1, 1);
    label(u"&Part No.:"_s, txtPartno, 2, 0);
    grid->addLayout(beside(txtPartno, cmdPartno), 2, 1);
    label(u"Descript&ion:"_s, txtDescription, 3, 0);
    grid->addWidget(txtDescription, 3, 1, 1, 3);
    label(u"Da&te:"_s, txtEstDate, 0, 2);
    grid->addWidget(txtEstDate, 0, 3);
    label(u"Qu&antity:"_s, txtQuantity, 1, 2);
    grid->addWidget(txtQuantity, 1, 3);
    label(u"&Hourly Rate:"_s, txtEstShopRate, 2, 2);
    grid->addWidget(txtEstShopRate, 2, 3);
    label(u"Special &Material Notes:"_s, txtMaterial, 4, 0)->setAlignment(Qt::AlignTop);
    grid->addWidget(txtMaterial, 4, 1, 1, 3);
    grid->setColumnStretch(1, 3);
    grid->setColumnStretch(3, 2);
    return pane;
}

QTabWidget* frmEstimate::notePane() {
    auto* tabs = named(new QTabWidget(this), u"SSTabNotes"_s, u"Notes"_s);
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
    grid->setVerticalSpacing(2);
    grid->setHorizontalSpacing(4);

    const auto rowLabel = [&](const char16_t* text, int row, bool secured) {
        auto* made = new QLabel(QString::fromUtf16(text), pane);
        grid->addWidget(made, row, 0);
        if (secured)
            m_secured.push_back(made);
    };
    rowLabel(u"Quantity", 1, false);
    rowLabel(u"Discount %", 2, false);
    rowLabel(u"Est Price Each", 3, true);
    rowLabel(u"Quoted Price", 4, true);
    rowLabel(u"Total", 5, true);

    const auto place = [&](TextField* field, const QString& name, const QString& spoken, int row,
                           int column) {
        named(field, name, spoken);
        field->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        field->setFixedWidth(field->fontMetrics().averageCharWidth() * 12 + 16);
        grid->addWidget(field, row, column);
    };
    // Column by column for the eye, row by row for Tab: quantities, discounts, quoted prices.
    for (std::size_t i = 0; i < breakCount; ++i) {
        const int column = static_cast<int>(i) + 1;
        const QString letter(QChar(u'A' + static_cast<char16_t>(i)));
        auto* head = new QLabel(letter, pane);
        head->setAlignment(Qt::AlignCenter);
        grid->addWidget(head, 0, column);
    }
    const auto letterOf = [](std::size_t i) {
        return u" of break "_s + QChar(u'A' + static_cast<char16_t>(i));
    };
    for (std::size_t i = 0; i < breakCount; ++i) {
        txtQtyBreak[i] = new TextField(pane);
        txtQtyBreak[i]->setKeyFilter(values::keys::decimal());
        txtQtyBreak[i]->setLimit(9);
        if (i > 0)
            txtQtyBreak[i]->setNumberMask(u"#####0"_s);
        place(txtQtyBreak[i], indexed(u"txtQtyBreak", i), u"Quantity"_s + letterOf(i), 1,
              static_cast<int>(i) + 1);
    }
    for (std::size_t i = 0; i < breakCount; ++i) {
        txtQtyDiscount[i] = new TextField(pane);
        txtQtyDiscount[i]->setKeyFilter(values::keys::decimal());
        txtQtyDiscount[i]->setLimit(9);
        place(txtQtyDiscount[i], indexed(u"txtQtyDiscount", i), u"Discount"_s + letterOf(i), 2,
              static_cast<int>(i) + 1);
    }
    const auto money = [&](const char16_t* name, const QString& spoken, int at, std::size_t i) {
        auto* field = new CurrencyField(pane);
        field->setMask(at == 5 ? u"#####0.00##"_s : u"#####0.0000"_s);
        place(field, indexed(name, i), spoken + letterOf(i), at, static_cast<int>(i) + 1);
        return field;
    };
    for (std::size_t i = 0; i < breakCount; ++i)
        money(u"fpQtyPrice", u"Est Price Each"_s, 3, i);
    for (std::size_t i = 0; i < breakCount; ++i) {
        fpQtyQP[i] = money(u"fpQtyQP", u"Quoted Price"_s, 4, i);
        fpQtyQP[i]->setKeyFilter(values::keys::decimal());
        fpQtyQP[i]->setLimit(14);
    }
    for (std::size_t i = 0; i < breakCount; ++i)
        money(u"fpQtyTotal", u"Total"_s, 5, i);

    const auto shown = [&](const char16_t* name, const char16_t* text, int row) {
        auto* caption = new QLabel(QString::fromUtf16(text), pane);
        auto* field = new CurrencyField(pane);
        field->setMask(u"#####0.00##"_s);
        grid->addWidget(caption, row, 6);
        place(field, QString::fromUtf16(name), QString::fromUtf16(text), row + 1, 6);
        field->setLocked(true);
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
    on(m_routing->costChanged, &frmEstimate::calculate);
    on(m_routing->fixedCostsChanged, &frmEstimate::calculate);
}

} // namespace estimating
