#pragma once

#include "inventory/InventoryDialogs.h"
#include "platform/screen/Form.h"

#include <array>

class QCheckBox;
class QGridLayout;

namespace controls {
class Field;
}

namespace inventory {

/// Asks for items by text, folder, maker and the days on which they moved, and shows what was found
/// in "frmReportAllItemsQresults". A criterion counts while its use box is ticked; entering a value
/// ticks it.
class frmQueryTypeLoc : public screen::Form, public StockSource {
  public:
    static constexpr char formName[] = "frmQueryTypeLoc";
    frmQueryTypeLoc();
    bool Form_QueryUnload() override;

    const StockQuestion& question() const override { return m_question; }
    const std::vector<ItemRow>& found() const override { return m_found; }

  private:
    struct Row {
        StockCriterion StockQuestion::*criterion;
        QString caption, word;      ///< "Part", as its controls are named
        QString list;               ///< rows to choose from
        const View* view = nullptr; ///< a folder
        QCheckBox *use = nullptr, *range = nullptr;
        std::array<controls::Field*, 2> fields{};
        std::array<QWidget*, 2> places{};
        std::array<qint64, 2> folders{};
        bool listed = false;

        bool isDate() const { return list.isEmpty() && !view; }
    };
    void makeRow(Row& row, QGridLayout* grid, int line);
    QWidget* makeField(Row& row, std::size_t which);
    void readList(Row& row);
    void pickFolder(Row& row, std::size_t which);
    /// False after a message.
    bool take(Row& row, StockCriterion& criterion);
    void cmdGenerate_Click();

    std::vector<Row> m_rows;
    StockQuestion m_question;
    std::vector<ItemRow> m_found;
};

} // namespace inventory
