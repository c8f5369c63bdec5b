#pragma once

#include "core/records/RecordModule.h"
#include "masters/AddressLists.h"

#include <vector>

class QBoxLayout;
class QTabWidget;
class QVBoxLayout;

namespace masters {

/// What differs between customers and vendors in what both have.
struct CompanyWords {
    QString nameList; ///< the list to go by name
    QString nameListLabel;
    QString keyField;
    QString keyLabel;
    QString tabsName;
    QString nameField;
    QString deliveryFrame;
    QString deliveryTitle;
    QString termsField;
    QString termsLabel;
    QString settingsPrefix; ///< of the preferences' columns with the defaults of a new one
    QString nameless;       ///< the box of a record without a name, and its title
    QString namelessTitle;
};

/// The record module of a company that the shop deals with: name, addresses, a contact, and how
/// things are shipped and paid. A member adds its tabs and what it alone holds.
class CompanyModule : public core::RecordModule {
  public:
    void refreshLookup(const QString& table) override;

  protected:
    CompanyModule(core::ModuleDescriptor module, CompanyWords words)
        : core::RecordModule(std::move(module)), m_words(std::move(words)) {}
    /// Head, tabs, arrows and buttons; `fill` makes the pages of the tabs.
    void makeLayout(const std::function<void(QTabWidget*)>& fill);

    void openLookups() override;
    void newDefaults() override;
    bool validate() override;
    QString recordName() const override { return m_name->text(); }
    void newRowColumns(jet::Recordset& row) override;

    /// The frame with the name and the main address.
    void makeMainAddress(QWidget* page, QBoxLayout* into);
    /// The frames with the contact and with shipping and terms.
    void makeContact(QWidget* page, QBoxLayout* into);
    /// Binds what this class has made.
    void bindCompany();
    /// An address beside the main one: bound under its prefix, its lists filled with the others.
    void addAddress(const screen::AddressBlock& address, const QString& prefix);

    /// Copies the main address unless the target is locked or the user wants to keep it.
    void copyMainAddress(const screen::AddressBlock& to, const QString& question);
    struct ContactFields {
        controls::TextField *contact, *phone, *fax, *email;
    };
    void copyContact(const ContactFields& to, const QString& question);

    controls::TextField* m_name = nullptr;

  private:
    CompanyWords m_words;
    QTabWidget* m_tabs = nullptr;
    std::vector<screen::AddressBlock> m_addresses; ///< the main one first
    ContactFields m_contact{};
    controls::TextField* m_attention = nullptr;
    controls::TextField* m_shipping = nullptr;
    controls::DataCombo* m_terms = nullptr;
    controls::TextField* m_fob = nullptr;
};

} // namespace masters
