#pragma once

#include "accounting/Documents.h"
#include "accounting/QuickBooksForm.h"
#include "accounting/SentDocuments.h"
#include "platform/controls/Grid.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

class QBoxLayout;
class QGroupBox;
class QLabel;

namespace controls {
class DataCombo;
class TextField;
} // namespace controls

namespace accounting {

/// What the invoice and the payables screen have in common: a customer or vendor, one of his
/// orders, the lines of it that are to go to QuickBooks, and what was sent of them before.
class SendForm : public QuickBooksForm {
  public:
    void Form_Load() override;

    void dbcCompID_Chosen();
    void dbcPO_Chosen();
    void cmdSelAll_Click();
    void cmdSelNone_Click();
    void Command1_Click(); ///< history
    void cmdRecord_Click();
    void send();

  protected:
    /// Columns of lines that need no further ones.
    struct Plain {
        enum Column { Select, Item, Part, Description, Quantity, Price };
        /// `typed`: part and description can be, too.
        static std::vector<controls::GridColumn> columns(bool typed);
    };

    /// In what the two screens differ by words and names.
    struct Kind {
        QString formName, caption;
        SentKind sent;
        QString document;     ///< "invoice", "bill"
        QString partnerLabel; ///< "C&ustomer:"
        QString partnerKind;  ///< as QuickBooks calls it: "Customer"
        QString responseTag, retTag;
        QString gridName;
        std::vector<controls::GridColumn> columns;    ///< without "Sent Before", which comes last
        int item, part, description, quantity, price; ///< columns of the grid
        std::vector<QString> optionalRows;            ///< descriptions to begin with
        QString sendName, historyCaption, historyForm, success;
    };
    explicit SendForm(Kind kind);
    /// Puts the controls together; from the constructor of the screen.
    void build();
    /// Further fields of the screen, between the order and the lines.
    virtual void buildOptions(QBoxLayout*) {}
    virtual void buildReports(screen::ButtonBar&) = 0;
    void reportButton(screen::ButtonBar& bar, const QString& name, const QString& caption,
                      const QString& file, const QString& title);

    /// False after a message: the screen doesn't open.
    virtual bool mayOpen() { return true; }
    virtual QString partnersSelect() const = 0;                ///< fields "ID" and "Company"
    virtual jet::Recordset orders(const QString& partner) = 0; ///< first field
    /// What fillLines() opens, in the same words.
    virtual QStringList linesSelects(const QString& partner, const QString& order) const = 0;
    /// Fills the grid with the lines of the order; gives all that can be sent of the order.
    virtual std::vector<Sendable> fillLines(const QString& partner, const QString& order) = 0;
    /// False after a message: nothing can be sent yet.
    virtual bool isChosen() = 0;
    /// The message, its lines being those selected; nothing after a message to the user.
    virtual std::optional<Message> message() = 0;
    /// Terms that QuickBooks has to know before the message.
    virtual QString termsFirst() const { return {}; }
    /// Adds the partner to QuickBooks; false if that failed.
    virtual bool addPartner() = 0;
    /// "Ordered 60, shipped 30" for the order.
    virtual QString totals() const = 0;
    /// Another order was chosen: what belonged to the last one's document goes.
    virtual void forgetDocument() {}

    void fillPartners();
    /// Empties orders and lines.
    void clearOrder();
    void clearLines();
    QString partner() const;
    QString order() const;
    /// Takes a row's cells without the last column; prices are shown to those who may see them.
    void addLine(const QStringList& cells, qint64 key = 0);
    /// The selected lines of the order, or the selected optional ones; nothing after a message
    /// about one that can't be sent so.
    std::optional<std::vector<DocumentLine>> selectedLines() const;
    std::optional<std::vector<DocumentLine>> selectedOptional() const;
    QString shownPrice(const jet::Value& price) const;
    virtual bool isLineRight(const DocumentLine&, bool) const { return true; }

    Kind m_kind;
    controls::Grid* m_lines = nullptr;
    controls::Grid* vaSpread2 = nullptr;
    controls::DataCombo* dbcCompID = nullptr;
    controls::TextField* txtName = nullptr;
    controls::DataCombo* dbcPO = nullptr;

  private:
    std::optional<std::vector<DocumentLine>> selected(const controls::Grid* grid, int item,
                                                      int part, int description, int quantity,
                                                      int price) const;
    void buildChoice(QBoxLayout* inside);
    void buildOptional(QBoxLayout* inside);
    void buildButtons(QBoxLayout* inside);
    bool readItems();
    void readSent();
    void showCount();
    void showSentBefore();
    void showMarks();
    void setAll(const QString& mark);
    void normalisePrice(controls::Grid* grid, int row, int column, int priceColumn);
    bool askRepeats();
    bool sendOnce(bool& asked);
    bool keepRecord(const SentDocument& document);
    void tellOthers(std::size_t expected);
    void showUnrecorded();
    QString unansweredKey() const;
    Sendable sendableAt(int row) const;

    bool m_showDollar = false;
    bool m_itemsRead = false;
    QString m_shownPartner, m_shownOrder;
    std::vector<Sendable> m_all;
    std::vector<SentRow> m_sent;
    std::vector<bool> m_marks;
    QGroupBox* Frame1 = nullptr;
    QLabel* lblTotals = nullptr;
    QPushButton* cmdRecord = nullptr;
};

} // namespace accounting
