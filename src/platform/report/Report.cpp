#include "platform/report/Report.h"

#include "platform/report/PreviewWindow.h"
#include "platform/report/ProgressBox.h"
#include "platform/report/ReportError.h"
#include "platform/values/Literals.h"

namespace report {

namespace {

Previewer& previewerInForce() {
    static Previewer previewer;
    return previewer;
}

} // namespace

void setPreviewer(Previewer previewer) {
    previewerInForce() = std::move(previewer);
}

int Report::printReport() {
    m_errorDetail.clear();
    try {
        ReportFile file = readReportFile(reportFileName);
        if (!showMoney)
            leaveOutMoney(file);
        ProgressBox progress(u"Preparing the report: page %1 ..."_s, windowTitle, parentWindow);
        const Progress goOn = [&](int pages) { return progress.goOn(pages); };
        std::shared_ptr<Document> document =
            layOut(file, m_source, selectionFormula, {goOn, currencySymbol});
        if (append)
            append(*document, goOn);
        progress.close();
        const WindowPlacing placing{windowTitle.isEmpty() ? file.title : windowTitle,
                                    windowLeft,
                                    windowTop,
                                    windowWidth,
                                    windowHeight,
                                    parentWindow};
        if (const auto& previewer = previewerInForce())
            previewer(document, placing);
        else
            PreviewWindow::open(document, placing);
        return 0;
    } catch (const ReportError& error) {
        m_errorDetail = error.detail();
        if (error.code() != codes::cancelled)
            qWarning("%s", qUtf8Printable(m_errorDetail));
        return error.code();
    }
}

} // namespace report
