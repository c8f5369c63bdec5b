#pragma once

#include "platform/report/ReportFile.h"

#include <QFont>
#include <QFontMetricsF>
#include <QString>
#include <QStringList>

#include <array>
#include <memory>
#include <vector>

namespace report {

/// Fonts are measured and painted at this many pixels for a millimetre, unhinted and without
/// kerning, so that a line is as wide on every device as the layout took it to be.
inline constexpr double pixelsPerMm = 20;

QFont fontOf(const Style& style);

/// Widths and heights of text in one style, in millimetres.
class TextMeasure {
  public:
    explicit TextMeasure(const Style& style);

    double width(const QString& text) const;
    double lineHeight() const { return m_lineHeight; }
    double ascent() const { return m_ascent; }
    /// The text in lines no wider than `width`: broken at blanks and behind hyphens and slashes,
    /// inside a word only where it is wider than a line. Line ends in the text are kept.
    QStringList lines(const QString& text, double width) const;
    /// The text on one line, shortened with an ellipsis where it is wider than `width`.
    QString shortened(const QString& text, double width) const;

  private:
    double width(QStringView text) const;
    void wrap(QStringView paragraph, double width, QStringList& lines) const;

    QFontMetricsF m_metrics;
    std::array<float, 0x250> m_advances; ///< of single letters, in millimetres
    double m_lineHeight;
    double m_ascent;
};

} // namespace report
