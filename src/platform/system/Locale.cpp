#include "platform/system/Locale.h"

#include <QLocale>

namespace platform {

QString localeCurrencySymbol() {
    const QString symbol = QLocale::system().currencySymbol().trimmed();
    return symbol.isEmpty() ? QStringLiteral("$") : symbol;
}

} // namespace platform
