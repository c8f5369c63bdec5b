#pragma once

#include "core/papers/PaperCheck.h"
#include "core/papers/PaperScreen.h"
#include "core/papers/Papers.h"
#include "platform/screen/Form.h"

#include <memory>
#include <optional>

class QLabel;
class QPushButton;

namespace controls {
class ListView;
}

namespace core {

/// The papers of a record, and those of other records with its part number. Whoever may open the
/// record's module may add and remove; the others open and copy them.
class frmPapers : public screen::Form, public PaperScreen {
  public:
    static constexpr const char* formName = "frmPapers";
    frmPapers();
    void Form_Activate() override;

    void showRecord(const QString& screen, qint64 key) override;
    void addFiles(const QStringList& paths) override;

  private:
    void makeButtons(QBoxLayout* outside);
    void reload();
    void tellModule() const;
    void showState(const QString& hash, keeping::PaperStore::State state);
    void arrange();
    QString placeOf(const Paper& paper) const;
    bool isOwn(const Paper& paper) const;
    /// Those that are selected; with `own`, those of the record itself.
    std::vector<const Paper*> selected(bool own) const;
    /// A message where one that was to be opened or copied isn't what was stored.
    bool tellState(const Paper& paper, keeping::PaperStore::State state);
    std::optional<keeping::PaperStore> store();

    void cmdOpen_Click();
    void cmdSave_Click();
    void cmdAdd_Click();
    void cmdPaste_Click();
    void cmdKeep_Click();
    void cmdBehind_Click();
    void cmdRemove_Click();

    const PaperKind* m_kind = nullptr;
    qint64 m_key = 0;
    bool m_mayEdit = false;
    QStringList m_others; ///< kinds whose papers may be seen
    std::vector<Paper> m_papers;
    std::unique_ptr<PaperCheck> m_check;
    controls::ListView* lvwPapers;
    QLabel* lblState;
    QPushButton* cmdOpen;
    QPushButton* cmdSave;
    QPushButton* cmdAdd;
    QPushButton* cmdKeep;
    QPushButton* cmdBehind;
    QPushButton* cmdRemove;
};

} // namespace core
