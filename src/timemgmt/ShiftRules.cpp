#include "timemgmt/ShiftRules.h"

#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

#include <QFile>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace timemgmt {

using values::quoted;

namespace {

#ifdef Q_OS_UNIX
/// Here an open file can be deleted, so it takes a lock to show that somebody has it. A file system
/// that knows no such locks can't show it.
bool isHeld(int file) {
    struct flock range = {};
    range.l_type = F_WRLCK;
    range.l_whence = SEEK_SET;
    if (::fcntl(file, F_GETLK, &range) == 0 && range.l_type != F_UNLCK)
        return true;
    return ::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}
#endif

/// Deletes the file unless somebody holds it. The lock that was got in trying stays until the file
/// has gone, so that a companion that starts right now is turned away and not overlooked.
bool deleteIfFree(const QString& file) {
#ifdef Q_OS_UNIX
    const int handle = ::open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC);
    // One that can't be asked counts as held.
    if (handle < 0)
        return !QFile::exists(file);
    const bool deleted = !isHeld(handle) && QFile::remove(file);
    ::close(handle);
    return deleted;
#else
    return QFile::remove(file);
#endif
}

QString timeLiteral(const QString& time) {
    return time.isEmpty() ? u"NULL"_s : u"#"_s + time + u"#"_s;
}

} // namespace

bool canChangeShifts(const QString& markerFile) {
    return !QFile::exists(markerFile) || deleteIfFree(markerFile);
}

bool isShiftSignedIn(jet::Database& database, qint64 shiftId) {
    return database.hasRows(u"SELECT * FROM employee WHERE shiftsid="_s + QString::number(shiftId) +
                            u" AND signedin<>0"_s);
}

bool isShiftInUse(jet::Database& database, qint64 shiftId) {
    return database.hasRows(u"SELECT * FROM employee WHERE shiftsid="_s + QString::number(shiftId));
}

bool IsValidTimeSeries(const QStringList& series) {
    if (series.isEmpty())
        return true;
    const QString& first = series.first();
    const QString& last = series.last();
    QString previous = first;
    bool wrapped = false, justWrapped = false;
    for (const QString& t : series) {
        if (!wrapped && t < previous)
            wrapped = justWrapped = true;
        if (wrapped) {
            if (justWrapped)
                justWrapped = false;
            else if (t < previous)
                return false;
            if (t > last || t > first)
                return false;
        }
        previous = t;
    }
    return true;
}

bool isTimerTime(const QString& text) {
    const QString marker = text.right(2);
    const double hour = values::val(text.left(2));
    // From the colon on, so that these are never minutes too many.
    const double minutes = values::val(text.mid(2, 2));
    return (marker == u"PM" || marker == u"AM") && hour >= 1 && hour <= 12 && minutes < 60;
}

void deleteShift(jet::Database& database, qint64 shiftId) {
    const QString id = QString::number(shiftId);
    jet::Transaction transaction(database);
    database.execute(u"DELETE FROM shiftstimer WHERE shiftsid="_s + id);
    database.execute(u"DELETE FROM shifts WHERE id="_s + id);
    transaction.commit();
}

void addShift(jet::Database& database, const Shift& shift) {
    database.execute(u"INSERT INTO shifts (description, earliestsignin, latestsignout) VALUES('"_s +
                     quoted(shift.description) + u"', "_s + timeLiteral(shift.earliest) + u","_s +
                     timeLiteral(shift.latest) + u")"_s);
}

bool changeShift(jet::Database& database, qint64 shiftId, const Shift& shift, bool resetTimer) {
    const QString id = QString::number(shiftId);
    jet::Transaction transaction(database);
    const int changed =
        database.execute(u"UPDATE shifts SET description='"_s + quoted(shift.description) +
                         u"', earliestsignin="_s + timeLiteral(shift.earliest) +
                         u", latestsignout="_s + timeLiteral(shift.latest) + u" WHERE id="_s + id);
    if (resetTimer)
        database.execute(u"DELETE FROM shiftstimer WHERE shiftsid="_s + id);
    transaction.commit();
    return changed > 0;
}

bool saveTimer(jet::Database& database, qint64 shiftId, const QStringList& suspend,
               const QStringList& signOut) {
    const QString id = QString::number(shiftId);
    jet::Transaction transaction(database);
    if (!database.hasRows(u"SELECT * FROM shifts WHERE id="_s + id))
        return false;
    database.execute(u"DELETE FROM shiftstimer WHERE shiftsid="_s + id);
    const auto insert = [&](const QStringList& times, const QString& type) {
        for (const QString& time : times) {
            if (!time.isEmpty())
                database.execute(u"INSERT INTO shiftstimer (shiftsid, runtime, runtype) VALUES("_s +
                                 id + u",'"_s + quoted(time) + u"','"_s + type + u"')"_s);
        }
    };
    insert(suspend, u"Suspend"_s);
    insert(signOut, u"Signout"_s);
    transaction.commit();
    return true;
}

} // namespace timemgmt
