#pragma once

#include "core/UndoScreen.h"
#include "core/records/EntryPart.h"
#include "core/records/RecordScreen.h"
#include "platform/controls/DataControl.h"
#include "platform/jet/Database.h"
#include "platform/screen/BoundFields.h"
#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QJsonObject>
#include <QString>

#include <memory>
#include <vector>

class QBoxLayout;
class QLabel;
class QPushButton;
class QRadioButton;
class QTimer;

namespace controls {
class DataCombo;
class LineList;
} // namespace controls

namespace core {

class EntryUndo;

/// What tells one record module from another, as far as words and SQL go.
struct ModuleDescriptor {
    QString formName;              ///< "frmCustomer"
    QString caption;               ///< of the window
    QString moduleWord;            ///< "use the Customer module"
    QString recordWord = {};       ///< "add at least one Customer"; the module's word if empty
    QString table;                 ///< whose column widths limit the fields
    QString keyColumn;             ///< "CustID", as FindFirst names it
    QString select;                ///< the rows of the module, in key order
    QString newKeyText = u"???"_s; ///< shown for the number while adding
    QString copyWord = {};         ///< the mode label's word for a copy: "CopyEst"
    QString dataControlName;       ///< "datCustomer"
    QString modeLabelName;         ///< "lblCustomerMode"

    QString numberWord = {};  ///< GotoRecord: "Please enter Customer Number to go to:"; empty: none
    QString findScreen = {};  ///< dialog of cmdFind: "frmCustFind"
    QString queryScreen = {}; ///< screen of cmdList: "frmCustQuery"

    QString reportModule = {};   ///< Reports.Module of the default report
    QString reportTitle = {};    ///< of the report on the record shown
    QString reportAllTitle = {}; ///< of the report on all records
    QString reportKey = {};      ///< "Customer.Custid", as the report's formula names the key

    QString deleteTitle = {};
    QString deleteText = {};
    screen::Buttons deleteButtons = screen::Buttons::YesNo;
    screen::Icon deleteIcon = screen::Icon::Question;

