#include "core/Screens.h"

#include "core/drafts/frmDraft.h"
#include "core/frmAbout.h"
#include "core/frmBackup.h"
#include "core/frmDBMaint.h"
#include "core/frmGroupAddEdit.h"
#include "core/frmHistory.h"
#include "core/frmJournal.h"
#include "core/frmLogin.h"
#include "core/frmPass.h"
#include "core/frmRecordHistory.h"
#include "core/frmSplash.h"
#include "core/frmSystemSettings.h"
#include "core/frmTblPopup.h"
#include "core/frmUserAddEdit.h"
#include "core/frmUser_Group.h"
#include "core/papers/frmPapers.h"
#include "core/reference/ReferenceForms.h"
#include "platform/screen/Forms.h"

namespace core {

void registerScreens() {
    using screen::Forms;
    Forms::add<frmSplash>();
    Forms::add<frmLogin>();
    Forms::add<frmPass>();
    Forms::add<frmAbout>();
    Forms::add<frmTblPopup>();
    Forms::add<frmDraft>();
    Forms::add<frmUser_Group>();
    Forms::add<frmUserAddEdit>();
    Forms::add<frmGroupAddEdit>();
    Forms::add<frmSystemSettings>();
    Forms::add<frmHistory>();
    Forms::add<frmJournal>();
    Forms::add<frmRecordHistory>();
    Forms::add<frmPapers>();
    Forms::add<frmDBMaint>();
    Forms::add<frmBackup>();
    registerReferenceScreens();
}

} // namespace core
