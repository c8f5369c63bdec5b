#include "estimating/frmEstimate.h"

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
using masters::Role;
using screen::named;

namespace {

masters::ModuleDescriptor describe() {
    masters::ModuleDescriptor module;
    module.formName = QString::fromLatin1(frmEstimate::formName);
    module.caption = QStringLiteral("Estimate");
    module.moduleWord = QStringLiteral("Estimate");
    module.table = QStringLiteral("Estimate");
    module.keyColumn = QStringLiteral("EstNo");
    module.select = estimateRows();
    module.newKeyText = QStringLiteral("New");
    module.dataControlName = QStringLiteral("datEstimate");
    module.modeLabelName = QStringLiteral("lblEstimateMode");
    module.queryScreen = QStringLiteral("frmEstQuery");
    module.reportModule = QStringLiteral("Estimates");
    module.reportTitle = QStringLiteral("Estimate Report");
    module.reportKey = QStringLiteral("Estimate.Estno");
    module.deleteTitle = QStringLiteral("Delete Estimate");
    module.deleteText =
        QStringLiteral("You are about to delete the current Estimate. Are you sure?");
    module.deleteDefault = screen::Answer::No;
    module.emptyTableCloses = true;
    return module;
}

QString indexed(const char16_t* name, std::size_t index) {
    return QString::fromUtf16(name) + QStringLiteral("(") + QString::number(index) +
           QStringLiteral(")");
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

frmEstimate::frmEstimate() : RoutedModule(describe()) {
    auto* outside = new QVBoxLayout(this);
    outside->setContentsMargins(6, 6, 6, 6);
    outside->setSpacing(4);

    auto* title = new QHBoxLayout;
    outside->addLayout(title);
    auto* numberLabel = new QLabel(QStringLiteral("Estimate No.:"), this);
    lblEstno = named(new QLabel(this), QStringLiteral("lblEstno"), QStringLiteral("Estimate No."));
    QFont large = lblEstno->font();
    large.setBold(true);
    lblEstno->setFont(large);
    bindKey(lblEstno);
    auto* assemblyLabel = new QLabel(QStringLiteral("Assembly:"), this);
    lblAssembly =
        named(new QLabel(this), QStringLiteral("lblAssembly"), QStringLiteral("Assembly"));
    auto* jobsLabel = new QLabel(QStringLiteral("Jobs Created:"), this);
    dbcJobsCreated = named(new controls::DataCombo(this), QStringLiteral("dbcJobsCreated"),
                           QStringLiteral("Jobs Created"));
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
        auto* made = named(new QPushButton(QStringLiteral("..."), pane), QString::fromUtf16(name),
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
    txtDescription = line(u"txtDescription", u"Description");
    txtEstDate = named(new controls::DateField(pane), QStringLiteral("txtEstDate"),
                       QStringLiteral("Estimate Date"));
    txtEstDate->setShown(controls::DateField::Shown::Long);
    txtQuantity = line(u"txtQuantity", u"Quantity");
    txtEstShopRate = line(u"txtEstShopRate", u"Hourly Rate");
    txtMaterial = named(new controls::MemoField(pane), QStringLiteral("txtMaterial"),
                        QStringLiteral("Special Material Notes"));
    for (TextField* one : {txtQuantity, txtEstShopRate}) {
        one->setKeyFilter(values::keys::decimal());
        one->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        one->setMaximumWidth(130);
    }
    txtQuantity->setNumberMask(QStringLiteral("#####0"));
    txtQuantity->setLimit(9);
    txtEstShopRate->setNumberMask(QStringLiteral("#####0.00"));
    txtEstShopRate->setLimit(12);
    txtMaterial->setMinimumHeight(txtMaterial->fontMetrics().lineSpacing() * 2 + 12);
    txtMaterial->setMaximumHeight(txtMaterial->fontMetrics().lineSpacing() * 4 + 12);

    label(QStringLiteral("C&ustomer:"), dbcCustomer, 0, 0);
    grid->addLayout(customer, 0, 1);
    label(QStringLiteral("R&FQ No.:"), txtRfqno, 1, 0);
    grid->addLayout(beside(txtRfqno, cmdRfqno), 1, 1);
    label(QStringLiteral("&Part No.:"), txtPartno, 2, 0);
    grid->addLayout(beside(txtPartno, cmdPartno), 2, 1);
    label(QStringLiteral("Descript&ion:"), txtDescription, 3, 0);
    grid->addWidget(txtDescription, 3, 1, 1, 3);
    label(QStringLiteral("Da&te:"), txtEstDate, 0, 2);
    grid->addWidget(txtEstDate, 0, 3);
    label(QStringLiteral("Qu&antity:"), txtQuantity, 1, 2);
    grid->addWidget(txtQuantity, 1, 3);
    auto* rateLabel = label(QStringLiteral("&Hourly Rate:"), txtEstShopRate, 2, 2);
    grid->addWidget(txtEstShopRate, 2, 3);
    label(QStringLiteral("Special &Material Notes:"), txtMaterial, 4, 0)
        ->setAlignment(Qt::AlignTop);
    grid->addWidget(txtMaterial, 4, 1, 1, 3);
    grid->setColumnStretch(1, 3);
    grid->setColumnStretch(3, 2);
    m_secured.push_back(rateLabel);
    m_secured.push_back(txtEstShopRate);

    masters::BoundFields& bound = fields();
    bound.bind(QStringLiteral("RFQNo"), txtRfqno);
    bound.bind(QStringLiteral("PartNo"), txtPartno);
    bound.bind(QStringLiteral("Description"), txtDescription);
    bound.bind(QStringLiteral("EstDate"), txtEstDate);
    bindNumber(QStringLiteral("Quantity"), txtQuantity, QStringLiteral("#####0"));
    bindNumber(QStringLiteral("EstShopRate"), txtEstShopRate, QStringLiteral("#####0.00"));
    bound.bind(QStringLiteral("Material"), txtMaterial);
    return pane;
}

QTabWidget* frmEstimate::notePane() {
    auto* tabs = named(new QTabWidget(this), QStringLiteral("SSTabNotes"), QStringLiteral("Notes"));
    const std::array<const char16_t*, 4> titles{u"Quote", u"Traveler", u"R.F.Q.", u"Job"};
    for (std::size_t i = 0; i < titles.size(); ++i) {
        const QString title = QString::fromUtf16(titles[i]);
        txtNotes[i] = named(new controls::MemoField(tabs), indexed(u"txtNotes", i),
                            title + QStringLiteral(" notes"));
        tabs->addTab(txtNotes[i], title);
    }
    fields().bind(QStringLiteral("EstNotes"), txtNotes[0]);
    fields().bind(QStringLiteral("TravelerNotes"), txtNotes[1]);
    fields().bind(QStringLiteral("JobNotes"), txtNotes[3]);
    return tabs;
}

QWidget* frmEstimate::breakPane() {
    auto* pane =
        named(new QGroupBox(QStringLiteral("Price Breaks"), this), QStringLiteral("fraBreaks"));
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
        return QStringLiteral(" of break ") + QChar(u'A' + static_cast<char16_t>(i));
    };
    const auto columnOf = [](const char16_t* stem, std::size_t i) {
        return QString::fromUtf16(stem) + QChar(u'A' + static_cast<char16_t>(i));
    };
    for (std::size_t i = 0; i < breakCount; ++i) {
        txtQtyBreak[i] = new TextField(pane);
        txtQtyBreak[i]->setKeyFilter(values::keys::decimal());
        txtQtyBreak[i]->setLimit(9);
        if (i > 0)
            txtQtyBreak[i]->setNumberMask(QStringLiteral("#####0"));
        place(txtQtyBreak[i], indexed(u"txtQtyBreak", i), QStringLiteral("Quantity") + letterOf(i),
              1, static_cast<int>(i) + 1);
        bindNumber(columnOf(u"QtyBreak", i), txtQtyBreak[i], QStringLiteral("#####0"));
    }
    for (std::size_t i = 0; i < breakCount; ++i) {
        txtQtyDiscount[i] = new TextField(pane);
        txtQtyDiscount[i]->setKeyFilter(values::keys::decimal());
        txtQtyDiscount[i]->setLimit(9);
        place(txtQtyDiscount[i], indexed(u"txtQtyDiscount", i),
              QStringLiteral("Discount") + letterOf(i), 2, static_cast<int>(i) + 1);
        bindNumber(columnOf(u"QtyDiscount", i), txtQtyDiscount[i], QStringLiteral("##0.00"));
    }
    const auto money = [&](std::array<CurrencyField*, breakCount>& row, const char16_t* name,
                           const char16_t* stem, const QString& spoken, int at, bool typed) {
        for (std::size_t i = 0; i < breakCount; ++i) {
            row[i] = new CurrencyField(pane);
            row[i]->setMask(at == 5 ? QStringLiteral("#####0.00##")
                                    : QStringLiteral("#####0.0000"));
            place(row[i], indexed(name, i), spoken + letterOf(i), at, static_cast<int>(i) + 1);
            if (typed) {
                row[i]->setKeyFilter(values::keys::decimal());
                row[i]->setLimit(14);
                fields().bind(columnOf(stem, i), row[i]);
            } else {
                fields().bindShown(columnOf(stem, i), row[i]);
            }
            m_secured.push_back(row[i]);
        }
    };
    money(fpQtyPrice, u"fpQtyPrice", u"QtyPrice", QStringLiteral("Est Price Each"), 3, false);
    money(fpQtyQP, u"fpQtyQP", u"QtyQP", QStringLiteral("Quoted Price"), 4, true);
    money(fpQtyTotal, u"fpQtyTotal", u"QtyTotal", QStringLiteral("Total"), 5, false);

    const auto shown = [&](const char16_t* name, const char16_t* text, int row) {
        auto* caption = new QLabel(QString::fromUtf16(text), pane);
        auto* field = new CurrencyField(pane);
        field->setMask(QStringLiteral("#####0.00##"));
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
    return makeButtonPane(
        {{{Role::New, QStringLiteral("cmdNew"), QStringLiteral("&New")},
          {Role::Edit, QStringLiteral("cmdEdit"), QStringLiteral("&Edit")},
          {Role::Delete, QStringLiteral("cmdDelete"), QStringLiteral("&Delete")},
          {Role::Close, QStringLiteral("cmdClose"), QStringLiteral("Do&ne")}},
         {{Role::Find, QStringLiteral("cmdFind"), QStringLiteral("&Goto Est")},
          {Role::BrowseOnly, QStringLiteral("cmdGotoPart"), QStringLiteral("G&oto Part")},
          {Role::Free, QStringLiteral("cmdAssembly"), QStringLiteral("Assembl&y Tree")},
          {Role::Free, QStringLiteral("cmdCreateJob"), QStringLiteral("Create &Job")}},
         {{Role::List, QStringLiteral("cmdQuery"), QStringLiteral("&Query/Report")},
          {Role::PrintShown, QStringLiteral("cmdPrintScr"), QStringLiteral("Quick &Report Shown")},
          {Role::BrowseOnly, QStringLiteral("cmdPrintBOM"), QStringLiteral("Print BOM")}}});
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

    wireCustomer();
    on(txtRfqno->left, &frmEstimate::txtRfqno_LostFocus);
    on(txtEstShopRate->left, &frmEstimate::calcEstimate);
    on(txtQuantity->left, &frmEstimate::calcBoth);
    for (std::size_t i = 1; i < breakCount; ++i) {
        on(txtQtyBreak[i]->left, &frmEstimate::calcQuoteTotals);
        on(txtQtyDiscount[i]->left, [this, i] {
            if (isBrowse())
                return;
            txtQtyDiscount[i]->setText(discountText(txtQtyDiscount[i]->text()));
            calcEstimate();
        });
    }
    for (CurrencyField* field : fpQtyQP)
        on(field->left, &frmEstimate::calcQuoteTotals);
    on(m_routing->costChanged, &frmEstimate::calcEstimate);
    on(m_routing->fixedCostsChanged, &frmEstimate::calcBoth);
}

} // namespace estimating
