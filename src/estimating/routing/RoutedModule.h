#pragma once

#include "core/records/DocumentModule.h"
#include "estimating/RoutedSave.h"
#include "estimating/RoutingDraft.h"
#include "estimating/routing/RoutingPanel.h"
#include "inventory/NewWork.h"

#include <functional>
#include <optional>
#include <vector>

class QLabel;
class QLayout;

namespace estimating {

/// The record module of a document with a customer and a routing: what the estimate and the job
/// have in common as screens. A member makes its own fields and its routing panel, and places the
/// pane of buttons; it derives from RoutedDocument, which knows the struct of its header.
class RoutedModule : public core::DocumentModule, public inventory::NewWork {
  public:
    RoutedModule(core::ModuleDescriptor descriptor, const RoutingKind& kind);

    void Form_Load() override;
    void ShowModuleMode(Mode mode) override;
    void refreshLookup(const QString& table) override;
    bool startNew(const QString& description, const QString& partNumber) override;
    void cmdEdit_Click() override;
    void cmdAssembly_Click();
    /// Not while a cell holds what can't be taken.
    void cmdSave_Click() override;

  protected:
    /// Without customers the module stays closed. Hides money from users who may not see it.
    bool mayOpen() override;
    QStringList lookups() const override;
    void openLookups() override;
    QStringList partsOf(qint64 key) const override;
    QString recordName() const override;
    bool opensMaximized() const override { return true; }
    void takeRecord(const jet::Recordset* row) override;
    void reloadLines() override;
    void tellTooLarge() override;
    void cancelStaged() override;
    std::vector<core::EntryPart> entryParts() override;
    void restorePart(const QString& key, const jet::Value& value) override;
    void entryRestored() override { calculate(); }
    void tellNeighbours() override;
    /// Shows the lines of an entry that another run began, their notes staged again.
    void takeUpLines(RoutedLines lines, bool oneShopRate);
    /// Whether the notes that were written in an entry are stored.
    bool holdsNotes(const QJsonObject& entry, qint64 documentNo) const;

    // What the document of a member is.
    virtual core::DocumentFields& header() = 0;
    /// Takes the header from the row that is shown, or an empty one.
    virtual void takeHeader(const jet::Recordset* row) = 0;
    /// What one column of the header holds, with what was typed; and a new content for it.
    virtual jet::Value headerValue(const QString& column) = 0;
    virtual void setHeaderValue(const QString& column, const jet::Value& value) = 0;
    virtual void keepLinesBefore() = 0;
    /// Computes and shows the figures; throws values::Overflow.
    virtual void reckon() = 0;
    virtual void showNoFigures() {}
    virtual void customerTaken() {}
    /// What stands in the lists.
    RoutedLines lines() const;

    /// reckon(), and once for an entry what to do where it can't be done.
    void calculate();

    // The ways to begin a new document.
    struct Carried {
        qint64 custId = 0;
        QString reference; ///< the customer's own number
    };
    /// What the screen shows, for the document to come.
    Carried carried();
    void showCarried(const Carried& customer);
    void startFrom(const std::vector<ChosenOperation>& operations, const Carried& customer);
    /// The operations of a default set that the user picks; those that he picks one by one.
    std::optional<std::vector<ChosenOperation>> pickSet(bool useDefaultNotes);
    std::optional<std::vector<ChosenOperation>> pickOperations();
    /// Reads the record again and makes it a new one, its notes carried;
    /// `change` has the rows in between. False if the record has gone, which has been told.
    bool copyShown(bool useDefaultNotes, bool carryNotes,
                   const std::function<void(std::vector<OperRow>&)>& change = {});

    /// The frames fraBrowse, with columns of buttons, and fraEdit, with Save and Cancel: the mode
    /// shows one of them.
    QWidget* makeButtonPane(const std::vector<std::vector<core::ModuleButton>>& browseColumns);
    /// A word with its value in the title line: "Job No.: 411".
    QLabel* makeMark(QBoxLayout* title, const QString& name, const QString& word);
    /// The same for the document's number.
    void makeNumber(QBoxLayout* title, const QString& name, const QString& word);
    /// Makes the customer: the names to choose from, and behind them his number.
    void makeCustomer(screen::Fields& head);
    /// Asks for a part number, lists the module's records with such a one, narrowed by further
    /// criteria (" AND Shipped = False"), and says which was chosen.
    std::optional<qint64> askByPart(const QString& findScreen, const QString& foundScreen,
                                    const QString& further = {});
    /// The number follows the customer that is chosen or typed.
    void wireCustomer();

