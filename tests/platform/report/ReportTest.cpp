#include "MemorySource.h"
#include "platform/values/Literals.h"

#include "platform/report/Painting.h"
#include "platform/report/PreviewWindow.h"
#include "platform/report/Report.h"
#include "support/Print.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

namespace {

class Engine : public ::testing::Test {
  protected:
    Engine() {
        source.add(u"Job"_s, {{u"JobNo"_s, u"PartNo"_s},
                              {{1, u"A-1"_s}, {2, u"B-2"_s}},
                              {jet::ColumnType::Long, jet::ColumnType::Text}});
        report::setPreviewer([this](auto document, const auto& placing) {
            shown = document;
            title = placing.title;
        });
    }
    ~Engine() override { report::setPreviewer({}); }

    QString file(const QByteArray& content) const {
        QFile made(folder.filePath(u"Jobs.rpt"_s));
        EXPECT_TRUE(made.open(QIODevice::WriteOnly));
        made.write(content);
        return made.fileName();
    }
    int print(const QString& fileName, const QString& formula = {}) {
        report::Report report(source);
        report.reportFileName = fileName;
        report.selectionFormula = formula;
        const int code = report.printReport();
        detail = report.errorDetail();
        return code;
    }
    /// What poppler reads out of a document's PDF.
    QString pdfText(const report::Document& document) const {
        const QString path = folder.filePath(u"out.pdf"_s);
        report::writePdf(document, path);
        QProcess process;
        process.start(u"pdftotext"_s, {u"-layout"_s, path, u"-"_s});
        EXPECT_TRUE(process.waitForFinished()) << process.errorString().toStdString();
        return QString::fromUtf8(process.readAllStandardOutput());
    }

    QTemporaryDir folder;
    MemorySource source;
    std::shared_ptr<const report::Document> shown;
    QString title, detail;
};

const QByteArray good =
    "<report title=\"Jobs\"><query><select>*</select><from>Job</from></query>"
    "<pageFooter><band><text>page {page} of {pages}</text></band></pageFooter>"
    "<body><detail><band newPage=\"yes\"><text>Job {JobNo}: {PartNo} \xc3\x89tau</text>"
    "<text x=\"60\" w=\"40\" align=\"right\" bold=\"yes\">$1,250.00</text>"
    "<barcode y=\"10\" w=\"60\" h=\"15\">{JobNo}</barcode></band></detail></body></report>";

} // namespace

TEST_F(Engine, AnswersWithItsCodesAndShowsNothingOnFailure) {
    EXPECT_EQ(print(folder.filePath(u"none.rpt"_s)), 20504);
    EXPECT_EQ(print(file("<report><query>")), 20525);
    EXPECT_TRUE(detail.startsWith(u"Jobs.rpt:1:"_s)) << detail.toStdString();
    EXPECT_EQ(print(file(good), u"{Job.JobNo} = "_s), 20515);
    EXPECT_EQ(print(file(good), u"{Customer.Custid} = 1"_s), 20515);
    EXPECT_EQ(print(file(QByteArray(good).replace("<from>Job", "<from>Gone"))), 20533);
    EXPECT_EQ(print(file(QByteArray(good).replace("{PartNo}", "{Part}"))), 20509);
    EXPECT_EQ(shown, nullptr);
    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty() ||
                !dynamic_cast<report::PreviewWindow*>(QApplication::topLevelWidgets().front()));

    EXPECT_EQ(print(file(good), u"{job.jobno} = 2"_s), 0);
    ASSERT_NE(shown, nullptr);
    EXPECT_EQ(title, u"Jobs"_s);
    EXPECT_TRUE(source.asked.last().endsWith(u"WHERE [Job].[jobno] = 2"_s));
    // The catalogue's spelling of a file's name needn't be the disk's.
    file(good);
    EXPECT_EQ(print(folder.filePath(u"JOBS.RPT"_s)), 0);
}

TEST_F(Engine, APdfHoldsTheTextOfThePages) {
    ASSERT_EQ(print(file(good)), 0);
    ASSERT_EQ(shown->pageCount(), 2);
    const QStringList pages = pdfText(*shown).split(u'\f');
    ASSERT_GE(pages.size(), 2);
    EXPECT_TRUE(pages[0].contains(QString::fromUtf8("Job 1: A-1 \xc3\x89tau")))
        << pages[0].toStdString();
    EXPECT_TRUE(pages[0].contains(u"$1,250.00"_s));
    EXPECT_TRUE(pages[1].contains(u"Job 2: B-2"_s));
    EXPECT_TRUE(pages[1].contains(u"page 2 of 2"_s));
}

TEST_F(Engine, PaintsTextAndBarsWhereTheLayoutPutThem) {
    ASSERT_EQ(print(file(good)), 0);
    constexpr int dotsPerMm = 8;
    QImage image(216 * dotsPerMm, 280 * dotsPerMm, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    const auto page = shown->page(0);
    report::PagePainter(*shown).paint(painter, page, dotsPerMm);
    painter.end();
    const auto inked = [&](double x, double y, double w, double h) {
        for (int py = qRound(y * dotsPerMm); py < qRound((y + h) * dotsPerMm); ++py) {
            for (int px = qRound(x * dotsPerMm); px < qRound((x + w) * dotsPerMm); ++px) {
                if (qGray(image.pixel(px, py)) < 128)
                    return true;
            }
        }
        return false;
    };
    for (const auto& item : page.items) {
        EXPECT_TRUE(inked(item.x, item.y, item.w, item.h)) << item.text.toStdString();
        if (item.kind == report::PageItem::Kind::Bars) {
            const auto& bars = item.rectangles;
            // The first bar is black, the gap behind it white, along the whole height.
            EXPECT_TRUE(inked(item.x + bars[0], item.y, bars[2], 0.3));
            EXPECT_TRUE(inked(item.x + bars[0], item.y + item.h - 0.4, bars[2], 0.3));
            const double gap = bars[0] + bars[2] + 0.15;
            EXPECT_FALSE(inked(item.x + gap, item.y + 1, bars[4] - gap - 0.15, item.h - 2));
        }
    }
    EXPECT_FALSE(inked(0, 0, 14, 279));
}
