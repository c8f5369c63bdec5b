#include "timemgmt/exceptions/ExceptionWatch.h"

#include "platform/jet/Location.h"

namespace timemgmt {

namespace {

std::unique_ptr<jet::Database> openAt(const QString& location) {
    return jet::isServerUri(location) ? jet::Database::openServer(location)
                                      : jet::Database::openFile(location);
}

std::unique_ptr<ExceptionWatch>& theOne() {
    static std::unique_ptr<ExceptionWatch> watch;
    return watch;
}

} // namespace

ExceptionWatch::ExceptionWatch(QString location)
    : m_location(std::move(location)), m_thread([this] { run(); }) {}

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
    m_database.reset();
}

void ExceptionWatch::read(const QDateTime& now) {
    if (!m_database)
        m_database = openAt(m_location);
    if (m_list.wasRead())
        m_list.refresh(*m_database, now);
    else
        m_list.readAll(
            *m_database, now, [this] { return openAt(m_location); },
            [this] { return m_stop.load(); });
}

ExceptionWatch& ExceptionWatch::on(const QString& location) {
    auto& watch = theOne();
    if (!watch || watch->location() != location) {
        watch.reset();
        watch = std::make_unique<ExceptionWatch>(location);
    }
    return *watch;
}

void ExceptionWatch::end() {
    theOne().reset();
}

} // namespace timemgmt
