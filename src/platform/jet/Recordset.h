#pragma once

#include "platform/jet/Error.h"
#include "platform/jet/Value.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace jet {

class Database;
class RecordsetData;

enum class RecordsetType {
    Dynaset,  ///< holds the keys; rows are fetched as they are shown and can be edited
    Snapshot, ///< read whole at once; cannot be edited
};

/// The rows of a select. Value semantics: copies share position and rows. No read stays open
/// between calls. Until a row exists bof() and eof() are both true and reading a field throws
/// Error(noCurrentRecord).
class Recordset {
  public:
    Recordset() = default; ///< closed

    bool isOpen() const { return m_data != nullptr; }
    void close() { m_data.reset(); }

    bool bof() const;
    bool eof() const;
    bool isEmpty() const { return bof() && eof(); }
    /// All rows of the set. Of a large set that is held in part they have to be counted.
    int recordCount() const;
    /// Place of the current row from 0; -1 at bof or eof. Counted as recordCount().
    int absolutePosition() const;
    /// Whether these two are known without asking the database.
    bool knowsPlace() const;
    /// Whether the current row is the set's first or last; known without counting the others. False
    /// where there is none.
    bool isFirst() const;
    bool isLast() const;

    void moveFirst();
    void moveLast();
    void moveNext();     ///< past the last row is eof; at eof throws noCurrentRecord
    void movePrevious(); ///< before the first row is bof; at bof throws noCurrentRecord
    void moveTo(int position);

    /// The key of the row that a step of 1 or -1 leads to, as far as it is known without asking the
    /// database; else Null.
    Value keyAhead(int step) const;

    /// The first row of the set that meets the criterion becomes current. If none does, noMatch()
    /// is true and the current row stays.
    void findFirst(const QString& criteria);
    bool noMatch() const;

    /// A mark of the current row: its key, so that it still means the same row after requery().
    Value bookmark() const;
    /// Goes to a marked row; throws rowDeleted where it has gone.
    void setBookmark(const Value& mark);

    /// Field of the current row (or of the row being added or edited) by name, without regard to
    /// case; of two fields of one name the first, and both as Table.Name. Throws itemNotFound,
    /// noCurrentRecord, rowDeleted.
    Value operator[](QStringView field) const;
    Value field(int index) const;
    QString text(QStringView field) const { return (*this)[field].toText(); }
    QStringList fieldNames() const;

    void addNew();
    /// Takes the current row for editing. Throws rowDeleted if it has gone.
    void edit();
    void set(QStringView field, const Value& value);
    /// Writes the fields that were set. After addNew() the new row is in the set (its place is the
    /// end) and lastAddedKey() tells its number; the current row stays, as the engine has it.
    void update();
    void cancelUpdate();
    /// Deletes the current row. The position stays on the deleted row until a move.
    void remove();
    /// The key that this connection's own insert was given.
    Value lastAddedKey() const;

    /// Reads the set again. Keeps no position: the first row is current.
    void requery();
    /// Reads the set again and goes to a marked row, in one wait on a server. False if that has
    /// gone; the row that moved up into its place is then current, or the last one.
    bool requeryAt(const Value& mark);
    /// The row's fields are read again from the database.
    void refreshRow();

    const QString& sql() const;

  private:
    friend class Database;
    explicit Recordset(std::shared_ptr<RecordsetData> data) : m_data(std::move(data)) {}
    std::shared_ptr<RecordsetData> m_data;
};

} // namespace jet
