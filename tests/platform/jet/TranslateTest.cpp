#include "platform/jet/Translate.h"
#include "platform/values/Literals.h"

#include <gtest/gtest.h>

/// What the engines are given for a statement, grouped by feature.

namespace jet {
namespace {

Schema shopSchema() {
    Schema schema;
    for (const char16_t* definition : {
             u"CREATE TABLE Job (JobNo COUNTER PRIMARY KEY, CustID LONG, PONo TEXT(40), "
             u"Description TEXT(255), PartNo TEXT(60), Quantity LONG, JobDateIn DATETIME, Shipped "
             u"YESNO, InvoiceEach CURRENCY, TotalHours DOUBLE)",
             u"CREATE TABLE JobShip (JobNo LONG, ShippedDate DATETIME, Quantity INTEGER)",
             u"CREATE TABLE Estimate (EstNo COUNTER PRIMARY KEY, PartNo TEXT(60), CustID LONG)",
             u"CREATE TABLE Customer (Custid COUNTER PRIMARY KEY, company TEXT(80))",
             u"CREATE TABLE RfqNotes (CustID LONG, rfqnotes MEMO)",
             u"CREATE TABLE Odd ([Index] COUNTER PRIMARY KEY, [Date] DATETIME, [Default] YESNO)",
             u"CREATE TABLE Reports (Name TEXT(50), Module TEXT(40), [Default] YESNO)",
         })
        schema.add(tableFromDefinition(QString::fromUtf16(definition)));
    return schema;
}

class StatementText : public testing::Test {
  protected:
    void becomes(const char16_t* statement, const char* sqlite, const char* postgres) {
        const Normalized normalized = normalize(statement);
        EXPECT_STREQ(translate(normalized, m_schema, Dialect::sqlite()).sql.constData(), sqlite);
        EXPECT_STREQ(translate(normalized, m_schema, Dialect::postgres()).sql.constData(),
                     postgres);
    }
    Translation translated(QStringView statement) {
        return translate(normalize(statement), m_schema, Dialect::sqlite());
    }
    /// Number and text of the error that a statement ends in.
    std::string failure(QStringView statement) {
        try {
            translated(statement);
        } catch (const Error& error) {
            return std::to_string(error.number()) + ' ' + error.text().toStdString();
        }
        return "none";
    }

