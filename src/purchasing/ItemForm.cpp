#include "purchasing/ItemForm.h"

#include "core/MirsaMain.h"
#include "core/TablePopup.h"
#include "inventory/Ordering.h"
#include "platform/screen/Forms.h"
#include "platform/values/Format.h"
#include "platform/values/Numbers.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace purchasing {

using screen::Answer;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

namespace {

screen::Line wide(int characters, int limit = 0, const values::KeyFilter& filter = {}) {
    screen::Line line;
    line.characters = characters;
    line.limit = limit;
    line.filter = filter;
    return line;
}

} // namespace

ItemForm::ItemForm(const QString& name, const QString& caption, const OrderKind& kind)
    : Form(name, caption), m_kind(kind) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    txtPartNumber = fields.text(u"txtPartNumber"_s, u"&Part Number:"_s, wide(30, 60));
    txtDescription = fields.text(u"txtDescription"_s, u"&Description:"_s, wide(44, 255));
    cboMan = fields.dataCombo(u"cboMan"_s, u"&Manufacturer:"_s, wide(30, 255));
    txtQty = fields.text(u"txtQty"_s, u"&Quantity:"_s, wide(10, 9, values::keys::digits()));
    txtPrice = fields.currency(u"txtPrice"_s, u"Unit P&rice:"_s,
                               kind.showsSymbol ? core::moneyMask(u"########.0000"_s)
                                                : u"########.0000"_s);
    txtPrice->setLimit(14);
    dbcUnits = fields.dataCombo(u"dbcUnits"_s, u"&Units:"_s, wide(12, 20));
    cboType = fields.listCombo(u"cboType"_s, u"&Type:"_s);
    dbcNumber = fields.dataCombo(u"dbcNumber"_s, u"Select Job"_s, wide(12));
    lblNumber = nullptr;
    const auto labels = findChildren<QLabel*>();
    for (QLabel* label : labels) {
        if (label->buddy() == dbcNumber)
            lblNumber = label;
    }
    txtDelivery = fields.memo(u"txtDelivery"_s, u"Deli&very Notes:"_s, 2);
    txtNotes = fields.memo(u"txtNotes"_s, u"Item &Notes:"_s, 2);
    txtTot = fields.text(u"txtTot"_s, u"Total:"_s, wide(16));
    txtTot->setLocked(true);

    auto* foot = new QHBoxLayout;
    outside->addLayout(foot);
    auto* cmdPartno = screen::named(new QPushButton(u"Part &List..."_s, this), u"cmdPartno"_s,
                                    u"Parts of this vendor"_s);
    cmdPartno->setAutoDefault(false);
    foot->addWidget(cmdPartno);
    foot->addStretch();
    on(addOkCancel(foot), &ItemForm::cmdOK_Click);
    on(cmdPartno, &ItemForm::cmdPartno_Click);
    on(cboType->chosen, &ItemForm::cboType_Click);
    connect(txtQty, &QLineEdit::textChanged, this, [this] { showTotal(); });
    connect(txtPrice, &QLineEdit::textChanged, this, [this] { showTotal(); });
}

void ItemForm::fillLists() {
    jet::Database& database = core::MainDatabase();
    const auto read = [&](const QString& select) {
        return database.openRecordset(select, jet::RecordsetType::Snapshot);
    };
    cboMan->setRows(read(u"SELECT Company FROM Manufacturer ORDER BY Company"_s), u"Company"_s,
                    u"Company"_s);
    dbcUnits->setRows(read(u"SELECT * FROM UnitOfMeasure ORDER BY Description"_s), u"code"_s,
                      u"code"_s);
    for (jet::Recordset types = read(u"SELECT * FROM LineItemType ORDER BY Code"_s); !types.eof();
         types.moveNext())
        cboType->addRow(types.text(u"Code"));
}

std::optional<OrderLine> ItemForm::edit(const OrderLine& line, qint64 vendor) {
    m_line = line;
    m_vendor = vendor;
    fillLists();
    txtPartNumber->setText(line.partNumber);
    txtDescription->setText(line.description);
    cboMan->setText(line.manufacturer);
    const bool fresh = line.partNumber.isEmpty();
    txtQty->setText(fresh ? QString() : QString::number(line.quantity));
    if (!fresh)
        txtPrice->setAmount(line.unitPrice);
    dbcUnits->setText(line.units);
    cboType->setText(line.type);
    cboType_Click();
    const qint64 number = line.isJob() ? line.job : line.isEstimate() ? line.estimate : 0;
    if (number != 0)
        dbcNumber->setText(QString::number(number));
    txtDelivery->setText(line.delivery);
    txtNotes->setText(line.notes);
    showTotal();
    txtPartNumber->setFocus();
    showModal();
    return m_ok ? std::optional(m_line) : std::nullopt;
}

