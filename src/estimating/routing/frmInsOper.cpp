#include "estimating/routing/frmInsOper.h"

#include "core/MirsaMain.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace estimating {

frmInsOper::frmInsOper() : Form(QString::fromLatin1(formName), u"Insert an Operation"_s) {
    auto* outside = new QVBoxLayout(this);
    lstOper = screen::named(new controls::ListView(this), u"lstOper"_s, u"Operations"_s);
    lstOper->setColumns({{u"Operation"_s, 34}, {u"Type"_s, 10}});
    outside->addWidget(lstOper, 1);
    lblOperShopRate = screen::named(new QLabel(this), u"lblOperShopRate"_s);
    outside->addWidget(lblOperShopRate);

    auto* choices = new QHBoxLayout;
    outside->addLayout(choices);
    optPosition[0] =
        screen::named(new QRadioButton(u"Insert &Before"_s, this), u"optPosition(0)"_s);
    optPosition[1] = screen::named(new QRadioButton(u"Insert &After"_s, this), u"optPosition(1)"_s);
    optPosition[1]->setChecked(true);
    chkNotes = screen::named(new QCheckBox(u"Use &Default Notes"_s, this), u"chkNotes"_s);
    choices->addWidget(optPosition[0]);
    choices->addWidget(optPosition[1]);
    choices->addStretch();
    choices->addWidget(chkNotes);

    QPushButton* cmdOK = addOkCancel(outside);

    on(lstOper->selectionChangedByUser, &frmInsOper::lstOper_Click);
    on(lstOper->rowDoubleClicked, [this](int) { cmdOK_Click(); });
    on(cmdOK, &frmInsOper::cmdOK_Click);
    resize(460, 460);
}

std::optional<InsertedOperation> frmInsOper::insert(const std::vector<qint64>& taken) {
    jet::Recordset set = core::MainDatabase().openRecordset(
        u"SELECT * FROM Operation WHERE OperType<>'O' ORDER BY Description"_s,
        jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        const qint64 operNo = set[u"OperNo"].toLong();
        if (std::find(taken.begin(), taken.end(), operNo) != taken.end())
            continue;
        m_operations.push_back({operNo, set.text(u"Description"), set.text(u"OperType") == u"I"_s,
                                set[u"OperShopRate"].toCurrency()});
        const CatalogueOperation& added = m_operations.back();
        lstOper->addRow(u"O"_s + QString::number(operNo),
                        {added.description, added.inhouse ? u"Inhouse"_s : u"Out Contr"_s});
    }
    if (m_operations.empty()) {
        screen::MsgBox(u"No operations to select from!"_s);
        return std::nullopt;
    }
    lstOper->selectRow(0);
    lstOper_Click();
    lstOper->setFocus();
    showModal();
    const CatalogueOperation* chosen = selected();
    if (!m_ok || !chosen)
        return std::nullopt;
    return InsertedOperation{*chosen, optPosition[0]->isChecked(), chkNotes->isChecked()};
}

const CatalogueOperation* frmInsOper::selected() const {
    // By number: the list may have been sorted.
    const qint64 operNo = lstOper->keyNumber(lstOper->selectedRow());
    const auto found = std::find_if(
        m_operations.begin(), m_operations.end(),
        [operNo](const CatalogueOperation& operation) { return operation.operNo == operNo; });
    return found == m_operations.end() ? nullptr : &*found;
}

void frmInsOper::lstOper_Click() {
    QString text;
    const CatalogueOperation* operation = selected();
    if (operation && operation->inhouse && core::HasAccess(u"ShowDollar"_s)) {
        text = u"Hourly Rate: "_s + values::format(operation->rate, core::moneyMask(u"#,###.00"_s));
    }
    lblOperShopRate->setText(text);
}

void frmInsOper::cmdOK_Click() {
    m_ok = true;
    hideModal();
}

} // namespace estimating
