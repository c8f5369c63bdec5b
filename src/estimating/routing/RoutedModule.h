#pragma once

#include "estimating/routing/RoutingPanel.h"
#include "masters/RecordModule.h"

#include <vector>

class QLabel;

namespace estimating {

/// The record module of a document with a customer and a routing: what the estimate and the job
/// have in common as screens. A member makes its own fields and its routing panel, and places the
/// pane of buttons.
class RoutedModule : public masters::RecordModule {
  public:
    explicit RoutedModule(masters::ModuleDescriptor descriptor);

    void ShowModuleMode(const QString& mode) override;
    void refreshLookup(const QString& table) override;

  protected:
    void openLookups() override;

    /// The frames fraBrowse, with columns of buttons, and fraEdit, with Save and Cancel: the mode
    /// shows one of them.
    QWidget* makeButtonPane(const std::vector<std::vector<masters::ModuleButton>>& browseColumns);
    /// The customer's number and name; one whom another station has added is looked up.
    void showCustomer(const QString& custId);
    /// The number follows the customer that is chosen or typed.
    void wireCustomer();

    QLabel* lblCustID = nullptr;
    controls::DataCombo* dbcCustomer = nullptr;
    RoutingPanel* m_routing = nullptr;

  private:
    bool m_customerTyped = false;
    QWidget* fraBrowse = nullptr;
    QWidget* fraEdit = nullptr;
};

} // namespace estimating
