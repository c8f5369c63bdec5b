#pragma once

#include "estimating/Routing.h"

#include <array>
#include <vector>

namespace estimating {

inline constexpr int breakCount = 5; ///< price breaks A to E

/// Running sum of a costing: a 32-bit float, so that beyond about seven digits it loses cents. The
/// figures of the shop depend on that width.
class CostSum {
  public:
    float value() const { return m_sum; }
    /// The amount is added to the float as it stands, the result narrowed again.
    void addProduct(values::Currency product);
    /// The float goes through four decimals before the amount is added.
    void addAmount(values::Currency amount);

  private:
    float m_sum = 0;
};

struct EstimateCost {
    float outContr = 0; ///< money to contractors
    float fixed = 0;    ///< fixed costs and material
    /// Price each of the breaks: all cost by the first quantity (by 1 if that isn't above 0), the
    /// later ones less their discount in percent; their quantities play no part.
    std::array<double, breakCount> priceEach{};
};

/// Cost side of an estimate. In-house rows cost hours times the one rate, or times their own rate
/// where `oneShopRate` is false; contractor rows cost their amount. `discounts[0]` isn't used.
/// Throws values::Overflow where a product leaves the range of money.
EstimateCost CalcEstimate(const std::vector<OperRow>& operations,
                          const std::vector<MiscRow>& fixedCosts, bool oneShopRate,
                          values::Currency shopRate, double quantity,
                          const std::array<double, breakCount>& discounts);

/// Quoted side: quoted price each times the quantity of each break.
std::array<double, breakCount> CalcQuoteTotals(const std::array<double, breakCount>& quotedEach,
                                               const std::array<double, breakCount>& quantities);

/// A discount field's text after it was left: "100.00" for whatever begins with 100, "0.00" for
/// nothing, else two decimals.
QString discountText(const QString& typed);

} // namespace estimating
