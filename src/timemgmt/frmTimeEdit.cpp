#include "timemgmt/frmTimeEdit.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/values/Numbers.h"
#include "timemgmt/TimeChanged.h"
#include "timemgmt/Whose.h"

#include <QVBoxLayout>

namespace timemgmt {

frmTimeEdit::frmTimeEdit() : Form(QString::fromLatin1(formName), u"Edit Parts"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    const screen::Line four{.limit = 4, .filter = values::keys::decimal(), .characters = 8};
    screen::Line signedFour = four;
    signedFour.filter.allowed += u'-';
    txtPartsQty = fields.text(u"txtPartsQty"_s, u"Parts &Completed"_s, signedFour);
    txtPartsScrap = fields.text(u"txtPartsScrap"_s, u"Parts &Scrapped"_s, four);
    outside->addStretch();
    on(addOkCancel(outside), &frmTimeEdit::cmdOK_Click);
}

bool frmTimeEdit::ShowForm(qint64 timeId) {
    m_timeId = timeId;
    const auto row = partsOf(core::MainDatabase(), timeId);
    if (!row) {
        sayNotFound();
        return false;
    }
    setWindowTitle(titleForWork(core::MainDatabase(), windowTitle(), timeId));
    m_stored = *row;
    txtPartsQty->setText(row->done.toText());
    txtPartsScrap->setText(row->scrap.toText());
    m_shownQty = txtPartsQty->text();
    m_shownScrap = txtPartsScrap->text();
    txtPartsQty->setFocus();
    showModal();
    return m_saved;
}

void frmTimeEdit::sayNotFound() const {
    screen::MsgBox(u"Timelog record # "_s + QString::number(m_timeId) +
                       u"  not found! Timelog table may need to be fixed!"_s,
                   screen::Buttons::Ok, screen::Icon::Critical);
}

void frmTimeEdit::cmdOK_Click() {
    const QString done = txtPartsQty->text(), scrap = txtPartsScrap->text();
    if (done == m_shownQty && scrap == m_shownScrap) {
        hideModal();
        return;
    }
    if (const auto wrong = checkParts(done, scrap)) {
        complain(*wrong);
        return;
    }
    bool gone = false;
    const auto save = [&] {
        return SaveParts(core::MainDatabase(), m_timeId, values::val(done), values::val(scrap),
                         m_stored, gone);
    };
    while (const auto changed = save()) {
        if (screen::MsgBox(
                u"This record has been changed by another user meanwhile: "_s +
                    changed->done.toText() + u" parts completed, "_s + changed->scrap.toText() +
                    u" scrapped. Replace them by your entries?"_s,
                screen::Buttons::YesNo, screen::Icon::Exclamation) != screen::Answer::Yes)
            return;
        m_stored = *changed;
    }
    if (gone) {
        sayNotFound();
        return;
    }
    m_saved = true;
    tellTimeChanged();
    hideModal();
}

} // namespace timemgmt
