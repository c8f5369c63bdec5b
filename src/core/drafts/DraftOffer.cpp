#include "core/drafts/DraftOffer.h"

#include "core/Shell.h"
#include "core/drafts/Draft.h"
#include "core/records/RecordScreen.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Literals.h"

namespace core {

using screen::Answer;
using screen::Buttons;
using screen::Forms;
using screen::Icon;
using screen::MsgBox;

namespace {

const QString& title() {
    static const QString text = u"Draft"_s;
    return text;
}

bool isStored(const Draft& draft) {
    const auto form = Forms::make(draft.form);
    auto* module = dynamic_cast<DraftScreen*>(form.get());
    return module && module->isStored(draft);
}

bool throwAway() {
    return MsgBox(u"Throw the draft away? What was typed is gone then. With No you are asked again "
                  "the next time that you sign in."_s,
                  Buttons::YesNo, Icon::Question, title(), Answer::No) == Answer::Yes;
}

/// True if the draft is of no more use.
bool openDraft(const Draft& draft) {
    if (!Forms::show(draft.form))
        return false;
    auto* module = Forms::find<DraftScreen>(draft.form);
    if (!module)
        return false;
    switch (module->openDraft(draft)) {
    case DraftOpening::Opened:
        return true;
    case DraftOpening::Gone:
        return Forms::dialog<DraftTextDialog>(u"frmDraft"_s)
            ->tell(draft.record + u' ' + QString::number(draft.key) +
                       u" has been deleted meanwhile. This was typed:"_s,
                   draft.inWords());
    case DraftOpening::Kept:
        break;
    }
    return false;
}

} // namespace

void offerDrafts() {
    const drafts::Left left;
    for (const Draft& draft : left.drafts()) {
        if (!Forms::isKnown(draft.form) || (shell() && !shell()->mayOpen(draft.form)))
            continue;
        const auto* open = Forms::find<RecordScreen>(draft.form);
        if (open && open->mode() != u"Browse")
            continue; // an entry of the same kind was taken up before
        if (isStored(draft)) {
            drafts::Left::remove(draft);
            continue;
        }
        const bool wanted =
            MsgBox(draft.question(), Buttons::YesNo, Icon::Question, title()) == Answer::Yes;
        if (wanted ? openDraft(draft) : throwAway())
            drafts::Left::remove(draft);
    }
}

} // namespace core
