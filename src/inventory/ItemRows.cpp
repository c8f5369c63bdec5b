#include "inventory/ItemRows.h"

#include "platform/controls/Pictures.h"
#include "platform/values/Literals.h"

namespace inventory {

QString itemKey(qint64 itemId) {
    return u"i"_s + QString::number(itemId);
}

controls::ListRow listRow(const ItemRow& row) {
    using namespace controls;
    const bool flagged = row.item.isFlagged();
    return {itemKey(row.item.id), row.texts(), flagged ? pictures::flaggedItem() : pictures::item(),
            flagged ? u"Item below its minimum"_s : u"Item"_s};
}

} // namespace inventory
