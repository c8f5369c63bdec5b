#include "MemorySource.h"
#include "platform/values/Literals.h"

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
    return u"line %1"_s.arg(number);
}

class Layout : public ::testing::Test {
  protected:
    MemorySource source;

    /// A page of 100 x 100 mm, margins of 10: 80 mm for what stands in `content`.
    std::unique_ptr<Document> layOut(const QString& content, const QString& formula = {}) {
        const QString xml =
            u"<report title=\"Test\">"
            "<page width=\"100\" height=\"100\" left=\"10\" top=\"10\" "
            "right=\"10\" bottom=\"10\"/>"
            "<query><select>*</select><from>Part</from></query>%1</report>"_s.arg(content);
        const auto file = report::readReportText(xml.toUtf8(), u"test.rpt"_s);
        return report::layOut(file, source, formula);
    }
    void parts(int count) {
        MemorySource::Table table{{u"No"_s, u"Kind"_s, u"Price"_s, u"Notes"_s}, {}};
        for (int number = 1; number <= count; ++number)
            table.rows.push_back({number, QString(QChar(u'A' + (number - 1) / 4)),
                                  values::Currency::fromDouble(1.25 * number), QString()});
        source.add(u"Part"_s, std::move(table));
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
            return u"%1 %2"_s.arg(error.code()).arg(error.detail());
        }
        return {};
    }
};

} // namespace

TEST_F(Layout, PagesFillWithRowsBetweenHeaderAndFooter) {
    parts(10);
    const auto document = layOut(
        u"<pageHeader><band height=\"10\"><text>{title}</text></band></pageHeader>"
        "<pageFooter><band height=\"10\"><text align=\"right\">Page {page} of {pages}</text></band>"
        "</pageFooter>"
        "<body><header repeat=\"yes\"><band height=\"10\"><text>No</text></band></header>"
        "<detail><band height=\"10\"><text>{No}: {Price:0.00}</text></band></detail></body>"_s);
    EXPECT_EQ(texts(*document),
              (QStringList{u"Test\nNo\n1: 1.25\n2: 2.50\n3: 3.75\n4: 5.00\n5: 6.25\n"
                           "Page 1 of 2\n"_s,
                           u"Test\nNo\n6: 7.50\n7: 8.75\n8: 10.00\n9: 11.25\n"
                           "10: 12.50\nPage 2 of 2\n"_s}));
    // The number of pages, known last, still stands at the right margin.
    const auto page = document->page(1);
    const auto& last = *std::find_if(page.items.begin(), page.items.end(), [](const auto& item) {
        return item.text.startsWith(u"Page"_s);
    });
    EXPECT_EQ(last.align, report::Align::Right);
    EXPECT_NEAR(last.x + last.w, 90, 0.01);
    EXPECT_NEAR(last.y, 80, 0.01);
}

TEST_F(Layout, GroupsTotalTheirRowsAndRepeatTheirHeaders) {
    parts(10);
    const auto document = layOut(
        u"<body><group by=\"Kind\"><header><band height=\"10\"><text>Kind "
        "{Kind}</text></band></header>"
        "<footer><band height=\"10\"><text>{Kind}: {count()} for {sum(Price):0.00}, {avg(No):0.0} "
        "to {max(No)}</text></band></footer></group>"
        "<detail><band height=\"10\"><text>{No} {sum(Price)}</text></band></detail>"
        "<footer><band height=\"10\"><text>All: {sum(Price * "
        "2):0.00}</text></band></footer></body>"_s);
    EXPECT_EQ(texts(*document),
              (QStringList{u"Kind A\n1 1.25\n2 3.75\n3 7.5\n4 12.5\n"
                           "A: 4 for 12.50, 2.5 to 4\nKind B\n5 6.25\n"_s,
                           u"Kind B\n6 13.75\n7 22.5\n8 32.5\n"
                           "B: 4 for 32.50, 6.5 to 8\nKind C\n9 11.25\n10 23.75\n"_s,
                           u"Kind C\nC: 2 for 23.75, 9.5 to 10\nAll: 137.50\n"_s}));
}

