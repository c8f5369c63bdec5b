#include "reporting/Screens.h"

#include "platform/screen/Forms.h"
#include "reporting/QueryForm.h"
#include "reporting/ResultsForm.h"
#include "reporting/frmConfigReports.h"
#include "reporting/frmCreports.h"
#include "reporting/frmImportSelected.h"
#include "reporting/frmNewReport.h"

namespace reporting {

void registerScreens() {
    using screen::Forms;
    Forms::add<frmConfigReports>();
    Forms::add<frmNewReport>();
    Forms::add<frmImportSelected>();
    Forms::add<frmCreports>();
    for (const QueryDescriptor& query : queries()) {
        Forms::add(query.queryForm, [&query] { return std::make_unique<QueryForm>(query); });
        Forms::add(query.resultsForm, [&query] { return std::make_unique<ResultsForm>(query); });
    }
}

} // namespace reporting
