#include "estimating/routing/OperNoteForm.h"

#include "core/MirsaMain.h"
#include "core/Spelling.h"
#include "estimating/NoteStaging.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace estimating {

OperNoteForm::OperNoteForm(const RoutingKind& kind)
    : Form(kind.noteDialog, kind.noteCaption), m_kind(kind) {
    auto* outside = new QVBoxLayout(this);
    auto* menus = new QMenuBar(this);
    outside->setMenuBar(menus);

    auto* labels = new QHBoxLayout;
    outside->addLayout(labels);
    lblDocument = screen::named(new QLabel(this), u"lblEstNo"_s);
    lblSeqNo = screen::named(new QLabel(this), u"lblSeqNo"_s);
    labels->addWidget(lblDocument);
    labels->addStretch();
    labels->addWidget(lblSeqNo);
    Text1 = screen::named(new controls::MemoField(this), u"Text1"_s, u"Note"_s);
    outside->addWidget(Text1, 1);

    screen::ButtonBar bar(this, outside);
    bar.stretch();
    cmdOK = bar.button(u"cmdOK"_s, u"Up&date"_s);
    cmdCancel = bar.button(u"cmdCancel"_s, u"Cancel"_s);
    setCancelButton(cmdCancel);

    QMenu* edit = menus->addMenu(u"&Edit"_s);
    const auto entry = [&](const char16_t* name, const char16_t* caption) {
        QAction* action = edit->addAction(QString::fromUtf16(caption));
        action->setObjectName(QString::fromUtf16(name));
        return action;
    };
    QAction* cut = entry(u"mnuEditCut", u"Cu&t");
    QAction* copy = entry(u"mnuEditCopy", u"&Copy");
    QAction* paste = entry(u"mnuEditPaste", u"&Paste");
    QAction* erase = entry(u"mnuEditDelete", u"&Delete");
    edit->addSeparator();
    mnuEditInsert = entry(u"mnuEditInsert", u"&Insert Default Notes");
    QMenu* tools = menus->addMenu(u"&Tools"_s);
    QAction* mnuSpellCheck = tools->addAction(u"&Spelling..."_s);
    mnuSpellCheck->setObjectName(u"mnuSpellCheck"_s);
    m_changing = {cut, paste, erase, mnuEditInsert, mnuSpellCheck};

    on(cut, [this] { Text1->cut(); });
    on(copy, [this] { Text1->copy(); });
    on(paste, [this] { Text1->paste(); });
    on(erase, [this] { Text1->textCursor().removeSelectedText(); });
    on(mnuSpellCheck, [this] { core::checkSpelling(Text1); });
    on(mnuEditInsert, &OperNoteForm::mnuEditInsert_Click);
    on(cmdOK, &OperNoteForm::cmdOK_Click);
    on(cmdCancel, [this] {
        const bool changed = !m_request.locked && Text1->text() != m_shown;
        if (mayDrop(changed, [this] { cmdOK_Click(); }))
            hideModal();
    });
    resize(520, 380);
}

std::optional<WrittenNote> OperNoteForm::edit(const NoteRequest& request) {
    m_request = request;
    jet::Database& database = core::MainDatabase();
    lblDocument->setText(m_kind.documentLabel + (request.documentNo == 0
                                                     ? u"New"_s
                                                     : QString::number(request.documentNo)));
    lblSeqNo->setText(u"Seq No.: "_s + QString::number(request.seqNo));
    m_before =
        NoteStaging(database, m_kind, request.documentNo).note(request.seqNo).value_or(QString());
    Text1->setText(m_before);
    m_shown = Text1->text();
    Text1->setLocked(request.locked);
    for (QAction* action : m_changing)
        action->setEnabled(!request.locked);
    m_defaultNote = request.locked ? QString() : defaultNote(database, request.description);
    mnuEditInsert->setVisible(!m_defaultNote.isEmpty());
    cmdCancel->setVisible(!request.locked);
    if (request.locked) {
        cmdOK->setText(u"&OK"_s);
        setDefaultButton(cmdOK);
        setCancelButton(cmdOK);
    }
    Text1->setFocus();
    showModal();
    return m_written;
}

void OperNoteForm::mnuEditInsert_Click() {
    Text1->setText(m_defaultNote + u"\r\n"_s + Text1->text());
}

void OperNoteForm::cmdOK_Click() {
    if (!m_request.locked) {
        NoteStaging(core::MainDatabase(), m_kind, m_request.documentNo)
            .write(m_request.seqNo, Text1->text());
        if (Text1->text() != m_shown)
            m_written = {m_before, Text1->text()};
    }
    hideModal();
}

} // namespace estimating
