#pragma once

#include "platform/jet/Connection.h"
#include "platform/jet/Keys.h"
#include "platform/jet/Recordset.h"
#include "platform/jet/Rows.h"

namespace jet {

/// What the copies of a Recordset share. See Recordset for the meaning of its functions.
class RecordsetData {
  public:
    /// Without rows until load(), or until what request() asks for was received.
    RecordsetData(Connection& connection, const QString& select, RecordsetType type);

    /// The connection behind a database, for what else works on it within jet.
    static Connection& connectionOf(Database& database);

    const QString& sql() const { return m_select.statement; }
    void load();
    /// What is to be read for the set.
    Read request();
    void received(const Outcome& outcome);
    /// Lets the set be read with the next statement.
    void requestLater();
    /// Has the rows at hand of a set that was requested for later.
    void arrive() {
        arriveIfSent();
        if (m_unread)
            load();
    }
    void arriveIfSent() {
        if (m_later)
            takeLater();
    }

    // A set whose keys weren't read yet has rows and stands on the first.
    bool bof() const { return m_keysRead && (stored() == 0 || m_position < 0); }
    bool eof() const { return m_keysRead && (stored() == 0 || m_position >= stored()); }
    int recordCount() const { return total() - (m_removed ? 1 : 0); }
    int absolutePosition() const { return bof() || eof() ? -1 : offset() + m_position; }
    bool knowsPlace() const;
    bool isFirst() const { return !bof() && !eof() && m_position == 0 && m_part.toFirst; }
    bool isLast() const { return !bof() && !eof() && m_position == stored() - 1 && m_part.toLast; }
    bool loadAt(const Value& mark);
    Value keyAhead(int step) const;

    void moveFirst();
    void moveLast();
    void moveNext();
    void movePrevious();
    void moveTo(int position);
    void findFirst(const QString& criteria);
    bool noMatch() const { return m_noMatch; }
    Value bookmark();
    void setBookmark(const Value& mark);

    Value field(QStringView name);
    Value field(int index);
    QStringList fieldNames() const;

    void addNew();
    void edit();
    void set(QStringView field, const Value& value);
    void update();
    void cancelUpdate();
    void remove();
    const Value& lastAddedKey() const { return m_lastAddedKey; }
    void refreshRow();

  private:
    /// Keyed: rows of one table, fetched by their keys. Joined: held rows with the base row's key
    /// behind them. Whole: held rows, not to be edited.
    enum class Kind { Keyed, Joined, Whole };
    enum class Editing { No, Added, Changed };
    enum class Current { Unread, Read, Gone };
    struct Assignment {
        const Column* column;
        Value value;
    };

    struct Edited {
        Table table;
        Value key;
        std::vector<Assignment> assignments;
    };

    const Translation& translation() const { return m_statement->translation; }
    int columnCount() const { return static_cast<int>(translation().columns.size()); }
    int stored() const { return m_kind == Kind::Keyed ? keys().count() : m_rows.count(); }
    Keys& keys() const;
    Value keyAt(int position) const;
    ColumnType keyType() const { return m_statement->keyType; }
    const Table& baseTable() const;

    void prepare();
    void takeLater();
    void readKeys() const;
    // A set in key order that is held in part: RecordsetPart.cpp.
    bool isPart() const { return m_kind == Kind::Keyed && translation().dynaset->inKeyOrder; }
    bool isHeldWhole() const { return m_part.toFirst && m_part.toLast; }
    int total() const;
    int offset() const;
    int counted(PreparedPtr& slot, const QByteArray& sql, const Value* below) const;
    Read readAlong(PreparedPtr& slot, const QByteArray& sql, int limit, Rows& rows,
                   const Value* key) const;
    bool readAround(const Value& key, bool onlyThis);
    void readUp(qint64 from, bool far);
    void readDown(qint64 from, bool far);
    void readLast();
    void reach();
    bool readMoving(int step);
    bool isAdded(const Value& key) const;
    int held(int position) const;
    bool heldStand(int position);

    void goTo(int position);
    void dropRemoved();
    void drop(int position);
    void skipGone(int step);
    bool readCurrent();
    bool fetch();
    void needCurrent() const;
    void relocate(const Value& mark);

    int columnNamed(QStringView name) const;
    Value currentField(int index);
    const Column& editedColumn(QStringView name) const;
    const Assignment* assigned(const QString& column) const;
    void insertRow();
    void holdAdded(const Value& key);
    void replaceKey(const Value& key);
    void writeOne(CachedStatement& statement, const Arguments& arguments);
    void updateRow();

    bool findByKey(const Normalized& criteria);
    bool findByQuery(const Normalized& criteria);
    bool findByRows(const Normalized& criteria);
    void found(int position);

    Connection& m_connection;
    RecordsetType m_type;
    DeferredPtr m_later;
    Normalized m_select;
    StatementPtr m_statement;
    Kind m_kind = Kind::Whole;

    /// Keyed. Those of a larger set are read when they are first asked for, so that a set that is
    /// opened to add a row costs nothing.
    mutable Keys m_keys;
    mutable bool m_keysRead = true;
    std::vector<Value> m_added; ///< here, since the set was read
    Rows m_rows;             ///< Joined and Whole: all; Keyed: those of some keys, read with them
    int m_rowsAt = 0;        ///< Keyed: the place of the first of them
    bool m_rowsDown = false; ///< Keyed: they stand from the last one down
    /// Keyed: which part of the set's keys is held, and what is known of the others.
    struct Part {
        bool toFirst = true, toLast = true; ///< it reaches the end of the set
        int before = -1; ///< keys of the set that stand before it; -1 if nobody counted
        int total = -1;  ///< keys of the set
    };
    mutable Part m_part;
    bool m_unread = false; ///< the set is read where its first step leads
    ChangeMark m_mark;
    quint64 m_readIn = 0;     ///< the transaction in which the set was read
    bool m_fresh = false;     ///< nothing moved since the set was read
    bool m_rowsStand = false; ///< Keyed: m_rows may be shown while the mark stands

    int m_position = -1;
    bool m_removed =
        false; ///< the current row was deleted here; it leaves the set with the next move
    Current m_current = Current::Unread;
    Rows m_fetched; ///< Keyed: the current row
    std::vector<Cell> m_cells;
    bool m_noMatch = false;

    Editing m_editing = Editing::No;
    std::unique_ptr<Edited> m_edited; ///< of the last addNew() or edit()
    Value m_lastAddedKey;
    /// Joined: fields that were changed here, by place.
    QHash<int, std::vector<std::pair<int, Value>>> m_changed;
};

} // namespace jet
