#pragma once

#include "core/Background.h"
#include "desk/StartFacts.h"
#include "platform/screen/Form.h"

#include <QTimer>

class QLabel;
class QPushButton;
class QTreeWidget;

namespace desk {

/// What needs a person today, by the rights of who is signed in: each line leads to its record or
/// to a list. It reads beside all work, again whenever somebody wrote and once a minute, and never
/// takes the focus. Who closes it doesn't see it again until he asks for it.
class frmStart : public screen::Form {
  public:
    static constexpr char formName[] = "frmStart";
    frmStart();
    ~frmStart() override;
    void Form_Load() override;
    void Form_Activate() override;
    bool Form_QueryUnload() override;
    QSize sizeHint() const override;

    void cmdOpen_Click();
    /// Whether the signed-in user wants it at the start.
    static bool isWanted();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void readLater(bool evenIfUnchanged);
    void show(const std::vector<StartSection>& sections);
    void showExceptions();
    void follow(const StartTarget& target);

    QTreeWidget* tvwToday;
    QLabel* lblState;
    Rights m_rights;
    std::vector<StartSection> m_sections; ///< read, without the exceptions
    std::vector<StartTarget> m_targets;   ///< of the items, by their number
    QTimer m_timer;
    qint64 m_exceptions = -1;
    bool m_isRead = false;
    bool m_byUser = false; ///< is being closed by the user
    bool m_fresh = false;
    std::shared_ptr<struct StartReading> m_reading;
    std::unique_ptr<core::Background> m_background; ///< ends first
};

} // namespace desk
