#pragma once

#include "purchasing/RfqStore.h"

#include <QDate>

#include <optional>

namespace purchasing {

/// What "frmRFQaddItem", "frmRFQEditItem", "frmPOaddItem" and "frmPOEditItem" offer.
class ItemDialog {
  public:
    virtual ~ItemDialog() = default;
    /// Lets the user fill in a line; nothing if he cancelled. `vendor` tells whose parts are
    /// offered.
    virtual std::optional<OrderLine> edit(const OrderLine& line, qint64 vendor) = 0;
};

/// What "frmRFQNew" and "frmPONew" offer: how a new document begins.
class NewOrderDialog {
  public:
    virtual ~NewOrderDialog() = default;
    /// "allnew", "newgroupcopy", "newvendor" or "newvendorcopy". Without a document on the screen
    /// the first way is taken unasked.
    virtual std::optional<QString> choose(bool hasDocument) = 0;
};

/// What "frmRfqVendorSelect" offers.
class VendorSelector {
  public:
    virtual ~VendorSelector() = default;
    /// A vendor for a new group (0), or one who isn't in that group yet.
    virtual std::optional<qint64> pick(qint64 group) = 0;
};

/// What "frmRFQCopyTree", "frmPOcopyTree" and "frmRFQ2POtree" offer: which lines of a document go
/// into a new one.
class CopyTreeDialog {
  public:
    virtual ~CopyTreeDialog() = default;
    struct Choice {
        std::vector<ChosenRequest> vendors; ///< all of them, with the items chosen
        QDate required;
    };
    /// Nothing for Cancel. `key` is the one vendor's request where only that is offered.
    virtual std::optional<Choice> choose(qint64 number, const QString& key) = 0;
};

/// What "frmRFQMatrix" offers: the offers of a group side by side.
class MatrixDialog {
  public:
    virtual ~MatrixDialog() = default;
    /// The key of the request that is to become an order.
    virtual std::optional<QString> choose(qint64 group) = 0;
};

/// What "frmRFQDelete" offers.
class DeleteRequestDialog {
  public:
    virtual ~DeleteRequestDialog() = default;
    enum class What { Group, Vendor };
    virtual std::optional<What> choose(int vendors) = 0;
};

/// What "frmRecHistory" offers: the receipts of an order.
class ReceivedHistory {
  public:
    virtual ~ReceivedHistory() = default;
    /// Returns when it was closed.
    virtual void showHistory(qint64 poNumber, const QString& title) = 0;
};

/// What "frmPOaddRec" offers.
class ReceiveDialog {
  public:
    virtual ~ReceiveDialog() = default;
    /// True if something was received.
    virtual bool receiveInto(qint64 poNumber) = 0;
};

} // namespace purchasing
