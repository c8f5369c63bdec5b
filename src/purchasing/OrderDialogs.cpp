#include "purchasing/OrderDialogs.h"

#include "core/MirsaMain.h"
#include "core/records/RecordNumbers.h"
#include "core/records/RecordScreen.h"
#include "platform/screen/Forms.h"
#include "platform/values/Literals.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace purchasing {

using screen::Answer;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

NewOrderForm::NewOrderForm(Descriptor descriptor)
    : Form(descriptor.formName, descriptor.caption), m_descriptor(std::move(descriptor)) {
    auto* outside = new QVBoxLayout(this);
    for (const Way& way : m_descriptor.ways) {
        m_options.push_back(screen::named(new QRadioButton(way.caption, this), way.name));
        outside->addWidget(m_options.back());
    }
    m_options.front()->setChecked(true);
    if (!m_descriptor.carryMethod.isEmpty()) {
        Check1 = screen::named(new QCheckBox(m_descriptor.carryCaption, this), u"Check1"_s);
        Check1->setEnabled(false);
        outside->addWidget(Check1);
        connect(m_options.back(), &QRadioButton::toggled, Check1, &QCheckBox::setEnabled);
    }
    outside->addStretch();
    on(addOkCancel(outside), [this] {
        m_ok = true;
        hideModal();
    });
}

std::optional<QString> NewOrderForm::choose(bool hasDocument) {
    if (!hasDocument)
        return m_descriptor.ways.front().method;
    m_options.front()->setFocus();
    showModal();
    if (!m_ok)
        return std::nullopt;
    if (Check1 && m_options.back()->isChecked() && Check1->isChecked())
        return m_descriptor.carryMethod;
    for (std::size_t i = 0; i < m_options.size(); ++i) {
        if (m_options[i]->isChecked())
            return m_descriptor.ways[i].method;
    }
    return std::nullopt;
}

GotoForm::GotoForm(Descriptor descriptor)
    : Form(descriptor.formName, descriptor.caption), m_descriptor(std::move(descriptor)) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    selString = fields.text(u"selString"_s, m_descriptor.label,
                            {.limit = 9, .filter = values::keys::digits(), .characters = 14});
    outside->addStretch();
    QPushButton* cmdOK = addOkCancel(outside);
    cmdOK->setEnabled(false);
    connect(selString, &QLineEdit::textChanged, this,
            [this, cmdOK] { cmdOK->setEnabled(!selString->text().trimmed().isEmpty()); });
    on(cmdOK, &GotoForm::cmdOK_Click);
}

void GotoForm::cmdOK_Click() {
    auto* module = screen::Forms::find<core::RecordScreen>(m_descriptor.moduleScreen);
    const qint64 number = selString->text().toLongLong();
    if (m_descriptor.limited)
        core::checkRecordNumber(core::MainDatabase(), number);
    if (!module || module->goToRecord(number)) {
        hideModal();
        return;
    }
    if (MsgBox(m_descriptor.noMatch, Buttons::YesNo, Icon::Question, u"No Match!"_s) !=
        Answer::Yes) {
        hideModal();
        return;
    }
    selString->setText({});
    selString->setFocus();
}

frmRfqVendorSelect::frmRfqVendorSelect()
    : Form(QString::fromLatin1(formName), u"Creating New Group"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    dbcVendor = fields.dataCombo(u"dbcVendor"_s, u"&Vendor:"_s, {.characters = 36});
    txtNum = fields.text(u"txtNum"_s, u"Vendor Number:"_s, {.characters = 10});
    txtNum->setLocked(true);
    outside->addStretch();
    on(addOkCancel(outside), &frmRfqVendorSelect::cmdOK_Click);
    on(dbcVendor->chosen, &frmRfqVendorSelect::dbcVendor_Change);
    on(dbcVendor->left, &frmRfqVendorSelect::dbcVendor_Change);
}

std::optional<qint64> frmRfqVendorSelect::pick(qint64 group) {
    const jet::Recordset vendors = core::MainDatabase().openRecordset(
        group == 0 ? u"SELECT * FROM Vendor ORDER BY Company"_s
                   : u"SELECT * FROM Vendor WHERE VendID NOT IN (SELECT VendorID FROM RFQvendor "
                     "WHERE OrderNumber = "_s +
                         QString::number(group) + u") ORDER BY Company"_s,
        jet::RecordsetType::Snapshot);
    if (vendors.isEmpty()) {
        MsgBox(u"All available Vendors have already been included in this RFQ group!"_s,
               Buttons::Ok, Icon::Exclamation, u"Error!"_s);
        return std::nullopt;
    }
    const QString first = vendors.text(u"VendID");
    dbcVendor->setRows(vendors, u"Company"_s, u"VendID"_s);
    dbcVendor->setBoundText(first);
    dbcVendor_Change();
    dbcVendor->setFocus();
    showModal();
    return m_vendor == 0 ? std::nullopt : std::optional(m_vendor);
}

void frmRfqVendorSelect::dbcVendor_Change() {
    txtNum->setText(dbcVendor->boundText());
}

void frmRfqVendorSelect::cmdOK_Click() {
    dbcVendor_Change();
    m_vendor = dbcVendor->boundText().toLongLong();
    if (m_vendor == 0) {
        complain(u"You must select a Vendor!"_s, dbcVendor, Icon::Exclamation, u"Error!"_s);
        return;
    }
    hideModal();
}

frmRFQDelete::frmRFQDelete() : Form(QString::fromLatin1(formName), u"Delete RFQ"_s) {
    auto* outside = new QVBoxLayout(this);
    const QString captions[] = {u"Delete this &entire RFQ Group"_s,
                                u"Delete the c&urrent RFQ (Remove Vendor)."_s};
    for (int i = 0; i < 2; ++i) {
        m_options[i] = screen::named(new QRadioButton(captions[i], this),
                                     u"optDelete("_s + QString::number(i) + u")"_s);
        outside->addWidget(m_options[i]);
    }
    outside->addStretch();
    on(addOkCancel(outside), [this] {
        m_ok = true;
        hideModal();
    });
}

std::optional<DeleteRequestDialog::What> frmRFQDelete::choose(int vendors) {
    m_options[1]->setEnabled(vendors > 1);
    m_options[vendors > 1 ? 1 : 0]->setChecked(true);
    m_options[vendors > 1 ? 1 : 0]->setFocus();
    showModal();
    if (!m_ok)
        return std::nullopt;
    return m_options[0]->isChecked() ? What::Group : What::Vendor;
}

} // namespace purchasing
