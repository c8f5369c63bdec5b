#pragma once

#include "core/records/DocumentModule.h"
#include "platform/controls/LineGrid.h"
#include "purchasing/OrderDocument.h"

class QTabWidget;

namespace purchasing {

/// The module of a document with a ship-to address, a copy of a vendor's address and line items:
/// what the request for quotation and the purchase order have in common as screens. The lines are
/// staged in a model that the two item grids show; a deleted line is a hidden one.
class OrderModule : public core::DocumentOf<OrderDocument> {
  public:
    /// In the database where it isn't among the rows shown: another station may have added it.
    bool goToRecord(qint64 key) override;
    bool opensMaximized() const override { return true; }
    void refreshLookup(const QString& table) override;
    void ShowModuleMode(Mode mode) override;
    void Form_Load() override;
    QSize sizeHint() const override { return {1180, 640}; }

    void cmdAddItem_Click();
    void cmdEditItem_Click();
    void cmdDelItem_Click();

  protected:
    struct Words {
        QString grid;     ///< the item grid
        QString noteGrid; ///< beside it the notes, row for row
        QString addDialog;
        QString editDialog;
        QString vendorTable; ///< whose column widths limit the vendor's fields
        QString numberLabel;
        QString titleLabel;
        QString dateLabel; ///< of the second date
        values::KeyFilter emailFilter;
    };
    OrderModule(core::ModuleDescriptor module, const OrderKind& kind, Words words);

    /// Number, title, dates and the mode; `beside` of a member stands behind them.
    void makeHead(QBoxLayout* down, QLayout* beside = nullptr);
    /// The tabs: items, their notes, the vendor, the ship-to address. `vendor` makes what stands
    /// above the vendor's address. All controls of the document are bound then.
    void makeTabs(QBoxLayout* down, const std::function<void(screen::Fields&)>& vendor);

    QStringList lookups() const override;
    void openLookups() override;
    void lockFields(bool locked) override;
    bool validate() override;
    OrderDocument document() override;
    std::vector<core::EntryPart> entryParts() override;
    void restorePart(const QString& key, const jet::Value& value) override;
    void entryRestored() override { MakeTotal(); }
    bool isSame(const OrderDocument& a, const OrderDocument& b) const override;
    QJsonObject pack(const OrderDocument& document, const OrderDocument* before) const override;
    OrderDocument unpack(const QJsonObject& packed, const OrderDocument& stored) const override;
    void showEntry(const OrderDocument& document) override;
    void takeRecord(const jet::Recordset* row) override;
    void reloadLines() override;
    void afterLastDelete() override { offerFirstRecord(); }
    /// Shows the vendor and the lines of the record shown.
    virtual void showParts() = 0;
    /// The lines as they are stored now.
    virtual std::vector<OrderLine> storedLines() = 0;
    /// "Delete item?" in the member's words; true for yes.
    virtual bool askDeleteLine(const OrderLine& line) = 0;
    /// Whose parts the item dialog offers.
    virtual qint64 vendorNo() const = 0;

    void showLines(std::vector<OrderLine> lines);
    std::vector<OrderLine> lines() const { return m_lines->visibleRows(); }
    /// Fills the ship-to address that the preferences name.
    void presetShipTo();
    void MakeTotal();

    const OrderKind& m_kind;
    std::shared_ptr<controls::LineModel<OrderLine>> m_lines =
        std::make_shared<controls::LineModel<OrderLine>>();
    core::ShownDocument<OrderHeader> m_header{orderColumns()};
    core::ShownDocument<OrderVendor> m_vendor;
    controls::TextField* m_number = nullptr;

  private:
    void makeItemPages();
    void makeAddressPages(const std::function<void(screen::Fields&)>& vendor);
    bool isNumbered() const;
    void ReNumber();
    void arrangeItemButtons();
    int activeLine() const;
    void refreshHistory() const;

    Words m_words;
    screen::BoundFields m_vendorFields; ///< for their widths, locking and emptying
    QTabWidget* m_tabs = nullptr;
    controls::LineGrid<OrderLine>* m_grid = nullptr;
    controls::LineGrid<OrderLine>* m_notes = nullptr;
    controls::TextField* m_total = nullptr;
    controls::DateField* m_dates[2] = {};
    std::vector<controls::DataCombo*> m_states;
    std::vector<controls::DataCombo*> m_countries;
    controls::DataCombo* m_terms = nullptr;
};

} // namespace purchasing
