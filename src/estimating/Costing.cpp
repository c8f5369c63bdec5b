#include "estimating/Costing.h"

#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

namespace estimating {

using values::Currency;

void CostSum::addProduct(Currency product) {
    m_sum = static_cast<float>(static_cast<double>(m_sum) + product.toDouble());
}

void CostSum::addAmount(Currency amount) {
    m_sum = (Currency::fromDouble(static_cast<double>(m_sum)) + amount).toFloat();
}

EstimateCost CalcEstimate(const std::vector<OperRow>& operations,
                          const std::vector<MiscRow>& fixedCosts, bool oneShopRate,
                          Currency shopRate, double quantity,
                          const std::array<double, breakCount>& discounts) {
    CostSum all;
    CostSum outContr;
    CostSum fixed;
    for (const OperRow& row : operations) {
        const Currency time = Currency::fromDouble(row.time.value_or(0));
        if (row.inhouse) {
            all.addProduct(time * (oneShopRate ? shopRate : row.rate));
        } else {
            all.addAmount(time);
            outContr.addAmount(time);
        }
    }
    for (const MiscRow& row : fixedCosts)
        fixed.addAmount(row.total);
    const float sumAll = fixed.value() + all.value();

    EstimateCost cost;
    cost.outContr = outContr.value();
    cost.fixed = fixed.value();
    cost.priceEach[0] = static_cast<double>(sumAll) / (quantity > 0 ? quantity : 1.0);
    // The price that the first break shows, four decimals of it.
    const double shownEach = Currency::fromDouble(cost.priceEach[0]).toDouble();
    for (std::size_t i = 1; i < cost.priceEach.size(); ++i)
        cost.priceEach[i] = shownEach * (1.0 - discounts[i] / 100.0);
    return cost;
}

std::array<double, breakCount> CalcQuoteTotals(const std::array<double, breakCount>& quotedEach,
                                               const std::array<double, breakCount>& quantities) {
    std::array<double, breakCount> totals{};
    for (std::size_t i = 0; i < totals.size(); ++i)
        totals[i] = quotedEach[i] * quantities[i];
    return totals;
}

QString discountText(const QString& typed) {
    if (typed.trimmed().startsWith(u"100"_s))
        return u"100.00"_s;
    if (values::val(typed) == 0)
        return u"0.00"_s;
    return values::numberField(typed, u"##0.00");
}

} // namespace estimating
