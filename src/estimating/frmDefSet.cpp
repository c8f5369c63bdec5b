#include "estimating/frmDefSet.h"

#include "core/MirsaMain.h"
#include "estimating/DefaultSets.h"
#include "estimating/EstimateDialogs.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace estimating {

using screen::Forms;

frmDefSet::frmDefSet()
    : Form(QString::fromLatin1(formName), QStringLiteral("Default Operations for Estimate/Job")) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    dbcDef = fields.dataCombo(QStringLiteral("dbcDef"), QStringLiteral("Default &Set:"),
                              {.characters = 36});
    dbcDef->setTypingAllowed(false);
    sprDef = screen::named(new controls::ListView(this), QStringLiteral("sprDef"),
                           QStringLiteral("Operations of the set"));
    sprDef->setColumns({{QStringLiteral("Operation"), 40}, {QStringLiteral("Contractor"), 11}});
    sprDef->setSortable(false); // shown in the order of the set
    outside->addWidget(sprDef, 1);

    screen::ButtonBar bar(this, outside);
    QPushButton* cmdNew = bar.button(QStringLiteral("cmdNew"), QStringLiteral("&New"));
    QPushButton* cmdEdit = bar.button(QStringLiteral("cmdEdit"), QStringLiteral("&Edit"));
    QPushButton* cmdDelete = bar.button(QStringLiteral("cmdDelete"), QStringLiteral("&Delete"));
    QPushButton* cmdSaveAs = bar.button(QStringLiteral("cmdSaveAs"), QStringLiteral("Save &As"));
    bar.stretch();
    cmdSelect = bar.button(QStringLiteral("cmdSelect"), QStringLiteral("Se&lect"));
    QPushButton* cmdCancel = bar.button(QStringLiteral("cmdCancel"), QStringLiteral("&Close"));
    setCancelButton(cmdCancel);
    cmdSelect->hide();
    m_needSet = {cmdEdit, cmdDelete, cmdSaveAs, cmdSelect};

    on(dbcDef->chosen, &frmDefSet::dbcDef_Change);
    on(cmdNew, &frmDefSet::cmdNew_Click);
    on(cmdEdit, &frmDefSet::cmdEdit_Click);
    on(cmdDelete, &frmDefSet::cmdDelete_Click);
    on(cmdSaveAs, &frmDefSet::cmdSaveAs_Click);
    on(cmdSelect, &frmDefSet::cmdSelect_Click);
    on(cmdCancel, [this] { hideModal(); });
    resize(620, 460);
}

void frmDefSet::Form_Load() {
    showSets(0);
}

qint64 frmDefSet::pickSet() {
    cmdSelect->show();
    setDefaultButton(cmdSelect);
    showModal();
    return m_picked;
}

qint64 frmDefSet::setNo() const {
    return dbcDef->boundText().toLongLong();
}

void frmDefSet::showSets(qint64 setNo) {
    jet::Recordset sets =
        core::MainDatabase().openRecordset(QStringLiteral("Select * from DefaultSet ORDER BY "
                                                          "setdescription"),
                                           jet::RecordsetType::Snapshot);
    if (setNo == 0 && !sets.isEmpty())
        setNo = sets[u"SetNo"].toLong();
    dbcDef->setRows(sets, QStringLiteral("SetDescription"), QStringLiteral("SetNo"));
    dbcDef->setBoundText(setNo == 0 ? QString() : QString::number(setNo));
    dbcDef_Change();
}

void frmDefSet::dbcDef_Change() {
    sprDef->clearRows();
    for (const SetOperation& one : setOperations(core::MainDatabase(), setNo())) {
        sprDef->addRow(
            QStringLiteral("O") + QString::number(one.operNo),
            {one.description, one.contractor ? QStringLiteral("Yes") : QStringLiteral("No")});
    }
    for (QPushButton* button : m_needSet)
        button->setEnabled(setNo() != 0);
}

void frmDefSet::cmdNew_Click() {
    const qint64 made = Forms::dialog<DefaultSetEditor>(QStringLiteral("frmDefNew"))->ShowForm(0);
    if (made != 0)
        showSets(made);
}

void frmDefSet::cmdEdit_Click() {
    if (Forms::dialog<DefaultSetEditor>(QStringLiteral("frmDefNew"))->ShowForm(setNo()) != 0)
        showSets(setNo());
}

void frmDefSet::cmdDelete_Click() {
    if (screen::MsgBox(QStringLiteral("Delete this Default Set?"), screen::Buttons::YesNo,
                       screen::Icon::Question, QStringLiteral("Delete")) != screen::Answer::Yes)
        return;
    deleteSet(core::MainDatabase(), setNo());
    showSets(0);
}

void frmDefSet::cmdSaveAs_Click() {
    const QString name =
        screen::InputBox(QStringLiteral("Please enter the new Default Set Name:")).trimmed();
    if (name.isEmpty())
        return;
    std::vector<qint64> operations;
    for (const SetOperation& one : setOperations(core::MainDatabase(), setNo()))
        operations.push_back(one.operNo);
    showSets(saveSet(core::MainDatabase(), 0, name, operations));
}

void frmDefSet::cmdSelect_Click() {
    m_picked = setNo();
    hideModal();
}

} // namespace estimating
