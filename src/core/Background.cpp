#include "core/Background.h"

#include "platform/jet/Location.h"

#include <QCoreApplication>

namespace core {

Background::Background(QString location, QObject* owner)
    : m_location(std::move(location)), m_owner(owner), m_thread([this] { loop(); }) {}

Background::~Background() {
    {
        const std::scoped_lock lock(m_mutex);
        m_stop = true;
    }
    m_asked.notify_one();
    m_thread.join();
}

void Background::run(Work work, Done done, bool kept) {
    {
        const std::scoped_lock lock(m_mutex);
        m_busy -=
            static_cast<int>(std::erase_if(m_tasks, [](const Task& task) { return !task.kept; }));
        m_tasks.push_back({std::move(work), std::move(done), kept});
        ++m_busy;
    }
    m_asked.notify_one();
}

void Background::tell(std::function<void()> action) const {
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [owner = m_owner, action = std::move(action)] {
            if (owner)
                action();
        },
        Qt::QueuedConnection);
}

void Background::checkStop() const {
    if (m_stop)
        throw Stopped();
}

QString Background::perform(const Work& work) {
    try {
        if (!m_database)
            m_database = jet::isServerUri(m_location) ? jet::Database::openServer(m_location)
                                                      : jet::Database::openFile(m_location);
        work(*m_database, *this);
        return {};
    } catch (const jet::Error& error) {
        m_database.reset(); // the next one tries a new connection
        return error.text();
    } catch (const std::exception& error) {
        return QString::fromUtf8(error.what());
    }
}

void Background::loop() {
    std::unique_lock lock(m_mutex);
    try {
        while (!m_stop) {
            m_asked.wait(lock, [this] { return m_stop || !m_tasks.empty(); });
            if (m_stop)
                break;
            const Task task = std::move(m_tasks.front());
            m_tasks.pop_front();
            lock.unlock();
            const QString failure = perform(task.work);
            --m_busy;
            tell([done = task.done, failure] { done(failure); });
            lock.lock();
        }
    } catch (const Stopped&) { // somebody waits for the end
    }
    m_database.reset();
}

} // namespace core
