#include "core/records/RecordModule.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Literals.h"

#include <QPushButton>
#include <QScopedValueRollback>

// What the buttons of a record module do: entry, save, cancel, deletion, handing over to others.

namespace core {

using screen::Answer;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

void RecordModule::cmdNew_Click() {
    ShowModuleMode(Mode::Add);
}

bool RecordModule::readForEntry() {
    if (!hasRecord()) {
        offerFirstRecord();
        return false;
    }
    try {
        expectParts(m_key);
        records().refreshRow();
        ShowCurrentRecord();
        return true;
    } catch (const jet::Error& error) {
        if (error.number() != jet::errors::rowDeleted)
            throw;
    }
    showReadAgain();
    MsgBox(u"This record has been deleted by another user."_s, Buttons::Ok, Icon::Exclamation);
    return false;
}

void RecordModule::cmdEdit_Click() {
    if (readForEntry())
        ShowModuleMode(Mode::Edit);
}

void RecordModule::cmdSave_Click() {
    if (isBrowse())
        return;
    // Enter presses the default button without leaving the field, which reformats on leaving.
    if (QPushButton* save = button(Role::Save))
        save->setFocus();
    if (!validate())
        return;
    const bool adding = isAdding();
    qint64 key = 0;
    {
        const screen::BusyPointer busy;
        keepDraftForSave();
        try {
            if (!writeRecord(adding, key))
                return;
        } catch (const jet::Error& error) {
            if (adding) {
                // The row that was undone may already stand among the keys of the set.
                const QScopedValueRollback quiet(m_quiet, true);
                m_data->requeryKeepingRow();
            }
            if (tellSaveFailed(error))
                return;
            throw;
        }
        afterSave(key, adding);
    }
    tellNeighbours();
}

bool RecordModule::writeRecord(bool adding, qint64& key) {
    jet::Transaction transaction(core::MainDatabase());
    jet::Recordset& row = records();
    try {
        if (adding) {
            row.addNew();
            m_fields.write(row);
            newRowColumns(row);
        } else {
            row.edit();
            m_fields.writeChanges(row);
        }
        row.update();
        key = adding ? row.lastAddedKey().toLong() : m_key;
        alsoWrite(key, adding);
    } catch (...) {
        row.cancelUpdate();
        throw;
    }
    transaction.commit();
    return true;
}

bool RecordModule::tellSaveFailed(const jet::Error& error) {
    switch (error.number()) {
    case jet::errors::rowDeleted:
        MsgBox(u"This record has been deleted by another user and can't be saved. "
               "What you typed is still on the screen."_s,
               Buttons::Ok, Icon::Critical);
        return true;
    case jet::errors::locked:
    case jet::errors::fieldTooSmall:
    case jet::errors::duplicate:
        MsgBox(error.text(), Buttons::Ok, Icon::Critical);
        return true;
    default:
        return false;
    }
}

void RecordModule::afterSave(qint64 key, bool adding) {
    const jet::Recordset names = namesLater();
    ShowModuleMode(Mode::Browse);
    {
        const QScopedValueRollback quiet(m_quiet, true);
        expectParts(key);
        if (adding)
            m_data->moveLast();
        else
            records().refreshRow();
        if (hasRecord() && records()[m_descriptor.keyColumn].toLong() != key)
            m_data->findFirst(m_descriptor.keyColumn + u" = "_s + QString::number(key));
    }
    showNames(names);
    onReposition();
    leaveEmptyView();
    if (QPushButton* close = button(Role::Close))
        close->setFocus();
}

void RecordModule::cmdCancel_Click() {
    if (MsgBox(u"Are you sure you want to cancel?"_s, Buttons::YesNo, Icon::Question) !=
        Answer::Yes)
        return;
    cancelStaged();
    ShowModuleMode(Mode::Browse);
    // Another station may have changed or deleted the row meanwhile.
    showReadAgain();
    if (QPushButton* close = button(Role::Close))
        close->setFocus();
}

bool RecordModule::askDelete() {
    return screen::confirmDeletion(m_descriptor.deleteText, m_descriptor.deleteTitle,
                                   m_descriptor.deleteIcon, m_descriptor.deleteButtons);
}

void RecordModule::cmdDelete_Click() {
    if (!hasRecord()) {
        offerFirstRecord();
        return;
    }
    if (!mayDelete() || !askDelete())
        return;
    {
        const screen::BusyPointer busy;
        try {
            jet::Transaction transaction(core::MainDatabase());
            deleteRows(m_key);
            transaction.commit();
        } catch (const jet::Error& error) {
            // Another station was quicker: the record is gone, as was asked.
            if (error.number() != jet::errors::rowDeleted)
                throw;
        }
        afterDelete();
    }
    tellNeighbours();
    if (!hasRecord())
        offerFirstRecord();
}

void RecordModule::deleteRows(qint64) {
    records().remove();
}

void RecordModule::afterDelete() {
    if (m_names)
        m_names->setText({});
    showReadAgain();
}

void RecordModule::cmdFind_Click() {
    screen::Forms::showModal(m_descriptor.findScreen);
}

void RecordModule::cmdList_Click() {
    screen::Forms::show(m_descriptor.queryScreen);
}

QString RecordModule::shownFormula() const {
    return u"{"_s + m_descriptor.reportKey + u"} = "_s + QString::number(m_key);
}

void RecordModule::cmdPrintScr_Click() {
    if (hasRecord())
        printReport(shownFormula(), m_descriptor.reportTitle);
    else
        offerFirstRecord();
}

void RecordModule::cmdPrintAll_Click() {
    printReport({}, m_descriptor.reportAllTitle);
}

void RecordModule::printReport(const QString& formula, const QString& title) {
    core::launchDefaultReport(m_descriptor.reportModule, formula, title, this);
}

void RecordModule::cmdClose_Click() {
    unload();
}

bool RecordModule::Form_QueryUnload() {
    if (isBrowse())
        return true;
    switch (MsgBox(u"Would you like to save the current record before closing?"_s,
                   Buttons::YesNoCancel, Icon::Question, u"Save & Exit?"_s)) {
    case Answer::Yes:
        cmdSave_Click();
        return isBrowse();
    case Answer::No:
        closeStaged();
        setMode(Mode::Browse);
        return true;
    default:
        return false;
    }
}

} // namespace core
