#include "platform/screen/SaveFile.h"

#include "platform/screen/Pointer.h"
#include "platform/screen/Seams.h"
#include "platform/values/Literals.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

namespace screen {

void saveFile(const QString& suggested, const std::function<QByteArray()>& content) {
    const QString kind = QFileInfo(suggested).suffix();
    QString name = suggested;
    for (const QChar c : uR"(\/:*?"<>|)"_s)
        name.replace(c, u'-');
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    QString path = seams().saveFile(u"Save As"_s, QDir(folder).filePath(name),
                                    u"%1 files (*.%2)"_s.arg(kind.toUpper(), kind));
    if (path.isEmpty())
        return;
    if (QFileInfo(path).suffix().isEmpty())
        path += u'.' + kind;
    QString error;
    {
        const BusyPointer busy;
        QSaveFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content()) < 0 || !file.commit())
            error = file.errorString();
    }
    if (!error.isEmpty())
        MsgBox(u"Cannot save "_s + path + u":\n"_s + error, Buttons::Ok, Icon::Exclamation,
               u"Save As"_s);
}

} // namespace screen
