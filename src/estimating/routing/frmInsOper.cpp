#include "estimating/routing/frmInsOper.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Format.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace estimating {

frmInsOper::frmInsOper()
    : Form(QString::fromLatin1(formName), QStringLiteral("Insert an Operation")) {
    auto* outside = new QVBoxLayout(this);
    lstOper = screen::named(new controls::ListView(this), QStringLiteral("lstOper"),
                            QStringLiteral("Operations"));
    lstOper->setColumns({{QStringLiteral("Operation"), 34}, {QStringLiteral("Type"), 10}});
    outside->addWidget(lstOper, 1);
    lblOperShopRate = screen::named(new QLabel(this), QStringLiteral("lblOperShopRate"));
    outside->addWidget(lblOperShopRate);

    auto* choices = new QHBoxLayout;
    outside->addLayout(choices);
    optPosition[0] = screen::named(new QRadioButton(QStringLiteral("Insert &Before"), this),
                                   QStringLiteral("optPosition(0)"));
    optPosition[1] = screen::named(new QRadioButton(QStringLiteral("Insert &After"), this),
                                   QStringLiteral("optPosition(1)"));
    optPosition[1]->setChecked(true);
    chkNotes = screen::named(new QCheckBox(QStringLiteral("Use &Default Notes"), this),
                             QStringLiteral("chkNotes"));
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
        QStringLiteral("SELECT * FROM Operation WHERE OperType<>'O' ORDER BY Description"),
        jet::RecordsetType::Snapshot);
    for (; !set.eof(); set.moveNext()) {
        const qint64 operNo = set[u"OperNo"].toLong();
        if (std::find(taken.begin(), taken.end(), operNo) != taken.end())
            continue;
        m_operations.push_back({operNo, set.text(u"Description"),
                                set.text(u"OperType") == QStringLiteral("I"),
                                set[u"OperShopRate"].toCurrency()});
        const CatalogueOperation& added = m_operations.back();
        lstOper->addRow(QStringLiteral("O") + QString::number(operNo),
                        {added.description,
                         added.inhouse ? QStringLiteral("Inhouse") : QStringLiteral("Out Contr")});
    }
    if (m_operations.empty()) {
        screen::MsgBox(QStringLiteral("No operations to select from!"));
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
    if (operation && operation->inhouse && core::HasAccess(QStringLiteral("ShowDollar"))) {
        text = QStringLiteral("Hourly Rate: ") +
               values::format(operation->rate, core::moneyMask(QStringLiteral("#,###.00")));
    }
    lblOperShopRate->setText(text);
}

void frmInsOper::cmdOK_Click() {
    m_ok = true;
    hideModal();
}

} // namespace estimating
