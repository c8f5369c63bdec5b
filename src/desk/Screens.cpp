#include "desk/Screens.h"

#include "desk/ModuleList.h"
#include "desk/frmFind.h"
#include "desk/frmStart.h"
#include "platform/screen/Forms.h"

namespace desk {

void registerScreens() {
    screen::Forms::add<frmFind>();
    screen::Forms::add<frmStart>();
    for (const ListKind& kind : listKinds())
        screen::Forms::add(kind.form, [&kind] { return std::make_unique<ModuleList>(kind); });
}

} // namespace desk
