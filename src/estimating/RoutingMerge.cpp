#include "estimating/RoutingMerge.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <algorithm>
#include <map>

namespace estimating {

using core::ChangedElsewhere;
using values::Currency;

namespace {

using Conflict = std::optional<ChangedElsewhere>;

/// A row by what it is for, and which one of several for the same.
using Key = std::pair<qint64, int>;

qint64 numberOf(const OperRow& row) {
    return row.operNo;
}
qint64 numberOf(const MiscRow& row) {
    return row.itemNo;
}

template <class Row>
std::vector<Key> keysOf(const std::vector<Row>& rows) {
    std::map<qint64, int> seen;
    std::vector<Key> keys;
    for (const Row& row : rows)
        keys.emplace_back(numberOf(row), seen[numberOf(row)]++);
    return keys;
}

template <class Row>
class ByKey {
  public:
    explicit ByKey(const std::vector<Row>& rows) {
        const std::vector<Key> keys = keysOf(rows);
        for (std::size_t i = 0; i < rows.size(); ++i)
            m_rows.emplace(keys[i], &rows[i]);
    }
    const Row* operator[](const Key& key) const {
        const auto found = m_rows.find(key);
        return found == m_rows.end() ? nullptr : found->second;
    }

  private:
    std::map<Key, const Row*> m_rows;
};

QString shown(Currency value) {
    return values::format(value, u"#####0.00##");
}
QString shown(double value) {
    return values::format(value, u"#####0.00##");
}
QString shown(const QString& value) {
    return value.trimmed();
}

/// Takes their figure unless it was changed here; tells where both changed it.
template <class Figure>
Conflict joinFigure(const QString& what, const Figure& was, const Figure& theirs, Figure& mine) {
    if (theirs == was || theirs == mine)
        return std::nullopt;
    if (mine != was)
        return ChangedElsewhere{what, shown(theirs), shown(mine)};
    mine = theirs;
    return std::nullopt;
}

QString list(const std::vector<OperRow>& rows) {
    QStringList names;
    for (const OperRow& row : rows)
        names << row.description;
    return names.join(u", ");
}

/// The figures of a row that people type.
QString typed(const RoutingKind& kind, const OperRow& row) {
    QStringList figures;
    if (!(kind.inhouseTimeIsBooked && row.inhouse))
        figures << shown(row.time.value_or(0));
    if (row.inhouse)
        figures << shown(row.rate);
    if (kind.hasProgress)
        figures << shown(row.estimated.value_or(0));
    return figures.join(u", ");
}

Conflict joinOperation(const RoutingKind& kind, const OperRow& was, const OperRow& now,
                       OperRow& mine) {
    const auto named = [&](const QString& figure) {
        return u"The "_s + figure + u" of the operation "_s + mine.description;
    };
    mine.status = now.status;
    mine.located = now.located;
    if (kind.inhouseTimeIsBooked && mine.inhouse) {
        mine.time = now.time;
    } else {
        double time = mine.time.value_or(0);
        if (auto both = joinFigure(named(mine.inhouse ? u"time"_s : u"amount"_s),
                                   was.time.value_or(0), now.time.value_or(0), time))
            return both;
        if (time != mine.time.value_or(0))
            mine.time = time;
    }
    if (kind.hasProgress) {
        double estimated = mine.estimated.value_or(0);
        if (auto both = joinFigure(named(u"estimate"_s), was.estimated.value_or(0),
                                   now.estimated.value_or(0), estimated))
            return both;
        mine.estimated = estimated;
    }
    return mine.inhouse ? joinFigure(named(u"rate"_s), was.rate, now.rate, mine.rate)
                        : std::nullopt;
}

} // namespace

Conflict joinOperations(const RoutingKind& kind, const std::vector<OperRow>& before,
                        const std::vector<OperRow>& stored, std::vector<OperRow>& mine) {
    const std::vector<Key> keysBefore = keysOf(before), keysStored = keysOf(stored),
                           keysMine = keysOf(mine);
    const ByKey<OperRow> was(before), now(stored);
    const bool theirsMoved = keysStored != keysBefore;
    const auto notesMoved = [&] {
        return !std::equal(
            mine.begin(), mine.end(), before.begin(), before.end(),
            [](const OperRow& a, const OperRow& b) { return a.hasNote == b.hasNote; });
    };
    // The notes that are staged here stand by the places of this station's rows.
    if (theirsMoved && keysMine != keysStored && (keysMine != keysBefore || notesMoved()))
        return ChangedElsewhere{u"The list of operations"_s, list(stored), list(mine)};

    for (std::size_t i = 0; i < before.size(); ++i) {
        const OperRow* theirs = now[keysBefore[i]];
        const bool removedHere =
            std::find(keysMine.begin(), keysMine.end(), keysBefore[i]) == keysMine.end();
        if (theirs && removedHere && typed(kind, *theirs) != typed(kind, before[i])) {
            return ChangedElsewhere{u"The operation "_s + theirs->description, typed(kind, *theirs),
                                    u"removed"_s};
        }
    }
    for (std::size_t i = 0; i < mine.size(); ++i) {
        const OperRow* theirs = now[keysMine[i]];
        const OperRow* first = was[keysMine[i]];
        if (theirs) {
            if (auto both = joinOperation(kind, first ? *first : mine[i], *theirs, mine[i]))
                return both;
        } else if (first && typed(kind, mine[i]) != typed(kind, *first)) {
            return ChangedElsewhere{u"The operation "_s + mine[i].description, u"removed"_s,
                                    typed(kind, mine[i])};
        }
        mine[i].id = theirs ? theirs->id : 0;
    }
    if (!theirsMoved || keysMine == keysStored)
        return std::nullopt;
    // Only they changed the list: theirs, with the figures typed here.
    std::vector<OperRow> joined = stored;
    const ByKey<OperRow> here(mine);
    for (std::size_t i = 0; i < joined.size(); ++i) {
        if (const OperRow* row = here[keysStored[i]])
            joined[i] = *row;
    }
    mine = std::move(joined);
    return std::nullopt;
}

Conflict joinFixedCosts(const RoutingKind& kind, const std::vector<MiscRow>& before,
                        const std::vector<MiscRow>& stored, std::vector<MiscRow>& mine) {
    const ByKey<MiscRow> was(before), now(stored);
    const auto figures = [](const MiscRow& row) {
        return shown(row.quantity) + u" "_s + row.unit.trimmed() + u", "_s + shown(row.price);
    };
    const auto named = [](const MiscRow& row) { return u"The fixed cost "_s + row.description; };
    std::vector<MiscRow> joined;
    const std::vector<Key> keysMine = keysOf(mine);
    for (std::size_t i = 0; i < mine.size(); ++i) {
        MiscRow row = mine[i];
        const MiscRow* theirs = now[keysMine[i]];
        const MiscRow* first = was[keysMine[i]];
        if (!theirs) {
            if (!first) {
                joined.push_back(row);
            } else if (figures(*first) != figures(row)) {
                return ChangedElsewhere{named(row), u"removed"_s, figures(row)};
            }
            continue;
        }
        const auto part = [&](const QString& figure) {
            return u"The "_s + figure + u" of the fixed cost "_s + row.description;
        };
        const MiscRow nothing{row.itemNo, row.description, theirs->unit, theirs->price, {}, {}};
        const MiscRow& base = first ? *first : kind.issuedFromStock ? nothing : row;
        const Currency price = row.price, quantity = row.quantity;
        if (kind.issuedFromStock) {
            row.quantity += theirs->quantity - base.quantity;
        } else if (auto both = joinFigure(part(u"quantity"_s), base.quantity, theirs->quantity,
                                          row.quantity)) {
            return both;
        }
        if (auto both = joinFigure(part(u"unit"_s), base.unit, theirs->unit, row.unit))
            return both;
        if (auto both = joinFigure(part(u"price"_s), base.price, theirs->price, row.price))
            return both;
        if (row.price != price || row.quantity != quantity)
            row.retotal();
        joined.push_back(row);
    }
    const std::vector<Key> keysStored = keysOf(stored);
    for (std::size_t i = 0; i < stored.size(); ++i) {
        if (std::find(keysMine.begin(), keysMine.end(), keysStored[i]) != keysMine.end())
            continue;
        MiscRow theirs = stored[i];
        const MiscRow* first = was[keysStored[i]];
        if (!first) {
            joined.push_back(theirs);
            continue;
        }
        if (figures(*first) == figures(theirs))
            continue;
        const bool onlyQuantity = first->unit == theirs.unit && first->price == theirs.price;
        if (!kind.issuedFromStock || !onlyQuantity)
            return ChangedElsewhere{named(theirs), figures(theirs), u"removed"_s};
        // Removed here, and then more of it was issued: that much the job did use.
        theirs.quantity -= first->quantity;
        if (theirs.quantity > Currency()) {
            theirs.retotal();
            joined.push_back(theirs);
        }
    }
    mine = std::move(joined);
    return std::nullopt;
}

bool sameLines(const RoutingKind& kind, const RoutedLines& a, const RoutedLines& b) {
    return std::equal(
               a.operations.begin(), a.operations.end(), b.operations.begin(), b.operations.end(),
               [&](const OperRow& one, const OperRow& other) {
                   return one.operNo == other.operNo && typed(kind, one) == typed(kind, other);
               }) &&
           std::is_permutation(a.fixedCosts.begin(), a.fixedCosts.end(), b.fixedCosts.begin(),
                               b.fixedCosts.end(), [](const MiscRow& one, const MiscRow& other) {
                                   return one.itemNo == other.itemNo && one.unit == other.unit &&
                                          one.price == other.price &&
                                          one.quantity == other.quantity;
                               });
}

} // namespace estimating
