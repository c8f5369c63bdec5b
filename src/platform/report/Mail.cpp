#include "platform/report/Mail.h"

#include "platform/report/Painting.h"
#include "platform/report/ProgressBox.h"
#include "platform/report/ReportError.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Seams.h"
#include "platform/values/Literals.h"

#include <QTemporaryDir>

namespace report {

QString pdfName(const Document& document, const QString& otherwise) {
    QString name = document.name.isEmpty() ? otherwise : document.name;
    static const QString unfit = u"\\/:*?\"<>|"_s;
    for (const QChar c : unfit)
        name.replace(c, u'-');
    return name + u".pdf"_s;
}

bool sendByMail(const Document& document, QWidget* parent) {
    const auto complain = [](const QString& why) {
        screen::MsgBox(u"The document could not be handed to your mail program: "_s + why,
                       screen::Buttons::Ok, screen::Icon::Exclamation);
        return false;
    };
    // The mail program reads the file when it likes, so it stays until the desktop tidies up.
    QTemporaryDir folder;
    folder.setAutoRemove(false);
    if (!folder.isValid())
        return complain(folder.errorString());
    const QString path = folder.filePath(pdfName(document, document.title));
    try {
        ProgressBox progress(u"Writing page %1 ..."_s, document.title, parent,
                             document.pageCount());
        writePdf(document, path, [&](int pages) { return progress.goOn(pages); });
    } catch (const ReportError& error) {
        return error.code() == codes::cancelled ? false : complain(error.detail());
    }
    QStringList arguments{u"--utf8"_s, u"--subject"_s,
                          document.name.isEmpty() ? document.title : document.name, u"--attach"_s,
                          path};
    if (!document.mailTo.isEmpty())
        arguments << document.mailTo;
    QString error;
    if (!screen::seams().startProgram(u"xdg-email"_s, arguments, error))
        return complain(error);
    return true;
}

} // namespace report
