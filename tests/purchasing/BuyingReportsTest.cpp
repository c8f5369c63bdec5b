#include "platform/report/Layout.h"
#include "platform/report/Painting.h"
#include "platform/report/Report.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "sample/Sample.h"
#include "support/DatabaseFixture.h"
#include "support/Paths.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cmath>

namespace {

/// The reports of buying on the sample shop, as PDF files read back, against statements of the
/// test's own.
class BuyingReports : public testsupport::ShopDatabaseFixture {
  protected:
    /// The lines of the PDF, as poppler reads them.
    QStringList printed(const QString& name, const QString& formula) {
        report::DatabaseRowSource source(db());
        const auto file = report::readReportFile(testsupport::sourceFile(u"reports/"_s) + name);
        const QString path = m_folder.filePath(u"out.pdf"_s);
        report::writePdf(*report::layOut(file, source, formula), path);
        QProcess reader;
        reader.start(u"pdftotext"_s, {u"-layout"_s, path, u"-"_s});
        EXPECT_TRUE(reader.waitForFinished()) << reader.errorString().toStdString();
        return QString::fromUtf8(reader.readAllStandardOutput()).split(u'\n');
    }
    /// Words of the line, figures without commas and symbols.
    static QStringList words(QString line) {
        static const QRegularExpression marks(u"[,$]"_s), blanks(u"\\s+"_s);
        return line.remove(marks).split(blanks, Qt::SkipEmptyParts);
    }
    /// Money is printed with two decimals or four, and stored with four.
    static bool isSame(const QString& shown, const QString& word) {
        if (shown == word)
            return true;
        const auto decimals = [](const QString& figure) {
            return figure.contains(u'.') ? figure.size() - figure.indexOf(u'.') - 1 : 0;
        };
        return values::isNumeric(word) && values::isNumeric(shown) &&
               decimals(shown) >= std::min<qsizetype>(decimals(word), 2) &&
               std::abs(values::val(shown) - values::val(word)) <=
                   0.5 * std::pow(10, -double(decimals(shown))) + 1e-9;
    }
    /// Whether a line has all cells of a row, in their order.
    static bool holds(const QStringList& line, const QStringList& cells) {
        qsizetype at = 0;
        for (const QString& cell : cells) {
            for (const QString& word : words(cell)) {
                while (at < line.size() && !isSame(line[at], word))
                    ++at;
                if (at++ >= line.size())
                    return false;
            }
        }
        return true;
    }
    QTemporaryDir m_folder;
};

TEST_P(BuyingReports, EachLineOfTheTablesStandsInThePdfWithItsFigures) {
    sample::fill(db(), {1, 40, QDate(2026, 3, 2)});
    const QString group =
        db().lookup(u"SELECT TOP 1 OrderNumber FROM RFQVendor GROUP BY OrderNumber ORDER BY "
                    "COUNT(*) DESC, OrderNumber"_s)
            .toText();
    const QString order = db().lookup(u"SELECT MAX(PONumber) FROM PO"_s).toText();
    const QString requests =
        u" FROM RFQItem INNER JOIN RFQVendor ON RFQItem.VOrderKey = RFQVendor.VOrderKey WHERE "
        "RFQItem.OrderNumber = "_s +
        group;
    const QString open = u" FROM POItem WHERE ReceivedQuantity < Quantity"_s;
    const QString left = u" (Quantity - ReceivedQuantity) * UnitPrice"_s;
    const struct {
        const char16_t* file;
        QString formula;
        QStringList selects;
    } reports[] = {
        {u"RFQ.rpt",
         u"{rfq.ponumber} = "_s + group,
         {u"SELECT ItemNumber, PartNumber, Quantity, UnitOfMeasure, UnitPrice, ItemTotal"_s +
              requests + u" AND UnitPrice <> 0"_s,
          u"SELECT PartNumber, Quantity"_s + requests,
          u"SELECT 'No.', VOrderKey FROM RFQVendor WHERE OrderNumber = "_s + group}},
        {u"RFQ_Comparison.rpt",
         u"{rfq.ponumber} = "_s + group,
         {u"SELECT Company, Quantity, UnitPrice, ItemTotal"_s + requests + u" AND UnitPrice <> 0"_s,
          u"SELECT Company, Quantity, 'no quote'"_s + requests + u" AND UnitPrice = 0"_s}},
        {u"Purchase_Order.rpt",
         u"{po.ponumber} = "_s + order,
         {u"SELECT ItemNumber, PartNumber, Quantity, UnitOfMeasure, UnitPrice, ItemTotal FROM "
          "POItem WHERE PONumber = "_s +
              order,
          u"SELECT 'Total', SUM(ItemTotal) FROM POItem WHERE PONumber = "_s + order,
          u"SELECT Company FROM POVendor WHERE OrderNumber = "_s + order}},
        {u"PO_Open_by_Vendor.rpt",
         {},
         {u"SELECT PONumber, PartNumber, Quantity, ReceivedQuantity, Quantity - "
          "ReceivedQuantity AS ToCome,"_s +
              left + u" AS Worth"_s + open,
          u"SELECT COUNT(*), SUM("_s + left + u")"_s + open}},
        {u"PO_Open_by_Date.rpt",
         {},
         {u"SELECT PONumber, PartNumber, Quantity, ReceivedQuantity, Quantity - "
          "ReceivedQuantity AS ToCome,"_s +
              left + u" AS Worth"_s + open,
          u"SELECT COUNT(*), SUM("_s + left + u")"_s + open}},
        {u"PO_Receipts.rpt",
         {},
         {u"SELECT POReceived.[Date], ItemNumber, PartNumber, QtyRecvd, Quantity, EmpID FROM "
          "POReceived INNER JOIN POItem ON POReceived.ItemID = POItem.ID"_s,
          u"SELECT COUNT(*), SUM(QtyRecvd) FROM POReceived GROUP BY PONumber"_s}}};
    for (const auto& [file, formula, selects] : reports) {
        std::vector<QStringList> lines;
        for (const QString& line : printed(QString::fromUtf16(file), formula))
            lines.push_back(words(line));
        for (const QString& select : selects) {
            const QStringList wanted = rows(select);
            EXPECT_FALSE(wanted.isEmpty()) << select.toStdString();
            for (const QString& row : wanted) {
                const QStringList cells = row.split(u'|');
                EXPECT_TRUE(
                    std::any_of(lines.begin(), lines.end(),
                                [&](const QStringList& line) { return holds(line, cells); }))
                    << QString::fromUtf16(file).toStdString() << " lacks " << row.toStdString();
            }
        }
    }
}

} // namespace

MIRSA_BOTH_ENGINES(BuyingReports);
