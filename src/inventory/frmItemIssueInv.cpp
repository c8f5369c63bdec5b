#include "inventory/frmItemIssueInv.h"

#include "core/MirsaMain.h"
#include "inventory/Issue.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace inventory {

namespace {

const QString system = u"System Message"_s;

/// What can be issued to.
struct Target {
    QString type;
    QString label;
    QString select; ///< "Info" is shown, "ID" is kept
};

const std::vector<Target>& targets() {
    static const std::vector<Target> all{
        {u"Job"_s, u"&Job"_s,
         u"SELECT JobNo AS ID, JobNo AS Info FROM Job WHERE Shipped = 0 ORDER BY Jobno DESC"_s},
        {u"Sales"_s, u"C&ustomer"_s,
         u"SELECT CustID as ID, Company AS Info FROM Customer ORDER BY Company"_s},
        {u"OverHead"_s, u"O&verhead"_s,
         u"SELECT OperNo AS ID, Description AS Info FROM Operation WHERE OperType = 'O' "
         "ORDER BY Description"_s}};
    return all;
}

} // namespace

frmItemIssueInv::frmItemIssueInv()
    : Form(QString::fromLatin1(formName), u"Issue Inventory Item"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    const char16_t* const names[] = {u"Description", u"Part Number", u"Manufacturer",
                                     u"Location",    u"Type",        u"Quantity"};
    for (int i = 0; i < 6; ++i) {
        const QString caption = QString::fromUtf16(names[i]);
        m_shown[i] = fields.shown(u"lbl"_s + QString(caption).remove(u' '), caption + u':', 36);
        m_shown[i]->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    dbcEmployee = fields.dataCombo(u"dbcEmployee"_s, u"&Employee:"_s, {.characters = 30});
    cboIssueType = fields.listCombo(u"cboIssueType"_s, u"Issue &Type:"_s);
    for (const Target& target : targets())
        cboIssueType->addRow(target.type);
    cboIssueType->setCurrentIndex(-1);
    dbcInfo = new controls::DataCombo(this);
    lblInfo =
        screen::named(new QLabel(screen::fieldTitle(targets().front().label), this), u"lblInfo"_s);
    lblInfo->setBuddy(dbcInfo);
    const int row = fields.grid()->rowCount();
    fields.grid()->addWidget(lblInfo, row, 0);
    fields.grid()->addWidget(screen::named(dbcInfo, u"dbcInfo"_s, u"Issue to"_s), row, 1);
    fields.nextRow();
    txtDate = fields.date(u"txtDate"_s, u"&Date:"_s);
    txtQuantity = fields.text(u"txtQuantity"_s, u"&Quantity:"_s,
                              {.limit = 9, .filter = values::keys::decimal(), .characters = 10});
    chkFixedCost = fields.check(u"chkFixedCost"_s, u"&Add to Fixed Cost Items on Job"_s);
    outside->addStretch();
    on(addOkCancel(outside), &frmItemIssueInv::cmdOK_Click);
    on(cboIssueType->chosen, &frmItemIssueInv::cboIssueType_Click);
}

void frmItemIssueInv::showFor(qint64 itemId) {
    m_itemId = itemId;
    jet::Database& database = core::MainDatabase();
    const QString employees =
        u"SELECT EmpID AS ID, (LastName + ',' + FirstName) AS Name FROM Employee WHERE EmpStatus = "
        "'Active' ORDER BY LastName, FirstName"_s;
    const QString highest = u"SELECT DISTINCT Employee FROM ItemIssue ORDER BY Employee DESC"_s;
    database.expect({employees, highest});
    const auto row = itemRow(database, itemId);
    if (!row) {
        screen::MsgBox(u"This item has been deleted by another user."_s, screen::Buttons::Ok,
                       screen::Icon::Critical, system);
        return;
    }
    const QStringList texts = row->texts();
    for (int i = 0; i < 6; ++i)
        m_shown[i]->setText(texts[i]);
    dbcEmployee->setRows(database.openRecordset(employees, jet::RecordsetType::Snapshot), u"Name"_s,
                         u"ID"_s);
    dbcEmployee->setBoundText(database.lookup(highest).toText());
    txtDate->setValue(jet::Value(values::today()));
    chkFixedCost->hide();
    cboIssueType->setFocus();
    showModal();
}

void frmItemIssueInv::cboIssueType_Click() {
    const int which = cboIssueType->currentIndex();
    if (which < 0)
        return;
    const Target& target = targets()[static_cast<std::size_t>(which)];
    lblInfo->setText(screen::fieldTitle(target.label));
    dbcInfo->setText({});
    dbcInfo->setRows(
        core::MainDatabase().openRecordset(target.select, jet::RecordsetType::Snapshot), u"Info"_s,
        u"ID"_s);
    chkFixedCost->setVisible(which == 0);
}

bool frmItemIssueInv::isComplete() {
    const std::pair<bool, std::pair<QString, QWidget*>> checks[] = {
        {dbcEmployee->boundText().isEmpty(), {u"Employee field cannot be blank."_s, dbcEmployee}},
        {cboIssueType->currentIndex() < 0, {u"Issue type must be specified."_s, cboIssueType}},
        {dbcInfo->boundText().isEmpty(), {u"Issue information must be specified."_s, dbcInfo}},
        {txtDate->value().isNull(), {u"Date must be specified."_s, txtDate}},
        {static_cast<qint64>(values::val(txtQuantity->text())) <= 0,
         {u"Quantity must be specified."_s, txtQuantity}}};
    for (const auto& [missing, complaint] : checks) {
        if (missing) {
            complain(complaint.first, complaint.second, screen::Icon::Critical, system);
            return false;
        }
    }
    return true;
}

void frmItemIssueInv::cmdOK_Click() {
    if (!isComplete())
        return;
    jet::Database& database = core::MainDatabase();
    // What is entered counts by its whole part.
    const auto quantity = static_cast<qint64>(values::val(txtQuantity->text()));
    const qint64 to = dbcInfo->boundText().toLongLong();
    const bool post = chkFixedCost->isVisible() && chkFixedCost->isChecked();
    std::optional<Item> item;
    qint64 costItem = 0;
    if (post) {
        database.expect({fixedCostOfSelect(m_itemId)});
        item = loadItem(database, m_itemId);
        costItem = database.lookup(fixedCostOfSelect(m_itemId)).toLong();
    }
    const Issued done =
        issue(database,
              {m_itemId, quantity, dbcEmployee->boundText().toLongLong(),
               txtDate->value().toDate().value_or(values::today()), to, cboIssueType->text()},
              [&] {
                  if (item && costItem != 0)
                      postFixedCost(database, to, costItem, item->units, item->price, quantity);
              });
    if (done == Issued::NotEnough) {
        complain(u"Issue quantity cannot be larger than item inventory quantity."_s, txtQuantity,
                 screen::Icon::Critical, system);
        return;
    }
    if (done == Issued::Gone) {
        screen::MsgBox(u"This item has been deleted by another user."_s, screen::Buttons::Ok,
                       screen::Icon::Critical, system);
    } else if (item && costItem == 0) {
        postNewCost(*item, to, quantity);
    }
    if (auto* explorer = screen::Forms::find<Explorer>(u"frmInventory"_s))
        explorer->itemChanged(m_itemId);
    hideModal();
}

void frmItemIssueInv::postNewCost(const Item& item, qint64 jobNo, qint64 quantity) {
    if (screen::MsgBox(u"Inventory Item is not an Item in the Fixed Cost Table. Create a new "
                       "Fixed Cost Item?"_s,
                       screen::Buttons::OkCancel, screen::Icon::Question,
                       system) != screen::Answer::Ok)
        return;
    jet::Database& database = core::MainDatabase();
    jet::Transaction transaction(database);
    qint64 itemNo =
        fixedCostItem(database, item.description); // somebody else may have been quicker
    if (itemNo == 0)
        itemNo = addFixedCostItem(database, item.description, item.units, item.price);
    postFixedCost(database, jobNo, itemNo, item.units, item.price, quantity);
    transaction.commit();
}

} // namespace inventory
