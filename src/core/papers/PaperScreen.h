#pragma once

#include <QString>
#include <QStringList>

namespace core {

/// What shows the papers of one record, "frmPapers".
class PaperScreen {
  public:
    virtual ~PaperScreen() = default;
    /// Of the record with that number of a screen ("frmJob").
    virtual void showRecord(const QString& screen, qint64 key) = 0;
    /// Puts files beside the record shown, if its user may; what can't be taken is told.
    virtual void addFiles(const QStringList& paths) = 0;
};

/// The property of a record module that says how many papers its record has.
inline constexpr char papersProperty[] = "papers";

} // namespace core
