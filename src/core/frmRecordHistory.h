#pragma once

#include "core/journal/JournalForm.h"
#include "core/journal/RecordHistory.h"

namespace core {

/// Every change of one record and of the rows that belong to it.
class frmRecordHistory : public JournalForm, public RecordHistory {
  public:
    static constexpr const char* formName = "frmRecordHistory";
    frmRecordHistory();
    void showRecord(const QString& screen, qint64 key) override;
};

} // namespace core
