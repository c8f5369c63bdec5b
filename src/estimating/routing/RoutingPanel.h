#pragma once

#include "estimating/Routing.h"
#include "platform/controls/Event.h"
#include "platform/controls/LineGrid.h"
#include "platform/screen/Form.h"

#include <QWidget>

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <vector>

class QPushButton;

namespace estimating {

enum class RoutingMode { Browse, Add, Edit };

/// The two lists under an estimate's or a job's header: the routing `sprOper` with `cmdOper(0)`,
/// `cmdOper(1)` and the rate pair `cmdOperRate(0)`, `cmdOperRate(1)`, and the fixed costs `sprMisc`
/// with `cmdMisc(0)`, `cmdMisc(1)`. It holds both as working copies; the notes of rows are staged
/// in the database as rows come, go and move. What was done to the rows can be taken back until
/// the save.
class RoutingPanel : public QWidget {
  public:
    RoutingPanel(screen::Form& form, const RoutingKind& kind, Qt::Orientation orientation);

    /// Whether money is shown; asked once when the module opens, before rows are.
    void setShowDollar(bool showDollar);
    /// Shows a document's rows. `documentNo` is 0 for one that is being added.
    void showRows(qint64 documentNo, std::vector<OperRow> operations,
                  std::vector<MiscRow> fixedCosts, bool oneShopRate);
    /// Cells and buttons of the mode; Add also makes the document a new one (number 0).
    void setMode(RoutingMode mode);
    /// Jobs only: whether estimated figures can't be typed.
    void setEstimatedLocked(bool locked);
    /// Shows the rows again, after the owner changed them through the references below.
    void redraw();

    std::vector<OperRow>& operations() { return m_operations->rows(); }
    const std::vector<OperRow>& operations() const { return m_operations->rows(); }
    std::vector<MiscRow>& fixedCosts() { return m_fixedCosts->rows(); }
    const std::vector<MiscRow>& fixedCosts() const { return m_fixedCosts->rows(); }
    /// Why what was typed into some cell can't be saved, with that cell opened; empty if all is
    /// well.
    QString complaint();
    controls::LineList& operationLines() { return *m_operations; }
    controls::LineList& fixedCostLines() { return *m_fixedCosts; }
    /// The operation of the active row; 0 for none.
    qint64 activeOperation() const;
    /// Puts a figure into the time cell of an operation, as if it had been typed there, and goes to
    /// it. Nothing in Browse.
    void bringTime(qint64 operNo, double figure);
    bool oneShopRate() const { return m_oneShopRate; }
    void setOneShopRate(bool oneShopRate);
    qint64 documentNo() const { return m_documentNo; }

    /// Asked before the question of a removal; false keeps the row, its reason told.
    std::function<bool(const OperRow&)> mayRemove;
    /// Jobs only: the picture and words of the status cell.
    std::function<std::pair<QIcon, QString>(const OperRow&)> statusPicture;

    /// A time, rate, price or quantity changed, or the rate mode.
    controls::Event<> costChanged;
    /// Fixed cost rows came or went.
    controls::Event<> fixedCostsChanged;
    /// Another operation is the active one, or operations came, went or changed.
    controls::Event<> operationsFollowed;

  private:
    using OperLines = controls::LineModel<OperRow>;
    using MiscLines = controls::LineModel<MiscRow>;
    /// The note of a row that comes, or that comes back after it was taken out.
    struct KeptNote {
        QString text;
        bool comesBack = false;
    };

    QWidget* operPane();
    QWidget* miscPane();
    QPushButton* button(const QString& name, const QString& caption, const QString& meaning,
                        std::function<void()> click);
    std::vector<controls::LineColumn<OperRow>> operColumns();
    std::vector<controls::LineColumn<MiscRow>> miscColumns();
    controls::LineColumn<OperRow> figureColumn(const QString& title, int characters,
                                               std::optional<double> OperRow::*which);
    void stage(const controls::LineStep& step, OperRow& row);
    void showRateMode();

    void insertOperation();
    void removeOperation();
    void insertItems();
    void removeItem();
    void switchRateMode(bool oneShopRate);
    void openNote(int row);
    void writeNote(int place, const OperRow& stands, const OperRow& put);

    screen::Form& m_form;
    const RoutingKind& m_kind;
    std::shared_ptr<OperLines> m_operations = std::make_shared<OperLines>();
    std::shared_ptr<MiscLines> m_fixedCosts = std::make_shared<MiscLines>();
    controls::LineGrid<OperRow>* m_oper = nullptr;
    controls::LineGrid<MiscRow>* m_misc = nullptr;
    int m_noteColumn = -1;
    int m_timeColumn = -1;
    std::map<qint64, KeptNote> m_notes; ///< by operation
    std::set<qint64> m_storedNotes;     ///< operations whose notes were there before the entry
    bool m_noteIsWritten = false;       ///< by its dialog
    QPushButton* m_operButtons[2] = {};
    QPushButton* m_miscButtons[2] = {};
    QPushButton* m_rateButtons[2] = {};

    RoutingMode m_mode = RoutingMode::Browse;
    qint64 m_documentNo = 0;
    bool m_showDollar = true;
    bool m_oneShopRate = true;
    bool m_estimatedLocked = true;
};

} // namespace estimating