    const RoutingKind& m_kind;
    controls::DataCombo* dbcCustomer = nullptr;
    QLabel* lblAssembly = nullptr;
    RoutingPanel* m_routing = nullptr;
    bool m_showDollar = true;
    std::vector<QWidget*> m_secured; ///< hidden from users who may not see money

  private:
    void showCustomer(const QString& custId);
    void showLines();
    void showAssembly();

    QLabel* lblCustID = nullptr;
    bool m_customerTyped = false;
    bool m_followsLines = false;
    bool m_tooLarge = false; ///< the figures, and that has been told
    QWidget* fraBrowse = nullptr;
    QWidget* fraEdit = nullptr;
};

/// A routed module on the structs of its document: Draft is RoutedLines with a header.
template <class Draft, class Header>
class RoutedDocument : public core::DocumentOf<Draft, RoutedModule> {
    using Base = core::DocumentOf<Draft, RoutedModule>;

  public:
    RoutedDocument(core::ModuleDescriptor descriptor, const RoutingKind& kind,
                   const core::DocumentColumns<Header>& columns)
        : Base(std::move(descriptor), kind), m_header(columns) {}

  protected:
    core::DocumentFields& header() override { return m_header.fields(); }
    void takeHeader(const jet::Recordset* row) override {
        if (row)
            m_header.show(m_header.columns().load(*row));
        else
            m_header.clear();
    }
    jet::Value headerValue(const QString& column) override {
        return m_header.columns().column(column).get(&m_header.now());
    }
    void setHeaderValue(const QString& column, const jet::Value& value) override {
        m_header.columns().column(column).set(&m_header.now(), value);
        m_header.show(column);
    }
    std::vector<core::EntryPart> entryParts() override {
        std::vector<core::EntryPart> parts = Base::entryParts();
        m_header.addParts(parts, headerWord());
        return parts;
    }
    void restorePart(const QString& key, const jet::Value& value) override {
        if (!m_header.restorePart(key, headerWord(), value))
            Base::restorePart(key, value);
    }
    void keepLinesBefore() override { static_cast<RoutedLines&>(Base::m_before) = this->lines(); }
    bool isSame(const Draft& a, const Draft& b) const override {
        return m_header.columns().same(a.header, b.header) && sameLines(this->m_kind, a, b);
    }
    QJsonObject pack(const Draft& document, const Draft* before) const override {
        return {{u"header"_s,
                 core::packDocument(m_header.columns(), document.header,
                                    before ? &before->header : nullptr, this->m_showDollar)},
                {u"lines"_s, packRouting(document, before, this->m_showDollar)}};
    }
    Draft unpack(const QJsonObject& packed, const Draft& stored) const override {
        Draft draft;
        static_cast<RoutedLines&>(draft) = unpackRouting(packed[u"lines"_s].toObject(), stored);
        draft.header =
            core::unpackDocument(m_header.columns(), packed[u"header"_s].toObject(), stored.header);
        return draft;
    }
    void showEntry(const Draft& document) override {
        m_header.show(document.header);
        this->takeUpLines(document, document.header.oneShopRate);
        this->calculate();
    }
    bool holdsEntry(const QJsonObject& entry, const jet::Recordset& row) override {
        return Base::holdsEntry(entry, row) &&
               this->holdsNotes(entry, row[this->descriptor().keyColumn].toLong());
    }
    Draft document() override {
        Draft result;
        static_cast<RoutedLines&>(result) = this->lines();
        result.header = m_header.now();
        result.header.oneShopRate = this->m_routing->oneShopRate();
        result.header.partNo = result.header.partNo.trimmed();
        const core::DocumentColumn& reference =
            m_header.columns().column(this->m_kind.referenceColumn);
        reference.set(&result.header, jet::Value(reference.get(&result.header).toText().trimmed()));
        return result;
    }

    core::ShownDocument<Header> m_header;

  private:
    /// In front of its columns' names, in the entry's history.
    static QString headerWord() { return u"h:"_s; }
};

} // namespace estimating
