#include "accounting/SentRecordForm.h"

#include "accounting/Literals.h"
#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Layout.h"

#include <QAction>
#include <QGroupBox>
#include <QVBoxLayout>

namespace accounting {

SentRecordForm::SentRecordForm(Kind kind)
    : Form(kind.formName, kind.caption), m_kind(std::move(kind)) {
    using Column = controls::GridColumn;
    auto* layout = new QVBoxLayout(this);
    Frame1 = screen::frame(this, layout, u"Frame1"_s, u"Records"_s);
    auto* inside = new QVBoxLayout(Frame1);
    sprSent = screen::named(new controls::ListView(Frame1), u"sprSent"_s,
                            u"Records sent to QuickBooks"_s);
    std::vector<Column> columns{
        {u"Description"_s, 44}, {u"Quantity"_s, 10, Column::Kind::Number}, {u"Date"_s, 12}};
    if (m_kind.sent == SentKind::Invoice)
        columns.insert(columns.begin(), {u"Invoice #"_s, 12});
    sprSent->setColumns(columns);
    sprSent->setMultipleSelection(true);
    sprSent->setMinimumSize(640, 260);
    inside->addWidget(sprSent);
    screen::ButtonBar bar(this, layout);
    on(bar.button(u"cmdDelete"_s, u"&Delete Selected"_s), &SentRecordForm::cmdDelete_Click);
    on(bar.button(u"cmdReport"_s, u"&Print All Sent"_s), &SentRecordForm::cmdReport_Click);
    bar.stretch();
    auto* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    on(cmdClose, [this] { unload(); });
    setCancelButton(cmdClose);

    auto* remove = new QAction(this);
    remove->setShortcut(Qt::Key_Delete);
    remove->setShortcutContext(Qt::WidgetShortcut);
    sprSent->addAction(remove);
    on(remove, &SentRecordForm::cmdDelete_Click);
}

void SentRecordForm::ShowHistory(const QString& order) {
    m_order = order;
    reload();
    showModal();
}

void SentRecordForm::reload() {
    const bool invoice = m_kind.sent == SentKind::Invoice;
    const QString select =
        invoice ? u"SELECT * FROM SentInvoice WHERE POID = "_s + literal(m_order)
                : u"Select * from SentAP where POID = "_s + QString::number(m_order.toLongLong());
    jet::Recordset rows = core::MainDatabase().openRecordset(select, jet::RecordsetType::Snapshot);
    sprSent->clearRows();
    for (; !rows.eof(); rows.moveNext()) {
        QStringList texts{rows.text(u"Description"), rows.text(u"Quantity"),
                          rows.text(u"SentDate")};
        if (invoice)
            texts.prepend(rows.text(u"InvoiceNo"));
        sprSent->addRow(u"S"_s + rows.text(u"ID"), texts);
    }
    const int count = sprSent->rowCount();
    Frame1->setTitle(QString::number(count) + (count == 1 ? u" Record sent to Quickbooks"_s
                                                          : u" Records sent to Quickbooks"_s));
}

void SentRecordForm::cmdDelete_Click() {
    std::vector<qint64> numbers;
    for (const int row : sprSent->selectedRows())
        numbers.push_back(sprSent->keyNumber(row));
    if (numbers.empty()) {
        screen::MsgBox(u"No Records Selected!"_s, screen::Buttons::Ok, screen::Icon::Exclamation,
                       u"Error"_s);
        return;
    }
    if (screen::MsgBox(m_kind.deleteQuestion, screen::Buttons::YesNo, screen::Icon::Question,
                       u"Delete Row?"_s) != screen::Answer::Yes)
        return;
    core::MainDatabase().execute(m_kind.deleteFrom + u" WHERE ID IN ("_s + numberList(numbers) +
                                 u')');
    reload();
}

void SentRecordForm::cmdReport_Click() {
    core::launchReportFile(m_kind.report, {}, m_kind.reportTitle, this);
}

} // namespace accounting
