#include "accounting/ItemNames.h"

#include "accounting/Answer.h"
#include "platform/values/Literals.h"

namespace accounting {

QStringList itemNames(const QDomElement& response) {
    QStringList names;
    for (const QDomElement& item : childElements(response)) {
        const bool percentage = !item.firstChildElement(u"DiscountRatePercent"_s).isNull() ||
                                !item.firstChildElement(u"SalesAndPurchase"_s)
                                     .firstChildElement(u"PricePercent"_s)
                                     .isNull() ||
                                !item.firstChildElement(u"SalesOrPurchase"_s)
                                     .firstChildElement(u"PricePercent"_s)
                                     .isNull();
        const QString name = textAt(item, u"FullName"_s);
        if (!percentage && !name.isEmpty())
            names += name;
    }
    return names;
}

} // namespace accounting
