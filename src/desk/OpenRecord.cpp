#include "desk/OpenRecord.h"

#include "core/records/RecordScreen.h"
#include "inventory/InventoryDialogs.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Literals.h"

namespace desk {

using screen::Buttons;
using screen::Icon;

bool openRecord(const QString& module, qint64 key, const QString& part) {
    screen::Form* form = screen::Forms::find(module);
    auto* open = dynamic_cast<core::RecordScreen*>(form);
    if (open && open->mode().compare(u"Browse"_s, Qt::CaseInsensitive) != 0) {
        const QString word = form->windowTitle().section(u" - "_s, 0, 0);
        screen::MsgBox(
            u"The %1 module is in '%2' mode. Save or cancel there first."_s.arg(word, open->mode()),
            Buttons::Ok, Icon::Exclamation, u"System Message"_s);
        screen::Forms::show(module);
        return false;
    }
    form = screen::Forms::show(module);
    if (!form)
        return false;
    if (auto* explorer = dynamic_cast<inventory::Explorer*>(form)) {
        explorer->goToItem(key);
        return true;
    }
    auto* records = dynamic_cast<core::RecordScreen*>(form);
    if (!records)
        return false;
    bool found = records->goToRecord(key);
    if (!found && records->showsActiveOnly() &&
        screen::MsgBox(u"Number %1 isn't among the active records, which are all that the module "
                       "shows at present. Show all of them?"_s.arg(key),
                       Buttons::YesNo, Icon::Question,
                       u"System Message"_s) == screen::Answer::Yes) {
        records->showAllRecords();
        found = records->goToRecord(key);
    } else if (!found && !records->showsActiveOnly()) {
        screen::MsgBox(u"Number %1 is no longer there."_s.arg(key), Buttons::Ok, Icon::Exclamation,
                       u"System Message"_s);
    }
    if (auto* parts = dynamic_cast<core::PartScreen*>(form); found && parts && !part.isEmpty())
        parts->goToPart(part);
    return found;
}

} // namespace desk
