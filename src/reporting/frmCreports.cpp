#include "reporting/frmCreports.h"

#include "core/ReportLaunch.h"
#include "platform/screen/Layout.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace reporting {

frmCreports::frmCreports() : Form(QString::fromLatin1(formName), QStringLiteral("Common Reports")) {
    auto* outside = new QVBoxLayout(this);
    const char16_t* captions[] = {u"Print &Barcode Commands", u"Print &Employee Badges"};
    for (int i = 0; i < 2; ++i) {
        auto* cmdPrint = screen::named(new QPushButton(QString::fromUtf16(captions[i]), this),
                                       QStringLiteral("cmdPrint(%1)").arg(i));
        cmdPrint->setMinimumSize(260, 36);
        outside->addWidget(cmdPrint);
        on(cmdPrint, [this, i] { cmdPrint_Click(i); });
    }
    outside->addStretch();
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    QPushButton* cmdClose = bar.button(QStringLiteral("cmdClose"), QStringLiteral("&Close"));
    setCancelButton(cmdClose);
    on(cmdClose, [this] { unload(); });
}

void frmCreports::cmdPrint_Click(int index) {
    if (index == 0)
        core::launchReportFile(QStringLiteral("bCommands.rpt"), {},
                               QStringLiteral("Barcode Commands"), this);
    else
        core::launchReportFile(QStringLiteral("Employee_ID_Badges.rpt"), {},
                               QStringLiteral("Employee ID Badges"), this);
}

} // namespace reporting
