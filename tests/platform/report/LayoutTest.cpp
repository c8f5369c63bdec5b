#include "MemorySource.h"

#include "platform/report/Layout.h"
#include "platform/report/TextMeasure.h"
#include "platform/values/Clock.h"
#include "support/Print.h"

#include <gtest/gtest.h>

#include <algorithm>

using jet::Value;
using report::Document;
using report::PageItem;

namespace {

QString numbered(int number) {
    return QStringLiteral("line %1").arg(number);
}

class Layout : public ::testing::Test {
  protected:
    MemorySource source;

    /// A page of 100 x 100 mm, margins of 10: 80 mm for what stands in `content`.
    std::unique_ptr<Document> layOut(const QString& content, const QString& formula = {}) {
        const QString xml =
            QStringLiteral("<report title=\"Test\">"
                           "<page width=\"100\" height=\"100\" left=\"10\" top=\"10\" "
                           "right=\"10\" bottom=\"10\"/>"
                           "<query><select>*</select><from>Part</from></query>%1</report>")
                .arg(content);
        const auto file = report::readReportText(xml.toUtf8(), QStringLiteral("test.rpt"));
        return report::layOut(file, source, formula);
    }
    void parts(int count) {
        MemorySource::Table table{{QStringLiteral("No"), QStringLiteral("Kind"),
                                   QStringLiteral("Price"), QStringLiteral("Notes")},
                                  {}};
        for (int number = 1; number <= count; ++number)
            table.rows.push_back({number, QString(QChar(u'A' + (number - 1) / 4)),
                                  values::Currency::fromDouble(1.25 * number), QString()});
        source.add(QStringLiteral("Part"), std::move(table));
    }
    static QStringList texts(const Document& document) {
        QStringList pages;
        for (int page = 0; page < document.pageCount(); ++page)
            pages.append(document.page(page).text());
        return pages;
    }
    static QString failure(const std::function<void()>& action) {
        try {
            action();
        } catch (const report::ReportError& error) {
            return QStringLiteral("%1 %2").arg(error.code()).arg(error.detail());
        }
        return {};
    }
};

} // namespace

TEST_F(Layout, pagesFillWithRowsBetweenHeaderAndFooter) {
    parts(10);
    const auto document = layOut(QStringLiteral(
        "<pageHeader><band height=\"10\"><text>{title}</text></band></pageHeader>"
        "<pageFooter><band height=\"10\"><text align=\"right\">Page {page} of {pages}</text></band>"
        "</pageFooter>"
        "<body><header repeat=\"yes\"><band height=\"10\"><text>No</text></band></header>"
        "<detail><band height=\"10\"><text>{No}: {Price:0.00}</text></band></detail></body>"));
    EXPECT_EQ(texts(*document),
              (QStringList{QStringLiteral("Test\nNo\n1: 1.25\n2: 2.50\n3: 3.75\n4: 5.00\n5: 6.25\n"
                                          "Page 1 of 2\n"),
                           QStringLiteral("Test\nNo\n6: 7.50\n7: 8.75\n8: 10.00\n9: 11.25\n"
                                          "10: 12.50\nPage 2 of 2\n")}));
    // The number of pages, known last, still stands at the right margin.
    const auto page = document->page(1);
    const auto& last = *std::find_if(page.items.begin(), page.items.end(), [](const auto& item) {
        return item.text.startsWith(QStringLiteral("Page"));
    });
    EXPECT_EQ(last.align, report::Align::Right);
    EXPECT_NEAR(last.x + last.w, 90, 0.01);
    EXPECT_NEAR(last.y, 80, 0.01);
}

TEST_F(Layout, groupsTotalTheirRowsAndRepeatTheirHeaders) {
    parts(10);
    const auto document = layOut(QStringLiteral(
        "<body><group by=\"Kind\"><header><band height=\"10\"><text>Kind "
        "{Kind}</text></band></header>"
        "<footer><band height=\"10\"><text>{Kind}: {count()} for {sum(Price):0.00}, {avg(No):0.0} "
        "to {max(No)}</text></band></footer></group>"
        "<detail><band height=\"10\"><text>{No} {sum(Price)}</text></band></detail>"
        "<footer><band height=\"10\"><text>All: {sum(Price * "
        "2):0.00}</text></band></footer></body>"));
    EXPECT_EQ(texts(*document),
              (QStringList{QStringLiteral("Kind A\n1 1.25\n2 3.75\n3 7.5\n4 12.5\n"
                                          "A: 4 for 12.50, 2.5 to 4\nKind B\n5 6.25\n"),
                           QStringLiteral("Kind B\n6 13.75\n7 22.5\n8 32.5\n"
                                          "B: 4 for 32.50, 6.5 to 8\nKind C\n9 11.25\n10 23.75\n"),
                           QStringLiteral("Kind C\nC: 2 for 23.75, 9.5 to 10\nAll: 137.50\n")}));
}

