#include "reporting/frmCreports.h"

#include "core/ReportLaunch.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace reporting {

frmCreports::frmCreports() : Form(QString::fromLatin1(formName), u"Common Reports"_s) {
    auto* outside = new QVBoxLayout(this);
    const char16_t* captions[] = {u"Print &Barcode Commands", u"Print &Employee Badges"};
    for (int i = 0; i < 2; ++i) {
        auto* cmdPrint = screen::named(new QPushButton(QString::fromUtf16(captions[i]), this),
                                       u"cmdPrint(%1)"_s.arg(i));
        cmdPrint->setMinimumSize(260, 36);
        outside->addWidget(cmdPrint);
        on(cmdPrint, [this, i] { cmdPrint_Click(i); });
    }
    outside->addStretch();
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setCancelButton(cmdClose);
    on(cmdClose, [this] { unload(); });
}

void frmCreports::cmdPrint_Click(int index) {
    if (index == 0)
        core::launchReportFile(u"bCommands.rpt"_s, {}, u"Barcode Commands"_s, this);
    else
        core::launchReportFile(u"Employee_ID_Badges.rpt"_s, {}, u"Employee ID Badges"_s, this);
}

} // namespace reporting
