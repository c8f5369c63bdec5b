#include "estimating/frmDefSet.h"

#include "core/MirsaMain.h"
#include "estimating/DefaultSets.h"
#include "estimating/EstimateDialogs.h"
#include "platform/controls/DropMenu.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Literals.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace estimating {

using screen::Forms;

frmDefSet::frmDefSet()
    : Form(QString::fromLatin1(formName), u"Default Operations for Estimate/Job"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    dbcDef = fields.dataCombo(u"dbcDef"_s, u"Default &Set:"_s, {.characters = 36});
    dbcDef->setTypingAllowed(false);
    sprDef = screen::named(new controls::ListView(this), u"sprDef"_s, u"Operations of the set"_s);
    sprDef->setColumns({{u"Operation"_s, 40}, {u"Contractor"_s, 11}});
    sprDef->setSortable(false); // shown in the order of the set
    outside->addWidget(sprDef, 1);

    screen::ButtonBar bar(this, outside);
    QPushButton* cmdNew = bar.button(u"cmdNew"_s, u"&New"_s);
    QPushButton* cmdEdit = bar.button(u"cmdEdit"_s, u"&Edit"_s);
    QPushButton* cmdDelete = bar.button(u"cmdDelete"_s, u"&Delete"_s);
    QPushButton* cmdSaveAs = bar.button(u"cmdSaveAs"_s, u"Save &As"_s);
    bar.stretch();
    cmdSelect = bar.button(u"cmdSelect"_s, u"Se&lect"_s);
    QPushButton* cmdCancel = bar.button(u"cmdCancel"_s, u"&Close"_s);
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
    controls::offerInMenu(sprDef, {cmdNew, cmdEdit, cmdDelete, cmdSaveAs, cmdSelect});
    resize(620, 460);
}

void frmDefSet::Form_Load() {
    showSets(0);
}

std::optional<qint64> frmDefSet::pickSet() {
    cmdSelect->show();
    setDefaultButton(cmdSelect);
    showModal();
    return m_picked;
}

qint64 frmDefSet::setNo() const {
    return dbcDef->boundText().toLongLong();
}

void frmDefSet::showSets(qint64 setNo) {
    jet::Recordset sets = core::MainDatabase().openRecordset(u"Select * from DefaultSet ORDER BY "
                                                             "setdescription"_s,
                                                             jet::RecordsetType::Snapshot);
    if (setNo == 0 && !sets.isEmpty())
        setNo = sets[u"SetNo"].toLong();
    dbcDef->setRows(sets, u"SetDescription"_s, u"SetNo"_s);
    dbcDef->setBoundText(setNo == 0 ? QString() : QString::number(setNo));
    dbcDef_Change();
}

void frmDefSet::dbcDef_Change() {
    sprDef->clearRows();
    for (const SetOperation& one : setOperations(core::MainDatabase(), setNo())) {
        sprDef->addRow(u"O"_s + QString::number(one.operNo),
                       {one.description, one.contractor ? u"Yes"_s : u"No"_s});
    }
    for (QPushButton* button : m_needSet)
        button->setEnabled(setNo() != 0);
}

void frmDefSet::cmdNew_Click() {
    const qint64 made = Forms::dialog<DefaultSetEditor>(u"frmDefNew"_s)->ShowForm(0);
    if (made != 0)
        showSets(made);
}

void frmDefSet::cmdEdit_Click() {
    if (Forms::dialog<DefaultSetEditor>(u"frmDefNew"_s)->ShowForm(setNo()) != 0)
        showSets(setNo());
}

void frmDefSet::cmdDelete_Click() {
    if (!screen::confirmDeletion(u"Delete this Default Set?"_s, u"Delete"_s))
        return;
    deleteSet(core::MainDatabase(), setNo());
    showSets(0);
}

void frmDefSet::cmdSaveAs_Click() {
    const QString name = screen::InputBox(u"Please enter the new Default Set Name:"_s).trimmed();
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
