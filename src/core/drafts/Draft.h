#pragma once

#include "platform/jet/Value.h"

#include <QDateTime>
#include <QJsonObject>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace core {

/// What stood in an open entry when it was last written aside.
struct Draft {
    QString form;   ///< "frmEstimate"
    QString record; ///< how the user calls what it is: "Estimate"
    qint64 key = 0; ///< of the record; 0: a new one
    QDateTime at;
    /// A save of this new record was begun. Whether it was done is seen in the records alone.
    bool saving = false;
    QJsonObject entry; ///< the module's own
    QString file = {}; ///< of one that was left behind
    /// What its user is asked.
    QString question() const;
    /// What was typed, in words, to be copied from where there is no record to open any more.
    QString inWords() const;
};

/// The drafts of the entries that are open in this run of the program: files of the user's own, in
/// a folder that each run has for itself and that only he can read. They are written on a thread;
/// what can't be written is passed over, since typing must go on.
///
/// A draft belongs to the user who is signed in and to the open database.
namespace drafts {

void write(const Draft& draft);
/// Returns when it is on the disk.
void writeNow(const Draft& draft);
/// The module's entry has ended.
void remove(const QString& form);
/// Waits for what is on its way to the disk: before the process ends.
void finish();

/// What runs that have ended without closing left behind, the oldest first. No other run is offered
/// it meanwhile.
class Left {
  public:
    Left();
    ~Left();
    Left(const Left&) = delete;
    Left& operator=(const Left&) = delete;
    const std::vector<Draft>& drafts() const { return m_drafts; }
    /// It was opened, or its user wants it no more.
    static void remove(const Draft& draft);

  private:
    struct Folder;
    std::vector<Draft> m_drafts;
    std::vector<std::unique_ptr<Folder>> m_folders;
};

} // namespace drafts

/// A value as a draft keeps it, and back: dates and money stay what they are.
QJsonValue packedValue(const jet::Value& value);
jet::Value unpackedValue(const QJsonValue& packed);

} // namespace core
