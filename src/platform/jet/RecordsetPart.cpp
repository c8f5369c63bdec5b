#include "platform/jet/RecordsetData.h"

#include <cmath>

namespace jet {

namespace {

/// A move reads some rows ahead; who goes on beyond them gets more.
constexpr int rowsAhead = 10;
constexpr int rowsFarAhead = 200;
/// The last rows of a set that is opened there.
constexpr int rowsAtTheEnd = 100;
/// Up to here the place of a row is told with it; beyond it has to be asked for.
constexpr int countedAlong = 2000;

} // namespace

int RecordsetData::held(int position) const {
    const int row = position - m_rowsAt;
    if (row < 0 || row >= m_rows.count())
        return -1;
    return m_rowsDown ? m_rows.count() - 1 - row : row;
}

bool RecordsetData::heldStand(int position) {
    return m_rowsStand && held(position) >= 0 &&
           (m_fresh || m_connection.engine().stillStands(m_mark));
}

bool RecordsetData::isAdded(const Value& key) const {
    return std::find(m_added.begin(), m_added.end(), key) != m_added.end();
}

bool RecordsetData::knowsPlace() const {
    if (!m_keysRead)
        return false;
    return isHeldWhole() ||
           (m_part.total >= 0 && (m_part.toFirst || m_part.toLast || m_part.before >= 0));
}

int RecordsetData::counted(PreparedPtr& slot, const QByteArray& sql, const Value* below) const {
    Rows rows;
    Read read = readAlong(slot, "SELECT count(*) FROM (" + sql + ") AS counted", 0, rows, below);
    m_connection.run(read);
    return static_cast<int>(rows.cell(0, 0).integer);
}

int RecordsetData::total() const {
    if (isHeldWhole() || !m_keysRead)
        return stored();
    if (m_part.total < 0)
        m_part.total = counted(m_statement->count, translation().dynaset->countedSql, nullptr) +
                       (m_removed ? 1 : 0);
    return m_part.total;
}

int RecordsetData::offset() const {
    if (m_part.toFirst || stored() == 0)
        return 0;
    if (m_part.toLast)
        return std::max(0, total() - stored());
    if (m_part.before < 0) {
        const Value first = m_keys.at(0);
        m_part.before =
            counted(m_statement->countBelow, translation().dynaset->countedBelowSql, &first);
    }
    return m_part.before;
}

/// A select beside the set's own, with its parameters and a key behind them.
Read RecordsetData::readAlong(PreparedPtr& slot, const QByteArray& sql, int limit, Rows& rows,
                              const Value* key) const {
    Read read{m_connection.prepared(slot, sql, Engine::Access::Reads, limit),
              m_connection.argumentsOf(*m_statement, m_select.literals), &rows,
              limit > 0 ? limit : -1};
    if (key != nullptr)
        read.arguments.add(*key);
    return read;
}

/// Holds the rows about a key, and no others; the row with the key or else the next one is current,
/// or the last. False if there is no row with it; the set then stays as it was if only that will
/// do.
bool RecordsetData::readAround(const Value& key, bool onlyThis) {
    const double number = key.toDouble();
    if (key.isNull() || !(std::abs(number) < 2147483647.0) || number != std::floor(number)) {
        if (!onlyThis)
            load();
        return false;
    }
    const Value from(static_cast<qint64>(number)), before(static_cast<qint64>(number) - 1);
    const DynasetPlan& plan = *translation().dynaset;
    const QByteArray few = " LIMIT " + QByteArray::number(countedAlong + 1) + ") AS counted";
    Rows up, down, total, place;
    std::vector<Read> reads;
    reads.push_back(readAlong(m_statement->up, plan.upSql, rowsAhead, up, &from));
    reads.push_back(readAlong(m_statement->down, plan.downSql, rowsAhead, down, &before));
    reads.push_back(readAlong(m_statement->few, "SELECT count(*) FROM (" + plan.countedSql + few, 0,
                              total, nullptr));
    reads.push_back(readAlong(m_statement->fewBelow,
                              "SELECT count(*) FROM (" + plan.countedBelowSql + few, 0, place,
                              &from));
    m_connection.runTogether(reads);

    const int column = columnCount();
    const bool found = !up.isEmpty() && up.cell(0, column).integer == from.toInteger();
    if (!found && onlyThis) {
        if (!isAdded(from))
            return false;
        up.clear(); // written here, though it isn't one of those that are selected
        down.clear();
    }
    m_removed = m_unread = false;
    m_keysRead = true;
    m_keys.take(up, column, keyType());
    m_keys.replaceFirst(0, down, column);
    if (!found && onlyThis)
        m_keys.append(from);
    const int below = down.count();
    m_part.toFirst = reads[1].outcome.complete && (found || !onlyThis);
    m_part.toLast = reads[0].outcome.complete && (found || !onlyThis);
    const auto counts = total.cell(0, 0).integer, places = place.cell(0, 0).integer;
    m_part.total = counts <= countedAlong ? static_cast<int>(counts) : -1;
    m_part.before = places <= countedAlong ? std::max(0, static_cast<int>(places) - below) : -1;
    m_rowsDown = up.isEmpty();
    m_rowsAt = m_rowsDown ? 0 : below;
    m_rows = std::move(m_rowsDown ? down : up);
    m_rowsStand = true;
    m_mark = m_connection.engine().mark();
    goTo(m_rowsDown && (found || !onlyThis) ? below - 1 : below);
    return found || (onlyThis && readCurrent());
}

void RecordsetData::readUp(qint64 from, bool far) {
    const DynasetPlan& plan = *translation().dynaset;
    const Value key(from);
    Rows rows;
    Read read = readAlong(far ? m_statement->upFar : m_statement->up, plan.upSql,
                          far ? rowsFarAhead : rowsAhead, rows, &key);
    const Outcome outcome = m_connection.run(read);
    const int place = m_keys.below(from);
    m_keys.cut(place);
    for (int row = 0; row < rows.count(); ++row)
        m_keys.append(rows.cell(row, columnCount()).integer);
    m_part.toLast = outcome.complete;
    m_rowsAt = place;
    m_rowsDown = false;
    m_rows = std::move(rows);
    m_rowsStand = true;
    m_mark = m_connection.engine().mark();
}

void RecordsetData::readDown(qint64 from, bool far) {
    const DynasetPlan& plan = *translation().dynaset;
    const Value key(from);
    Rows rows;
    Read read = readAlong(far ? m_statement->downFar : m_statement->down, plan.downSql,
                          far ? rowsFarAhead : rowsAhead, rows, &key);
    const Outcome outcome = m_connection.run(read);
    const int replaced = m_keys.below(from + 1);
    m_keys.replaceFirst(replaced, rows, columnCount());
    if (m_part.before >= 0)
        m_part.before = std::max(0, m_part.before + replaced - rows.count());
    m_part.toFirst = outcome.complete;
    m_rowsAt = 0;
    m_rowsDown = true;
    m_rows = std::move(rows);
    m_rowsStand = true;
    m_mark = m_connection.engine().mark();
}

/// Holds the last rows of the set, as it is now.
void RecordsetData::readLast() {
    const std::vector<Value> added = std::move(m_added);
    prepare();
    const DynasetPlan& plan = *translation().dynaset;
    Rows total;
    std::vector<Read> reads;
    reads.push_back(readAlong(m_statement->last, plan.lastSql, rowsAtTheEnd, m_rows, nullptr));
    reads.push_back(readAlong(m_statement->few,
                              "SELECT count(*) FROM (" + plan.countedSql + " LIMIT " +
                                  QByteArray::number(countedAlong + 1) + ") AS counted",
                              0, total, nullptr));
    m_connection.runTogether(reads);
    m_keys.replaceFirst(0, m_rows, columnCount());
    m_part.toFirst = reads[0].outcome.complete;
    const auto counts = total.cell(0, 0).integer;
    m_part.total = counts <= countedAlong ? static_cast<int>(counts) : -1;
    m_rowsDown = true;
    m_rowsStand = true;
    m_mark = m_connection.engine().mark();
    // What was added here stands at the end, also where it isn't one of those that are selected.
    m_added = added;
    for (const Value& key : m_added)
        if (m_keys.find(key) < 0 && (stored() == 0 || key.toLong() > keyAt(stored() - 1).toLong()))
            m_keys.append(key);
}

/// Has the key at hand of a row that a move went to.
void RecordsetData::reach() {
    if (!isPart())
        return;
    if (stored() == 0 && !isHeldWhole()) {
        load();
    } else if (m_position >= stored() && !m_part.toLast) {
        readUp(keyAt(stored() - 1).toLong() + 1, true);
    } else if (m_position < 0 && !m_part.toFirst) {
        const int before = stored();
        readDown(keyAt(0).toLong() - 1, true);
        m_position += stored() - before;
    }
}

/// Reads the current row with those that come next in a direction. False if it has gone, and the
/// position is still where it was; true also where it is the next one that stands there now.
bool RecordsetData::readMoving(int step) {
    if (!isPart() || m_current != Current::Unread || heldStand(m_position))
        return readCurrent();
    const Value key = keyAt(m_position);
    if (isAdded(key))
        return readCurrent();
    if (step > 0) {
        readUp(key.toLong(), false);
    } else {
        readDown(key.toLong(), false);
        m_position = m_rows.count() - 1;
    }
    return m_position < 0 || m_position >= stored() || readCurrent();
}

} // namespace jet