TEST_F(Layout, keepsTogetherWhatBelongsTogether) {
    parts(8);
    const QString report = QStringLiteral(
        "<body><group by=\"Kind\" keepTogether=\"%1\" repeat=\"no\"><header><band height=\"10\">"
        "<text>Kind {Kind}</text></band></header></group>"
        "<detail><band height=\"15\"><text>{No}</text></band></detail></body>");
    // Eight centimetres: the second header alone would fit below four rows of 1.5 cm.
    EXPECT_EQ(texts(*layOut(report.arg(QStringLiteral("no")))),
              (QStringList{QStringLiteral("Kind A\n1\n2\n3\n4\n"),
                           QStringLiteral("Kind B\n5\n6\n7\n8\n")}));
    parts(7);
    const QString narrow = QString(report).replace(QStringLiteral("15"), QStringLiteral("8"));
    EXPECT_EQ(texts(*layOut(narrow.arg(QStringLiteral("no")))).front(),
              QStringLiteral("Kind A\n1\n2\n3\n4\nKind B\n5\n6\n7\n"));
    parts(8);
    EXPECT_EQ(texts(*layOut(narrow.arg(QStringLiteral("yes")))).size(), 2);
    EXPECT_EQ(texts(*layOut(narrow.arg(QStringLiteral("yes")))).front(),
              QStringLiteral("Kind A\n1\n2\n3\n4\n"));
}

TEST_F(Layout, memosGrowPushDownWhatIsBelowAndSplitBetweenLines) {
    QStringList lines;
    for (int number = 1; number <= 40; ++number)
        lines.append(numbered(number));
    source.add(QStringLiteral("Part"),
               {{QStringLiteral("No"), QStringLiteral("Notes")},
                {{1, lines.join(QStringLiteral("\r\n"))}, {2, QStringLiteral("one")}}});
    const auto document =
        layOut(QStringLiteral("<body><detail><band height=\"12\"><box w=\"80\" stretch=\"yes\"/>"
                              "<text w=\"10\">{No}</text><text x=\"20\" w=\"60\">{Notes}</text>"
                              "<text y=\"6\">below {No}</text></band></detail></body>"));
    const QString all = texts(*document).join(QString());
    ASSERT_GE(document->pageCount(), 2);
    qsizetype at = 0;
    for (const auto& line : lines) {
        at = all.indexOf(line + u'\n', at);
        ASSERT_GE(at, 0) << line.toStdString() << " is missing or out of order";
    }
    EXPECT_GT(all.indexOf(QStringLiteral("below 1")), at);
    for (int page = 0; page < document->pageCount(); ++page) {
        for (const auto& item : document->page(page).items)
            EXPECT_LE(item.y + item.h, 90.02) << "on page " << page;
    }
    // The frame goes on to the foot of the first page and starts again on top of the next.
    const auto first = document->page(0).items.front();
    const auto second = document->page(1).items.front();
    EXPECT_EQ(first.kind, PageItem::Kind::Box);
    EXPECT_GT(first.h, 75);
    EXPECT_EQ(second.kind, PageItem::Kind::Box);
    EXPECT_NEAR(second.y, 10, 0.01);
}

TEST_F(Layout, linesBreakAtBlanksAndNeverLeaveTheirField) {
    source.add(QStringLiteral("Part"),
               {{QStringLiteral("Notes")},
                {{QStringLiteral("Turn, face and drill to print REV-C/2026, deburr all edges")},
                 {QStringLiteral("W").repeated(60)},
                 {QString::fromUtf8("Gr\xc3\xbc\xc3\x9f"
                                    "e an \xe6\x9c\xba\xe5\x99\xa8 und mehr als eine Zeile")}}});
    const auto document = layOut(QStringLiteral(
        "<body><detail><band><text x=\"5\" w=\"30\">{Notes}</text>"
        "<text x=\"40\" w=\"20\" grow=\"no\">{Notes}</text></band></detail></body>"));
    const report::TextMeasure measure(document->styles.front());
    QString joined;
    for (const auto& item : document->page(0).items) {
        const double right = item.x < 45 ? 45 : 70;
        EXPECT_LE(item.x + item.w, right + 0.02) << item.text.toStdString();
        if (item.x < 45)
            joined += item.text;
    }
    EXPECT_EQ(joined.remove(u' ').left(50),
              QStringLiteral("Turn,faceanddrilltoprintREV-C/2026,deburralledgesWWWW").left(50));
    EXPECT_EQ(joined.count(u'W'), 60);
    EXPECT_EQ(measure.lines(QStringLiteral("a\n\nb\n\n"), 50),
              (QStringList{QStringLiteral("a"), QString(), QStringLiteral("b")}));
    EXPECT_EQ(measure.lines(QStringLiteral("x").repeated(3), 0.5).size(), 3);
}

