#pragma once

#include "estimating/Routing.h"
#include "platform/controls/Event.h"
#include "platform/controls/Grid.h"
#include "platform/screen/Form.h"

#include <QWidget>

#include <functional>
#include <vector>

class QPushButton;

namespace estimating {

enum class RoutingMode { Browse, Add, Edit };

/// The two lists under an estimate's or a job's header: the routing `sprOper` with `cmdOper(0)`,
/// `cmdOper(1)` and the rate pair `cmdOperRate(0)`, `cmdOperRate(1)`, and the fixed costs `sprMisc`
/// with `cmdMisc(0)`, `cmdMisc(1)`. It holds both as working copies; the notes of rows are staged
/// in the database as rows come and go.
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

    std::vector<OperRow>& operations() { return m_operations; }
    const std::vector<OperRow>& operations() const { return m_operations; }
    std::vector<MiscRow>& fixedCosts() { return m_fixedCosts; }
    const std::vector<MiscRow>& fixedCosts() const { return m_fixedCosts; }
    bool oneShopRate() const { return m_oneShopRate; }
    void setOneShopRate(bool oneShopRate);
    qint64 documentNo() const { return m_documentNo; }

    controls::Grid* operGrid() const { return m_oper; }
    controls::Grid* miscGrid() const { return m_misc; }

    /// Asked before the question of a removal; false keeps the row, its reason told.
    std::function<bool(const OperRow&)> mayRemove;
    /// Jobs only: the picture and words of the status cell.
    std::function<std::pair<QIcon, QString>(const OperRow&)> statusPicture;

    /// A time, rate, price or quantity changed, or the rate mode.
    controls::Event<> costChanged;
    /// Fixed cost rows came or went.
    controls::Event<> fixedCostsChanged;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    enum class Column { Seq, Note, Description, Status, Time, Unit, Estimated, Rate };

    QWidget* operPane();
    QWidget* miscPane();
    QPushButton* button(const QString& name, const QString& caption, const QString& meaning,
                        std::function<void()> click);
    int columnOf(Column column) const;
    void showOperRow(int row);
    void showMiscRow(int row);
    void lockOperCells(int row);
    void showRateMode();

    void insertOperation();
    void removeOperation();
    void insertItems();
    void removeItem();
    void switchRateMode(bool oneShopRate);
    void sprOper_Change(int row, int column);
    void sprOper_Click(int row, int column);
    void sprMisc_Change(int row, int column);
    void openNote(int row);

    screen::Form& m_form;
    const RoutingKind& m_kind;
    std::vector<Column> m_columns;
    controls::Grid* m_oper = nullptr;
    controls::Grid* m_misc = nullptr;
    QPushButton* m_operButtons[2] = {};
    QPushButton* m_miscButtons[2] = {};
    QPushButton* m_rateButtons[2] = {};

    RoutingMode m_mode = RoutingMode::Browse;
    qint64 m_documentNo = 0;
    bool m_showDollar = true;
    bool m_oneShopRate = true;
    bool m_estimatedLocked = true;
    std::vector<OperRow> m_operations;
    std::vector<MiscRow> m_fixedCosts;
};

} // namespace estimating
