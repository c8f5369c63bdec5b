#pragma once

#include "core/Background.h"
#include "desk/find/Finder.h"
#include "platform/screen/Form.h"

#include <QTimer>

class QLabel;
class QTreeWidget;

namespace controls {
class TextField;
}

namespace desk {

/// One field that finds records of all kinds by number and words, while they are typed. Enter shows
/// the chosen one in its module.
class frmFind : public screen::Form {
  public:
    static constexpr char formName[] = "frmFind";
    frmFind();
    ~frmFind() override;
    void Form_Load() override;
    bool Form_QueryUnload() override;
    void cmdOpen_Click();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void search();
    void showFound(const std::vector<FoundRecord>& found);
    void showState();
    /// To the next or the previous record in the list.
    void step(int by);

    controls::TextField* txtFind;
    QTreeWidget* tvwFound;
    QLabel* lblState;
    QPushButton* cmdOpen;
    QSet<int> m_kinds;
    std::vector<FoundRecord> m_found;
    QString m_failure;
    QString m_answered;   ///< what the list was found by
    bool m_opens = false; ///< Enter came before the answer
    QTimer m_timer;
    std::shared_ptr<std::unique_ptr<Finder>> m_finder; ///< of the thread
    std::unique_ptr<core::Background> m_background;    ///< ends first
};

} // namespace desk
