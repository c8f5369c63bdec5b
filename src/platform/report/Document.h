#pragma once

#include "platform/report/ReportFile.h"

#include <QByteArray>
#include <QImage>
#include <QRectF>
#include <QString>
#include <QTemporaryFile>

#include <memory>
#include <vector>

namespace report {

/// Something at its place on a page, in millimetres from the paper's upper left corner.
struct PageItem {
    enum class Kind : quint8 { Text, Line, Box, Picture, Bars, Scan };
    Kind kind = Kind::Text;
    Align align = Align::Left;
    quint16 style = 0; ///< of a text: index into Document::styles; of a picture: into pictures
    /// The place. A text's line lies in it; x and w are those of the text itself, but for a text
    /// with the number of pages, whose width is known later: there they are its field's.
    float x = 0, y = 0, w = 0, h = 0;
    QString text; ///< one line, already broken; of bars: what they encode
    float thickness = 0;
    QRgb color = 0;                ///< of a line, of a box's frame
    QRgb fill = 0;                 ///< of a box; 0: none
    std::vector<float> rectangles; ///< of bars: x, y, w, h of each in millimetres from the place
    QByteArray picture;            ///< of a scan: a PNG or JPEG, of this page alone
    bool stretch = false;          ///< during layout: follows the height of its band
};

struct Page {
    std::vector<PageItem> items;

    /// The page's texts as read: rows from top to bottom, parted by line ends, texts of a row by
    /// tabs.
    QString text() const;
};

/// The laid out pages of a report. Pages are kept packed, beyond some megabytes in a temporary
/// file, so that any number of them takes little memory.
class Document {
  public:
    QString title;
    QString name;   ///< what a copy of it is called, as a file for instance; may hold any character
    QString mailTo; ///< the address that it is sent to; empty if the report names none
    Paper paper;
    std::vector<Style> styles;
    std::vector<QImage> pictures;

    int pageCount() const { return static_cast<int>(m_offsets.size()); }
    /// Page from 0, with the number of pages filled in.
    Page page(int index) const;
    void append(const Page& page);

  private:
    std::vector<qint64> m_offsets;
    qint64 m_size = 0;
    QByteArray m_memory; ///< the pages' bytes until they move to the file
    mutable std::unique_ptr<QTemporaryFile> m_file;
};

} // namespace report
