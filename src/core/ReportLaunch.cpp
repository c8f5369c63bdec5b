#include "core/ReportLaunch.h"

#include "core/MirsaMain.h"
#include "core/ReportErrors.h"
#include "core/Shell.h"
#include "core/papers/BehindTraveler.h"
#include "platform/report/Mail.h"
#include "platform/report/Report.h"
#include "platform/report/ReportError.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Literals.h"

#include <QGuiApplication>
#include <QScreen>

namespace core {

namespace {

/// File name of the catalogue's row that meets the criterion; empty if there is none.
QString catalogued(const QString& criteria) {
    auto reports =
        MainDatabase().openRecordset(u"Select * from Reports"_s, jet::RecordsetType::Snapshot);
    if (reports.isEmpty())
        return {};
    reports.moveFirst();
    reports.findFirst(criteria);
    return reports.noMatch() ? QString() : reports.text(u"FileName");
}

void complain(const QString& text, const QString& title) {
    screen::MsgBox(text, screen::Buttons::Ok, screen::Icon::Critical, title);
}

/// File of a module's default report; empty after a box.
QString defaultOf(const QString& module) {
    QString fileName = catalogued(u"Module = '"_s + module + u"' and Default = true"_s);
    if (fileName.isEmpty()) {
        complain(u"You do not have a Default Report specified for this Module or the "
                 "Default Report is missing!"_s,
                 u"No Default Report"_s);
    }
    return fileName;
}

} // namespace

void launchDefaultReport(const QString& module, const QString& formula, const QString& title,
                         QWidget* parent) {
    const QString fileName = defaultOf(module);
    if (!fileName.isEmpty())
        launchReportFile(fileName, formula, title, parent);
}

bool sendDefaultReport(const QString& module, const QString& formula, QWidget* parent) {
    screen::BusyPointer pointer(screen::BusyPointer::ArrowAndHourglass);
    const QString fileName = defaultOf(module);
    if (fileName.isEmpty())
        return false;
    report::DatabaseRowSource source(MainDatabase());
    try {
        report::ReportFile file = report::readReportFile(programFile(fileName));
        if (!HasAccess(u"ShowDollar"_s))
            report::leaveOutMoney(file);
        const auto document = report::layOut(file, source, formula, {{}, shared().CurrencySymbol});
        return report::sendByMail(*document, parent);
    } catch (const report::ReportError& error) {
        pointer.reset();
        QString message;
        ShowReportError(error.code(), message);
        return false;
    }
}

namespace {

using Append = std::function<void(report::Document& document, const report::Progress& progress)>;

void launch(const QString& path, const QString& formula, const QString& title, QWidget* parent,
            report::RowSource* source, const Append& append = {}) {
    screen::BusyPointer pointer(screen::BusyPointer::ArrowAndHourglass);
    report::DatabaseRowSource database(MainDatabase());
    report::Report report(source ? *source : database);
    report.reportFileName = path;
    report.selectionFormula = formula;
    report.windowTitle = title;
    report.currencySymbol = shared().CurrencySymbol;
    report.showMoney = HasAccess(u"ShowDollar"_s);
    report.append = append;
    const auto* display = parent ? parent->screen() : QGuiApplication::primaryScreen();
    const QRect area = display->geometry();
    const double height = area.height() * shared().PreviewHeightFactor;
    const double width = area.width() * shared().PreviewWidthFactor;
    report.windowHeight = qRound(height);
    report.windowWidth = qRound(width);
    // A little above the centre.
    report.windowTop = area.top() + qRound((area.height() - height) / 2 * 0.65);
    report.windowLeft = area.left() + qRound((area.width() - width) / 2);
    // A dialog that prints closes before its report has been read: the preview is the shell's.
    auto* main = dynamic_cast<QWidget*>(shell());
    report.parentWindow = main ? main : parent;
    const int code = report.printReport();
    pointer.reset();
    if (code != 0) {
        QString message;
        ShowReportError(code, message);
    }
}

/// Catalogued names and fixed ones may carry the separator in front.
QString reportPath(QString name) {
    while (name.startsWith(u'\\') || name.startsWith(u'/'))
        name.remove(0, 1);
    return programFile(name);
}

} // namespace

void launchReportFile(const QString& fileName, const QString& formula, const QString& title,
                      QWidget* parent, report::RowSource* source) {
    launch(reportPath(fileName), formula, title, parent, source);
}

void launchReportAt(const QString& path, const QString& formula, const QString& title,
                    QWidget* parent, report::RowSource* source) {
    launch(path, formula, title, parent, source);
}

void launchTraveler(qint64 jobNo, bool withNotes, QWidget* parent) {
    if (keepsPapers(MainDatabase()))
        MainDatabase().expect({behindSelect(jobNo)});
    const QString fileName =
        catalogued(withNotes ? u"Module = 'Jobs' and Filename = 'Job_Traveler_Notes.rpt'"_s
                             : u"Module = 'Jobs' and Filename = 'Job_traveler.rpt'"_s);
    if (fileName.isEmpty()) {
        complain(u"The Job Traveler Report is missing!"_s, u"No Job Traveler Report"_s);
        return;
    }
    const std::vector<Paper> papers = papersBehind(jobNo);
    QStringList complaints;
    Append append;
    if (!papers.empty())
        append = [&](report::Document& document, const report::Progress& progress) {
            complaints = appendPapers(document, papers, progress);
        };
    launch(reportPath(fileName), u"{Job.jobno} = %1"_s.arg(jobNo), u"Traveler Report"_s, parent,
           nullptr, append);
    if (!complaints.isEmpty())
        screen::MsgBox(u"Not every paper stands behind the traveler:\n"_s + complaints.join(u'\n'),
                       screen::Buttons::Ok, screen::Icon::Exclamation, u"Traveler Report"_s);
}

} // namespace core
