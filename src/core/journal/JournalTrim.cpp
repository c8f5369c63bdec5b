#include "core/journal/JournalTrim.h"

#include "core/journal/JournalTriggers.h"
#include "platform/jet/Location.h"
#include "platform/jet/Native.h"
#include "platform/values/Literals.h"

namespace core {

namespace {

constexpr int yearOfDays = 365;
constexpr int changesAtOnce = 1000;
constexpr std::chrono::milliseconds pause(100);

} // namespace

bool trimJournal(jet::Database& database, const QDateTime& now) {
    const jet::Value kept = database.lookup(u"SELECT JournalDays FROM SystemSettings"_s);
    const qint64 days = kept.isNull() ? yearOfDays : kept.toInteger();
    if (days <= 0)
        return false;
    jet::Native native(database);
    jet::Arguments limit;
    limit.addText(now.addDays(-days).toString(u"yyyy-MM-dd HH:mm:ss"_s));
    // The last row stays: the next ones are numbered behind it.
    const QByteArray before =
        database.isServer() ? native.parameter(1) + "::timestamp" : native.parameter(1);
    return native.write("DELETE FROM Journal WHERE ID IN (SELECT ID FROM Journal WHERE " +
                            native.quoted(u"At"_s) + " < " + before +
                            " AND ID < (SELECT MAX(ID) FROM Journal) ORDER BY " +
                            native.quoted(u"At"_s) + " LIMIT " + QByteArray::number(changesAtOnce) +
                            ')',
                        limit) == changesAtOnce;
}

JournalTrim::JournalTrim(QString location, QDateTime now)
    : m_thread([this, where = std::move(location), when = std::move(now)] { run(where, when); }) {}

JournalTrim::~JournalTrim() {
    m_stop = true;
    m_thread.join();
}

void JournalTrim::run(const QString& location, const QDateTime& now) {
    try {
        const auto database = jet::isServerUri(location) ? jet::Database::openServer(location)
                                                         : jet::Database::openFile(location);
        m_kept = isJournalKept(*database) ? Kept::Yes : Kept::No;
        while (!m_stop && trimJournal(*database, now))
            std::this_thread::sleep_for(pause);
    } catch (const std::exception&) {
        return; // the next start tries again
    }
}

std::unique_ptr<JournalTrim>& JournalTrim::current() {
    static std::unique_ptr<JournalTrim> trim;
    return trim;
}

} // namespace core
