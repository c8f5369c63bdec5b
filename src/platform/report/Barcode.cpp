#include "platform/report/Barcode.h"

#include <zint.h>

#include <memory>

namespace report {

std::optional<BarPattern> encodeBars(Symbology symbology, const QString& text) {
    const auto destroy = [](zint_symbol* symbol) { ZBarcode_Delete(symbol); };
    const std::unique_ptr<zint_symbol, decltype(destroy)> symbol(ZBarcode_Create(), destroy);
    const bool square = symbology == Symbology::Qr;
    symbol->symbology = square                            ? BARCODE_QRCODE
                        : symbology == Symbology::Code128 ? BARCODE_CODE128
                                                          : BARCODE_CODE39;
    symbol->input_mode = square ? UNICODE_MODE : DATA_MODE;
    symbol->show_hrt = 0;
    // Code 39 and 128 carry plain letters only: what isn't one must not become a different sign.
    if (!square) {
        for (const QChar c : text) {
            if (c.unicode() < 0x20 || c.unicode() > 0x7e)
                return std::nullopt;
        }
    }
    const QByteArray bytes = text.toUtf8();
    if (bytes.isEmpty() ||
        ZBarcode_Encode(symbol.get(), reinterpret_cast<const unsigned char*>(bytes.constData()),
                        static_cast<int>(bytes.size())) >= ZINT_ERROR)
        return std::nullopt;
    BarPattern pattern;
    pattern.width = symbol->width;
    pattern.height = square ? symbol->rows : 1;
    for (int row = 0; row < symbol->rows; ++row) {
        const auto* bits = symbol->encoded_data[row];
        const auto dark = [&](int module) {
            return ((bits[module >> 3] >> (module & 7)) & 1) != 0;
        };
        for (int from = 0; from < symbol->width;) {
            int to = from;
            while (to < symbol->width && dark(to))
                ++to;
            if (to > from)
                pattern.bars.emplace_back(from, row, to - from, 1);
            from = std::max(to, from + 1);
        }
    }
    return pattern;
}

} // namespace report
