#include "scheduling/Screens.h"

#include "platform/screen/Forms.h"
#include "scheduling/ScheduleEntryForm.h"
#include "scheduling/frmSchedule.h"
#include "scheduling/frmScheduleView.h"

namespace scheduling {

void registerScreens() {
    using screen::Forms;
    Forms::add<frmSchedule>();
    Forms::add<frmScheduleAdd>();
    Forms::add<frmScheduleEdit>();
    Forms::add<frmScheduleView>();
}

} // namespace scheduling