TEST_F(Layout, KeepsTogetherWhatBelongsTogether) {
    parts(8);
    const QString report =
        u"<body><group by=\"Kind\" keepTogether=\"%1\" repeat=\"no\"><header><band height=\"10\">"
        "<text>Kind {Kind}</text></band></header></group>"
        "<detail><band height=\"15\"><text>{No}</text></band></detail></body>"_s;
    // Eight centimetres: the second header alone would fit below four rows of 1.5 cm.
    EXPECT_EQ(texts(*layOut(report.arg(u"no"_s))),
              (QStringList{u"Kind A\n1\n2\n3\n4\n"_s, u"Kind B\n5\n6\n7\n8\n"_s}));
    parts(7);
    const QString narrow = QString(report).replace(u"15"_s, u"8"_s);
    EXPECT_EQ(texts(*layOut(narrow.arg(u"no"_s))).front(),
              u"Kind A\n1\n2\n3\n4\nKind B\n5\n6\n7\n"_s);
    parts(8);
    EXPECT_EQ(texts(*layOut(narrow.arg(u"yes"_s))).size(), 2);
    EXPECT_EQ(texts(*layOut(narrow.arg(u"yes"_s))).front(), u"Kind A\n1\n2\n3\n4\n"_s);
}

TEST_F(Layout, MemosGrowPushDownWhatIsBelowAndSplitBetweenLines) {
    QStringList lines;
    for (int number = 1; number <= 40; ++number)
        lines.append(numbered(number));
    source.add(u"Part"_s, {{u"No"_s, u"Notes"_s}, {{1, lines.join(u"\r\n"_s)}, {2, u"one"_s}}});
    const auto document =
        layOut(u"<body><detail><band height=\"12\"><box w=\"80\" stretch=\"yes\"/>"
               "<text w=\"10\">{No}</text><text x=\"20\" w=\"60\">{Notes}</text>"
               "<text y=\"6\">below {No}</text></band></detail></body>"_s);
    const QString all = texts(*document).join(QString());
    ASSERT_GE(document->pageCount(), 2);
    qsizetype at = 0;
    for (const auto& line : lines) {
        at = all.indexOf(line + u'\n', at);
        ASSERT_GE(at, 0) << line.toStdString() << " is missing or out of order";
    }
    EXPECT_GT(all.indexOf(u"below 1"_s), at);
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

TEST_F(Layout, LinesBreakAtBlanksAndNeverLeaveTheirField) {
    source.add(u"Part"_s,
               {{u"Notes"_s},
                {{u"Turn, face and drill to print REV-C/2026, deburr all edges"_s},
                 {u"W"_s.repeated(60)},
                 {QString::fromUtf8("Gr\xc3\xbc\xc3\x9f"
                                    "e an \xe6\x9c\xba\xe5\x99\xa8 und mehr als eine Zeile")}}});
    const auto document =
        layOut(u"<body><detail><band><text x=\"5\" w=\"30\">{Notes}</text>"
               "<text x=\"40\" w=\"20\" grow=\"no\">{Notes}</text></band></detail></body>"_s);
    const report::TextMeasure measure(document->styles.front());
    QString joined;
    for (const auto& item : document->page(0).items) {
        const double right = item.x < 45 ? 45 : 70;
        EXPECT_LE(item.x + item.w, right + 0.02) << item.text.toStdString();
        if (item.x < 45)
            joined += item.text;
    }
    EXPECT_EQ(joined.remove(u' ').left(50),
              u"Turn,faceanddrilltoprintREV-C/2026,deburralledgesWWWW"_s.left(50));
    EXPECT_EQ(joined.count(u'W'), 60);
    EXPECT_EQ(measure.lines(u"a\n\nb\n\n"_s, 50), (QStringList{u"a"_s, QString(), u"b"_s}));
    EXPECT_EQ(measure.lines(u"x"_s.repeated(3), 0.5).size(), 3);
}

TEST_F(Layout, DetailListsReadWithTheValuesOfTheirRow) {
    source.add(u"Part"_s, {{u"No"_s, u"Name"_s}, {{7, u"O'Neil"_s}, {8, Value()}}});
    source.add(u"Step"_s, {{u"Hours"_s, u"No"_s}, {{1.5, 70}, {2.25, 71}}});
    source.add(u"Company"_s, {{u"Name"_s}, {{u"Acme"_s}}});
    source.add(u"Tool"_s, {{u"Id"_s}, {}});
    const auto document = layOut(
        u"<parameter name=\"company\">SELECT * FROM Company</parameter>"
        "<body><detail><band><text>{company.Name}/{report.No}</text></band>"
        "<list name=\"steps\"><query>SELECT * FROM Step WHERE Part = {No} AND Name = {Name}</query>"
        "<detail><band><text>{rownumber}. step {No} of {report.No}: {Hours:0.00}</text></band>"
        "<list name=\"tools\"><query>SELECT * FROM Tool WHERE Step = {No}</query>"
        "<none><band><text>no tools</text></band></none>"
        "<detail><band><text>never</text></band></detail></list></detail></list>"
        "<band><text showIf=\"steps.sum(Hours) &gt; 3\">{steps.count()} steps: "
        "{steps.sum(Hours):0.00}, {iif(isempty(Name), 'unnamed', Name)}</text></band>"
        "</detail></body>"_s);
    const QString one = u"Acme/%1\n1. step 70 of %1: 1.50\nno tools\n"
                        "2. step 71 of %1: 2.25\nno tools\n2 steps: 3.75, %2\n"_s;
    EXPECT_EQ(texts(*document).join(QString()),
              one.arg(7).arg(u"O'Neil"_s) + one.arg(8).arg(u"unnamed"_s));
    EXPECT_TRUE(source.asked.contains(u"SELECT * FROM Step WHERE Part = 7 AND Name = 'O''Neil'"_s));
    EXPECT_TRUE(source.asked.contains(u"SELECT * FROM Step WHERE Part = 8 AND Name = Null"_s));
    EXPECT_TRUE(source.asked.contains(u"SELECT * FROM Tool WHERE Step = 71"_s));
}

TEST_F(Layout, BarCodesShowTextWhereTheyCannotEncode) {
    source.add(
        u"Part"_s,
        {{u"Code"_s}, {{u"JOB-12"_s}, {QString::fromUtf8("caf\xc3\xa9")}, {u"X"_s.repeated(80)}}});
    const auto document = layOut(
        u"<body><detail><band><barcode w=\"70\" h=\"12\">{Code}</barcode></band></detail></body>"_s);
    const auto items = document->page(0).items;
    ASSERT_EQ(items.front().kind, PageItem::Kind::Bars);
    // Code 39: nine elements a sign, five of them bars, start and stop sign added.
    EXPECT_EQ(items.front().rectangles.size(), 4u * 5 * (6 + 2));
    EXPECT_EQ(items[1].text, u"JOB-12"_s);
    EXPECT_EQ(items[2].kind, PageItem::Kind::Text);
    EXPECT_EQ(items[2].text, QString::fromUtf8("caf\xc3\xa9"));
    EXPECT_EQ(std::count_if(items.begin(), items.end(),
                            [](const auto& item) { return item.kind == PageItem::Kind::Bars; }),
              1);
    for (const auto* code : {"128", "qr"}) {
        const auto other =
            layOut(u"<body><detail><band><barcode code=\"%1\" w=\"70\" h=\"20\">job {Code}"
                   "</barcode></band></detail></body>"_s.arg(QLatin1String(code)));
        EXPECT_EQ(other->page(0).items.front().kind, PageItem::Kind::Bars) << code;
    }
}

TEST_F(Layout, AnEmptyReportSaysSo) {
    parts(0);
    const auto document =
        layOut(u"<pageFooter><band><text>{page}/{pages}</text></band></pageFooter>"
               "<body><header><band><text>Header</text></band></header>"
               "<none><band><text>No parts.</text></band></none></body>"_s);
    EXPECT_EQ(texts(*document), QStringList{u"No parts.\n1/1\n"_s});
}

TEST_F(Layout, ManyPagesComeBackFromTheirFileAsTheyWere) {
    parts(0);
    MemorySource::Table table{{u"No"_s}, {}};
    for (int number = 0; number < 60000; ++number)
        table.rows.push_back({number});
    source.add(u"Part"_s, std::move(table));
    const auto document =
        layOut(u"<body><detail><band height=\"1.6\"><text size=\"3\">{No}</text>"
               "<text x=\"20\" size=\"3\">of {pages} pages</text><text x=\"50\" size=\"3\">"
               "long enough to fill some megabytes</text></band></detail></body>"_s);
    ASSERT_EQ(document->pageCount(), 60000 / 50);
    EXPECT_TRUE(
        document->page(1000).text().startsWith(u"50000\tof %1 pages"_s.arg(document->pageCount())))
        << document->page(1000).text().left(80).toStdString();
    EXPECT_TRUE(document->page(3).text().startsWith(u"150\t"_s));
}

TEST_F(Layout, FaultsOfAFileNameTheirLine) {
    parts(1);
    const auto told = [&](const QString& content) { return failure([&] { layOut(content); }); };
    EXPECT_EQ(told(u"\n<body><detail><band><txt/></band></detail></body>"_s),
              u"20525 test.rpt:2: <txt> has no place in <band>"_s);
    EXPECT_EQ(told(u"<body><detail><band heigth=\"3\"/></detail></body>"_s),
              u"20525 test.rpt:1: <band> has no attribute heigth"_s);
    EXPECT_EQ(told(u"<body><detail><band><text w=\"200\">x</text></band></detail></body>"_s),
              u"20525 test.rpt:1: <text> lies outside the margins"_s);
    EXPECT_EQ(told(u"<body><header><band><text>{sum(No)}</text></band></header></body>"_s),
              u"20525 test.rpt:1: A total can stand in details and footers only"_s);
    EXPECT_TRUE(told(u"<body><detail><band><text>{No</text></band></detail></body>"_s)
                    .startsWith(u"20525 test.rpt:1: \"}\" is missing"_s));
    // Texts that would send the recursion off the stack's end.
    const QString deep = QString(5000, u'(') + u'1' + QString(5000, u')');
    const QString wide = u"1"_s + u" + 1"_s.repeated(10000);
    for (const QString& expression : {deep, wide})
        EXPECT_TRUE(
            told(u"<body><detail><band><text>{%1}</text></band></detail></body>"_s.arg(expression))
                .contains(u"the expression is too long"_s));
    EXPECT_TRUE(told(u"<body><detail>"_s).startsWith(u"20525 test.rpt:1:"_s));
    EXPECT_EQ(told(u"<body><detail><band><text>{Nix}</text></band></detail></body>"_s),
              u"20509 test.rpt: no query gives the field Nix"_s);
    EXPECT_TRUE(told(u"<body><detail><list name=\"l\"><query>SELECT 1 FROM Gone</query>"
                     "</list></detail></body>"_s)
                    .startsWith(u"20533"_s));
}

TEST(ReportQuery, TheFormulaStandsInsideTheQuery) {
    MemorySource source;
    source.add(u"Job"_s,
               {{u"JobNo"_s, u"CustID"_s}, {}, {jet::ColumnType::Long, jet::ColumnType::Long}});
    source.add(u"Customer"_s, {{u"CustID"_s, u"company"_s}, {}});
    source.add(u"JobOper"_s, {{u"OperNo"_s}, {}, {jet::ColumnType::Long}});
    report::Query query;
    query.select = u"Job.*, c.company"_s;
    query.from = u"(Job INNER JOIN Customer AS c ON (Job.CustID = c.CustID))"_s;
    query.where = u"Job.JobNo > 0 OR Job.JobNo < 0"_s;
    query.orderBy = u"Job.JobNo"_s;
    query.through = {{u"JobOper"_s, u"JobNo"_s, u"Job.JobNo"_s}};
    EXPECT_EQ(report::reportSql(query, source, u"{Job.JobNo} = 4 or {c.Company} = 'x'"_s),
              u"SELECT Job.*, c.company FROM (Job INNER JOIN Customer AS c ON "
              "(Job.CustID = c.CustID)) WHERE (Job.JobNo > 0 OR Job.JobNo < 0) AND "
              "(([Job].[JobNo] = 4 OR [c].[Company] = 'x')) ORDER BY Job.JobNo"_s);
    EXPECT_TRUE(report::reportSql(query, source, u"{JobOper.OperNo} = 4"_s)
                    .contains(u"AND ((Job.JobNo IN (SELECT [JobOper].[JobNo] FROM "
                              "[JobOper] WHERE [JobOper].[OperNo] = 4)))"_s));
    // The table goes by its alias here, and a column must exist.
    EXPECT_THROW(report::reportSql(query, source, u"{Customer.Company} = 'x'"_s),
                 report::ReportError);
    EXPECT_THROW(report::reportSql(query, source, u"{c.Phone} = 'x'"_s), report::ReportError);
}
