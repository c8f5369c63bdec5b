#include "core/ReportErrors.h"

#include "platform/screen/MsgBox.h"
#include "platform/values/Literals.h"

#include <array>

namespace core {

namespace {

struct Meaning {
    int code;
    const char16_t* text;
};

constexpr std::array meanings{
    Meaning{20500,
            u"Not Enough Memory For Operation or Not Enough Memory To Get Selection Formula or "
            u"Cannot Get Selection Formula.  The report could not be worked on, or its selection "
            u"formula could not be read. Close other windows and try again."},
    Meaning{20501, u"Invalid Job Number.  The engine has no print job of that number."},
    Meaning{20502, u"Invalid Text Handle or Parent Window Cannot Be An MDI Form or Invalid Parent "
                   u"Window Handle.  The window that the preview should belong to can't be used."},
    Meaning{20503, u"Buffer Too Small For String.  A text is longer than the room made for it."},
    Meaning{20504, u"Report Not Found.  You have specified a report that does not exist."},
    Meaning{20505, u"No Print Destination Specified or Invalid Print Destination.  It isn't known "
                   u"whether the report goes to a window, to a printer or to a file."},
    Meaning{20506, u"Invalid File Number.  The report has no data file of that number."},
    Meaning{20507, u"Invalid File Name.  The name of the file can't be used on this computer."},
    Meaning{20508, u"Invalid Field Number.  The report has no field of that number."},
    Meaning{20509, u"Invalid Field Name.  The report names a field that its data don't have."},
    Meaning{20510, u"Invalid Formula Name.  The report has no formula of that name."},
    Meaning{20511, u"Invalid Sort Direction.  Rows can be sorted upward or downward only."},
    Meaning{20512, u"Print Engine Not Open.  The report engine has not been started."},
    Meaning{20513, u"Invalid Printer.  The printer chosen for the report is not installed."},
    Meaning{20514, u"Print File Exists.  The name you have specified for the print file already "
                   u"exists. You must delete the file and print again or specify a different "
                   u"file."},
    Meaning{20515, u"Error In Formula.  The selection formula can't be understood, or it names a "
                   u"field that the report doesn't have."},
    Meaning{20517, u"Print Engine Already In Use.  Another report is being prepared. Wait until "
                   u"it is finished."},
    Meaning{20520, u"Print Job Already Started.  The report is being printed and can't be changed "
                   u"any more."},
    Meaning{20521, u"Invalid Summary Field.  A total names a field that can't be totalled."},
    Meaning{20522, u"Not Enough System Resources.  Close other windows and try again."},
    Meaning{20524, u"Print Job Busy.  The report is still being printed. Wait until it is "
                   u"finished."},
    Meaning{20525, u"Unable To Load Report.  The report file can't be read or isn't a report."},
    Meaning{20526, u"No Default Printer.  You haven't specified a default printer. Specify a "
                   u"default printer via the Windows Control Panel."},
    Meaning{20527, u"SQL Server Error.  The database server has refused the report's query."},
    Meaning{20529, u"Disk Full.  There is no room left on the disk. Free some and try again."},
    Meaning{20530, u"File I/O Error.  A file could not be read or written."},
    Meaning{20531, u"Incorrect Password.  The password of the report's data is not right."},
    Meaning{20532, u"Missing Database DLL.  The part of the program that reads this kind of "
                   u"database is not installed."},
    Meaning{20533, u"Unable To Open Database File.  The database could not be opened, or it "
                   u"doesn't hold what the report asks for."},
    Meaning{20534, u"Error Detected By Database DLL.  The database reported an error while the "
                   u"report's rows were read."},
    Meaning{20535, u"Unable To Connect:Incorrect Session Parameters.  The database refused the "
                   u"session that the report asked for."},
    Meaning{20536, u"Unable To Connect:Incorrect Log On Parameters.  The database refused the "
                   u"user or the password."},
    Meaning{20537, u"Unable To Connect:Incorrect Table Location.  A table of the report is not "
                   u"where the report looks for it."},
    Meaning{20538, u"Parameter Has Invalid Structure Size.  The program and the report engine are "
                   u"of different versions."},
    Meaning{20539, u"Invalid Print Date.  The date to print on the report doesn't exist."},
    Meaning{20540, u"Missing or Out-of-date Export DLL.  The part of the program that saves "
                   u"reports is missing or too old."},
    Meaning{20541, u"Error in Export DLL.  The report could not be saved in that form."},
    Meaning{20542, u"Already at the First Page.  There is no page before this one."},
    Meaning{20543, u"Already at the Last Page.  There is no page after this one."},
    Meaning{20544, u"Report Open by Another User.  Somebody else is changing the report file. Try "
                   u"again later."},
    Meaning{20545, u"User Has Cancelled Operation - The user has Clicked the Cancel button in a "
                   u"dialog box during the session."},
    Meaning{20546, u"OLE 2.0 Not Available.  A picture or document inside the report can't be "
                   u"shown on this computer."},
    Meaning{20547, u"Invalid Crosstab Group.  A cross table has no such row or column group."},
    Meaning{20548, u"Crosstab is Missing a Summarized Field.  A cross table needs a field to "
                   u"total."},
    Meaning{20550, u"Invalid Page Number.  The report has no page of that number."},
    Meaning{20552, u"No Stored Procedure in the Report.  The report doesn't read from a stored "
                   u"procedure."},
    Meaning{20553, u"Invalid Parameter.  A value given to the report can't be used."},
    Meaning{20554, u"Graph Does Not Exist.  The report has no such graph."},
    Meaning{20555, u"Graph Type is Invalid.  The report can't draw a graph of that kind."},
    Meaning{20557, u"Graph col Value Cannot be Changed.  The columns of that graph are fixed."},
};
static_assert(meanings.size() == 50);

} // namespace

QString reportErrorText(int code) {
    for (const auto& meaning : meanings) {
        if (meaning.code == code)
            return u":  "_s + QString::fromUtf16(meaning.text);
    }
    return u":  Unknown Error!"_s;
}

void ShowReportError(int code, QString& message) {
    message = QString::number(code) + reportErrorText(code);
    screen::MsgBox(message, screen::Buttons::Ok, screen::Icon::Critical,
                   u"Crystal Reports Error"_s);
}

} // namespace core
