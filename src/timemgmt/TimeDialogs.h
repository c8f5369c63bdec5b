#pragma once

#include <QDate>
#include <QString>

namespace timemgmt {

/// What "frmSignAddEdit" offers: an attendance row typed in or corrected.
class SignInDialog {
  public:
    virtual ~SignInDialog() = default;
    /// `mode` "New" (with `signId` 0), or "Edit" of that row of `Sign_in`. True if something was
    /// saved. A row that has gone is told with a message, and the dialog doesn't open.
    virtual bool ShowForm(const QString& mode, qint64 empId, qint64 signId) = 0;
};

/// What "frmTimeEdit" offers: the parts of a row of `Timelog`.
class PartsDialog {
  public:
    virtual ~PartsDialog() = default;
    /// True if something was saved. A row that has gone is told with a message, and the dialog
    /// doesn't open.
    virtual bool ShowForm(qint64 timeId) = 0;
};

/// What "frmNewTime" offers: hours put on an operation by hand.
class NewTimeDialog {
  public:
    virtual ~NewTimeDialog() = default;
    /// Begins with that employee; 0 for none. True if something was saved.
    virtual bool ShowForm(qint64 empId) = 0;
};

enum class TimePage { Work, Attendance };

/// What "frmTM" offers to those who have opened it (Forms::show). Who changes time records from
/// elsewhere lets it read again by core::refreshNeighbours({u"frmTM"_s}, u"Timelog"_s).
class TimeScreen {
  public:
    virtual ~TimeScreen() = default;
    /// Shows that day of an employee with one row selected: of `Timelog` on the page of work, of
    /// `Sign_in` on that of attendance. There it can be corrected or deleted.
    virtual void showRecord(qint64 empId, const QDate& day, TimePage page, qint64 id) = 0;
};

} // namespace timemgmt