TEST_F(Layout, detailListsReadWithTheValuesOfTheirRow) {
    source.add(QStringLiteral("Part"), {{QStringLiteral("No"), QStringLiteral("Name")},
                                        {{7, QStringLiteral("O'Neil")}, {8, Value()}}});
    source.add(QStringLiteral("Step"),
               {{QStringLiteral("Hours"), QStringLiteral("No")}, {{1.5, 70}, {2.25, 71}}});
    source.add(QStringLiteral("Company"), {{QStringLiteral("Name")}, {{QStringLiteral("Acme")}}});
    source.add(QStringLiteral("Tool"), {{QStringLiteral("Id")}, {}});
    const auto document = layOut(QStringLiteral(
        "<parameter name=\"company\">SELECT * FROM Company</parameter>"
        "<body><detail><band><text>{company.Name}/{report.No}</text></band>"
        "<list name=\"steps\"><query>SELECT * FROM Step WHERE Part = {No} AND Name = {Name}</query>"
        "<detail><band><text>{rownumber}. step {No} of {report.No}: {Hours:0.00}</text></band>"
        "<list name=\"tools\"><query>SELECT * FROM Tool WHERE Step = {No}</query>"
        "<none><band><text>no tools</text></band></none>"
        "<detail><band><text>never</text></band></detail></list></detail></list>"
        "<band><text showIf=\"steps.sum(Hours) &gt; 3\">{steps.count()} steps: "
        "{steps.sum(Hours):0.00}, {iif(isempty(Name), 'unnamed', Name)}</text></band>"
        "</detail></body>"));
    const QString one = QStringLiteral("Acme/%1\n1. step 70 of %1: 1.50\nno tools\n"
                                       "2. step 71 of %1: 2.25\nno tools\n2 steps: 3.75, %2\n");
    EXPECT_EQ(texts(*document).join(QString()),
              one.arg(7).arg(QStringLiteral("O'Neil")) + one.arg(8).arg(QStringLiteral("unnamed")));
    EXPECT_TRUE(source.asked.contains(
        QStringLiteral("SELECT * FROM Step WHERE Part = 7 AND Name = 'O''Neil'")));
    EXPECT_TRUE(
        source.asked.contains(QStringLiteral("SELECT * FROM Step WHERE Part = 8 AND Name = Null")));
    EXPECT_TRUE(source.asked.contains(QStringLiteral("SELECT * FROM Tool WHERE Step = 71")));
}

TEST_F(Layout, barCodesShowTextWhereTheyCannotEncode) {
    source.add(QStringLiteral("Part"), {{QStringLiteral("Code")},
                                        {{QStringLiteral("JOB-12")},
                                         {QString::fromUtf8("caf\xc3\xa9")},
                                         {QStringLiteral("X").repeated(80)}}});
    const auto document = layOut(QStringLiteral(
        "<body><detail><band><barcode w=\"70\" h=\"12\">{Code}</barcode></band></detail></body>"));
    const auto items = document->page(0).items;
    ASSERT_EQ(items.front().kind, PageItem::Kind::Bars);
    // Code 39: nine elements a sign, five of them bars, start and stop sign added.
    EXPECT_EQ(items.front().rectangles.size(), 4u * 5 * (6 + 2));
    EXPECT_EQ(items[1].text, QStringLiteral("JOB-12"));
    EXPECT_EQ(items[2].kind, PageItem::Kind::Text);
    EXPECT_EQ(items[2].text, QString::fromUtf8("caf\xc3\xa9"));
    EXPECT_EQ(std::count_if(items.begin(), items.end(),
                            [](const auto& item) { return item.kind == PageItem::Kind::Bars; }),
              1);
    for (const auto* code : {"128", "qr"}) {
        const auto other = layOut(
            QStringLiteral("<body><detail><band><barcode code=\"%1\" w=\"70\" h=\"20\">job {Code}"
                           "</barcode></band></detail></body>")
                .arg(QLatin1String(code)));
        EXPECT_EQ(other->page(0).items.front().kind, PageItem::Kind::Bars) << code;
    }
}

TEST_F(Layout, anEmptyReportSaysSo) {
    parts(0);
    const auto document =
        layOut(QStringLiteral("<pageFooter><band><text>{page}/{pages}</text></band></pageFooter>"
                              "<body><header><band><text>Header</text></band></header>"
                              "<none><band><text>No parts.</text></band></none></body>"));
    EXPECT_EQ(texts(*document), QStringList{QStringLiteral("No parts.\n1/1\n")});
}

