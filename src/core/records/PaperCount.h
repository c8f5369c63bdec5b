#pragma once

#include "core/Background.h"

namespace screen {
class Form;
}

namespace core {

/// The select of a record's papers, of the kinds that may be seen; empty where the screen's records
/// have none.
QString papersOf(const QString& screen, qint64 key);

/// Counts the papers of the record that is chosen in a list, beside the program's work, so that
/// nobody who goes through the list waits. The shell shows how many there are.
class PaperCount {
  public:
    explicit PaperCount(screen::Form& form);
    /// Of the record with that number; 0 for none.
    void show(qint64 key);

  private:
    screen::Form& m_form;
    qint64 m_key = 0;
    QObject m_here;          ///< whom the answers are for
    Background m_background; ///< ends first
};

} // namespace core
