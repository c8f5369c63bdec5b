#pragma once

#include "JobModules.h"
#include "platform/values/Literals.h"

// Columns of sprOper.
inline constexpr int noteColumn = 1;
inline constexpr int descriptionColumn = 2;
inline constexpr int timeColumn = 4;
inline constexpr int estimatedColumn = 6;

/// The job module on a shop with one job of three operations.
class JobScreen : public JobModules {
  protected:
    void prepare() override {
        JobModules::prepare();
        m_acme = customer(u"Acme"_s);
        const char16_t* names[] = {u"Boring", u"Milling", u"Plating", u"Turning"};
        for (int i = 0; i < 4; ++i) {
            m_operations[i] = operation(QString::fromUtf16(names[i]), i == 2 ? u"C"_s : u"I"_s,
                                        i == 2 ? u"0"_s : u"40"_s);
        }
        m_job = job(m_acme, u"12-34"_s, 10);
        // Boring, Milling, Plating, each with a note and a place in the schedule.
        for (int row = 1; row <= 3; ++row) {
            const qint64 id =
                jobOper(m_job, row, m_operations[row - 1], row == 3 ? u"100"_s : u"0"_s);
            jobNote(id, m_job, row, u"note "_s + QString::number(row));
            database().execute(u"INSERT INTO JobOperSchedule (JobNo, SeqNo, Description) "
                               "VALUES(%1,%2,'bar %2')"_s.arg(m_job)
                                   .arg(row));
        }
    }

    core::RecordScreen* openJobs() { return dynamic_cast<core::RecordScreen*>(open(s(u"frmJob"))); }
    /// The notes of a document, by place.
    QStringList notes(qint64 jobNo) const {
        return rows(u"SELECT SeqNo, OperNotes FROM JobOperNote WHERE JobNo = %1 "
                    "ORDER BY SeqNo, OperNotes"_s.arg(jobNo));
    }
    QStringList bars() const {
        return rows(u"SELECT SeqNo, Description FROM JobOperSchedule ORDER BY "
                    "Description"_s);
    }
    /// The routing with its notes found through their binding to the row.
    QStringList bound(qint64 jobNo) const {
        return rows(u"SELECT JobOper.SeqNo, Operation.Description, "
                    "JobOperNote.OperNotes FROM (JobOper INNER JOIN Operation ON "
                    "JobOper.OperNo = Operation.OperNo) LEFT JOIN JobOperNote ON "
                    "JobOper.ID = JobOperNote.ID WHERE JobOper.JobNo = %1 ORDER "
                    "BY JobOper.SeqNo"_s.arg(jobNo));
    }
    void edit() { press(s(u"cmdEdit")); }
    void save() { press(s(u"cmdSave")); }
    void cancel() {
        expectBox(s(u"Are you sure you want to cancel?"), screen::Answer::Yes);
        press(s(u"cmdCancel"));
    }
    void removeRow(int row, const char16_t* description) {
        control<controls::Grid>(s(u"sprOper"))->setActiveRow(row);
        expectBox(u"Delete operation %1?"_s.arg(s(description)), screen::Answer::Yes);
        press(s(u"cmdOper(1)"));
    }
    /// Inserts the first operation that the routing lacks.
    void insertBefore(int row) {
        control<controls::Grid>(s(u"sprOper"))->setActiveRow(row);
        whenShown(s(u"frmInsOper"), [this] {
            press(s(u"optPosition(0)"));
            press(s(u"cmdOK"));
        });
        press(s(u"cmdOper(0)"));
    }

    qint64 m_acme = 0;
    qint64 m_operations[4] = {};
    qint64 m_job = 0;
};
