#include "platform/jet/Location.h"

#include "platform/values/Literals.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QUrl>

namespace jet {

QString serverOfFolder(const QString& folder) {
    QFile file(QDir(folder).filePath(u"Mirsa.server"_s));
    if (!file.exists())
        return {};
    if (!file.open(QIODevice::ReadOnly))
        throw Error(errors::cannotOpenFile, u"Could not read file '%1'."_s.arg(file.fileName()));
    QString uri = QString::fromUtf8(file.readLine()).trimmed();
    if (!isServerUri(uri))
        throw Error(errors::connectionFailed,
                    u"'%1' names no server (postgresql://...)."_s.arg(file.fileName()));
    return uri;
}

bool isServerUri(const QString& text) {
    return text.startsWith(u"postgresql://"_s) || text.startsWith(u"postgres://"_s);
}

namespace {

/// Where a URI's password stands. What is wrong in other respects (a slash or an @ in a password
/// that should have been written as %2F or %40) must not bring it to light: up to the last @.
QRegularExpressionMatch passwordBeforeHost(const QString& uri) {
    static const QRegularExpression form(u"^postgres(?:ql)?://[^:/@?]*(:.*)@"_s,
                                         QRegularExpression::DotMatchesEverythingOption);
    return form.match(uri);
}

QRegularExpressionMatch passwordOption(const QString& uri) {
    static const QRegularExpression form(u"[?&](?:ssl)?password=([^&]*)"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    return form.match(uri);
}

} // namespace

QString passwordOf(const QString& uri) {
    if (const auto option = passwordOption(uri); option.hasMatch())
        return option.captured(1);
    return passwordBeforeHost(uri).captured(1).mid(1);
}

QString withoutPassword(const QString& uri) {
    if (!isServerUri(uri))
        return uri;
    QString shown = uri;
    // What is left when one has gone may look like another.
    while (true) {
        if (const auto before = passwordBeforeHost(shown); before.hasMatch())
            shown.remove(before.capturedStart(1), before.capturedLength(1));
        else if (const auto option = passwordOption(shown); option.hasMatch())
            shown.remove(option.capturedStart() + 1, option.capturedLength() - 1);
        else
            return shown;
    }
}

QString withoutPassword(const QString& text, const QString& uri) {
    const QString written = passwordOf(uri);
    if (written.isEmpty())
        return text;
    QString shown = text;
    shown.replace(uri, withoutPassword(uri));
    for (const QString& form : {written, QUrl::fromPercentEncoding(written.toUtf8())}) {
        // Of two letters or fewer it can't be told from any other word.
        if (form.size() > 2)
            shown.replace(form, u"***"_s);
    }
    return shown;
}

std::unique_ptr<Database> openProgramFolder(const QString& folder) {
    const QString uri = serverOfFolder(folder);
    return uri.isEmpty() ? Database::openFile(QDir(folder).filePath(u"Mirsa.mdb"_s))
                         : Database::openServer(uri);
}

} // namespace jet
