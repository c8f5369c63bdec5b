#include "core/records/EntryUndo.h"
#include "core/records/RecordModule.h"
#include "platform/controls/Field.h"
#include "platform/values/Literals.h"

#include <QCheckBox>

// What the history of an entry takes back in a record module.

namespace core {

namespace {

const QString boundWord = u"b:"_s;
const QString unboundWord = u"u:"_s;

} // namespace

QString RecordModule::undoName() const {
    return m_undo->undoName();
}

QString RecordModule::redoName() const {
    return m_undo->redoName();
}

void RecordModule::settleEntry() {
    m_undo->settle();
}

void RecordModule::followLines(controls::LineList& lines, const QString& word) {
    m_undo->follow(lines, word);
}

void RecordModule::undoEntry() {
    guarded([this] { m_undo->undo(); });
}

void RecordModule::redoEntry() {
    guarded([this] { m_undo->redo(); });
}

std::vector<EntryPart> RecordModule::entryParts() {
    std::vector<EntryPart> parts;
    for (const screen::BoundFields::Column& column : m_fields.columns()) {
        if (column.read)
            parts.push_back({boundWord + column.name, column.read(), column.widget});
    }
    const QStringList others = unboundEntries();
    for (const QString& name : others) {
        QWidget* widget = control(name);
        if (const auto* box = dynamic_cast<QCheckBox*>(widget))
            parts.push_back({unboundWord + name, jet::Value(box->isChecked()), widget});
        else if (const auto* field = dynamic_cast<controls::Field*>(widget))
            parts.push_back({unboundWord + name, jet::Value(field->text()), widget});
    }
    return parts;
}

void RecordModule::restorePart(const QString& key, const jet::Value& value) {
    const QString name = key.mid(boundWord.size());
    if (key.startsWith(boundWord))
        m_fields.fill(name, value);
    else if (auto* box = control<QCheckBox>(name))
        box->setChecked(value.toBool());
    else if (auto* field = dynamic_cast<controls::Field*>(control(name)))
        field->setText(value.toText());
}

} // namespace core
