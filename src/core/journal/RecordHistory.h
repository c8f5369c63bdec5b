#pragma once

#include <QString>

namespace core {

/// A screen that is no record module and yet shows a record of which a journal is kept.
class ShownRecord {
  public:
    virtual ~ShownRecord() = default;
    /// Its number; 0 where none is shown.
    virtual qint64 shownRecord() const = 0;
};

/// What shows the changes of one record.
class RecordHistory {
  public:
    virtual ~RecordHistory() = default;
    /// Of the record with that number of a screen ("frmJob").
    virtual void showRecord(const QString& screen, qint64 key) = 0;
};

} // namespace core
