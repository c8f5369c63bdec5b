#include "app/Screens.h"

#include "accounting/Screens.h"
#include "core/Screens.h"
#include "desk/Screens.h"
#include "estimating/Screens.h"
#include "inventory/Screens.h"
#include "jobs/Screens.h"
#include "masters/Screens.h"
#include "purchasing/Screens.h"
#include "reporting/Screens.h"
#include "scheduling/Screens.h"
#include "timemgmt/Screens.h"

namespace app {

void registerAllScreens() {
    core::registerScreens();
    masters::registerScreens();
    estimating::registerScreens();
    jobs::registerScreens();
    reporting::registerScreens();
    scheduling::registerScreens();
    timemgmt::registerScreens();
    purchasing::registerScreens();
    inventory::registerScreens();
    accounting::registerScreens();
    desk::registerScreens();
}

} // namespace app
