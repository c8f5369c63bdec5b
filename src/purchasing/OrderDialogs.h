#pragma once

#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"
#include "purchasing/Dialogs.h"

class QCheckBox;
class QPushButton;
class QRadioButton;

namespace purchasing {

/// Asks how a new request or order begins.
class NewOrderForm : public screen::Form, public NewOrderDialog {
  public:
    struct Way {
        QString name;
        QString caption;
        QString method; ///< what choose() returns
    };
    struct Descriptor {
        QString formName;
        QString caption;
        std::vector<Way> ways;
        /// The last way can carry the lines of the request on the screen: its method then, and the
        /// box's caption. Empty: it can't.
        QString carryMethod = {};
        QString carryCaption = {};
    };
    explicit NewOrderForm(Descriptor descriptor);
    std::optional<QString> choose(bool hasDocument) override;

  private:
    Descriptor m_descriptor;
    std::vector<QRadioButton*> m_options;
    QCheckBox* Check1 = nullptr;
    bool m_ok = false;
};

/// Goes to a request group or an order by its number.
class GotoForm : public screen::Form {
  public:
    struct Descriptor {
        QString formName;
        QString caption;
        QString label;
        QString moduleScreen;
        QString noMatch;
        bool limited = false; ///< to numbers that other programs know
    };
    explicit GotoForm(Descriptor descriptor);
    void cmdOK_Click();

  private:
    Descriptor m_descriptor;
    controls::TextField* selString;
};

/// Chooses the vendor of a new request.
class frmRfqVendorSelect : public screen::Form, public VendorSelector {
  public:
    static constexpr char formName[] = "frmRfqVendorSelect";
    frmRfqVendorSelect();
    std::optional<qint64> pick(qint64 group) override;

  private:
    void dbcVendor_Change();
    void cmdOK_Click();
    controls::DataCombo* dbcVendor;
    controls::TextField* txtNum;
    qint64 m_vendor = 0;
};

/// Asks whether a whole group or one vendor's request is to be deleted.
class frmRFQDelete : public screen::Form, public DeleteRequestDialog {
  public:
    static constexpr char formName[] = "frmRFQDelete";
    frmRFQDelete();
    std::optional<What> choose(int vendors) override;

  private:
    QRadioButton* m_options[2];
    bool m_ok = false;
};

} // namespace purchasing
