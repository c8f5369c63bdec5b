#include "desk/find/Indexer.h"

#include "desk/find/FindKinds.h"
#include "desk/find/RecordTexts.h"
#include "platform/jet/Location.h"
#include "platform/jet/Native.h"
#include "platform/system/Remembered.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <limits>

namespace desk {

namespace {

constexpr int rowsAtOnce = 2000;
constexpr int latestRows = 2000;    ///< looked at with each change
constexpr int rowsInTurn = 20000;   ///< of the older ones
constexpr int mostChanges = 20000;  ///< of the journal, taken in at once
constexpr int betweenLooks = 10000; ///< milliseconds
constexpr qint64 beyond = std::numeric_limits<qint64>::max() / 2;

struct Stopped {};

std::unique_ptr<Indexer>& theOne() {
    static std::unique_ptr<Indexer> indexer;
    return indexer;
}

int kinds() {
    return static_cast<int>(findKinds().size());
}

} // namespace

Indexer::Indexer(QString location, QString path)
    : m_location(std::move(location)), m_path(std::move(path)), m_thread([this] { run(); }) {}

Indexer::~Indexer() {
    {
        const std::scoped_lock lock(m_mutex);
        m_stop = true;
    }
    m_asked.notify_one();
    m_thread.join();
}

void Indexer::look() {
    {
        const std::scoped_lock lock(m_mutex);
        m_wanted = true;
    }
    m_asked.notify_one();
}

bool Indexer::pause(int milliseconds) {
    std::unique_lock lock(m_mutex);
    m_asked.wait_for(lock, std::chrono::milliseconds(milliseconds),
                     [this] { return m_stop || m_wanted; });
    m_wanted = false;
    return !m_stop;
}

void Indexer::run() {
    do {
        try {
            work();
        } catch (const Stopped&) {
            return;
        } catch (const jet::Error& error) {
            // A file that can't be read is made anew.
            if (error.number() == jet::errors::unrecognizedFormat)
                QFile::remove(m_path);
        } catch (const std::exception&) {
            // The database or the folder can't be had just now; what is found is less meanwhile.
        }
    } while (pause(betweenLooks));
}

void Indexer::work() {
    const auto shop = jet::Database::openFile(m_location);
    FileIndex index(m_path);
    build(*shop, index);
    m_percent = 100;
    do {
        lookOver(*shop, index);
        ++m_looks;
    } while (pause(betweenLooks));
}

void Indexer::build(jet::Database& shop, FileIndex& index) {
    // What is changed while it is being made is taken in afterwards.
    if (index.journalEntry() == 0)
        index.setJournalEntry(changesSince(shop, 0, 1).last);
    std::vector<qint64> highest;
    qint64 all = 0, done = 0;
    for (int kind = 0; kind < kinds(); ++kind) {
        highest.push_back(highestKey(shop, kind));
        all += highest.back();
    }
    for (int kind = 0; kind < kinds(); ++kind) {
        auto range = index.range(kind).value_or(
            FileIndex::Range{highest[static_cast<std::size_t>(kind)] + 1,
                             highest[static_cast<std::size_t>(kind)], 0});
        const bool whole = range.low > range.high;
        QElapsedTimer took;
        while (range.low > 0) {
            took.start();
            const FileIndex::Texts texts = textsBelow(shop, kind, range.low, rowsAtOnce);
            range.low = texts.empty() ? 0 : texts.back().first;
            index.write(kind, texts, {}, range, true);
            m_percent = static_cast<int>(std::min<qint64>(
                99, 100 * (done + range.high - range.low) / std::max<qint64>(1, all)));
            // Half of one processor at most is its own.
            std::unique_lock lock(m_mutex);
            m_asked.wait_for(lock, std::chrono::milliseconds(took.elapsed()),
                             [this] { return m_stop.load(); });
            if (m_stop)
                throw Stopped();
        }
        if (whole && range.high > rowsAtOnce)
            index.optimize(kind);
        done += range.high;
    }
}

bool Indexer::lookOver(jet::Database& shop, FileIndex& index) {
    const qint64 version = jet::Native(shop).value("PRAGMA data_version").toInteger();
    if (version == m_version)
        return false;
    m_version = version;
    const Changes changes = changesSince(shop, index.journalEntry(), mostChanges);
    for (const auto& [kind, keys] : changes.keys) {
        const auto known = index.range(kind);
        const FileIndex::Texts now = textsOf(shop, kind, keys);
        std::set<qint64> gone = keys;
        for (const auto& [key, text] : now)
            gone.erase(key);
        if (known)
            index.write(kind, now, {gone.begin(), gone.end()}, *known, false);
    }
    index.setJournalEntry(changes.last);
    for (int kind = 0; kind < kinds(); ++kind) {
        const auto known = index.range(kind);
        if (!known)
            continue;
        FileIndex::Range range = *known;
        const qint64 highest = highestKey(shop, kind);
        // New ones; and after a restored backup those that aren't there any more.
        const qint64 latest = std::max<qint64>(1, std::min(range.high, highest) - latestRows + 1);
        range.high = highest;
        compare(shop, index, kind, latest, beyond, range);
        for (const auto& [key, text] :
             textsWhere(shop, kind, findKinds()[static_cast<std::size_t>(kind)].changing)) {
            const auto had = index.texts(kind, key, key);
            if (had.empty() || had.front().second != text)
                index.write(kind, {{key, text}}, {}, range, false);
            if (m_stop)
                throw Stopped();
        }
        const qint64 from = range.turn >= latest ? 1 : range.turn + 1;
        range.turn = from + rowsInTurn - 1;
        if (from < latest)
            compare(shop, index, kind, from, std::min(range.turn, latest - 1), range);
        if (m_stop)
            throw Stopped();
    }
    return true;
}

void Indexer::compare(jet::Database& shop, FileIndex& index, int kind, qint64 first, qint64 last,
                      FileIndex::Range range) {
    const FileIndex::Texts now = textsBetween(shop, kind, first, last);
    const FileIndex::Texts had = index.texts(kind, first, last);
    FileIndex::Texts put;
    std::vector<qint64> gone;
    auto old = had.begin();
    for (const auto& [key, text] : now) {
        for (; old != had.end() && old->first < key; ++old)
            gone.push_back(old->first);
        const bool known = old != had.end() && old->first == key;
        if (!known || old->second != text)
            put.emplace_back(key, text);
        if (known)
            ++old;
    }
    for (; old != had.end(); ++old)
        gone.push_back(old->first);
    index.write(kind, put, gone, range, false);
}

Indexer* Indexer::on(const QString& location) {
    auto& indexer = theOne();
    if (jet::isServerUri(location))
        return nullptr;
    if (!indexer || indexer->location() != location) {
        indexer.reset();
        // Its last statement must not come when what it needs is gone already.
        qAddPostRoutine(&Indexer::end);
        indexer = std::make_unique<Indexer>(
            location, FileIndex::pathFor(location, platform::rememberedFolder()));
    }
    return indexer.get();
}

void Indexer::end() {
    theOne().reset();
}

} // namespace desk
