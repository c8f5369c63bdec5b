#include "inventory/frmItemRestockJob.h"

#include "core/MirsaMain.h"
#include "inventory/ItemRows.h"
#include "inventory/Restock.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"

#include <QLabel>
#include <QVBoxLayout>

namespace inventory {

namespace {
const QString system = u"System Message"_s;
}

frmItemRestockJob::frmItemRestockJob()
    : Form(QString::fromLatin1(formName), u"Stock Item from Job"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    lblJob = fields.shown(u"lblJob"_s, u"Job:"_s, 40);
    fpQuantity = fields.text(u"fpQuantity"_s, u"Job &Quantity:"_s,
                             {.limit = 9, .filter = values::keys::digits(), .characters = 10});
    sprItems = screen::named(new controls::Grid(this), u"sprItems"_s, u"Matching items"_s);
    sprItems->setColumns(itemColumns());
    sprItems->setRowsToSelect(true);
    outside->addWidget(sprItems, 1);
    on(addOkCancel(outside), &frmItemRestockJob::cmdOK_Click);
    on(sprItems->rowDoubleClicked, [this](int) { cmdOK_Click(); });
    resize(820, 380);
}

bool frmItemRestockJob::stock(qint64 jobNo, qint64 employee, const QDate& date) {
    m_jobNo = jobNo;
    m_employee = employee;
    m_date = date;
    const auto goods = goodsOfJob(core::MainDatabase(), jobNo);
    if (!goods)
        return false;
    lblJob->setText(QString::number(jobNo) + u"  "_s + goods->item.partNumber + u"  "_s +
                    goods->item.description);
    fpQuantity->setText(QString::number(goods->item.quantity));
    showItems(*sprItems, goods->matching);
    fpQuantity->setFocus();
    showModal();
    return m_done;
}

void frmItemRestockJob::cmdOK_Click() {
    const auto selected = sprItems->selectedRows();
    if (selected.size() != 1) {
        complain(u"Please select an item to restock."_s, sprItems, screen::Icon::Exclamation,
                 system);
        return;
    }
    const qint64 quantity = fpQuantity->text().toLongLong();
    if (quantity <= 0) {
        complain(u"Quantity must be specified."_s, fpQuantity, screen::Icon::Critical, system);
        return;
    }
    const qint64 item = sprItems->rowKey(selected.front());
    m_done =
        restock(core::MainDatabase(), {item, quantity, m_employee, m_date, u"Job"_s, m_jobNo, 0});
    if (!m_done)
        screen::MsgBox(u"This item has been deleted by another user."_s, screen::Buttons::Ok,
                       screen::Icon::Critical, system);
    if (auto* explorer = screen::Forms::find<Explorer>(u"frmInventory"_s))
        explorer->itemChanged(item);
    hideModal();
}

} // namespace inventory