TEST_F(Layout, manyPagesComeBackFromTheirFileAsTheyWere) {
    parts(0);
    MemorySource::Table table{{QStringLiteral("No")}, {}};
    for (int number = 0; number < 60000; ++number)
        table.rows.push_back({number});
    source.add(QStringLiteral("Part"), std::move(table));
    const auto document = layOut(
        QStringLiteral("<body><detail><band height=\"1.6\"><text size=\"3\">{No}</text>"
                       "<text x=\"20\" size=\"3\">of {pages} pages</text><text x=\"50\" size=\"3\">"
                       "long enough to fill some megabytes</text></band></detail></body>"));
    ASSERT_EQ(document->pageCount(), 60000 / 50);
    EXPECT_TRUE(document->page(1000).text().startsWith(
        QStringLiteral("50000\tof %1 pages").arg(document->pageCount())))
        << document->page(1000).text().left(80).toStdString();
    EXPECT_TRUE(document->page(3).text().startsWith(QStringLiteral("150\t")));
}

TEST_F(Layout, faultsOfAFileNameTheirLine) {
    parts(1);
    const auto told = [&](const QString& content) { return failure([&] { layOut(content); }); };
    EXPECT_EQ(told(QStringLiteral("\n<body><detail><band><txt/></band></detail></body>")),
              QStringLiteral("20525 test.rpt:2: <txt> has no place in <band>"));
    EXPECT_EQ(told(QStringLiteral("<body><detail><band heigth=\"3\"/></detail></body>")),
              QStringLiteral("20525 test.rpt:1: <band> has no attribute heigth"));
    EXPECT_EQ(
        told(QStringLiteral("<body><detail><band><text w=\"200\">x</text></band></detail></body>")),
        QStringLiteral("20525 test.rpt:1: <text> lies outside the margins"));
    EXPECT_EQ(
        told(QStringLiteral("<body><header><band><text>{sum(No)}</text></band></header></body>")),
        QStringLiteral("20525 test.rpt:1: A total can stand in details and footers only"));
    EXPECT_TRUE(told(QStringLiteral("<body><detail><band><text>{No</text></band></detail></body>"))
                    .startsWith(QStringLiteral("20525 test.rpt:1: \"}\" is missing")));
    EXPECT_TRUE(
        told(QStringLiteral("<body><detail>")).startsWith(QStringLiteral("20525 test.rpt:1:")));
    EXPECT_EQ(told(QStringLiteral("<body><detail><band><text>{Nix}</text></band></detail></body>")),
              QStringLiteral("20509 test.rpt: no query gives the field Nix"));
    EXPECT_TRUE(
        told(QStringLiteral("<body><detail><list name=\"l\"><query>SELECT 1 FROM Gone</query>"
                            "</list></detail></body>"))
            .startsWith(QStringLiteral("20533")));
}

TEST(ReportQuery, theFormulaStandsInsideTheQuery) {
    MemorySource source;
    source.add(QStringLiteral("Job"), {{QStringLiteral("JobNo"), QStringLiteral("CustID")},
                                       {},
                                       {jet::ColumnType::Long, jet::ColumnType::Long}});
    source.add(QStringLiteral("Customer"),
               {{QStringLiteral("CustID"), QStringLiteral("company")}, {}});
    source.add(QStringLiteral("JobOper"),
               {{QStringLiteral("OperNo")}, {}, {jet::ColumnType::Long}});
    report::Query query;
    query.select = QStringLiteral("Job.*, c.company");
    query.from = QStringLiteral("(Job INNER JOIN Customer AS c ON (Job.CustID = c.CustID))");
    query.where = QStringLiteral("Job.JobNo > 0 OR Job.JobNo < 0");
    query.orderBy = QStringLiteral("Job.JobNo");
    query.through = {
        {QStringLiteral("JobOper"), QStringLiteral("JobNo"), QStringLiteral("Job.JobNo")}};
    EXPECT_EQ(
        report::reportSql(query, source, QStringLiteral("{Job.JobNo} = 4 or {c.Company} = 'x'")),
        QStringLiteral("SELECT Job.*, c.company FROM (Job INNER JOIN Customer AS c ON "
                       "(Job.CustID = c.CustID)) WHERE (Job.JobNo > 0 OR Job.JobNo < 0) AND "
                       "(([Job].[JobNo] = 4 OR [c].[Company] = 'x')) ORDER BY Job.JobNo"));
    EXPECT_TRUE(report::reportSql(query, source, QStringLiteral("{JobOper.OperNo} = 4"))
                    .contains(QStringLiteral("AND ((Job.JobNo IN (SELECT [JobOper].[JobNo] FROM "
                                             "[JobOper] WHERE [JobOper].[OperNo] = 4)))")));
    // The table goes by its alias here, and a column must exist.
    EXPECT_THROW(report::reportSql(query, source, QStringLiteral("{Customer.Company} = 'x'")),
                 report::ReportError);
    EXPECT_THROW(report::reportSql(query, source, QStringLiteral("{c.Phone} = 'x'")),
                 report::ReportError);
}