void ItemForm::cboType_Click() {
    OrderLine line;
    line.type = cboType->text();
    const bool asks = line.isJob() || line.isEstimate();
    dbcNumber->setVisible(asks);
    lblNumber->setVisible(asks);
    dbcNumber->setText({});
    if (!asks)
        return;
    const QString caption = line.isJob() ? u"Select Job"_s : u"Select Estimate"_s;
    lblNumber->setText(caption);
    dbcNumber->setAccessibleName(caption);
    const QString column = line.isJob() ? u"JobNo"_s : u"EstNo"_s;
    dbcNumber->setRows(core::MainDatabase().openRecordset(inventory::worksSelect(line.isJob()),
                                                          jet::RecordsetType::Snapshot),
                       column, column);
}

OrderLine ItemForm::typed() const {
    OrderLine line = m_line;
    line.partNumber = txtPartNumber->text().trimmed();
    line.description = txtDescription->text().trimmed();
    line.manufacturer = cboMan->text().trimmed();
    line.quantity = txtQty->text().toLongLong();
    line.unitPrice = txtPrice->amount();
    line.units = dbcUnits->text().trimmed();
    line.type = cboType->text();
    const qint64 number = dbcNumber->text().toLongLong();
    line.job = number;
    line.estimate = number;
    line.delivery = txtDelivery->text();
    line.notes = txtNotes->text();
    line.complete();
    return line;
}

void ItemForm::showTotal() {
    try {
        txtTot->setText(m_kind.showsSymbol
                            ? values::format(typed().total, core::moneyMask(u"###########.00"_s))
                            : values::format(typed().total, u"0.00"));
    } catch (const values::Overflow&) {
        txtTot->setText({});
    }
}

void ItemForm::cmdOK_Click() {
    try {
        const OrderLine line = typed();
        if (const auto complaint = checkLine(m_kind, line)) {
            complain(complaint->text, control(complaint->field), Icon::Exclamation, u"Error"_s);
            return;
        }
        // What a line was for before may have been deleted since.
        const qint64 number = line.isJob() ? line.job : line.estimate;
        if (number != 0 && number != (line.isJob() ? m_line.job : m_line.estimate) &&
            !inventory::isWork(core::MainDatabase(), line.isJob(), number)) {
            complain(u"%1 No. %2 does not exist!"_s.arg(line.type).arg(number), dbcNumber,
                     Icon::Exclamation, u"Error"_s);
            return;
        }
        m_line = line;
    } catch (const values::Overflow&) {
        complain(u"The total is too large."_s, txtPrice, Icon::Exclamation, u"Error"_s);
        return;
    }
    m_ok = true;
    hideModal();
}

void ItemForm::cmdPartno_Click() {
    const auto part =
        screen::Forms::dialog<core::TablePopup>(u"frmTblPopup"_s)
            ->pick(u"Select Part No."_s,
                   usedBefore(core::MainDatabase(), m_kind, m_vendor, u"PartNumber"_s),
                   u"There is no Part No. list to select from!"_s);
    if (!part)
        return;
    txtPartNumber->setText(*part);
    takeUsed(u"Description"_s, u"description"_s, txtDescription);
    takeUsed(u"UnitOfMeasure"_s, u"Unit of Measure"_s, dbcUnits);
}

void ItemForm::takeUsed(const QString& column, const QString& what, controls::Field* into) {
    jet::Database& database = core::MainDatabase();
    const QString part = txtPartNumber->text();
    const QStringList texts = usedBefore(database, m_kind, m_vendor, column, part);
    if (texts.size() == 1)
        into->setText(texts.front());
    if (texts.size() < 2)
        return;
    const QString several = column == u"Description" ? u"descriptions"_s : u"Units of Measure"_s;
    MsgBox(
        u"Multiple "_s + several +
            u" where found for this part number.\r\nPlease choose one from the following list."_s,
        Buttons::Ok, Icon::Information, u"Mirsa"_s);
    const auto text = screen::Forms::dialog<core::TablePopup>(u"frmTblPopup"_s)
                          ->pick(u"Select Description"_s, texts);
    if (!text)
        return;
    into->setText(*text);
    if (MsgBox(u"Do you want to use this "_s + what + u" as the common\r\n"_s + what +
                   u" for this part number?"_s,
               Buttons::YesNo, Icon::Question) == Answer::Yes)
        makeCommon(database, m_kind, m_vendor, column, part, *text);
}

} // namespace purchasing
