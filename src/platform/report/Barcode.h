#pragma once

#include "platform/report/ReportFile.h"

#include <QRectF>
#include <QString>

#include <optional>
#include <vector>

namespace report {

/// A bar code as rectangles of whole modules (the narrowest bar), without quiet zone.
struct BarPattern {
    double width = 0;  ///< in modules
    double height = 0; ///< of a QR code in modules; of others 1: as high as wanted
    std::vector<QRectF> bars;
};

/// Nothing where the symbology can't encode the text.
std::optional<BarPattern> encodeBars(Symbology symbology, const QString& text);

} // namespace report
