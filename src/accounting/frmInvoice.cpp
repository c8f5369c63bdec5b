#include "accounting/frmInvoice.h"

#include "accounting/Literals.h"
#include "core/MirsaMain.h"
#include "platform/controls/DataCombo.h"
#include "platform/screen/Layout.h"
#include "platform/values/Numbers.h"

#include <QHBoxLayout>
#include <QRadioButton>

namespace accounting {

using controls::GridColumn;

namespace {

enum Column {
    Select,
    Item,
    JobNo,
    Part,
    Description,
    JobQty,
    InvoiceQty,
    ShippedQty,
    Price,
    Amount
};

std::vector<GridColumn> columns() {
    std::vector<GridColumn> made{{u"Select"_s, 7},
                                 {u"Item"_s, 20},
                                 {u"Job #"_s, 8},
                                 {u"Part #"_s, 14},
                                 {u"Part Description"_s, 26},
                                 {u"Job Qty"_s, 8},
                                 {u"Invoice Qty"_s, 10},
                                 {u"Shipped Qty"_s, 10},
                                 {u"Unit Price"_s, 12},
                                 {QString(), 2}};
    for (const Column column : {JobNo, JobQty, InvoiceQty, ShippedQty, Price, Amount})
        made[column].kind = GridColumn::Kind::Number;
    made[Select].kind = GridColumn::Kind::Check;
    made[Item].kind = GridColumn::Kind::Combo;
    for (const Column column : {Select, Item, InvoiceQty})
        made[column].editable = true;
    made[InvoiceQty].filter = values::keys::decimal();
    return made;
}

} // namespace

frmInvoice::frmInvoice()
    : SendForm({.formName = QString::fromLatin1(formName),
                .caption = u"Invoice"_s,
                .sent = SentKind::Invoice,
                .document = u"invoice"_s,
                .partnerLabel = u"C&ustomer:"_s,
                .partnerKind = u"Customer"_s,
                .responseTag = u"InvoiceAddRs"_s,
                .retTag = u"InvoiceRet"_s,
                .gridName = u"sprMain"_s,
                .columns = columns(),
                .item = Item,
                .part = Part,
                .description = Description,
                .quantity = InvoiceQty,
                .price = Price,
                .optionalRows = {QString()},
                .sendName = u"cmdInvoiceSelected"_s,
                .historyCaption = u"Invoice &History"_s,
                .historyForm = u"frmInvoiceRecord"_s,
                .success = u"Successfully added the Invoice."_s}) {
    m_opensWithReason = false;
    build();
    m_lines->setColumnHidden(Amount, true);
    m_lines->setMinimumWidth(1120); // so that what was sent before is in sight
}

void frmInvoice::buildOptions(QBoxLayout* inside) {
    auto* row = new QHBoxLayout;
    inside->addLayout(row);
    const QString captions[] = {u"Show Active and &Inactive Jobs"_s, u"Show &Active Jobs Only"_s};
    for (int i = 0; i < 2; ++i) {
        Option1[i] = screen::named(new QRadioButton(captions[i], this), u"Option1(%1)"_s.arg(i));
        row->addWidget(Option1[i]);
    }
    row->addStretch(1);
    Option1[1]->setChecked(true);
    on(Option1[1], &QRadioButton::toggled, [this] { Option1_Click(); });
}

void frmInvoice::buildReports(screen::ButtonBar& bar) {
    reportButton(bar, u"cmdPrintOpen"_s, u"Shipped, Not Invoice&d"_s, u"Jobs_Not_Invoiced.rpt"_s,
                 u"Jobs Shipped and Not Invoiced"_s);
    reportButton(bar, u"cmdPrintSent"_s, u"Invoices S&ent"_s, u"Invoices_Sent.rpt"_s,
                 u"Invoices Sent"_s);
}

bool frmInvoice::onlyActive() const {
    return Option1[1]->isChecked();
}

bool frmInvoice::mayOpen() {
    if (dbcCompID->count() > 0 || core::MainDatabase().hasRows(u"SELECT TOP 1 JobNo FROM Job"_s))
        return true;
    tell(u"You must have at least one Job before you can use the Invoice module!"_s, u"Warning"_s);
    return false;
}

QString frmInvoice::partnersSelect() const {
    // Of all jobs there are many, of each customer one is enough; the active ones are few.
    return onlyActive()
               ? u"Select distinct Customer.CustID as ID,Customer.Company as Company from "
                 "Customer,Job where Customer.CustID = Job.CustID and Job.Shipped = False order "
                 "by Company"_s
               : u"Select CustID as ID, Company from Customer where exists (Select JobNo from Job "
                 "where Job.CustID = Customer.CustID) order by Company"_s;
}

QStringList frmInvoice::linesSelects(const QString& partner, const QString& order) const {
    QStringList selects{jobsSql(partner, order, onlyActive())};
    if (onlyActive())
        selects << jobsSql(partner, order, false);
    return selects;
}

jet::Recordset frmInvoice::orders(const QString& partner) {
    return snapshot(u"Select distinct PONo from Job where CustID = "_s + partner +
                    (onlyActive() ? u" and Job.Shipped = False"_s : QString()) +
                    u" ORDER BY PONo DESC"_s);
}

QString frmInvoice::jobsSql(const QString& partner, const QString& order, bool active) const {
    return u"Select distinct J.JobNo as JJobno, PartNo, Description, J.Quantity AS JQuantity, "
           "InvoiceEach, (Select SUM(Quantity) from JobShip where Jobno = J.Jobno) as SQuantity "
           "from Job J LEFT OUTER JOIN JobShip S ON J.JobNo = S.JobNo where CustID = "_s +
           partner + u" and PONo = "_s + literal(order) +
           (active ? u" and J.Shipped = False"_s : QString()) + u" order by J.JobNo"_s;
}

void frmInvoice::Option1_Click() {
    fillPartners();
    const QString chosen = partner();
    clearOrder();
    if (!chosen.isEmpty())
        dbcCompID_Chosen();
}

std::vector<Sendable> frmInvoice::fillLines(const QString& partner, const QString& order) {
    jet::Recordset rows = snapshot(jobsSql(partner, order, onlyActive()));
    for (; !rows.eof(); rows.moveNext()) {
        const QString price = shownPrice(rows[u"InvoiceEach"]);
        addLine({u"0"_s, QString(), rows.text(u"JJobno"), rows.text(u"PartNo"),
                 rows.text(u"Description"), rows.text(u"JQuantity"), rows.text(u"JQuantity"),
                 rows.text(u"SQuantity"), price, price},
                rows[u"JJobno"].toLong());
    }
    // What is due counts the jobs of the order that aren't shown, too.
    std::vector<Sendable> all;
    m_ordered = m_shipped = 0;
    if (onlyActive())
        rows = snapshot(jobsSql(partner, order, false));
    else if (!rows.isEmpty())
        rows.moveFirst();
    for (; !rows.eof(); rows.moveNext()) {
        const double ordered = rows[u"JQuantity"].toDouble();
        const double shipped = rows[u"SQuantity"].toDouble();
        m_ordered += ordered;
        m_shipped += shipped;
        Sendable line;
        line.description = recordedDescription(rows.text(u"PartNo"), rows.text(u"Description"));
        line.due = shipped > 0 ? shipped : ordered;
        all.push_back(line);
    }
    return all;
}

QString frmInvoice::totals() const {
    return u"This order: ordered "_s + values::numberText(m_ordered) + u", shipped "_s +
           values::numberText(m_shipped);
}

bool frmInvoice::isChosen() {
    if (!partner().isEmpty() && !order().isEmpty() && m_lines->rowCount() > 0)
        return true;
    tell(u"There Are No Records Showing To Invoice!"_s, u"Nothing to Invoice!"_s);
    return false;
}

bool frmInvoice::isLineRight(const DocumentLine& line, bool optional) const {
    if (optional || !line.item.isEmpty())
        return true;
    tell(u"Please select an item type for each invoice line item."_s, u"Select Item Type"_s);
    return false;
}

std::optional<Message> frmInvoice::message() {
    auto lines = selectedLines();
    if (!lines)
        return std::nullopt;
    if (lines->empty()) {
        tell(u"No Records were selected."_s, u"Nothing Selected"_s);
        return std::nullopt;
    }
    for (DocumentLine& line : *lines)
        line.amount = line.price;
    const auto further = selectedOptional();
    lines->insert(lines->end(), further->begin(), further->end());

    const jet::Recordset row = snapshot(u"SELECT * FROM Customer WHERE CustID = "_s + partner());
    m_customer = row.isEmpty() ? FieldTexts() : fieldsOf(customerKind(), row);
    return invoiceRequest({m_customer, order(), *lines});
}

bool frmInvoice::addPartner() {
    return addRecord(customerKind(), m_customer) &&
           markSent(u"UPDATE Customer Set QBSent = 1 WHERE CustID = "_s + partner());
}

} // namespace accounting
