#pragma once

#include "platform/report/Document.h"
#include "platform/report/Expression.h"
#include "platform/report/TextMeasure.h"

#include <memory>
#include <vector>

namespace report {

/// A band with its content worked out; items in millimetres from the upper left corner of the
/// band.
struct PlacedBand {
    std::vector<PageItem> items;
    double height = 0;
    bool keepTogether = true;
    bool keepWithNext = false;
    bool newPage = false;
    int repeat = 0; ///< number of the header that this is; 0: none

    /// What of it fits in `room`; the rest moves up to its own top. Texts are cut between lines
    /// only. An empty result: nothing fits.
    PlacedBand split(double room);
    /// The least room in which something of it can stand.
    double firstPart() const;
};

/// Works out bands: fields into texts, texts into lines, growth.
class BandLayout {
  public:
    /// The document gets the report's styles and pictures.
    BandLayout(const ReportFile& file, Document& document);

    PlacedBand place(const Band& band, const Scope& scope);

  private:
    struct Grown {
        std::vector<PageItem> items;
        double height = 0; ///< what the element takes
    };
    Grown text(const Element& element, const QString& text, double height) const;
    Grown bars(const Element& element, const QString& text);
    Grown picture(const Element& element);
    void stretch(PlacedBand& band) const;

    const ReportFile& m_file;
    Document& m_document;
    std::vector<std::unique_ptr<TextMeasure>> m_measures;
    QHash<QString, int> m_pictures;
};

} // namespace report
