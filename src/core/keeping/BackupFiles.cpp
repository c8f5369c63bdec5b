#include "core/keeping/Backup.h"

#include "core/keeping/SideFile.h"
#include "platform/values/Literals.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

namespace keeping {

QMap<QString, QString> readLines(const QString& path) {
    QMap<QString, QString> lines;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return lines;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts))
        if (const auto equals = line.indexOf(u'='); equals > 0 && !line.startsWith(u'#'))
            lines[line.left(equals).trimmed()] = line.mid(equals + 1).trimmed();
    return lines;
}

BackupSettings backupSettings(const QString& programFolder) {
    const QMap<QString, QString> lines = readLines(QDir(programFolder).filePath(u"Mirsa.backup"_s));
    BackupSettings settings;
    settings.folder = QDir(programFolder).filePath(lines.value(u"folder"_s, u"Backups"_s));
    const auto number = [&](const QString& name, int& value) {
        bool isNumber = false;
        const int read = lines.value(name).toInt(&isNumber);
        if (isNumber && read >= 0)
            value = read;
    };
    number(u"keepAllDays"_s, settings.keepAllDays);
    number(u"keepWeeklyDays"_s, settings.keepWeeklyDays);
    number(u"warnAfterDays"_s, settings.warnAfterDays);
    settings.daily =
        !QStringList{u"no"_s, u"false"_s, u"0"_s}.contains(lines.value(u"daily"_s).toLower());
    return settings;
}

std::vector<BackupFile> backupsIn(const QString& folder) {
    std::vector<BackupFile> backups;
    const QDir directory(folder);
    const QFileInfoList sides = directory.entryInfoList({u"Mirsa-*.txt"_s}, QDir::Files);
    for (const QFileInfo& side : sides) {
        const QMap<QString, QString> lines = readLines(side.filePath());
        const QString path = directory.filePath(lines.value(u"file"_s));
        const QFileInfo file(path);
        const auto made = QDateTime::fromString(lines.value(u"made"_s), Qt::ISODate);
        if (lines.value(u"check"_s) != u"good" || !made.isValid() || !file.isFile() ||
            file.size() != lines.value(u"size"_s).toLongLong())
            continue;
        backups.push_back({path, made, file.size(), lines.value(u"papers"_s).toInt(),
                           lines.value(u"papers missing"_s).toInt(),
                           lines.value(u"papers failed"_s)});
    }
    std::sort(backups.begin(), backups.end(),
              [](const BackupFile& a, const BackupFile& b) { return a.made > b.made; });
    return backups;
}

QStringList outdated(const std::vector<BackupFile>& backups, const QDateTime& now,
                     const BackupSettings& settings) {
    QStringList old;
    QSet<QString> periods; ///< weeks and months that have their backup
    // From the oldest on, so that the first of a week or month stays whatever comes after it.
    for (auto backup = backups.rbegin(); backup != backups.rend(); ++backup) {
        const qint64 days = backup->made.daysTo(now);
        const bool newest = &*backup == &backups.front();
        if (days <= settings.keepAllDays || newest)
            continue;
        const QDate date = backup->made.date();
        int year = 0;
        const int week = date.weekNumber(&year);
        const QString period = days <= settings.keepWeeklyDays ? u"week %1 %2"_s.arg(year).arg(week)
                                                               : date.toString(u"yyyy-MM"_s);
        if (periods.contains(period))
            old += backup->path;
        periods.insert(period);
    }
    return old;
}

QString backupWarning(const QString& programFolder, const QDateTime& now) {
    const BackupSettings settings = backupSettings(programFolder);
    const std::vector<BackupFile> backups = backupsIn(settings.folder);
    if (backups.empty()) {
        // The folder is there since the first try of a daily one.
        const QDateTime tried = QFileInfo(settings.folder).birthTime();
        if (settings.daily && !(tried.isValid() && tried.daysTo(now) > settings.warnAfterDays))
            return {};
        return u"There is no backup of the database that was found good. Make one with Utilities, "
               "Backup."_s;
    }
    const BackupFile& last = backups.front();
    if (last.made.daysTo(now) <= settings.warnAfterDays)
        return last.papersFailure.isEmpty()
                   ? QString()
                   : u"The last backup of the database is good, but has no papers: "_s +
                         last.papersFailure;
    return u"The last good backup of the database is of %1, %2 days ago. Make one with Utilities, "
           "Backup."_s.arg(last.made.toString(u"M/d/yyyy h:mm"_s))
               .arg(last.made.daysTo(now));
}

bool isBackupDue(const QString& programFolder, const QDateTime& now) {
    const BackupSettings settings = backupSettings(programFolder);
    if (!settings.daily)
        return false;
    const std::vector<BackupFile> backups = backupsIn(settings.folder);
    return backups.empty() || backups.front().made.date() < now.date();
}

} // namespace keeping
