#pragma once

#include "platform/report/Expression.h"

#include <QColor>
#include <QSizeF>
#include <QString>

#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace report {

enum class Align { Left, Center, Right };

/// How text looks. Size in points.
struct Style {
    QString family; ///< empty: the usual sans serif
    double size = 9;
    bool bold = false;
    bool italic = false;
    QColor color = Qt::black;

    friend bool operator==(const Style&, const Style&) = default;
};

/// Paper and margins in millimetres.
struct Paper {
    QSizeF size{215.9, 279.4};
    double left = 15, top = 12, right = 15, bottom = 12;

    double contentWidth() const { return size.width() - left - right; }
};

enum class Symbology { Code39, Code128, Qr };

/// Something placed in a band. Millimetres from the band's upper left corner.
struct Element {
    enum class Kind { Text, Line, Box, Picture, Barcode };
    Kind kind = Kind::Text;
    double x = 0, y = 0, w = 0, h = 0;
    std::optional<Expression> showIf;
    bool money = false; ///< left out for users who may not see money

    Template text; ///< of a text or a bar code
    int style = 0; ///< index into ReportFile::styles
    Align align = Align::Left;
    double verticalShare = 0; ///< where the text stands in its height: 0 top, 0.5 middle, 1 bottom
    bool skipEmptyLines = false; ///< as in addresses
    bool grow = true; ///< wrapped into as many lines as it takes; else one line, with "..."

    double thickness = 0.2;
    QColor color = Qt::black; ///< of lines, of a box's frame
    QColor fill;              ///< of a box; invalid: none
    bool stretch = false;     ///< lines and boxes: down to the end of the grown band
    /// Boxes: the part of the width that is drawn, as shares from 0 to 1.
    std::optional<Expression> from, to;

    QString file; ///< picture, beside the report file

    Symbology symbology = Symbology::Code39;
    bool showText = true; ///< the encoded text beneath the bars
    double module = 0.33; ///< widest narrow bar
};

/// A strip of the page as high as its content.
struct Band {
    double height = 0;
    std::vector<Element> elements;
    std::optional<Expression> showIf;
    bool money = false;       ///< left out as a whole for users who may not see money
    bool keepTogether = true; ///< goes to the next page as a whole where that has room for it
    /// Never the last thing on a page: always, or where the condition holds.
    bool keepWithNext = false;
    std::optional<Expression> keepWithNextIf;
    bool newPage = false; ///< begins a page
};

struct List;
using SectionPart = std::variant<Band, std::unique_ptr<List>>;
using Section = std::vector<SectionPart>;

/// Rows with the same value of an expression, one after the other.
struct Group {
    Expression by;
    Section header, footer;
    bool repeat = false; ///< the header stands again on top of each page that the group goes on to
    bool keepTogether = false;
    bool newPage = false; ///< every group but the first begins a page
};

/// A total that is kept while the rows of a list go by.
struct Total {
    int id = 0; ///< index among all totals of the report
    TotalKind kind = TotalKind::Sum;
    std::shared_ptr<const ExpressionNode> of;
    int group = -1; ///< index of the group whose start sets it back; -1: runs over all rows
};

/// A value worked out of the fields of a row, under a name of its own.
struct Computed {
    QString name; ///< lower case
    Expression value;
};

/// The rows of a query and what is printed of them.
struct List {
    QString name;
    std::vector<Computed> computed;
    Template query; ///< of a list inside another; its braces name fields of the rows around it
    std::vector<Group> groups;
    Section header, detail, footer;
    Section none; ///< in place of all others where there is no row
    bool repeatHeader = true;
    std::vector<Total> totals;
};

/// The query of the report's own rows, in clauses, so that a selection formula has its place.
struct Query {
    QString select, from, where, groupBy, orderBy;
    bool distinct = false;
    /// Tables of rows below the query's that formulas may name.
    struct Through {
        QString table;  ///< the table below
        QString column; ///< its column that points to
        QString key;    ///< this expression of the query
    };
    std::vector<Through> through;
};

/// One row that is read at the start and can be named by all bands: `company.CompanyName`.
struct Parameter {
    QString name;
    QString query;
};

/// A report as its file describes it.
struct ReportFile {
    QString path;
    QString title;
    Template
        documentName; ///< of one printed copy, such as its PDF; it names the first row's fields
    Template mailTo;  ///< the address that such a copy is sent to
    Paper paper;
    std::vector<Style> styles; ///< the first is the ordinary text
    std::vector<Parameter> parameters;
    Query query;
    List body;
    Section pageHeader, pageFooter;
    bool headerOnFirstPage = true;
    int totals = 0; ///< number of totals in all lists
};

/// Takes the bands and elements out that are marked as money.
void leaveOutMoney(ReportFile& file);

/// Reads a report file. Throws ReportError: reportNotFound; unableToLoad, with file, line and what
/// is wrong.
ReportFile readReportFile(const QString& path);
ReportFile readReportText(const QByteArray& xml, const QString& path);

} // namespace report
