#include "estimating/routing/OperNoteForm.h"

#include "core/MirsaMain.h"
#include "core/Spelling.h"
#include "estimating/NoteStaging.h"
#include "platform/screen/Layout.h"

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
    lblDocument = screen::named(new QLabel(this), QStringLiteral("lblEstNo"));
    lblSeqNo = screen::named(new QLabel(this), QStringLiteral("lblSeqNo"));
    labels->addWidget(lblDocument);
    labels->addStretch();
    labels->addWidget(lblSeqNo);
    Text1 = screen::named(new controls::MemoField(this), QStringLiteral("Text1"),
                          QStringLiteral("Note"));
    outside->addWidget(Text1, 1);

    screen::ButtonBar bar(this, outside);
    bar.stretch();
    cmdOK = bar.button(QStringLiteral("cmdOK"), QStringLiteral("Up&date"));
    cmdCancel = bar.button(QStringLiteral("cmdCancel"), QStringLiteral("Cancel"));
    setCancelButton(cmdCancel);

    QMenu* edit = menus->addMenu(QStringLiteral("&Edit"));
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
    QMenu* tools = menus->addMenu(QStringLiteral("&Tools"));
    QAction* mnuSpellCheck = tools->addAction(QStringLiteral("&Spelling..."));
    mnuSpellCheck->setObjectName(QStringLiteral("mnuSpellCheck"));
    m_changing = {cut, paste, erase, mnuEditInsert, mnuSpellCheck};

    on(cut, [this] { Text1->cut(); });
    on(copy, [this] { Text1->copy(); });
    on(paste, [this] { Text1->paste(); });
    on(erase, [this] { Text1->textCursor().removeSelectedText(); });
    on(mnuSpellCheck, [this] { core::checkSpelling(Text1); });
    on(mnuEditInsert, &OperNoteForm::mnuEditInsert_Click);
    on(cmdOK, &OperNoteForm::cmdOK_Click);
    on(cmdCancel, [this] { hideModal(); });
    resize(520, 380);
}

std::optional<bool> OperNoteForm::edit(const NoteRequest& request) {
    m_request = request;
    jet::Database& database = core::MainDatabase();
    lblDocument->setText(m_kind.documentLabel + (request.documentNo == 0
                                                     ? QStringLiteral("New")
                                                     : QString::number(request.documentNo)));
    lblSeqNo->setText(QStringLiteral("Seq No.: ") + QString::number(request.seqNo));
    Text1->setText(
        NoteStaging(database, m_kind, request.documentNo).note(request.seqNo).value_or(QString()));
    Text1->setLocked(request.locked);
    for (QAction* action : m_changing)
        action->setEnabled(!request.locked);
    m_defaultNote = request.locked ? QString() : defaultNote(database, request.description);
    mnuEditInsert->setVisible(!m_defaultNote.isEmpty());
    cmdCancel->setVisible(!request.locked);
    if (request.locked) {
        cmdOK->setText(QStringLiteral("&OK"));
        setDefaultButton(cmdOK);
        setCancelButton(cmdOK);
    }
    Text1->setFocus();
    showModal();
    return m_hasNote;
}

void OperNoteForm::mnuEditInsert_Click() {
    Text1->setText(m_defaultNote + QStringLiteral("\r\n") + Text1->text());
}

void OperNoteForm::cmdOK_Click() {
    if (!m_request.locked) {
        m_hasNote = NoteStaging(core::MainDatabase(), m_kind, m_request.documentNo)
                        .write(m_request.seqNo, Text1->text());
    }
    hideModal();
}

} // namespace estimating
