#include "core/MirsaMain.h"
#include "core/drafts/Draft.h"
#include "core/records/RecordModule.h"
#include "platform/controls/Field.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"

#include <QCheckBox>
#include <QTimer>

// The draft of the entry that is open in a record module.

namespace core {

namespace {

constexpr int seconds = 3;

} // namespace

void RecordModule::arrangeDraft() {
    if (!isBrowse()) {
        // In Edit what the entry began with stands when the handler that began it has ended.
        m_draftBegun = false;
        m_draftTimer->start(0);
        return;
    }
    m_draftTimer->stop();
    if (m_draftStands)
        drafts::remove(descriptor().formName);
    m_draftStands = false;
}

void RecordModule::beginDraft() {
    m_draft = packedEntry();
    m_draftBegun = true;
}

void RecordModule::keepDraft() {
    if (isBrowse())
        return;
    m_draftTimer->start(seconds * 1000);
    if (!m_draftBegun) {
        beginDraft();
        return;
    }
    if (const QJsonObject entry = packedEntry(); entry != m_draft)
        writeDraft(entry, false);
}

// If the program ends between the commit and the draft's removal, the draft has to say what was
// saved, or it would be offered beside the record.
void RecordModule::keepDraftForSave() {
    const QJsonObject entry = packedEntry();
    if (isAdding() || m_draftStands || entry != m_draft)
        writeDraft(entry, true);
}

void RecordModule::writeDraft(const QJsonObject& entry, bool saving) {
    const ModuleDescriptor& module = descriptor();
    const Draft draft{
        module.formName,      module.recordWord.isEmpty() ? module.moduleWord : module.recordWord,
        currentKey(),         values::now(),
        saving && isAdding(), entry};
    saving ? drafts::writeNow(draft) : drafts::write(draft);
    // After a save that fails it is no longer what is being saved.
    m_draft = draft.saving ? QJsonObject() : entry;
    m_draftStands = true;
}

DraftOpening RecordModule::openDraft(const Draft& draft) {
    if (draft.key == 0) {
        if (isBrowse())
            ShowModuleMode(Mode::Add);
    } else {
        if (!isBrowse())
            return DraftOpening::Kept;
        if (!goToRecord(draft.key) || !goToEntry(draft.entry))
            return DraftOpening::Gone;
        cmdEdit_Click();
    }
    if (isBrowse())
        return DraftOpening::Kept;
    beginDraft();
    takeEntry(draft.entry);
    writeDraft(packedEntry(), false);
    drafts::finish();
    return DraftOpening::Opened;
}

bool RecordModule::isStored(const Draft& draft) {
    if (draft.key == 0 && !draft.saving)
        return false;
    // A new one is among the latest, whatever others have added meanwhile.
    const QString& key = descriptor().keyColumn;
    jet::Recordset row = MainDatabase().openRecordset(
        draft.key == 0
            ? u"SELECT TOP 100 * FROM "_s + descriptor().table + u" ORDER BY "_s + key + u" DESC"_s
            : u"SELECT * FROM "_s + descriptor().table + u" WHERE "_s + key + u" = "_s +
                  QString::number(draft.key),
        jet::RecordsetType::Snapshot);
    for (; !row.eof(); row.moveNext()) {
        if (holdsEntry(draft.entry, row))
            return true;
    }
    return false;
}

QJsonObject RecordModule::packedEntry() {
    QJsonObject columns, others;
    for (const auto& [name, value] : m_fields.contents(!isAdding()))
        columns[name] = packedValue(value);
    const QStringList further = unboundEntries();
    for (const QString& name : further) {
        if (auto* box = control<QCheckBox>(name))
            others[name] = box->isChecked();
        else if (auto* field = dynamic_cast<controls::Field*>(control(name)))
            others[name] = field->text();
    }
    QJsonObject entry;
    if (!columns.isEmpty())
        entry[u"columns"_s] = columns;
    if (!others.isEmpty())
        entry[u"others"_s] = others;
    return entry;
}

void RecordModule::takeEntry(const QJsonObject& entry) {
    const QJsonObject columns = entry[u"columns"_s].toObject();
    for (auto one = columns.begin(); one != columns.end(); ++one)
        m_fields.fill(one.key(), unpackedValue(one.value()));
    const QJsonObject others = entry[u"others"_s].toObject();
    for (auto one = others.begin(); one != others.end(); ++one) {
        if (auto* box = control<QCheckBox>(one.key()))
            box->setChecked(one.value().toBool());
        else if (auto* field = dynamic_cast<controls::Field*>(control(one.key())))
            field->setText(one.value().toString());
    }
}

bool RecordModule::holdsEntry(const QJsonObject& entry, const jet::Recordset& row) {
    const QJsonObject columns = entry[u"columns"_s].toObject();
    for (auto one = columns.begin(); one != columns.end(); ++one) {
        const jet::Value typed = unpackedValue(one.value()), stored = row[one.key()];
        // Empty and Null are the same to whoever typed.
        if (typed.toText() != stored.toText() &&
            !(stored.isNull() && (typed.toText().isEmpty() || typed.toDouble() == 0)))
            return false;
    }
    return true;
}

} // namespace core
