#include "core/records/DocumentModule.h"

#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QPushButton>

namespace core {

using screen::Answer;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

void DocumentModule::tell(const jet::Error& error) {
    MsgBox(error.text(), Buttons::Ok, Icon::Critical);
}

void DocumentModule::tellTooLarge() {
    MsgBox(u"A number is too large to be stored."_s, Buttons::Ok, Icon::Exclamation);
}

void DocumentModule::clearFields() {
    RecordModule::clearFields();
    takeRecord(nullptr);
}

void DocumentModule::showRecord() {
    takeRecord(&records());
}

void DocumentModule::ShowModuleMode(Mode mode) {
    m_unsure = false; // of an entry that has ended
    RecordModule::ShowModuleMode(mode);
}

void DocumentModule::cmdEdit_Click() {
    RecordModule::cmdEdit_Click();
    if (isEditing())
        keepBefore();
}

bool DocumentModule::foundWritten(bool added) {
    m_unsure = true;
    const bool found = isWritten(added);
    m_unsure = false;
    return found;
}

bool DocumentModule::writeRecord(bool adding, qint64& key) {
    QStringList settled;
    try {
        if (m_unsure && foundWritten(adding)) {
            key = writtenKey();
            return true;
        }
        while (true) {
            const SaveOutcome outcome = save(adding ? 0 : currentKey(), settled);
            if (outcome.refusal) {
                complain(outcome.refusal->text, control(outcome.refusal->field));
                return false;
            }
            if (!outcome.conflict) {
                key = outcome.key;
                return true;
            }
            if (!settle(*outcome.conflict, settled))
                return false;
        }
    } catch (const jet::Error& error) {
        if (error.number() == jet::errors::connectionFailed && writtenKey() != 0) {
            try {
                if (foundWritten(adding)) {
                    key = writtenKey();
                    return true;
                }
            } catch (const jet::Error&) {
                // Looked for again before the next save.
            }
        }
        if (error.failure() != jet::Failure::Statement)
            throw; // told with Retry, as anywhere
        tell(error);
    } catch (const values::Overflow&) {
        tellTooLarge();
    }
    return false;
}

/// Asks what is to become of it; true if the save is to go on.
bool DocumentModule::settle(const ChangedElsewhere& conflict, QStringList& settled) {
    const bool inHeader = !conflict.column.isEmpty();
    const QString question =
        inHeader
            ? u"Do you want to save yours?"_s
            : u"Do you want to load the lines again and keep what you entered in the header?"_s;
    const bool yes = MsgBox(conflict.text() + u"\r\n\r\n"_s + question, Buttons::YesNo,
                            Icon::Question, u"Changed at another station"_s) == Answer::Yes;
    if (yes && inHeader) {
        settled << conflict.column;
        return true;
    }
    if (yes)
        reloadLines();
    else if (QWidget* field = control(conflict.control))
        field->setFocus();
    return false;
}

void DocumentModule::afterSave(qint64 key, bool adding) {
    ShowModuleMode(Mode::Browse);
    if (adding)
        reopen(mainSelect(), key);
    else
        showReadAgain();
    if (QPushButton* close = button(Role::Close))
        close->setFocus();
}

void DocumentModule::cmdDelete_Click() {
    if (!hasRecord()) {
        offerFirstRecord();
        return;
    }
    // What hinders it may have come while the question stood.
    if (!mayDelete() || !askDelete() || !mayDelete())
        return;
    {
        const screen::BusyPointer busy;
        try {
            deleteDocument(currentKey());
        } catch (const jet::Error& error) {
            tell(error);
            return;
        }
        afterDelete();
    }
    tellNeighbours();
    if (!hasRecord())
        afterLastDelete();
}

} // namespace core
