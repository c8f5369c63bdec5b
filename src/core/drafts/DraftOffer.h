#pragma once

#include <QString>

namespace core {

/// After a sign-in: asks for each draft that the user left behind, when the program ended without
/// closing, whether it is to be opened. What was saved is not asked for. What isn't thrown away by
/// his word is asked for again at the next start.
void offerDrafts();

/// What was typed into a record that isn't there any more, to be copied: "frmDraft".
class DraftTextDialog {
  public:
    virtual ~DraftTextDialog() = default;
    /// True if the draft is to be thrown away.
    virtual bool tell(const QString& why, const QString& text) = 0;
};

} // namespace core
