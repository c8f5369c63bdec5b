#include "platform/system/Locale.h"

#include "platform/values/Literals.h"

#include <QLocale>

namespace platform {

QString localeCurrencySymbol() {
    const QString symbol = QLocale::system().currencySymbol().trimmed();
    return symbol.isEmpty() ? u"$"_s : symbol;
}

} // namespace platform
