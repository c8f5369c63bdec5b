#pragma once

#include "timemgmt/exceptions/ExceptionMemory.h"
#include "timemgmt/exceptions/TimeChecks.h"

#include <functional>
#include <memory>

namespace timemgmt {

/// All time records that a person must look at. They are read once; from then on only what may have
/// changed is read again: records with higher numbers than any before, those that are open, those
/// on the list, those of the last two weeks, and of all the older ones a small part in turn, since
/// other programs and stations change records without a word. The operations of open jobs are few
/// and read each time. Belongs to one thread.
class ExceptionList {
  public:
    /// Makes a further connection to the database, to read on a thread of its own; may give none.
    using Connect = std::function<std::unique_ptr<jet::Database>()>;

    /// Reads all. `stop` is asked now and then; true breaks off, and the list stays as it was.
    /// False if it did.
    bool readAll(jet::Database& database, const QDateTime& now, const Connect& connect = {},
                 const std::function<bool()>& stop = {});
    bool wasRead() const { return m_read; }
    /// Reads what may have changed.
    void refresh(jet::Database& database, const QDateTime& now);

    /// What another list of this database can begin with, after refresh() or readAll().
    QByteArray remembered(jet::Database& database);
    /// Begins with that instead of reading all; refresh() comes next. False, and nothing taken,
    /// where it isn't whole, or isn't about this database, or is of a month ago or more.
    bool recall(jet::Database& database, const QByteArray& content, const QDateTime& now);

    /// The latest first; operations, which have no time, before all others.
    std::vector<TimeException> lines() const;
    std::size_t count() const { return m_known.lines.size(); }

  private:
    using Record = TimeException::Record;

    void add(std::vector<TimeException> found);
    /// The numbers of the records on the list, but for those that are there as entered by hand.
    std::vector<qint64> listed(Record record) const;

    KnownExceptions m_known;
    bool m_read = false;
};

} // namespace timemgmt
