#include "timemgmt/exceptions/ExceptionWatch.h"

#include "platform/jet/Location.h"
#include "platform/system/Remembered.h"
#include "platform/values/Literals.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace timemgmt {

namespace {

constexpr int secondsBetweenKeeping = 600;

/// A file for each database; the location may hold a password.
QString fileFor(const QString& location, const QString& folder) {
    if (folder.isEmpty())
        return {};
    const QByteArray name =
        QCryptographicHash::hash(location.toUtf8(), QCryptographicHash::Sha256).toHex().left(24);
    return QDir(folder).filePath(u"exceptions-"_s + QString::fromLatin1(name));
}

std::unique_ptr<jet::Database> openAt(const QString& location) {
    return jet::isServerUri(location) ? jet::Database::openServer(location)
                                      : jet::Database::openFile(location);
}

std::unique_ptr<ExceptionWatch>& theOne() {
    static std::unique_ptr<ExceptionWatch> watch;
    return watch;
}

} // namespace

ExceptionWatch::ExceptionWatch(QString location, const QString& folder)
    : m_location(std::move(location)), m_file(fileFor(m_location, folder)),
      m_thread([this] { run(); }) {}

ExceptionWatch::~ExceptionWatch() {
    {
        const std::scoped_lock lock(m_mutex);
        m_stop = true;
    }
    m_asked.notify_one();
    m_thread.join();
}

void ExceptionWatch::check(const QDateTime& now) {
    {
        const std::scoped_lock lock(m_mutex);
        m_wanted = now;
        m_reading = true;
    }
    m_asked.notify_one();
}

ExceptionWatch::Lines ExceptionWatch::lines() const {
    const std::scoped_lock lock(m_mutex);
    return m_lines;
}

QString ExceptionWatch::failure() const {
    const std::scoped_lock lock(m_mutex);
    return m_failure;
}

void ExceptionWatch::run() {
    std::unique_lock lock(m_mutex);
    while (!m_stop) {
        m_asked.wait(lock, [this] { return m_stop || m_wanted; });
        if (m_stop)
            break;
        const QDateTime now = *std::exchange(m_wanted, std::nullopt);
        lock.unlock();
        QString failure;
        try {
            read(now);
        } catch (const jet::Error& error) {
            failure = error.text();
            m_database.reset(); // the next one tries a new connection
        } catch (const std::exception& error) {
            failure = QString::fromUtf8(error.what());
        }
        auto lines = std::make_shared<const std::vector<TimeException>>(m_list.lines());
        lock.lock();
        m_failure = failure;
        if (m_list.wasRead())
            m_lines = std::move(lines);
        ++m_readings;
        m_reading = m_wanted.has_value();
    }
    lock.unlock();
    keep();
    m_database.reset();
}

void ExceptionWatch::read(const QDateTime& now) {
    if (!m_database)
        m_database = openAt(m_location);
    if (m_list.wasRead() || recall(now))
        m_list.refresh(*m_database, now);
    else
        m_list.readAll(
            *m_database, now, [this] { return openAt(m_location); },
            [this] { return m_stop.load(); });
    if (!m_kept.isValid() || std::abs(m_kept.secsTo(now)) >= secondsBetweenKeeping) {
        keep();
        m_kept = now;
    }
}

bool ExceptionWatch::recall(const QDateTime& now) {
    QFile file(m_file);
    return !m_file.isEmpty() && file.open(QIODevice::ReadOnly) &&
           m_list.recall(*m_database, file.readAll(), now);
}

/// A folder that can't be written costs no more than a reading of all records.
void ExceptionWatch::keep() {
    if (m_file.isEmpty() || !m_database || !m_list.wasRead())
        return;
    try {
        const QByteArray content = m_list.remembered(*m_database);
        QDir().mkpath(QFileInfo(m_file).path());
        QSaveFile file(m_file);
        if (!file.open(QIODevice::WriteOnly))
            return;
        // It has names of employees.
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
        file.write(content);
        file.commit();
    } catch (const jet::Error&) {
        // The next reading says what is the matter.
    }
}

ExceptionWatch& ExceptionWatch::on(const QString& location) {
    auto& watch = theOne();
    if (!watch || watch->location() != location) {
        watch.reset();
        // Its last query must not come when what the queries need is gone already.
        qAddPostRoutine(&ExceptionWatch::end);
        watch = std::make_unique<ExceptionWatch>(location, platform::rememberedFolder());
    }
    return *watch;
}

void ExceptionWatch::end() {
    theOne().reset();
}

} // namespace timemgmt
