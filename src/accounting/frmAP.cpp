#include "accounting/frmAP.h"

#include "accounting/Literals.h"
#include "core/MirsaMain.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/screen/Layout.h"
#include "platform/values/Clock.h"
#include "platform/values/Numbers.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QRadioButton>

namespace accounting {

frmAP::frmAP()
    : SendForm({.formName = QString::fromLatin1(formName),
                .caption = u"Send to Accounts Payable"_s,
                .sent = SentKind::Bill,
                .document = u"bill"_s,
                .partnerLabel = u"&Vendor:"_s,
                .partnerKind = u"Vendor"_s,
                .responseTag = u"BillAddRs"_s,
                .retTag = u"BillRet"_s,
                .gridName = u"vaSpread1"_s,
                .columns = Plain::columns(false),
                .item = Plain::Item,
                .part = Plain::Part,
                .description = Plain::Description,
                .quantity = Plain::Quantity,
                .price = Plain::Price,
                .optionalRows = {u"Miscellaneous Charges"_s, u"Freight Charges"_s},
                .sendName = u"cmdSend"_s,
                .historyCaption = u"Payables &History"_s,
                .historyForm = u"frmAPRecord"_s,
                .success = u"Successfully sent to Quickbooks."_s}) {
    build();
}

void frmAP::showVendor(qint64 vendor) {
    const QString number = QString::number(vendor);
    const QString before = partner();
    for (int row = 0; row < m_lines->rowCount(); ++row) {
        if (values::val(m_lines->text(row, Plain::Select)) != 0)
            return;
    }
    if (before == number)
        return;
    fillPartners(); // the order may be his first one
    dbcCompID->setBoundText(number);
    if (partner().isEmpty())
        dbcCompID->setBoundText(before);
    else
        dbcCompID_Chosen();
}

void frmAP::buildOptions(QBoxLayout* inside) {
    auto* row = new QHBoxLayout;
    inside->addLayout(row);
    screen::Fields number(this, row);
    screen::Line line;
    line.limit = 20; // as many as QuickBooks takes
    line.characters = 20;
    txtInvoiceNum = number.text(u"txtInvoiceNum"_s, u"&Invoice #:"_s, line);
    Check1 = screen::named(new QCheckBox(u"Select Invoice Dat&e"_s, this), u"Check1"_s);
    row->addWidget(Check1);
    const auto date = [&](const QString& name, const QString& spoken) {
        auto* field = screen::named(new controls::DateField(this), name, spoken);
        row->addWidget(field);
        return field;
    };
    txtInvoiceDate = date(u"txtInvoiceDate"_s, u"Invoice date"_s);
    optDate = screen::named(new QRadioButton(u"Select &Due Date"_s, this), u"optDate"_s);
    row->addWidget(optDate);
    txtBillDate = date(u"txtBillDate"_s, u"Due date"_s);
    optTerm =
        screen::named(new QRadioButton(u"Use Vendor &Terms for Due Date"_s, this), u"optTerm"_s);
    row->addWidget(optTerm);
    row->addStretch(1);
    optTerm->setChecked(true);
    on(Check1, &QCheckBox::toggled, [this] { showDates(); });
    on(optDate, &QRadioButton::toggled, [this] { showDates(); });
    showDates();
}

void frmAP::showDates() {
    txtInvoiceDate->setEnabled(Check1->isChecked());
    txtBillDate->setEnabled(optDate->isChecked());
}

void frmAP::buildReports(screen::ButtonBar& bar) {
    reportButton(bar, u"cmdPrintOpen"_s, u"&Received, Not Sent"_s, u"Received_Not_Sent.rpt"_s,
                 u"Received and Not Sent"_s);
    reportButton(bar, u"cmdPrintSent"_s, u"&Payables Sent"_s, u"Payables_Sent.rpt"_s,
                 u"Payables Sent"_s);
}

QString frmAP::partnersSelect() const {
    return u"Select VendID as ID, Company from Vendor where exists (Select OrderNumber from "
           "POVendor where POVendor.VendorID = Vendor.VendID) order by Company"_s;
}

QStringList frmAP::linesSelects(const QString&, const QString& order) const {
    return {u"Select PartNumber, Description, ReceivedQuantity as RQuantity, UnitPrice, ItemKey, "
            "Quantity from POItem where ItemKey Like '"_s +
            order + u"-*' order by ItemNumber"_s};
}

jet::Recordset frmAP::orders(const QString& partner) {
    return snapshot(u"Select OrderNumber from POVendor where VendorID = "_s + partner +
                    u" ORDER BY OrderNumber DESC"_s);
}

std::vector<Sendable> frmAP::fillLines(const QString& partner, const QString& order) {
    jet::Recordset rows = snapshot(linesSelects(partner, order).front());
    std::vector<Sendable> all;
    m_ordered = m_received = 0;
    for (; !rows.eof(); rows.moveNext()) {
        addLine({u"0"_s, QString(), rows.text(u"PartNumber"), rows.text(u"Description"),
                 rows.text(u"RQuantity"), shownPrice(rows[u"UnitPrice"])});
        m_ordered += rows[u"Quantity"].toDouble();
        m_received += rows[u"RQuantity"].toDouble();
        Sendable line;
        line.description = recordedDescription(rows.text(u"PartNumber"), rows.text(u"Description"));
        line.due = rows[u"RQuantity"].toDouble();
        all.push_back(line);
    }
    return all;
}

QString frmAP::totals() const {
    return u"This order: ordered "_s + values::numberText(m_ordered) + u", received "_s +
           values::numberText(m_received);
}

void frmAP::forgetDocument() {
    txtInvoiceNum->clear();
}

bool frmAP::isChosen() {
    if (partner().isEmpty() || order().isEmpty()) {
        tell(u"Please select a company and PO."_s, u"Nothing Selected"_s);
        return false;
    }
    if (Check1->isChecked() && !txtInvoiceDate->date()) {
        complain(u"Please enter a valid invoice date."_s, txtInvoiceDate);
        return false;
    }
    if (optDate->isChecked() && !txtBillDate->date()) {
        complain(u"Please enter a valid due date."_s, txtBillDate);
        return false;
    }
    return true;
}

bool frmAP::isLineRight(const DocumentLine& line, bool) const {
    if (line.item.isEmpty()) {
        tell(u"Please select an item type for each line item."_s, u"Select Item Type"_s);
        return false;
    }
    if (values::val(line.quantity) == 0) {
        tell(u"One or more of the received quantities is zero. Please enter the correct "
             "quantity."_s,
             u"Zero Quantity"_s);
        return false;
    }
    return true;
}

std::optional<Message> frmAP::message() {
    auto lines = selectedLines();
    const auto charges = lines ? selectedOptional() : std::nullopt;
    if (!charges)
        return std::nullopt;
    lines->insert(lines->end(), charges->begin(), charges->end());
    if (lines->empty()) {
        tell(u"No vendor records where selected."_s, u"Nothing Selected"_s);
        return std::nullopt;
    }
    Bill bill;
    bill.vendor = dbcCompID->text();
    bill.date = Check1->isChecked() ? *txtInvoiceDate->date() : values::today();
    if (optDate->isChecked())
        bill.due = txtBillDate->date();
    bill.number = txtInvoiceNum->text().trimmed();
    bill.lines = *lines;
    return billRequest(bill);
}

bool frmAP::addPartner() {
    const jet::Recordset row = snapshot(u"SELECT * FROM Vendor WHERE VendID = "_s + partner());
    return !row.isEmpty() && addRecord(vendorKind(), fieldsOf(vendorKind(), row)) &&
           markSent(u"UPDATE Vendor Set QBSent = 1 WHERE VendID = "_s + partner());
}

} // namespace accounting
