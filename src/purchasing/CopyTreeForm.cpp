#include "purchasing/CopyTreeForm.h"

#include "core/MirsaMain.h"
#include "platform/controls/DateField.h"
#include "platform/controls/Pictures.h"
#include "platform/controls/Tree.h"
#include "platform/screen/Layout.h"
#include "platform/values/Clock.h"
#include "platform/values/Letters.h"
#include "platform/values/Literals.h"

#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <map>

namespace purchasing {

namespace {

const QString rootKey = u"r"_s;

} // namespace

CopyTreeForm::CopyTreeForm(Descriptor descriptor)
    : Form(descriptor.formName, descriptor.caption), m_descriptor(std::move(descriptor)) {
    auto* outside = new QVBoxLayout(this);
    tvMain = screen::named(new controls::Tree(this), u"tvMain"_s, u"Items to copy"_s);
    outside->addWidget(tvMain, 1);
    if (m_descriptor.asksDate) {
        screen::Fields fields(this, outside);
        txtDate = fields.date(u"txtDate"_s, u"Date &Required:"_s);
        fields.grid()->setColumnStretch(2, 1);
    }
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdSelect = bar.button(u"cmdSelect"_s, u"&OK"_s);
    QPushButton* cmdCancel = bar.button(u"cmdCancel"_s, u"Cancel"_s);
    setDefaultButton(cmdSelect);
    setCancelButton(cmdCancel);
    on(cmdSelect, [this] {
        if (txtDate && !txtDate->isValid()) {
            complain(u"This is not a date. Please enter it as month/day/year."_s, txtDate);
            return;
        }
        m_ok = true;
        hideModal();
    });
    on(cmdCancel, [this] { hideModal(); });
    on(tvMain->choiceTurned, [this](const QString& key) { showFolder(tvMain->parentOf(key)); });
    resize(480, 460);
}

void CopyTreeForm::fill(qint64 number, const QString& key) {
    jet::Database& database = core::MainDatabase();
    const QString no = QString::number(number);
    const QString table = m_descriptor.ordered ? u"POVendor"_s : u"RFQVendor"_s;
    const QString owner = m_descriptor.ordered ? u"PONumber"_s : u"VOrderKey"_s;
    std::vector<jet::Recordset> sets = database.together(
        {u"SELECT VendorID, Company, "_s +
             (m_descriptor.ordered ? u"OrderNumber"_s : u"VOrderKey"_s) + u" FROM "_s + table +
             (m_descriptor.oneVendor ? u" WHERE VOrderKey = "_s + sqlText(key)
                                     : u" WHERE OrderNumber = "_s + no) +
             u" ORDER BY Company"_s,
         u"SELECT ItemKey, PartNumber, Description, "_s + owner + u" FROM "_s +
             (m_descriptor.ordered     ? u"POItem WHERE PONumber = "_s + no
              : m_descriptor.oneVendor ? u"RFQItem WHERE VOrderKey = "_s + sqlText(key)
                                       : u"RFQItem WHERE OrderNumber = "_s + no) +
             u" ORDER BY ItemNumber"_s});
    jet::Recordset &vendors = sets[0], &items = sets[1];

    tvMain->addNode({}, {.key = rootKey,
                         .text = m_descriptor.rootWord + no,
                         .picture = controls::pictures::openFolder()});
    std::map<QString, std::vector<controls::TreeNode>> ofVendor;
    for (; !items.eof(); items.moveNext()) {
        ofVendor[values::lowered(items.text(owner))].push_back(
            {.key = u"i"_s + items.text(u"ItemKey"),
             .text = items.text(u"PartNumber") + u" - "_s + items.text(u"Description"),
             .chosen = true});
    }
    for (; !vendors.eof(); vendors.moveNext()) {
        const QString vendor = vendors.field(2).toText();
        const QString folder = u"v"_s + vendor;
        tvMain->addNode(rootKey, {.key = folder, .text = vendors.text(u"Company")});
        tvMain->addNodes(folder, ofVendor[values::lowered(vendor)]);
        tvMain->open(folder);
        showFolder(folder);
    }
    tvMain->open(rootKey);
    tvMain->selectNode(rootKey);
}

/// An open folder where anything in it is chosen.
void CopyTreeForm::showFolder(const QString& vendor) const {
    const QStringList items = tvMain->childrenOf(vendor);
    const bool any = std::any_of(items.begin(), items.end(),
                                 [this](const QString& item) { return tvMain->isChosen(item); });
    const QIcon picture = any ? controls::pictures::openFolder() : controls::pictures::folder();
    tvMain->setPictures(vendor, picture, picture);
}

std::optional<CopyTreeDialog::Choice> CopyTreeForm::choose(qint64 number, const QString& key) {
    fill(number, key);
    if (txtDate)
        txtDate->setDate(values::today());
    showModal();
    if (!m_ok)
        return std::nullopt;
    Choice choice;
    const QStringList vendors = tvMain->childrenOf(rootKey);
    for (const QString& vendor : vendors) {
        ChosenRequest request{vendor.mid(1), {}};
        const QStringList items = tvMain->childrenOf(vendor);
        for (const QString& item : items) {
            if (tvMain->isChosen(item))
                request.items << item.mid(1);
        }
        choice.vendors.push_back(std::move(request));
    }
    choice.required = txtDate ? txtDate->date().value_or(QDate()) : QDate();
    return choice;
}

} // namespace purchasing
