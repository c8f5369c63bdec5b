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
    std::vector<Paper> selected(bool own) const;
    /// Work on files beside the screen, under a box with progress and Cancel where it takes long.
    /// `files` of them, each of 100 parts.
    void work(const QString& words, std::size_t files,
              const std::function<void(const keeping::Progress&)>& work);
    /// Copies a stored paper to a path. False where it wasn't, which has been told.
    bool copyTo(const Paper& paper, const QString& path);
    void tellState(const Paper& paper, keeping::PaperStore::State state);
    std::optional<keeping::PaperStore> store();
    /// What of the paths could be stored; the reasons for the others in `refused`.
    std::vector<NamedContent> storeFiles(const keeping::PaperStore& files, const QStringList& paths,
                                         QStringList& refused);
    /// The rows of what was stored. False where they weren't written, which has been told.
    bool putBeside(const std::vector<NamedContent>& stored);

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