    const Schema m_schema = shopSchema();
};

TEST_F(StatementText, SelectsShowTheSchemasColumns) {
    becomes(u"Job",
            R"(SELECT "Job"."JobNo", "Job"."CustID", "Job"."PONo", )"
            R"("Job"."Description", "Job"."PartNo", "Job"."Quantity", )"
            R"("Job"."JobDateIn", "Job"."Shipped", "Job"."InvoiceEach", )"
            R"("Job"."TotalHours" FROM "Job" ORDER BY "Job"."JobNo")",
            R"(SELECT "job"."jobno", "job"."custid", "job"."pono", )"
            R"("job"."description", "job"."partno", "job"."quantity", )"
            R"("job"."jobdatein", "job"."shipped", "job"."invoiceeach", )"
            R"("job"."totalhours" FROM "job" ORDER BY "job"."jobno")");
    becomes(
        u"SELECT TOP 20 JobNo AS Info FROM Job WHERE CustID = 12 ORDER BY JobDateIn DESC, jobno",
        R"(SELECT "Job"."JobNo" AS "Info" FROM "Job" WHERE "Job"."CustID" = ?1 )"
        R"(ORDER BY "Job"."JobDateIn" DESC, "Job"."JobNo" LIMIT 20)",
        R"(SELECT "job"."jobno" AS "info" FROM "job" WHERE "job"."custid" = )"
        R"($1::integer ORDER BY "job"."jobdatein" DESC NULLS LAST, "job"."jobno" LIMIT 20)");
    becomes(u"SELECT DISTINCT PartNo FROM Job WHERE CustID = 12 UNION SELECT PartNo FROM Estimate "
            u"ORDER BY Job.PartNo",
            R"(SELECT DISTINCT "Job"."PartNo" FROM "Job" WHERE "Job"."CustID" = ?1 UNION )"
            R"(SELECT "Estimate"."PartNo" FROM "Estimate" ORDER BY 1)",
            R"(SELECT DISTINCT "job"."partno" FROM "job" WHERE "job"."custid" = )"
            R"($1::integer UNION SELECT "estimate"."partno" FROM "estimate" ORDER BY 1 NULLS )"
            "FIRST");
    becomes(u"SELECT DISTINCTROW JobShip.*, Company FROM (JobShip INNER JOIN Job ON JobShip.JobNo "
            u"= Job.JobNo) LEFT OUTER JOIN Customer ON (Job.CustID = Customer.CustID) AND "
            u"(Job.Shipped = True)",
            R"(SELECT "JobShip"."JobNo", "JobShip"."ShippedDate", )"
            R"("JobShip"."Quantity", "Customer"."company" FROM "JobShip" INNER JOIN )"
            R"("Job" ON "JobShip"."JobNo" = "Job"."JobNo" LEFT JOIN "Customer" ON )"
            R"("Job"."CustID" = "Customer"."Custid" AND "Job"."Shipped" <> 0)",
            R"(SELECT "jobship"."jobno", "jobship"."shippeddate", )"
            R"("jobship"."quantity", "customer"."company" FROM "jobship" INNER JOIN )"
            R"("job" ON "jobship"."jobno" = "job"."jobno" LEFT JOIN "customer" ON )"
            R"("job"."custid" = "customer"."custid" AND "job"."shipped" <> 0)");
    becomes(u"SELECT Customer.Company AS Company FROM Customer, Job WHERE Customer.CustID = "
            u"Job.CustID ORDER BY Company",
            R"(SELECT "Customer"."company" AS "Company" FROM "Customer", "Job" WHERE )"
            R"("Customer"."Custid" = "Job"."CustID" ORDER BY "Customer"."company")",
            R"(SELECT "customer"."company" AS "company" FROM "customer", "job" WHERE )"
            R"("customer"."custid" = "job"."custid" ORDER BY "customer"."company" )"
            "NULLS FIRST");
    becomes(u"SELECT JobNo, Sum(Quantity) AS N, Count(*) FROM JobShip GROUP BY JobNo HAVING "
            u"Sum(Quantity) > 5",
            R"(SELECT "JobShip"."JobNo", sum("JobShip"."Quantity") AS "N", count(*) AS )"
            R"("Expr1000" FROM "JobShip" GROUP BY "JobShip"."JobNo" HAVING )"
            R"(sum("JobShip"."Quantity") > ?1)",
            R"(SELECT "jobship"."jobno", sum("jobship"."quantity") AS "n", count(*) AS )"
            R"("expr1000" FROM "jobship" GROUP BY "jobship"."jobno" HAVING )"
            R"(sum("jobship"."quantity") > $1::double precision)");
}

TEST_F(StatementText, NamesAreFoundWithoutCaseAndQuoted) {
    becomes(u"SELECT Index, [Date], Default FROM Odd WHERE index =2 ORDER BY Default",
            R"(SELECT "Odd"."Index", "Odd"."Date", "Odd"."Default" FROM "Odd" WHERE )"
            R"("Odd"."Index" = ?1 ORDER BY "Odd"."Default")",
            R"(SELECT "odd"."index", "odd"."date", "odd"."default" FROM "odd" WHERE )"
            R"("odd"."index" = $1::integer ORDER BY "odd"."default")");
    becomes(u"SELECT rfqnotes FROM rfqnotes WHERE [RfqNotes]![custid] = 12",
            R"(SELECT "RfqNotes"."rfqnotes" FROM "RfqNotes" WHERE "RfqNotes"."CustID" = )"
            R"(?1 ORDER BY "RfqNotes"."rowid")",
            R"(SELECT "rfqnotes"."rfqnotes" FROM "rfqnotes" WHERE "rfqnotes"."custid" = )"
            R"($1::integer ORDER BY "rfqnotes"."row_identity")");
}

TEST_F(StatementText, TextKeepsItsRuleInExpressions) {
    becomes(u"SELECT JobNo FROM Job WHERE LEFT(PartNo,3)='mnu'",
            R"(SELECT "Job"."JobNo" FROM "Job" WHERE (substr("Job"."PartNo", 1, ?1)) )"
            R"(COLLATE NOCASE = ?2 ORDER BY "Job"."JobNo")",
            R"(SELECT "job"."jobno" FROM "job" WHERE ((left("job"."partno"::text, )"
            R"($1::integer))::citext) = $2::citext ORDER BY "job"."jobno")");
    becomes(u"Select (Company + ' , ' + 'x') as [Name] from Customer order by Name",
            R"(SELECT (("Customer"."company" || ?1) || ?2) COLLATE NOCASE AS "Name" FROM )"
            R"("Customer" ORDER BY 1)",
            R"(SELECT ((("customer"."company"::text || $1::citext::text)::citext)::text || )"
            R"($2::citext::text)::citext AS "name" FROM "customer" ORDER BY 1 NULLS FIRST)");
    becomes(u"SELECT JobNo FROM Job WHERE PartNo LIKE '*AB?12*' AND PartNo LIKE 'Rack #[!a-c]*'",
            R"(SELECT "Job"."JobNo" FROM "Job" WHERE "Job"."PartNo" LIKE ?1 ESCAPE '\' )"
            R"(AND lower("Job"."PartNo") GLOB 'rack [0-9][^a-c]*' ORDER BY "Job"."JobNo")",
            R"(SELECT "job"."jobno" FROM "job" WHERE "job"."partno"::text ILIKE $1::text AND )"
            R"("job"."partno"::text ~* '^Rack [0-9][^a-c].*$' ORDER BY "job"."jobno")");
    becomes(u"SELECT CustID FROM Customer WHERE CustID LIKE '12*'",
            R"(SELECT "Customer"."Custid" FROM "Customer" WHERE CAST("Customer"."Custid" )"
            R"(AS TEXT) LIKE ?1 ESCAPE '\' ORDER BY "Customer"."Custid")",
            R"(SELECT "customer"."custid" FROM "customer" WHERE )"
            R"("customer"."custid"::text ILIKE $1::text ORDER BY "customer"."custid")");
}

TEST_F(StatementText, LiteralsTakeTheTypeOfWhatTheyMeet) {
    becomes(u"SELECT JobNo FROM Job WHERE Shipped = False AND Shipped <> 0 AND PONo = 4471 AND "
            u"Quantity = 2.5 AND InvoiceEach > 1",
            R"(SELECT "Job"."JobNo" FROM "Job" WHERE "Job"."Shipped" = 0 AND )"
            R"(("Job"."Shipped" <> 0) <> (?1 <> 0) AND "Job"."PONo" = ?2 AND )"
            R"("Job"."Quantity" = ?3 AND "Job"."InvoiceEach" > ?4 ORDER BY )"
            R"("Job"."JobNo")",
            R"(SELECT "job"."jobno" FROM "job" WHERE "job"."shipped" = 0 AND )"
            R"(("job"."shipped" <> 0) <> ($1::integer <> 0) AND "job"."pono" = $2::citext )"
            R"(AND "job"."quantity" = $3::double precision AND "job"."invoiceeach" > )"
            R"($4::numeric ORDER BY "job"."jobno")");
    becomes(u"SELECT JobNo FROM Job WHERE JobDateIn BETWEEN #11/1/2025# AND '11/30/2025' AND "
            u"datevalue(JobDateIn) <= Date()",
            R"(SELECT "Job"."JobNo" FROM "Job" WHERE "Job"."JobDateIn" BETWEEN ?1 AND ?2 )"
            R"(AND (substr("Job"."JobDateIn", 1, 10) || ' 00:00:00') <= ?3 ORDER BY )"
            R"("Job"."JobNo")",
            R"(SELECT "job"."jobno" FROM "job" WHERE "job"."jobdatein" BETWEEN )"
            R"($1::timestamp AND $2::timestamp AND (date_trunc('day', "job"."jobdatein")) <= )"
            R"($3::timestamp ORDER BY "job"."jobno")");
    becomes(u"SELECT JobNo FROM Job WHERE datevalue(JobDateIn) = #11/1/2025#",
            R"(SELECT "Job"."JobNo" FROM "Job" WHERE ((substr("Job"."JobDateIn", 1, 10) || )"
            R"(' 00:00:00') = ?1 AND "Job"."JobDateIn" >= substr(?1, 1, 10) AND )"
            R"("Job"."JobDateIn" < substr(?1, 1, 10) || ' 24') ORDER BY "Job"."JobNo")",
            R"(SELECT "job"."jobno" FROM "job" WHERE ((date_trunc('day', "job"."jobdatein")) = )"
            R"($1::timestamp AND "job"."jobdatein" >= date_trunc('day', $1::timestamp) AND )"
            R"("job"."jobdatein" < date_trunc('day', $1::timestamp) + interval '1 day') )"
            R"(ORDER BY "job"."jobno")");
    becomes(u"INSERT INTO Job (CustID, PONo, Quantity, Shipped, JobDateIn, InvoiceEach) VALUES "
            u"(-1, 'x', 2.5, True, '3/5/2025', 1)",
            R"(INSERT INTO "Job" ("CustID", "PONo", "Quantity", "Shipped", )"
            R"("JobDateIn", "InvoiceEach") VALUES (?1, ?2, ?3, 1, ?4, ?5))",
            R"(INSERT INTO "job" ("custid", "pono", "quantity", "shipped", )"
            R"("jobdatein", "invoiceeach") VALUES ($1::integer, $2::citext, $3::integer, 1, )"
            "$4::timestamp, $5::numeric)");
}

TEST_F(StatementText, Writes) {
    becomes(u"INSERT INTO JobShip SELECT 1003 AS JobNo, '5' AS Quantity FROM JobShip WHERE JobNo "
            u"= 1001 ORDER BY ShippedDate",
            R"(INSERT INTO "JobShip" ("JobNo", "Quantity") SELECT ?1 AS "JobNo", ?2 AS )"
            R"("Quantity" FROM "JobShip" WHERE "JobShip"."JobNo" = ?3 ORDER BY )"
            R"("JobShip"."ShippedDate")",
            R"(INSERT INTO "jobship" ("jobno", "quantity") SELECT $1::integer AS "jobno", )"
            R"($2::integer AS "quantity" FROM "jobship" WHERE "jobship"."jobno" = )"
            R"($3::integer ORDER BY "jobship"."shippeddate" NULLS FIRST)");
    becomes(u"UPDATE Odd SET Odd.Default = True, [Date] = Null WHERE Index = 5",
            R"(UPDATE "Odd" SET "Default" = 1, "Date" = NULL WHERE "Odd"."Index" = ?1)",
            R"(UPDATE "odd" SET "default" = 1, "date" = NULL::timestamp(0) WHERE )"
            R"("odd"."index" = $1::integer)");
    becomes(u"Update JobShip INNER JOIN Job ON JobShip.JobNo = Job.JobNo set ShippedDate = "
            u"JobDateIn WHERE CustID = 5",
            R"(UPDATE "JobShip" SET "ShippedDate" = "changed"."new_0" FROM (SELECT )"
            R"("JobShip"."rowid" AS "changed_key", "Job"."JobDateIn" AS "new_0" FROM )"
            R"("JobShip" INNER JOIN "Job" ON "JobShip"."JobNo" = "Job"."JobNo" WHERE )"
            R"("Job"."CustID" = ?1) AS "changed" WHERE "JobShip"."rowid" = )"
            R"("changed"."changed_key")",
            R"(UPDATE "jobship" SET "shippeddate" = "changed"."new_0" FROM (SELECT )"
            R"("jobship"."row_identity" AS "changed_key", "job"."jobdatein" AS "new_0" )"
            R"(FROM "jobship" INNER JOIN "job" ON "jobship"."jobno" = "job"."jobno" )"
            R"(WHERE "job"."custid" = $1::integer) AS "changed" WHERE )"
            R"("jobship"."row_identity" = "changed"."changed_key")");
    becomes(u"DELETE * FROM JobShip WHERE JobNo = 5",
            R"(DELETE FROM "JobShip" WHERE "JobShip"."JobNo" = ?1)",
            R"(DELETE FROM "jobship" WHERE "jobship"."jobno" = $1::integer)");
}

TEST_F(StatementText, Definitions) {
    becomes(u"CREATE TABLE Odd2 ([Index] COUNTER PRIMARY KEY, A LONG NOT NULL, B INTEGER DEFAULT "
            u"-1, C TEXT(10) DEFAULT 'it''s', D MEMO, E CURRENCY, F DOUBLE, G YESNO DEFAULT True, "
            u"H DATETIME)",
            R"(CREATE TABLE "Odd2" ("Index" INTEGER PRIMARY KEY AUTOINCREMENT NOT NULL, "A" )"
            R"(INT NOT NULL, "B" SMALLINT DEFAULT -1, "C" TEXT(10) COLLATE NOCASE DEFAULT )"
            R"('it''s' CONSTRAINT "odd2_c_width" CHECK (length("C") <= 10), "D" LONGTEXT )"
            R"(COLLATE NOCASE, "E" DECIMAL(19,4), "F" DOUBLE, "G" BOOLEAN NOT NULL DEFAULT )"
            R"(1, "H" DATETIME))",
            R"(CREATE TABLE "odd2" ("index" integer GENERATED BY DEFAULT AS IDENTITY PRIMARY )"
            R"(KEY NOT NULL, "a" integer NOT NULL, "b" smallint DEFAULT -1, "c" citext )"
            R"(DEFAULT 'it''s' CONSTRAINT "odd2_c_width" CHECK (char_length("c"::text) <= 10), )"
            R"("d" citext, "e" numeric(19,4), "f" double precision, "g" yesno NOT NULL )"
            R"(DEFAULT 1, "h" timestamp(0)))");
    becomes(u"CREATE TABLE Pair (A LONG, B TEXT, PRIMARY KEY (A, B))",
            R"(CREATE TABLE "Pair" ("A" INT NOT NULL, "B" TEXT(255) COLLATE NOCASE NOT NULL )"
            R"(CONSTRAINT "pair_b_width" CHECK (length("B") <= 255), PRIMARY KEY ("A", )"
            R"("B")))",
            R"(CREATE TABLE "pair" ("a" integer NOT NULL, "b" citext NOT NULL CONSTRAINT )"
            R"("pair_b_width" CHECK (char_length("b"::text) <= 255), PRIMARY KEY ("a", )"
            R"("b"), "row_identity" integer GENERATED ALWAYS AS IDENTITY UNIQUE))");
    becomes(u"CREATE UNIQUE INDEX byDate ON Job (JobDateIn DESC, JobNo)",
            R"(CREATE UNIQUE INDEX "byDate" ON "Job" ("JobDateIn" DESC, "JobNo"))",
            R"(CREATE UNIQUE INDEX "bydate" ON "job" ("jobdatein" DESC NULLS LAST, "jobno"))");
    becomes(u"ALTER TABLE Job ADD COLUMN Extra TEXT(20)",
            R"(ALTER TABLE "Job" ADD COLUMN "Extra" TEXT(20) COLLATE NOCASE CONSTRAINT )"
            R"("job_extra_width" CHECK (length("Extra") <= 20))",
            R"(ALTER TABLE "job" ADD COLUMN "extra" citext CONSTRAINT "job_extra_width" )"
            R"(CHECK (char_length("extra"::text) <= 20))");
    becomes(u"DROP TABLE JobShip", R"(DROP TABLE "JobShip")", R"(DROP TABLE "jobship")");
}

TEST_F(StatementText, ColumnsOfTheResultKeepTheSchemasNames) {
    const auto columns =
        translated(u"SELECT jobno, j.PARTNO AS MyPart, Quantity * 2, 'x' & PONo, Sum(InvoiceEach) "
                   u"FROM Job j GROUP BY jobno, partno, Quantity, PONo")
            .columns;
    ASSERT_EQ(columns.size(), 5U);
    EXPECT_EQ(columns[0].name, u"JobNo");
    EXPECT_EQ(columns[0].table, u"j");
    EXPECT_EQ(columns[0].type, ColumnType::Counter);
    EXPECT_EQ(columns[1].name, u"MyPart");
    EXPECT_EQ(columns[2].name, u"Expr1000");
    EXPECT_EQ(columns[3].name, u"Expr1001");
    EXPECT_EQ(columns[3].type, ColumnType::Memo);
    EXPECT_EQ(columns[4].type, ColumnType::Currency);
}

TEST_F(StatementText, DynasetsAreKeptByTheFirstTablesKey) {
    const auto single =
        translated(u"SELECT PONo AS P, 'x' AS Fixed FROM Job WHERE CustID = 5 ORDER BY P").dynaset;
    ASSERT_TRUE(single && single->singleTable);
    EXPECT_EQ(single->keyColumn, u"JobNo");
    EXPECT_EQ(single->keysSql, R"(SELECT "Job"."JobNo", "Job"."PONo" FROM "Job" )"
                               R"(WHERE "Job"."CustID" = ?2 ORDER BY "Job"."PONo")");
    EXPECT_EQ(single->rowSql,
              R"(SELECT "Job"."PONo" AS "P", (?1) COLLATE NOCASE AS "Fixed" FROM "Job" )"
              R"(WHERE "Job"."JobNo" = ?3)");
    const auto joined =
        translated(
            u"SELECT JobShip.Quantity FROM JobShip LEFT JOIN Job ON JobShip.JobNo = Job.JobNo")
            .dynaset;
    ASSERT_TRUE(joined);
    EXPECT_FALSE(joined->singleTable);
    EXPECT_EQ(joined->table, u"JobShip");
    EXPECT_EQ(joined->keysSql,
              R"(SELECT "JobShip"."Quantity", "JobShip"."rowid" FROM "JobShip" LEFT JOIN )"
              R"("Job" ON "JobShip"."JobNo" = "Job"."JobNo")");
    for (const char16_t* none :
         {u"SELECT DISTINCT PONo FROM Job", u"SELECT Count(*) FROM Job",
          u"SELECT JobNo FROM Job UNION SELECT EstNo FROM Estimate",
          u"SELECT Quantity FROM JobShip RIGHT JOIN Job ON JobShip.JobNo = Job.JobNo"})
        EXPECT_FALSE(translated(none).dynaset) << QString::fromUtf16(none).toStdString();
}

TEST_F(StatementText, FaultsTellTheirNumberAndPlace) {
    EXPECT_EQ(
        failure(u"SELECT JobNo FROM Job WHERE PONo = 'x' AND PartNo = 'O'Brien'"),
        "3075 Syntax error in string in query expression 'PONo = 'x' AND PartNo = 'O'Brien''.");
    EXPECT_EQ(failure(u"SELECT JobNo FROM Job WHERE JobNo between 1001 and "),
              "3075 Syntax error (missing operator) in query expression 'JobNo between 1001 and'.");
    EXPECT_EQ(failure(u"SELECT JobNo FROM Job WHERE PONo = 'it''s' 13"),
              "3075 Syntax error (missing operator) in query expression 'PONo = 'it''s' 13'.");
    EXPECT_EQ(failure(u"INSERT INTO Job (CustID, PONo) VALUES(,'Net 30')"),
              "3075 Syntax error in INSERT INTO statement.");
    EXPECT_EQ(failure(u"INSERT INTO JobShip (ShippedDate) VALUES (##)"),
              "3075 Syntax error in date in query expression '##'.");
    EXPECT_EQ(failure(u"UPDATE Job SET Quantity =, PONo = 'x'"),
              "3075 Syntax error in UPDATE statement.");
    EXPECT_EQ(failure(u"DELETE FROM Job WHERE JobNo = 5; DELETE FROM Job"),
              "3075 Syntax error in query expression 'JobNo = 5; DELETE FROM Job'.");
    EXPECT_EQ(failure(u"SELECT JobNo FROM Job WHERE PONo LIKE 'a[b'"),
              "3075 Invalid pattern string.");
    EXPECT_EQ(failure(u"UPDATE Job SET Quantity = abc"), "3061 Too few parameters. Expected 1.");
    EXPECT_EQ(failure(u"SELECT Foo, Bar, foo FROM Job WHERE x.y = 2"),
              "3061 Too few parameters. Expected 3.");
    EXPECT_EQ(failure(u"SELECT * FROM Nowhere").substr(0, 4), "3078");
    EXPECT_EQ(failure(u"SELECT Frob(JobNo) FROM Job"),
              "3085 Undefined function 'frob' in expression.");
    EXPECT_EQ(failure(u"INSERT INTO Job SELECT 5 AS Nix FROM Job").substr(0, 4), "3127");
    for (const char16_t* broken :
         {u"", u"SELEC * FROM Job", u"SELECT JobNo FROM", u"SELECT [JobNo FROM Job",
          u"SELECT * FROM Job WHERE (JobNo = 1", u"SELECT JobNo FROM Job ORDER JobNo",
          u"INSERT INTO Job (CustID, PONo) VALUES (1)", u"SELECT ? FROM Job",
          u"SELECT JobNo, PONo FROM Job UNION SELECT EstNo FROM Estimate",
          u"CREATE TABLE x (a FOO)", u"CREATE TABLE",
          u"DELETE FROM JobShip INNER JOIN Job ON JobShip.JobNo = Job.JobNo", u"SELECT 1 +",
          u"UPDATE"})
        EXPECT_EQ(failure(broken).substr(0, 4), "3075") << QString::fromUtf16(broken).toStdString();
}

TEST_F(StatementText, AnEndlessTextIsAnErrorAndNoCrash) {
    for (const char16_t* piece : {u"(", u"NOT ", u"- ", u"x + ", u"x AND ", u"Left(", u"x = "}) {
        const QString text =
            u"SELECT JobNo FROM Job WHERE "_s + QString::fromUtf16(piece).repeated(20000) + u"1"_s;
        EXPECT_EQ(failure(text), "3075 Query is too complex.");
    }
}

TEST(Normalize, LiteralsLeaveTheirKindInTheKey) {
    const Normalized a = normalize(
        u"SELECT  * FROM t\r\n WHERE a = 'it''s' AND b=-12 AND c > 1.5 AND d = #3/5/2025# ; ");
    const Normalized b =
        normalize(u"SELECT * FROM t WHERE a = '' AND b=7 AND c > 2e3 AND d = #07:15 PM#");
    EXPECT_EQ(a.key, u"select * from t where a = ?t and b=?i and c > ?d and d = ?m");
    EXPECT_EQ(a.key, b.key);
    ASSERT_EQ(a.literals.size(), 4U);
    EXPECT_EQ(a.literals[0].toText(), u"it's");
    EXPECT_EQ(a.literals[1].toLong(), -12);
    EXPECT_EQ(b.literals[0].kind(), Value::Kind::Text);
    EXPECT_EQ(b.literals[2].toDouble(), 2000);
    EXPECT_EQ(b.literals[3].toDateTime(), QDateTime(QDate(1899, 12, 30), QTime(19, 15), Qt::UTC));
    // A number beyond 32 bits is no whole number of the database.
    EXPECT_EQ(normalize(u"x = 3000000000").key, u"x = ?d");
    EXPECT_EQ(normalize(u"VOrderKey = 12-7").key, u"vorderkey = ?i-?i");
    EXPECT_EQ(normalize(uR"([a 1]=Col2 + "say ""x""")").key, u"[a 1]=col2 + ?t");
}

TEST(Normalize, CaseDoesNotPartStatements) {
    const Normalized a = normalize(u"SELECT PartNo AS Info, [Sum] as [Whole Sum] FROM [Job] J");
    EXPECT_EQ(a.key, u"select partno as Info, [sum] as [Whole Sum] from [job] j");
    EXPECT_EQ(normalize(u"Select PARTNO As Info, [sum] As [Whole Sum] from [JOB] j").key, a.key);
    EXPECT_EQ(asWritten(a).key, a.statement);
    // What isn't ASCII is the engine's to compare, and a text in ORDER BY is as it was written.
    EXPECT_EQ(normalize(u"SELECT GRÖSSE FROM T ORDER BY IIf(A = 'Xy', 1, 2)").key,
              u"select grÖsse from t order by iif(a = 'Xy', 1, 2)");
}

TEST(Normalize, LiteralsThatShapeTheStatementStay) {
    EXPECT_EQ(normalize(u"SELECT TOP 20 a FROM t").key, u"select top 20 a from t");
    EXPECT_EQ(normalize(u"a LIKE 'Rack #4' AND b = 'Rack #4'").key, u"a like 'Rack #4' and b = ?t");
    EXPECT_EQ(normalize(u"SELECT a FROM t WHERE b = 'x' ORDER BY 2").key,
              u"select a from t where b = 'x' order by 2");
    EXPECT_EQ(normalize(u"a IN (SELECT b FROM t GROUP BY b) AND c = 5").key,
              u"a in (select b from t group by b) and c = ?i");
    EXPECT_EQ(normalize(u"CREATE TABLE t (a TEXT(5) DEFAULT 'x')").key,
              u"CREATE TABLE t (a TEXT(5) DEFAULT 'x')");
}

TEST(Moments, AreReadAsPeopleWriteThem) {
    const auto reads = [](const char16_t* text) {
        const auto moment = momentFromText(text);
        return moment ? moment->toString(u"yyyy-MM-dd HH:mm:ss"_s).toStdString() : "none";
    };
    EXPECT_EQ(reads(u"3/5/2025"), "2025-03-05 00:00:00");
    EXPECT_EQ(reads(u"21/11/2025"), "2025-11-21 00:00:00");
    EXPECT_EQ(reads(u"1/2/29 12:05 am"), "2029-01-02 00:05:00");
    EXPECT_EQ(reads(u"1/2/30"), "1930-01-02 00:00:00");
    EXPECT_EQ(reads(u"2025-11-21 14:05:09"), "2025-11-21 14:05:09");
    EXPECT_EQ(reads(u"12:30 PM"), "1899-12-30 12:30:00");
    EXPECT_EQ(reads(u" 7:05:09 "), "1899-12-30 07:05:09");
    EXPECT_EQ(reads(u"2025-11-21 14:05:09.999"), "2025-11-21 14:05:09");
    for (const char16_t* none :
         {u"", u"  /  /    ", u"2/30/2025", u"13/13/2025", u"13:00 PM", u"25:00", u"soon", u"12",
          u"1/2", u"1/2/2025x", u"11/21/2025 14", u"7:05:09.", u"7:05.5"})
        EXPECT_EQ(reads(none), "none") << QString::fromUtf16(none).toStdString();
}

TEST(Types, AreReadBackFromTheirDeclaration) {
    for (const ColumnType type : {ColumnType::Counter, ColumnType::Long, ColumnType::Integer,
                                  ColumnType::Double, ColumnType::Currency, ColumnType::Text,
                                  ColumnType::Memo, ColumnType::YesNo, ColumnType::DateTime}) {
        const bool counter = type == ColumnType::Counter;
        const DeclaredType onSqlite =
            typeFromDeclaration(QString::fromLatin1(declaredType(type, 12, Dialect::sqlite())),
                                counter, Dialect::sqlite());
        EXPECT_EQ(onSqlite.type, type);
        EXPECT_EQ(onSqlite.width, type == ColumnType::Text ? 12 : 0);
        const DeclaredType onPostgres =
            typeFromDeclaration(QString::fromLatin1(declaredType(type, 12, Dialect::postgres())),
                                counter, Dialect::postgres());
        EXPECT_EQ(onPostgres.type, type == ColumnType::Text ? ColumnType::Memo : type);
    }
    EXPECT_EQ(widthFromCheck(u"CHECK ((char_length((pono)::text) <= 40))"), 40);
    EXPECT_EQ(widthFromCheck(u"CHECK ((quantity <= 40))"), 0);
}

TEST(Types, DefinitionsAreReadAsTables) {
    const Table table =
        tableFromDefinition(u"create table [Odd One] (ID counter primary key, [Default] yesno "
                            u"default true, Name text(30) default 'it''s', "
                            u"Long_Text memo, constraint byName unique (Name, [Default]));");
    EXPECT_EQ(table.name, u"Odd One");
    ASSERT_EQ(table.columns.size(), 4U);
    EXPECT_TRUE(table.columns[0].primaryKey);
    EXPECT_EQ(table.columns[1].type, ColumnType::YesNo);
    EXPECT_EQ(table.columns[1].defaultValue, u"True");
    EXPECT_EQ(table.columns[2].width, 30);
    EXPECT_EQ(table.columns[2].defaultValue, u"'it''s'");
    ASSERT_EQ(table.indexes.size(), 1U);
    EXPECT_TRUE(table.indexes[0].unique);
    EXPECT_EQ(table.indexes[0].columns, QStringList({u"Name"_s, u"Default"_s}));
}

} // namespace
} // namespace jet
