#pragma once

#include "core/records/RecordScreen.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"
#include "platform/spelling/Options.h"

#include <utility>
#include <vector>

class QCheckBox;
class QProgressBar;
class QPushButton;
class QTabWidget;

namespace core {

/// The shop's own address, the defaults of new quotes and orders, the default rates, the switches
/// of the floor terminal, and the spelling options, which count for this run only.
class frmSystemSettings : public screen::Form {
  public:
    static constexpr const char* formName = "frmSystemSettings";
    frmSystemSettings();
    void Form_Load() override;

    void cmdOK_Click();
    void cmdUpdate_Click();

  private:
    struct Column {
        const char16_t* name;
        controls::Field* field;
    };
    /// Columns that are written together, with one step of the progress bar behind them.
    using Block = std::vector<Column>;

    void buildCompany(QWidget* page);
    void buildQuote(QWidget* page);
    void buildVendor(QWidget* page);
    void buildShipTo(QWidget* page);
    void buildRates(QWidget* page);
    void buildSecurity(QWidget* page);
    void buildTime(QWidget* page);
    void buildPapers(QWidget* page);
    void buildSpelling(QWidget* page);
    void limitToColumns();
    void fillLists();
    void showRow();
    void saveRow();
    /// A database that wasn't upgraded has no column for that.
    bool keepsHoursOver() const;
    void setButtonsEnabled(bool enabled);

    QTabWidget* SSTab1;
    std::vector<Block> m_blocks; ///< in the order of the save
    controls::DataCombo* dbcState;
    controls::DataCombo* dbcCountry;
    controls::DataCombo* dbcTerms;
    controls::DataCombo* dbcVterms;
    controls::DataCombo* dbcPstate;
    controls::DataCombo* dbcPCountry;
    controls::CurrencyField* txtRateEstimate;
    controls::CurrencyField* txtRateJob;
    controls::TextField* txtArchM;
    QCheckBox* chkSec;
    controls::TextField* txtSec0;
    controls::TextField* txtSec1;
    QCheckBox* chkPartsQty;
    QCheckBox* chkLargeNumbers;
    controls::TextField* txtJournalDays;
    controls::TextField* txtHoursOver;
    controls::TextField* txtPapersFolder;
    std::vector<std::pair<QCheckBox*, bool spelling::Options::*>> m_spelling;
    QProgressBar* PB;
    QPushButton* cmdOK;
    QPushButton* cmdUpdate;
    QPushButton* cmdClose;
};

} // namespace core
