#include "jobs/frmCreatJob.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QCheckBox>
#include <QCompleter>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace jobs {

using screen::Answer;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;
using values::Currency;

frmCreatJob::frmCreatJob() : Form(QString::fromLatin1(formName), u"Create a Job from Estimate"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* across = new QHBoxLayout;
    outside->addLayout(across);

    auto* left = new QVBoxLayout;
    across->addLayout(left);
    screen::Fields fields(this, left);
    cmbQuantity = fields.dataCombo(u"cmbQuantity"_s, u"Job &Quantity:"_s,
                                   {9, values::keys::decimal(), {}, 10});
    // Completing would make 10 of a typed 1.
    cmbQuantity->setCompleter(nullptr);
    txtQtyQP = fields.text(u"txtQtyQP"_s, u"Quoted Price &Each-$"_s,
                           {14, values::keys::decimal(), {}, 12});
    txtQtyQP->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    mskDate[0] = fields.date(u"mskDate(0)"_s, u"Date &In"_s);
    mskDate[1] = fields.date(u"mskDate(1)"_s, u"&Due Date"_s);
    txtPONo = fields.text(u"txtPONo"_s, u"&PO No."_s,
                          {core::MainDatabase().width(u"Job", u"PONo"), {}, {}, 20});
    chkOrderRequired = fields.check(u"chkOrderRequired"_s, u"Perform in O&rder"_s);
    chkNotes = fields.check(u"chkNotes"_s, u"&Use Operation Notes"_s);
    chkPrintTraveler = fields.check(u"chkPrintTraveler"_s, u"Print &Traveler"_s);
    chkPrintNotes = fields.check(u"chkPrintNotes"_s, u"&with Notes"_s);
    left->addStretch();
    m_secured.push_back(txtQtyQP);
    const auto labels = findChildren<QLabel*>();
    for (QLabel* label : labels) {
        if (label->buddy() == txtQtyQP)
            m_secured.push_back(label);
    }

    auto* right = new QVBoxLayout;
    across->addLayout(right, 1);
    const auto notes = [&](const char16_t* frameName, const char16_t* name, const QString& title) {
        QGroupBox* frame = screen::frame(this, right, QString::fromUtf16(frameName), title);
        auto* inside = new QVBoxLayout(frame);
        auto* field = screen::named(new controls::MemoField(frame), QString::fromUtf16(name),
                                    title + u" notes"_s);
        inside->addWidget(field);
        return field;
    };
    txtTrvNotes = notes(u"fraTraveler", u"txtTrvNotes", u"Traveler"_s);
    txtJobNotes = notes(u"fraJob", u"txtJobNotes", u"Job"_s);

    QPushButton* cmdOK = addOkCancel(outside, u"&OK"_s, u"&Cancel"_s);

    on(cmbQuantity->changed, &frmCreatJob::cmbQuantity_Change);
    on(txtQtyQP->left, [this] {
        const QString typed = txtQtyQP->text().remove(QLatin1Char(','));
        txtQtyQP->setText(values::numberField(typed, u"#####0.0000"));
    });
    on(chkPrintTraveler, &QCheckBox::toggled, [this] { chkPrintTraveler_Click(); });
    on(cmdOK, &frmCreatJob::cmdOK_Click);
    resize(720, 420);
}

qint64 frmCreatJob::createJob(qint64 estNo) {
    const auto estimate = estimating::loadEstimate(core::MainDatabase(), estNo);
    if (!estimate) {
        MsgBox(u"This record has been deleted by another user."_s, Buttons::Ok, Icon::Exclamation);
        return 0;
    }
    if (estimateHasJob(core::MainDatabase(), estNo) &&
        MsgBox(u"This estimate has been previously used for a job. Do you want to "
               "create a new job based on this estimate?"_s,
               Buttons::YesNo, Icon::Question, u"Create a Job"_s) != Answer::Yes)
        return 0;
    m_estNo = estNo;
    m_estimate = estimate->header;
    showOffers();
    showModal();
    return m_jobNo;
}

void frmCreatJob::showOffers() {
    const bool showDollar = core::HasAccess(u"ShowDollar"_s);
    for (QWidget* widget : m_secured)
        widget->setVisible(showDollar);
    QStringList quantities;
    for (const estimating::PriceBreak& offer : m_estimate.breaks) {
        if (offer.quantity != 0)
            quantities << values::numberText(offer.quantity);
    }
    cmbQuantity->setItems(quantities);
    cmbQuantity->setText(quantities.value(0));
    cmbQuantity_Change();
    mskDate[0]->setDate(values::today());
    mskDate[1]->setDate(std::nullopt);
    txtTrvNotes->setText(m_estimate.travelerNotes);
    txtJobNotes->setText(m_estimate.jobNotes);
    chkPrintTraveler_Click();
    cmbQuantity->setFocus();
}

void frmCreatJob::cmbQuantity_Change() {
    const double wanted = values::val(cmbQuantity->text());
    Currency price;
    for (const estimating::PriceBreak& offer : m_estimate.breaks) {
        if (offer.quantity != 0 && offer.quantity == wanted) {
            price = offer.quoted;
            break;
        }
    }
    txtQtyQP->setText(values::format(price, u"###,##0.0000"));
}

void frmCreatJob::chkPrintTraveler_Click() {
    chkPrintNotes->setEnabled(chkPrintTraveler->isChecked());
    if (!chkPrintTraveler->isChecked())
        chkPrintNotes->setChecked(false);
}

JobOrder frmCreatJob::order() const {
    JobOrder result;
    result.quantity = values::cLng(values::val(cmbQuantity->text()));
    result.price = Currency::fromText(txtQtyQP->text().remove(QLatin1Char(',')));
    result.dateIn = mskDate[0]->date();
    result.dueDate = mskDate[1]->date();
    result.poNo = txtPONo->text().trimmed();
    result.inOrder = chkOrderRequired->isChecked();
    result.useNotes = chkNotes->isChecked();
    result.travelerNotes = txtTrvNotes->text();
    result.jobNotes = txtJobNotes->text();
    return result;
}

void frmCreatJob::cmdOK_Click() {
    const JobOrder wanted = order();
    if (const auto complaint = checkOrder(wanted)) {
        complain(*complaint);
        return;
    }
    try {
        const screen::BusyPointer busy;
        m_jobNo = jobs::createJob(core::MainDatabase(), m_estNo, wanted);
    } catch (const jet::Error& error) {
        MsgBox(error.text(), Buttons::Ok, Icon::Critical);
        return;
    } catch (const values::Overflow&) {
        complain(u"The amounts of this job are too large to be computed. Please "
                 "check quantity and price."_s,
                 cmbQuantity);
        return;
    }
    if (chkPrintTraveler->isChecked())
        core::launchTraveler(m_jobNo, chkPrintNotes->isChecked(), this);
    MsgBox(u"Job # "_s + QString::number(m_jobNo) + u" has been created from Estimate # "_s +
               QString::number(m_estNo),
           Buttons::Ok, Icon::Information, u"Create a Job"_s);
    hideModal();
}

} // namespace jobs
