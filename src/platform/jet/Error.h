#pragma once

#include <QString>

#include <exception>
#include <optional>

namespace jet {

/// What failed: the statement itself, or what the database stands on. The latter can happen to any
/// statement, is nobody's mistake, and may be gone when the same is tried again.
enum class Failure {
    Statement,
    ConnectionLost, ///< the server was not reached or was lost
    LockNotHad,     ///< another station kept the lock for longer than is waited
    DiskFull,
    ReadOnly, ///< the file or the server takes no writes
    FileGone, ///< the database's file is not to be had, or the share it lies on
};

/// A failure of the database, with the number and text that the engine gives it.
class Error : public std::exception {
  public:
    Error(int number, QString text, Failure failure = Failure::Statement)
        : m_number(number), m_failure(failure), m_text(std::move(text)), m_what(m_text.toUtf8()) {}
    int number() const { return m_number; }
    const QString& text() const { return m_text; }
    Failure failure() const { return m_failure; }
    const char* what() const noexcept override { return m_what.constData(); }

    /// The name of the step in which the statement that failed was given (see jet::step): empty if
    /// it was given in none, nothing if that isn't known.
    const std::optional<QString>& step() const { return m_step; }
    Error withStep(const QString& name) const {
        Error named = *this;
        named.m_step = name;
        return named;
    }

  private:
    int m_number;
    Failure m_failure;
    QString m_text;
    QByteArray m_what;
    std::optional<QString> m_step;
};

/// The failures that both engines know, with their texts.
Error duplicateError();
Error fieldTooSmallError();
Error requiredFieldError(const QString& field);
Error typeMismatchError();
Error lockedError();
Error overflowError();
Error rowDeletedError();
Error noSuchTableError(const QString& table);
Error unknownFieldError(const QString& field);
Error notUpdatableError();

/// The numbers in use.
namespace errors {
inline constexpr int overflow = 6;              ///< "Overflow": a number that its column can't hold
inline constexpr int divisionByZero = 11;       ///< "Division by zero"
inline constexpr int noCurrentRecord = 3021;    ///< "No current record."
inline constexpr int duplicate = 3022;          ///< a unique index would hold two equal rows
inline constexpr int cannotOpenFile = 3024;     ///< "Could not find file '...'."
inline constexpr int unrecognizedFormat = 3343; ///< the file is no database
inline constexpr int tooFewParameters = 3061;  ///< "Too few parameters. Expected n." (unknown name)
inline constexpr int syntax = 3075;            ///< syntax error in the statement
inline constexpr int noSuchTable = 3078;       ///< table or query not found
inline constexpr int undefinedFunction = 3085; ///< function that the dialect doesn't have
inline constexpr int unknownField = 3127;      ///< INSERT names a column that the table lacks
inline constexpr int noPermission = 3112;      ///< the user of the file or server may not do it
inline constexpr int requiredField = 3314;     ///< Null in a column that must have a value
inline constexpr int prohibitedValue = 3317;   ///< a value that the table's own check refuses
inline constexpr int severalRows = 3354;       ///< a subquery for one value gave several
inline constexpr int cannotExecuteSelect = 3065; ///< a select was given to execute()
inline constexpr int notASelect = 3219;          ///< a statement without rows was opened as a set
inline constexpr int closed = 3420;              ///< a recordset that isn't open was used
inline constexpr int noTransaction = 3034;       ///< commit or rollback without a begin
inline constexpr int itemNotFound = 3265;        ///< no such field in the recordset
inline constexpr int fieldTooSmall = 3163;       ///< text longer than its column
inline constexpr int typeMismatch = 3464;        ///< data type mismatch in criteria or value
inline constexpr int needsEdit = 3020;           ///< Update without AddNew or Edit
inline constexpr int rowDeleted = 3167;          ///< "Record is deleted."
inline constexpr int locked = 3260;              ///< couldn't get the lock within the waiting time
inline constexpr int connectionFailed = 3151;    ///< the server was not reached or was lost
inline constexpr int notUpdatable = 3027;        ///< the recordset is read-only
inline constexpr int other = 3000;               ///< reserved error: the engine's own text
} // namespace errors

} // namespace jet
