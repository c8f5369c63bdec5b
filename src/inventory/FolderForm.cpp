#include "inventory/FolderForm.h"

#include "core/MirsaMain.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QVBoxLayout>

namespace inventory {

FolderForm::FolderForm(const QString& name, const View& view)
    : AddEditForm(name, u"New Item "_s + view.word), m_view(view) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    m_text = fields.text(u"txt"_s + view.word, u"&Description:"_s,
                         {.limit = core::MainDatabase().width(view.table, u"Description"),
                          .filter = values::keys::treeName(),
                          .characters = 40});
    outside->addStretch();
    makeButtons(outside);
}

void FolderForm::add(qint64 parent, const QString& parentName) {
    m_parent = parent;
    setWindowTitle(u"New Item %1 in %2"_s.arg(m_view.word, parentName));
    setAdding(true);
    run();
}

QString FolderForm::rename(qint64 id) {
    const auto stored = folder(core::MainDatabase(), m_view, id);
    if (!stored) {
        screen::MsgBox(u"This folder has been deleted by another user."_s, screen::Buttons::Ok,
                       screen::Icon::Exclamation, u"System Message"_s);
        return {};
    }
    m_id = id;
    m_parent = stored->parent;
    m_text->setText(stored->description);
    setWindowTitle(u"Edit Item "_s + m_view.word);
    setAdding(false);
    return run() ? m_text->text() : QString();
}

bool FolderForm::save() {
    jet::Database& database = core::MainDatabase();
    const QString text = m_text->text().trimmed();
    const QString complaint = folderComplaint(database, m_view, m_id, m_parent, text);
    if (!complaint.isEmpty()) {
        complain(complaint, m_text, screen::Icon::Exclamation, u"System Message"_s);
        return false;
    }
    m_text->setText(text);
    const qint64 id = saveFolder(database, m_view, m_id, m_parent, text);
    auto* explorer = screen::Forms::find<Explorer>(u"frmInventory"_s);
    if (m_id == 0 && explorer)
        explorer->folderAdded({id, text, m_parent, false});
    return true;
}

void FolderForm::startNext() {
    m_text->clear();
    m_text->setFocus();
}

} // namespace inventory
