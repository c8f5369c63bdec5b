#pragma once

#include "platform/report/Document.h"

#include <QCache>
#include <QFont>

#include <functional>
#include <vector>

class QIODevice;
class QPainter;

namespace report {

/// Paints pages of one document. Fonts are made once.
class PagePainter {
  public:
    explicit PagePainter(const Document& document);
    /// The paper's upper left corner at the painter's origin, `unitsPerMm` of its units for a
    /// millimetre. White paper is not painted.
    void paint(QPainter& painter, const Page& page, double unitsPerMm) const;
    /// Where a piece of a text item stands, in millimetres on the paper, for marking what was
    /// found.
    QRectF textRect(const PageItem& item, qsizetype from, qsizetype length) const;

  private:
    double textX(const PageItem& item) const;
    QImage scan(const QByteArray& picture) const;

    const Document& m_document;
    std::vector<QFont> m_fonts;
    std::vector<double> m_ascents;                         ///< millimetres
    mutable QCache<QByteArray, QImage> m_scans{200 << 20}; ///< bytes
};

/// Writes all pages as a PDF. `progress` as in layOut. Throws ReportError: fileError, cancelled.
void writePdf(const Document& document, QIODevice& device,
              const std::function<bool(int pages)>& progress = {});
/// The same into a file, which isn't touched where writing fails.
void writePdf(const Document& document, const QString& path,
              const std::function<bool(int pages)>& progress = {});

} // namespace report