    /// What No to the question of the empty table does: close the module, or stay in it, empty.
    bool emptyTableCloses = false;
};

/// What a button of the module is, and with it when it is enabled or visible and which handler it
/// presses.
enum class Role {
    New,        ///< cmdNew_Click
    Edit,       ///< cmdEdit_Click
    Delete,     ///< cmdDelete_Click
    Find,       ///< cmdFind_Click
    List,       ///< cmdList_Click
    PrintShown, ///< cmdPrintScr_Click
    PrintAll,   ///< cmdPrintAll_Click
    Save,       ///< cmdSave_Click; enabled in Add and Edit, and default there
    Cancel,     ///< cmdCancel_Click; visible in Add and Edit
    Close,      ///< cmdClose_Click; visible in Browse, and default there
    BrowseOnly, ///< the member wires it; enabled in Browse
    EntryOnly,  ///< the member wires it; enabled in Add and Edit
    Free,       ///< the member wires it and says when it is enabled
};

struct ModuleButton {
    Role role;
    QString name;
    QString caption;
};

/// Two options of a module: all of its records, or the active ones only.
struct ActiveView {
    QRadioButton* all = nullptr;
    QRadioButton* active = nullptr;
    QString select; ///< of the active ones
    QString none;   ///< told where the option is chosen and there are none
    QString noneTitle = {};
    screen::Icon noneIcon = screen::Icon::Information;
};

/// The pattern that all record modules share: one main set of rows to browse through, and the modes
/// Browse, Add and Edit.
///
/// How a member is made:
///  1. Its constructor hands over a ModuleDescriptor, builds its fields with screen::Fields, binds
///     them in the order of writing with fields().bind("Column", field), the number with
///     bindKey(...), places datMain() and modeLabel() where it wants them, and makes its buttons
///     with makeButtons(layout, standardButtons()) or a list of its own. A button row may be split
///     over several layouts by several calls.
///  2. It fills its lists in openLookups(), and gives them again in refreshLookup(table).
///  3. What differs is an override of a step: mayOpen, newDefaults, validate, writeRecord or
///     alsoWrite, afterSave, deleteRows, cancelStaged, closeStaged, tellNeighbours, lockFields,
///     showRecord.
///
/// A copy leaves the fields filled and unlocked, and turns into Add once the screen is arranged,
/// while the mode label keeps its own word ("CopyEst").
///
/// What stands in Add and Edit is written aside every few seconds where it has changed, as a draft
/// (core/drafts/Draft.h). A member that holds more than its bound columns says so in
/// packedEntry, takeEntry and holdsEntry, or names the controls in unboundEntries.
class RecordModule : public screen::Form,
                     public RecordScreen,
                     public LookupUser,
                     public DraftScreen,
                     public UndoScreen,
                     protected EntrySubject {
  public:
    enum class Mode { Browse, Add, Edit, Copy };

    explicit RecordModule(ModuleDescriptor descriptor);
    ~RecordModule() override;

    QString mode() const override { return modeWord(m_mode); }
    qint64 currentKey() const override;
    bool goToRecord(qint64 key) override;
    bool showsActiveOnly() const override { return activeOnly(); }
    /// In Browse; the record stays the same.
    void showAllRecords() override;
    void refreshLookup(const QString& table) override;
    bool isStored(const Draft& draft) override;
    DraftOpening openDraft(const Draft& draft) override;
    QString undoName() const override;
    QString redoName() const override;
    void settleEntry() override;
    void undoEntry() override;
    void redoEntry() override;
    /// Writes the draft of the open entry, if that has changed since.
    void keepDraft();

    void Form_Load() override;
    /// In Browse: reads the set again and shows the same row, or its neighbour if it has gone.
    void Form_Activate() override;
    bool Form_QueryUnload() override;

    /// Sets the screen for a mode.
    virtual void ShowModuleMode(Mode mode);
    /// Copies the current row to the fields; nothing where there is no row.
    virtual void ShowCurrentRecord();
    /// Asks for a number and goes there.
    void GotoRecord();

    virtual void cmdNew_Click();
    virtual void cmdEdit_Click();
    virtual void cmdDelete_Click();
    virtual void cmdSave_Click();
    virtual void cmdCancel_Click();
    virtual void cmdFind_Click();
    virtual void cmdList_Click();
    virtual void cmdPrintScr_Click();
    virtual void cmdPrintAll_Click();
    virtual void cmdClose_Click();

  protected:
    // What the member's constructor uses.
    screen::BoundFields& fields() { return m_fields; }
    void bindKey(controls::Field* field);
    void bindKey(QLabel* label);
    controls::DataControl* datMain() const { return m_data; }
    QLabel* modeLabel() const { return m_modeLabel; }
    /// A combo that goes to the record whose name is chosen; it works in Browse only. Its rows are
    /// those of `select`, read at loading, after each save and delete.
    void bindNameList(controls::DataCombo* combo, const QString& select, const QString& listColumn,
                      const QString& keyColumn);
    /// The options work in Browse only. A view of active records that is or becomes empty gives way
    /// to one of all.
    void bindView(ActiveView view);
    bool activeOnly() const;
    std::vector<ModuleButton> standardButtons() const;
    void makeButtons(QBoxLayout* inside, const std::vector<ModuleButton>& buttons);
    /// The arrows and below them one row of buttons.
    void makeFoot(QBoxLayout* inside, const std::vector<ModuleButton>& buttons);
    QPushButton* button(Role role) const; ///< the first of that role; nullptr if there is none

    // What its handlers use.
    const ModuleDescriptor& descriptor() const { return m_descriptor; }
    jet::Recordset& records() const { return m_data->recordset(); }
    bool isBrowse() const { return m_mode == Mode::Browse; }
    bool isAdding() const { return m_mode == Mode::Add; }
    bool isEditing() const { return m_mode == Mode::Edit; }
    bool hasRecord() const;
    /// Opens the main set anew on another select, in Browse; stays on `key` if it is among the new
    /// rows, else goes to the last row.
    void reopen(const QString& select, qint64 key = 0);
    /// Reads the set again and shows the same row, or its neighbour if it has gone.
    virtual void showReadAgain();
    /// Before an entry that begins with the record shown: reads it again and shows it. False if
    /// there is none any more, which has been told.
    bool readForEntry();
    /// The box of the empty table; true for Yes.
    bool askNoRecords();
    /// As at opening: asks, and then adds, stays, or closes the module.
    virtual void offerFirstRecord();
    /// The mode alone, without arranging the screen.
    void setMode(Mode mode);
    void reloadNames();
    /// Reads the list of names from another select, for a set that is narrowed.
    void setNamesSelect(const QString& select);

    // The steps.
    /// Before anything is opened; say why not and return false to keep the module closed.
    virtual bool mayOpen() { return true; }
    /// The select of the main set at loading.
    virtual QString mainSelect() const;
    virtual void openLookups() {}
    /// What mayOpen(), mainSelect() and openLookups() open, in the same words: it is read in one
    /// wait.
    virtual QStringList lookups() const { return {}; }
    /// How the first record of an empty table begins, after Yes.
    virtual void startAdding() { ShowModuleMode(Mode::Add); }
    /// In Add, after all fields were cleared.
    virtual void newDefaults() {}
    /// What showRecord() opens for a record, in the same words: it is read in one wait with the
    /// record's row.
    virtual QStringList partsOf(qint64 key) const {
        (void)key;
        return {};
    }
    /// Shows what the bound fields don't, of the current row.
    virtual void showRecord() {}
    virtual void clearFields();
    virtual void lockFields(bool locked);
    /// False after a message; nothing is written then and the mode stays.
    virtual bool validate() { return true; }
    /// Writes the record in one transaction and says its key; false (after a message) if nothing
    /// was written. The base writes the bound columns and then calls newRowColumns and alsoWrite.
    virtual bool writeRecord(bool adding, qint64& key);
    /// Columns that only a new row is given.
    virtual void newRowColumns(jet::Recordset& row) { (void)row; }
    /// Further statements of the same transaction.
    virtual void alsoWrite(qint64 key, bool adding) {
        (void)key;
        (void)adding;
    }
    /// After a save: the base reads the names again, goes to Browse and shows the saved row.
    virtual void afterSave(qint64 key, bool adding);
    /// Whether the current record may go, asked before the question; say why not.
    virtual bool mayDelete() { return true; }
    virtual bool askDelete();
    /// Within the transaction of the deletion. The base deletes the current row of the main set.
    virtual void deleteRows(qint64 key);
    virtual void afterDelete();
    /// Undoes what an entry left in tables: after Yes to the question of cmdCancel.
    virtual void cancelStaged() {}
    /// The same after No to the question of closing. As much as cancelStaged, or less.
    virtual void closeStaged() {}
    /// After a save and a delete: lets the open neighbours read their lists again.
    virtual void tellNeighbours() {}
    // What a draft holds.
    /// What was entered; without what its user may not see.
    virtual QJsonObject packedEntry();
    /// Puts it on the screen as if it had been typed, in Add or Edit.
    virtual void takeEntry(const QJsonObject& entry);
    /// Whether a stored record, whose row that is, holds just this.
    virtual bool holdsEntry(const QJsonObject& entry, const jet::Recordset& row);
    /// Goes to the part of the record shown that was edited; false if it has gone.
    virtual bool goToEntry(const QJsonObject& entry) {
        (void)entry;
        return true;
    }
    /// Names of fields and boxes that are entered and stand for no column of the table.
    virtual QStringList unboundEntries() const { return {}; }

    // What Ctrl+Z takes back: the bound columns and unbound controls, and what a member adds.
    std::vector<EntryPart> entryParts() override;
    void restorePart(const QString& key, const jet::Value& value) override;
    bool isInEntry() const override { return !isBrowse(); }
    /// Steps of these lines are steps of the entry; `word` is what people call a line.
    void followLines(controls::LineList& lines, const QString& word);

    /// What the window's title says of the record besides its number: a company's name.
    virtual QString recordName() const { return {}; }
    /// The formula of the report on the record shown.
    virtual QString shownFormula() const;

    void printReport(const QString& formula, const QString& title);

  private:
    /// The system's word for a mode.
    QString modeWord(Mode mode) const;
    jet::Recordset namesLater() const;
    void showNames(const jet::Recordset& names);
    void onReposition();
    void showEmpty();
    void showTitle();
    void chooseView();
    void leaveEmptyView();
    void show(const jet::Recordset& rows, const jet::Recordset& names);
    bool findKey(qint64 key);
    /// Lets the parts of a record come with its row.
    void expectParts(qint64 key);
    void countPapers();
    void giveShortcut(QPushButton* push, Role role);
    bool tellSaveFailed(const jet::Error& error);
    void arrangeButtons();
    void arrangeDraft();
    void beginDraft();
    void writeDraft(const QJsonObject& entry, bool saving);
    void keepDraftForSave();
    /// Tab goes as the layouts are read.
    void orderTabs() const;

    ModuleDescriptor m_descriptor;
    screen::BoundFields m_fields;
    controls::DataControl* m_data;
    QLabel* m_modeLabel;
    Mode m_mode = Mode::Browse;
    std::vector<std::pair<Role, QPushButton*>> m_buttons;
    std::function<void(const QString&)> m_showKey;
    controls::DataCombo* m_names = nullptr;
    QString m_namesSelect, m_namesColumn, m_namesKey;
    ActiveView m_view;
    qint64 m_key = 0;        ///< of the record shown
    jet::Recordset m_papers; ///< of the first record, while the module is opened
    qint64 m_expected = 0;   ///< whose parts are on their way
    bool m_quiet = false;    ///< the main set moves without being shown
    std::unique_ptr<EntryUndo> m_undo;
    QTimer* m_draftTimer;
    QJsonObject m_draft; ///< as it was written last; as the entry began, before that
    bool m_draftBegun = false;
    bool m_draftStands = false; ///< as a file
    bool m_fresh = false; ///< opened and not yet activated, so that nothing needs reading again
};

} // namespace core
