#include "platform/jet/Expected.h"

#include "platform/jet/Connection.h"
#include "platform/jet/RecordsetData.h"

#include <algorithm>

namespace jet {

namespace {

/// As long as rows that are shown may be old.
constexpr std::chrono::seconds goodFor(1);

} // namespace

void Expected::set(Connection& connection, const std::vector<WantedSet>& wanted) {
    m_entries.clear();
    if (connection.engine().defers()) {
        for (const WantedSet& one : wanted)
            m_entries.push_back(
                {one.select, one.type,
                 std::make_shared<RecordsetData>(connection, one.select, one.type)});
    }
    m_isWaiting = !m_entries.empty();
    m_changes = connection.changes();
    m_since = std::chrono::steady_clock::now();
}

std::shared_ptr<RecordsetData> Expected::take(Connection& connection, const QString& select,
                                              RecordsetType type) {
    if (m_entries.empty())
        return nullptr;
    if (m_changes != connection.changes() || std::chrono::steady_clock::now() - m_since > goodFor) {
        giveUp();
        return nullptr;
    }
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
        return entry.type == type && entry.select == select;
    });
    if (found == m_entries.end())
        return nullptr;
    const std::shared_ptr<RecordsetData> set = found->set;
    if (m_isWaiting) {
        std::vector<Read> reads; // none but these
        connection.runTogether(reads);
    }
    const auto read = std::find_if(m_entries.begin(), m_entries.end(),
                                   [&](const Entry& entry) { return entry.set == set; });
    if (read == m_entries.end())
        return nullptr;
    m_entries.erase(read);
    return set;
}

bool Expected::has(const WantedSet& wanted) const {
    return std::any_of(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
        return entry.type == wanted.type && entry.select == wanted.select;
    });
}

void Expected::addTo(std::vector<Read>& reads) {
    m_isWaiting = false;
    std::vector<Entry> entries;
    for (Entry& entry : m_entries) {
        try {
            reads.push_back(entry.set->request());
            entries.push_back(std::move(entry));
        } catch (const Error&) {
            continue;
        }
    }
    m_entries = std::move(entries);
}

void Expected::giveUp() {
    m_entries.clear();
    m_isWaiting = false;
}

void Expected::received(const std::vector<Read>& reads) {
    const std::size_t before = reads.size() - m_entries.size();
    for (std::size_t i = 0; i < m_entries.size(); ++i)
        m_entries[i].set->received(reads[before + i].outcome);
    m_since = std::chrono::steady_clock::now();
}

} // namespace jet
