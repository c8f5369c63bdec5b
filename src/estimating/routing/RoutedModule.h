#pragma once

#include "core/records/RecordModule.h"
#include "estimating/routing/RoutingPanel.h"

#include <vector>

class QLabel;
class QLayout;

namespace estimating {

/// The record module of a document with a customer and a routing: what the estimate and the job
/// have in common as screens. A member makes its own fields and its routing panel, and places the
/// pane of buttons.
class RoutedModule : public core::RecordModule {
  public:
    explicit RoutedModule(core::ModuleDescriptor descriptor);

    void Form_Load() override;
    void ShowModuleMode(const QString& mode) override;
    void refreshLookup(const QString& table) override;

  protected:
    /// Without customers the module stays closed. Hides money from users who may not see it.
    bool mayOpen() override;
    void openLookups() override;

    /// The frames fraBrowse, with columns of buttons, and fraEdit, with Save and Cancel: the mode
    /// shows one of them.
    QWidget* makeButtonPane(const std::vector<std::vector<core::ModuleButton>>& browseColumns);
    /// Makes and binds the customer: the names to choose from, and behind them his number.
    QLayout* makeCustomer(QWidget* parent);
    /// The customer's number and name; one whom another station has added is looked up.
    void showCustomer(const QString& custId);
    /// The number follows the customer that is chosen or typed.
    void wireCustomer();
    /// Binds a column that is shown through a number mask and written by the module itself.
    void bindNumber(const QString& column, controls::TextField* field, const QString& mask);

    QLabel* lblCustID = nullptr;
    controls::DataCombo* dbcCustomer = nullptr;
    RoutingPanel* m_routing = nullptr;
    std::vector<QWidget*> m_secured; ///< hidden from users who may not see money

  private:
    bool m_customerTyped = false;
    QWidget* fraBrowse = nullptr;
    QWidget* fraEdit = nullptr;
};

} // namespace estimating
