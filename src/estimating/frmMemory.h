#pragma once

#include "core/Background.h"
#include "estimating/memory/MemoryWindow.h"
#include "platform/controls/Grid.h"
#include "platform/screen/Form.h"

#include <QElapsedTimer>

#include <memory>

class QLabel;
class QPushButton;
class QTabWidget;

namespace estimating {

/// What the shop took before for the part that is being estimated and for each operation of its
/// routing, and what was quoted for the part. It stands beside the estimate and follows it; a
/// figure goes into the estimate by a click or Enter.
class frmMemory : public screen::Form, public MemoryWindow {
  public:
    static constexpr char formName[] = "frmMemory";
    frmMemory();

    QSize sizeHint() const override;
    void Form_Load() override;
    bool Form_QueryUnload() override;

    void follow(const MemoryShown& shown) override;
    void setHost(Host host) override { m_host = std::move(host); }

    void cmdBring_Click();
    void cmdBack_Click();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void read();
    void show(Memory memory);
    void showLines();
    void showJobs();
    void showQuotes();
    void showState();
    void selectActive();
    void bring(std::optional<double> figure);
    /// The figure of the current cell; where it has none, what this lot would take.
    void bringCell(const controls::Grid* grid);
    /// What a cell offers to the estimate; nothing where that makes no sense.
    std::optional<double> figureOfLine(int row, int column) const;
    std::optional<double> figureOfJob(int row, int column) const;
    const MemoryLine* line() const;
    QStringList textsOf(const MemoryLine& line) const;
    double lot() const { return m_shown.quantity > 0 ? m_shown.quantity : 1; }

    controls::Grid* sprMemory = nullptr;
    QTabWidget* SSTabBehind = nullptr;
    controls::Grid* sprJobs = nullptr;
    controls::Grid* sprQuotes = nullptr;
    QLabel* lblState = nullptr;
    QPushButton* cmdBring = nullptr;

    MemoryShown m_shown;
    Memory m_memory;
    QString m_failure;
    QElapsedTimer m_failed; ///< since the reading failed
    bool m_isRead = false;  ///< what is shown answers the question
    bool m_isAsked = false; ///< since it was opened
    bool m_byUser = false;  ///< is being closed by the user
    Host m_host;
    std::unique_ptr<core::Background> m_background; ///< ends first
};

} // namespace estimating
