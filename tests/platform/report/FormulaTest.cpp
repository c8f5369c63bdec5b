#include "platform/report/Layout.h"
#include "platform/report/ReportError.h"
#include "platform/report/SelectionFormula.h"
#include "platform/values/Literals.h"
#include "support/Print.h"

#include <gtest/gtest.h>

using jet::ColumnType;
using report::FormulaField;

namespace {

std::optional<FormulaField> field(const QString& table, const QString& name) {
    static const QHash<QString, ColumnType> fields{{u"job.jobno"_s, ColumnType::Long},
                                                   {u"job.partno"_s, ColumnType::Text},
                                                   {u"job.jobdatein"_s, ColumnType::DateTime},
                                                   {u"job.shipped"_s, ColumnType::YesNo},
                                                   {u"job.invoiceeach"_s, ColumnType::Currency}};
    const auto found = fields.constFind((table + u'.' + name).toLower());
    if (found == fields.constEnd())
        return std::nullopt;
    return FormulaField{u'[' + name + u']', *found, {}};
}

QString where(const QString& formula) {
    try {
        return report::whereCondition(formula, field);
    } catch (const report::ReportError& error) {
        return QString::number(error.code());
    }
}

struct Pair {
    const char16_t* formula;
    const char16_t* sql;
};

void expectAll(std::initializer_list<Pair> pairs) {
    for (const auto& pair : pairs)
        EXPECT_EQ(where(QString::fromUtf16(pair.formula)), QString::fromUtf16(pair.sql));
}

} // namespace

TEST(Formula, NotIsStrongerThanAndAndIsStrongerThanOr) {
    expectAll({
        {u"{Job.JobNo} = 1 or {Job.PartNo} = 'a' and {Job.PartNo} <> 'b'",
         u"([JobNo] = 1 OR ([PartNo] = 'a' AND [PartNo] <> 'b'))"},
        {u"not {Job.Shipped} and {Job.JobNo} > 3", u"((NOT [Shipped] = True) AND [JobNo] > 3)"},
        {u"NOT ({Job.JobNo} < 3 OR {job.shipped} = false)",
         u"(NOT ([JobNo] < 3 OR [shipped] = False))"},
        {u"({Job.JobNo} = 1 or {Job.Shipped}) and {Job.PartNo} = \"x\"",
         u"(([JobNo] = 1 OR [Shipped] = True) AND [PartNo] = 'x')"},
    });
}

TEST(Formula, RangesListsAndPatterns) {
    expectAll({
        {u"{Job.JobNo} in 5 to 12", u"([JobNo] BETWEEN 5 AND 12)"},
        {u"{Job.PartNo} in 'A-1' to 'B-9'", u"([PartNo] BETWEEN 'A-1' AND 'B-9')"},
        {u"{Job.JobNo} in [3, 4, -5]", u"[JobNo] IN (3, 4, -5)"},
        {u"{Job.PartNo} like 'AX*[1]?'", u"[PartNo] LIKE 'AX*[[]1]?'"},
        {u"isnull({Job.PartNo})", u"[PartNo] Is Null"},
        {u"{Job.InvoiceEach} >= 12.50", u"[InvoiceEach] >= 12.50"},
    });
}

TEST(Formula, ADateMeansItsWholeDay) {
    expectAll({
        {u"{Job.JobDateIn} = date(2026,03,02)",
         u"([JobDateIn] >= #03/02/2026# AND [JobDateIn] < #03/03/2026#)"},
        {u"{Job.JobDateIn} in date(2026,02,27) to date(2026,02,28)",
         u"([JobDateIn] >= #02/27/2026# AND [JobDateIn] < #03/01/2026#)"},
        {u"{Job.JobDateIn} > date(2026,12,31)", u"[JobDateIn] >= #01/01/2027#"},
        {u"{Job.JobDateIn} <= #3/2/2026#", u"[JobDateIn] < #03/03/2026#"},
        {u"{Job.JobDateIn} < date(2026,3,2)", u"[JobDateIn] < #03/02/2026#"},
        {u"{Job.JobDateIn} <> date(2026,3,2)",
         u"([JobDateIn] < #03/02/2026# OR [JobDateIn] >= #03/03/2026#)"},
    });
}

TEST(Formula, TextIsNeverPasted) {
    expectAll({
        {u"{Job.PartNo} = 'O''Neil'", u"[PartNo] = 'O''Neil'"},
        {u"{Job.PartNo} = \"x' or 1=1\"", u"[PartNo] = 'x'' or 1=1'"},
        {u"{Job.PartNo} = \"3\"\" bolt\"", u"[PartNo] = '3\" bolt'"},
        {u"{Job.PartNo} = 12", u"[PartNo] = '12'"},
        {u"{Job.JobNo} = '12'", u"[JobNo] = 12"},
    });
}

TEST(Formula, FaultsAreErrorsInTheFormula) {
    for (const auto* formula :
         {u"{Job.Nothing} = 1", u"{Elsewhere.JobNo} = 1", u"{Job.JobNo} =", u"{Job.JobNo} = 1)",
          u"({Job.JobNo} = 1", u"{Job.JobNo} = 1 or", u"{Job.JobNo}", u"{Job.JobNo} = 'abc'",
          u"{Job.PartNo} = 'O'Neil'", u"{Job.PartNo} = 'open", u"{Job.JobDateIn} = date(2026,2,30)",
          u"{Job.JobDateIn} = date()", u"{Job.JobNo} = date(2026,1,1)", u"{Job.JobNo} in 5",
          u"{Job.JobNo} = 1; DELETE * FROM Job", u"JobNo = 1", u"{Job.JobNo = 1",
          u"{Job.JobNo} = #banana#", u"{Job.JobNo} = 1.2.3"})
        EXPECT_EQ(where(QString::fromUtf16(formula)), u"20515"_s)
            << QString::fromUtf16(formula).toStdString();
    EXPECT_EQ(where(u"  "_s), QString());
    EXPECT_EQ(where(u"not "_s.repeated(5000) + u"{Job.Shipped}"_s), u"20515"_s);
}

TEST(Formula, ThousandsOfSelectedRecordsBecomeOneList) {
    QStringList terms;
    for (int number = 1; number <= 5000; ++number)
        terms.append(u"{Job.JobNo} = %1"_s.arg(number));
    const QString sql = where(terms.join(u" OR "_s));
    EXPECT_TRUE(sql.startsWith(u"[JobNo] IN (1, 2, 3,"_s));
    EXPECT_TRUE(sql.endsWith(u" 5000)"_s));
    // Terms that can't be one list are nested like a tree: engines limit the depth.
    QStringList ranges;
    for (int number = 1; number <= 1024; ++number)
        ranges.append(u"{Job.JobNo} in %1 to %1"_s.arg(number));
    const QString tree = where(ranges.join(u" or "_s));
    int depth = 0;
    int deepest = 0;
    for (const QChar c : tree) {
        depth += c == u'(' ? 1 : c == u')' ? -1 : 0;
        deepest = std::max(deepest, depth);
    }
    EXPECT_LE(deepest, 12);
}
