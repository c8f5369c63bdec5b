#pragma once

#include "core/Background.h"
#include "desk/ListReader.h"
#include "desk/ListScreen.h"
#include "platform/controls/DataCombo.h"
#include "platform/screen/Form.h"

class QLabel;
class QMenu;
class QPushButton;
class QVBoxLayout;

namespace controls {
class RowTable;
}

namespace desk {

/// The records of a module as rows: filtered, sorted, added up, opened, printed. The rows are read
/// beside all work; until all are there, the latest are shown.
class ModuleList : public screen::Form, public ListScreen {
  public:
    explicit ModuleList(const ListKind& kind);
    ~ModuleList() override;

    void Form_Load() override;
    void Form_Activate() override;
    bool Form_QueryUnload() override;
    bool opensMaximized() const override { return true; }
    void showView(const QString& view) override;

    void cmdOpen_Click();
    void cmdSaveView_Click();
    void cmdDeleteView_Click();
    void cmdPrint_Click();

  private:
    void makeTable();
    void readRows();
    void fillViews(const QString& chosen);
    void arrangeAs(const QString& view);
    void makeColumnMenu();
    void showTotals();
    QString place(const QString& of) const;

    const ListKind& m_kind;
    QVBoxLayout* m_body;
    controls::ListCombo* cboView;
    QPushButton* cmdOpen;
    QPushButton* cmdColumns;
    QPushButton* cmdDeleteView;
    QPushButton* cmdPrint;
    QLabel* lblTotals;
    QMenu* m_columnMenu;
    controls::RowTable* m_table = nullptr;
    std::shared_ptr<const ListReader> m_reader;
    QStringList m_ownViews;
    QString m_failure;
    bool m_allRead = false;
    bool m_fresh = false;                           ///< loaded and not yet activated
    std::unique_ptr<core::Background> m_background; ///< ends first
};

} // namespace desk
