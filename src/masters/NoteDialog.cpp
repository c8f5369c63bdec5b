#include "masters/NoteDialog.h"

#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace masters {

void editNote(const QString& dialogName, controls::Field& field) {
    const auto note = screen::Forms::dialog<NoteDialog>(dialogName);
    note->begin(field.text(), field.isLocked());
    note.form().showModal();
    if (note->taken() && !field.isLocked())
        field.setText(*note->taken());
}

NoteForm::NoteForm(const QString& formName, const QString& title, const QString& fieldName)
    : Form(formName, title) {
    auto* layout = new QVBoxLayout(this);
    m_text = screen::named(new controls::MemoField(this), fieldName, title);
    m_text->setMinimumSize(560, 320);
    layout->addWidget(m_text);
    screen::ButtonBar bar(this, layout);
    bar.stretch();
    m_ok = bar.button(u"cmdOK"_s, u"&OK"_s);
    auto* cancel = bar.button(u"cmdCancel"_s, u"&Cancel"_s);
    on(m_ok, [this] {
        m_taken = m_text->text();
        unload();
    });
    on(cancel, [this] {
        const bool changed = !m_text->isLocked() && m_text->text() != m_shown;
        if (mayDrop(changed, [this] { m_taken = m_text->text(); }))
            unload();
    });
    setCancelButton(cancel);
}

void NoteForm::begin(const QString& text, bool locked) {
    m_text->setText(text);
    m_shown = m_text->text();
    m_text->setLocked(locked);
    m_ok->setEnabled(!locked);
}

} // namespace masters
