#include "platform/system/SingleInstance.h"

#include "platform/values/Literals.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QRegularExpression>
#include <QSysInfo>

namespace platform {

namespace {

QString lockFileName() {
    QString user = qEnvironmentVariable("USER");
    if (user.isEmpty())
        user = qEnvironmentVariable("USERNAME");
    QString name = u"Mirsa-%1-%2.lock"_s.arg(QSysInfo::machineHostName(), user);
    static const QRegularExpression unfit(u"[^A-Za-z0-9._-]"_s);
    return name.replace(unfit, u"_"_s);
}

} // namespace

SingleInstance::SingleInstance(const QString& programFolder) {
    for (const QString& folder : {programFolder, QDir::tempPath()}) {
        m_lock = std::make_unique<QLockFile>(folder + u'/' + lockFileName());
        // Age says nothing about a program that runs all day; only a dead process frees the lock.
        m_lock->setStaleLockTime(0);
        m_first = m_lock->tryLock(0);
        if (m_first || m_lock->error() == QLockFile::LockFailedError)
            return;
    }
    // Where no folder takes a lock nobody can be told apart; the program must still start.
    m_first = true;
}

SingleInstance::~SingleInstance() = default;

} // namespace platform
