#include "core/papers/PaperCheck.h"

#include <QDateTime>
#include <QHash>
#include <QMutex>

#include <algorithm>

namespace core {

namespace {

/// What was read and found good in this run, with its date then.
class Known {
  public:
    bool has(const QString& path, const QDateTime& date) {
        const QMutexLocker lock(&m_mutex);
        return m_dates.value(path) == date;
    }
    void add(const QString& path, const QDateTime& date) {
        const QMutexLocker lock(&m_mutex);
        m_dates.insert(path, date);
    }

  private:
    QMutex m_mutex;
    QHash<QString, QDateTime> m_dates;
};

Known& known() {
    static Known all;
    return all;
}

} // namespace

PaperCheck::PaperCheck(keeping::PaperStore store, std::vector<keeping::Content> contents,
                       QObject* owner, Told told)
    : m_thread([this, store = std::move(store), contents = std::move(contents), owner,
                told = std::move(told)] { run(store, contents, owner, told); }) {}

PaperCheck::~PaperCheck() {
    m_stop = true;
    m_thread.join();
}

void PaperCheck::run(const keeping::PaperStore& store, std::vector<keeping::Content> contents,
                     QObject* owner, const Told& told) {
    const auto tell = [&](const QString& hash, State state) {
        QMetaObject::invokeMethod(
            owner, [told, hash, state] { told(hash, state); }, Qt::QueuedConnection);
    };
    std::erase_if(contents, [&](const keeping::Content& content) {
        if (m_stop)
            return true;
        const State state = store.look(content);
        tell(content.hash, state);
        return state != State::Good;
    });
    std::sort(contents.begin(), contents.end(),
              [](const auto& a, const auto& b) { return a.bytes < b.bytes; });
    for (const keeping::Content& content : contents) {
        const QString path = store.pathOf(content.hash);
        const QDateTime date = store.touched(content.hash);
        if (m_stop || known().has(path, date))
            continue;
        const State state = store.check(content, [this](int) { return !m_stop; });
        if (m_stop)
            return;
        if (state == State::Good)
            known().add(path, date);
        tell(content.hash, state);
    }
}

} // namespace core
