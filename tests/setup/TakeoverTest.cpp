#include "platform/jet/Location.h"
#include "platform/values/Currency.h"
#include "platform/values/Literals.h"
#include "setup/Program.h"
#include "setup/takeover/Convert.h"
#include "support/DatabaseFixture.h"

#include <QCryptographicHash>
#include <QDir>
#include <QRegularExpression>
#include <QtEndian>

#include <cstring>

namespace {

using setuptest::contents;
using setuptest::run;

QByteArray old(const QString& name) {
    return qUncompress(contents(testsupport::sourceFile(u"tests/setup/old/"_s + name + u".z"_s)));
}

QList<QStringList> lines(const QByteArray& tsv) {
    QList<QStringList> all;
    QStringList texts = QString::fromUtf8(tsv).split(u'\n', Qt::SkipEmptyParts);
    texts.removeFirst();
    for (const QString& line : texts)
        all += line.split(u'\t');
    return all;
}

QByteArray masked(QByteArray key, QByteArray bytes) {
    std::array<uchar, 256> state{};
    for (std::size_t i = 0; i < 256; ++i)
        state[i] = static_cast<uchar>(i);
    for (std::size_t i = 0, j = 0; i < 256; ++i) {
        j = (j + state[i] + static_cast<uchar>(key[static_cast<qsizetype>(i) % key.size()])) & 255;
        std::swap(state[i], state[j]);
    }
    std::size_t i = 0, j = 0;
    for (char& byte : bytes) {
        i = (i + 1) & 255;
        j = (j + state[i]) & 255;
        std::swap(state[i], state[j]);
        byte = static_cast<char>(byte ^ static_cast<char>(state[(state[i] + state[j]) & 255]));
    }
    return bytes;
}

void exclusiveOr(QByteArray& bytes, qsizetype at, const QByteArray& with) {
    for (qsizetype i = 0; i < with.size(); ++i)
        bytes[at + i] = static_cast<char>(bytes[at + i] ^ with[i]);
}

/// A column of the truth.
struct TruthColumn {
    QString name, type;
};

/// What a takeover is compared with: the values that were put into the old file.
struct Truth {
    QStringList tables;
    QHash<QString, QList<TruthColumn>> columns;
    QHash<QString, QString> measures; ///< "table column measure"

    explicit Truth(const QString& name) {
        for (const QStringList& line : lines(old(name + u".truth.tsv"_s))) {
            if (line.first().isEmpty()) // of the file as a whole
                continue;
            if (!tables.contains(line[0]))
                tables += line[0];
            if (!line[1].isEmpty() &&
                (columns[line[0]].isEmpty() || columns[line[0]].last().name != line[1]))
                columns[line[0]] += {line[1], line[2]};
            measures[line[0] + u' ' + line[1] + u' ' + line[3]] = line[4];
        }
    }
};

QByteArray escaped(QString text) {
    text.replace(u'\\', u"\\\\"_s).replace(u'\t', u"\\t"_s).replace(u'\r', u"\\r"_s);
    return text.replace(u'\n', u"\\n"_s).toUtf8();
}

QString unescaped(const QString& text) {
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\\' || i + 1 == text.size()) {
            plain += text[i];
            continue;
        }
        const QChar c = text[++i];
        plain += c == u't' ? u'\t' : c == u'r' ? u'\r' : c == u'n' ? u'\n' : c;
    }
    return plain;
}

QByteArray fourDecimals(const QString& decimal) {
    const QString whole = decimal.section(u'.', 0, 0);
    return (whole + u'.' + decimal.section(u'.', 1).leftJustified(4, u'0')).toUtf8();
}

QByteArray cell(const jet::Value& value, const QString& type) {
    if (value.isNull())
        return "\\N";
    if (type == u"TEXT" || type == u"MEMO")
        return escaped(value.toText());
    if (type == u"CURRENCY")
        return fourDecimals(values::Currency::fromDouble(value.toDouble()).toText());
    if (type == u"YESNO")
        return value.toBool() ? "1" : "0";
    if (type == u"DOUBLE" || type == u"SINGLE") {
        const double number = value.toDouble();
        quint64 bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        return QByteArray::number(bits, 16).rightJustified(16, '0');
    }
    if (type == u"DATETIME")
        return value.toDateTime()->toString(u"yyyy-MM-dd HH:mm:ss"_s).toLatin1();
    return QByteArray::number(value.toInteger());
}

class Takeover : public testsupport::DatabaseFixture {
  protected:
    QString folder() const { return m_folder.filePath(u"shop"_s); }

    QString file(const QByteArray& bytes) {
        const QString path = m_folder.filePath(u"Mirsa alt.mdb"_s);
        QFile written(path);
        EXPECT_TRUE(written.open(QIODevice::WriteOnly | QIODevice::Truncate));
        written.write(bytes);
        return path;
    }

    setuptest::Answer takeOver(const QByteArray& bytes, const QStringList& options = {},
                               const QByteArray& typed = {}) {
        QStringList words{u"takeover"_s, file(bytes), folder()};
        if (GetParam() == testsupport::EngineKind::Server)
            words += {u"--server"_s, testDatabase().location()};
        return run(words + options, typed);
    }

    /// Every value that the report says was changed, as it was, by table, column and record.
    QHash<QString, QString> changedValues() const {
        QHash<QString, QString> before;
        for (const QStringList& line : lines(contents(folder() + u"/Takeover.tsv"_s))) {
            const bool renumbered = line[0].startsWith(u"duplicate");
            const QString record = renumbered ? line[2] + u' ' + line[5] : line[3];
            before[(line[1] + u' ' + line[2] + u' ' + record).toLower()] = unescaped(line[4]);
        }
        return before;
    }

    /// Each row of each table against the values that were put in, and the counters.
    void expectTruth(const QString& name) {
        const Truth truth(name);
        const auto database = jet::openProgramFolder(folder());
        const QHash<QString, QString> before = changedValues();
        const QString report = QString::fromUtf8(contents(folder() + u"/Takeover.txt"_s));
        for (const QString& table : truth.tables) {
            const QList<TruthColumn>& columns = truth.columns[table];
            const jet::Table* known = database->schema().table(table);
            ASSERT_TRUE(known) << table.toStdString();
            const QString key = known->key() ? known->key()->name : QString();
            QStringList names;
            for (const TruthColumn& column : columns)
                names += u'[' + column.name + u']';
            jet::Recordset rows =
                database->openRecordset(u"SELECT %1 FROM [%2]"_s.arg(names.join(u", "_s), table),
                                        jet::RecordsetType::Snapshot);
            QByteArrayList all;
            for (; !rows.eof(); rows.moveNext()) {
                const QString code = table == u"SecurityObjects" ? rows.text(u"securitycode")
                                     : table == u"Reports"       ? rows.text(u"FileName")
                                                                 : QString();
                if (!code.isEmpty() && report.contains(u"added row "_s + code + u'\n'))
                    continue; // what the program of today needs beside
                QByteArray line;
                for (int i = 0; i < columns.size(); ++i) {
                    const jet::Value value = rows.field(i);
                    const QString record =
                        rows.fieldNames().contains(key, Qt::CaseInsensitive)
                            ? table + u' ' + columns[i].name + u' ' + key + u' ' + rows.text(key)
                            : QString();
                    const auto found = before.constFind(record.toLower());
                    const bool changed =
                        found != before.constEnd() && columns[i].type != u"DATETIME";
                    line += (i == 0 ? "" : "\t") + (!changed ? cell(value, columns[i].type)
                                                    : columns[i].type == u"CURRENCY"
                                                        ? fourDecimals(*found)
                                                        : escaped(*found));
                }
                all += line + '\n';
            }
            std::sort(all.begin(), all.end());
            EXPECT_EQ(QString::number(all.size()), truth.measures[table + u"  rows"_s])
                << table.toStdString();
            EXPECT_EQ(QString::fromLatin1(
                          QCryptographicHash::hash(all.join(), QCryptographicHash::Md5).toHex()),
                      truth.measures[table + u"  md5"_s])
                << table.toStdString();
        }
        for (const TruthColumn& counter : truth.columns[u"Job"_s].mid(0, 1)) {
            database->execute(u"INSERT INTO Job (CustID) VALUES (1)"_s);
            EXPECT_EQ(QString::number(database->lastCounter() - 1),
                      truth.measures[u"Job "_s + counter.name + u" last_given"_s]);
        }
    }

    /// The report's remarks are those that the file was made for, and no others.
    void expectFindings(const QString& name) {
        QStringList wanted, found;
        for (const QStringList& line : lines(old(name + u".findings.tsv"_s)))
            wanted += (line[0] + u": "_s + line[1] + u'.' + line[2] + u", "_s + line[3]).toLower();
        static const QRegularExpression remark(u"^  ([^ ].*: \\w+\\.[\\w,]+, [\\d,]+)$"_s,
                                               QRegularExpression::MultilineOption);
        QString report = QString::fromUtf8(contents(folder() + u"/Takeover.txt"_s));
        report = report.mid(report.indexOf(u"Remarks, with"_s));
        for (auto match = remark.globalMatch(report); match.hasNext();)
            found += match.next().captured(1).toLower();
        // Columns that are younger than these files.
        for (const char16_t* column :
             {u"hoursoverpercent", u"largenumbers", u"journaldays", u"papersfolder"})
            found.removeAll(
                u"column missing: systemsettings.%1, 1"_s.arg(QString::fromUtf16(column)));
        wanted.sort();
        found.sort();
        EXPECT_EQ(found, wanted);
    }

  private:
    QTemporaryDir m_folder;
};
MIRSA_BOTH_ENGINES(Takeover);

/// The long ones once; what they show is the reading.
class TakeoverOfFiles : public Takeover {};
INSTANTIATE_TEST_SUITE_P(OnAFile, TakeoverOfFiles, ::testing::Values(testsupport::EngineKind::File),
                         testsupport::engineName);

} // namespace

TEST_P(Takeover, EveryRowOfAnOldFileStandsInTheNewDatabase) {
    const auto answer = takeOver(old(u"jet3.mdb"_s));
    ASSERT_EQ(answer.code, 0) << answer.err.toStdString();
    EXPECT_TRUE(answer.out.startsWith(u"1,415 of 1,415 rows")) << answer.out.toStdString();
    expectTruth(u"jet3"_s);
    expectFindings(u"jet3"_s);
    // Rights that pointed at nothing may not come to mean a menu that a later release added.
    EXPECT_EQ(jet::openProgramFolder(folder())
                  ->lookup(u"SELECT COUNT(*) FROM SecurityUsers WHERE objectID NOT IN (SELECT "
                           "objectid FROM SecurityObjects)"_s)
                  .toLong(),
              10);
    const auto again = takeOver(old(u"jet3.mdb"_s));
    EXPECT_EQ(again.code, 1) << "a database stands there";
}

TEST_P(TakeoverOfFiles, LockedAndEncodedFilesAreReadToo) {
    QByteArray locked = old(u"small.mdb"_s);
    exclusiveOr(locked, 0x42, QByteArray("g\0e\0h\0e\0i\0m\0'\0009\0009\0", 18));
    EXPECT_EQ(takeOver(locked, {}, "wrong\n").code, 1);
    EXPECT_FALSE(QFile::exists(folder() + u"/Mirsa.mdb"_s));

    const QByteArray key = QByteArray::fromHex("e9c3175a");
    exclusiveOr(locked, 0x3e, key);
    for (quint32 page = 1; page < static_cast<quint32>(locked.size() / 4096); ++page) {
        const quint32 pageKey = qFromLittleEndian<quint32>(key.constData()) ^ page;
        QByteArray little(4, '\0');
        qToLittleEndian(pageKey, little.data());
        const auto at = static_cast<qsizetype>(page) * 4096;
        locked.replace(at, 4096, masked(little, locked.mid(at, 4096)));
    }
    const auto answer = takeOver(locked, {}, "geheim'99\n");
    ASSERT_EQ(answer.code, 0) << answer.err.toStdString();
    expectTruth(u"small"_s);
    expectFindings(u"small"_s);
}

TEST_P(TakeoverOfFiles, DamageIsToldAndTakenOnlyWhenAskedFor) {
    QByteArray damaged = old(u"small.mdb"_s);
    damaged.replace(345 * 4096, 4096, QByteArray(4096, '\0')); // a page of time records
    const auto refused = takeOver(damaged);
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.err.contains(u"damaged")) << refused.err.toStdString();
    EXPECT_EQ(QDir(folder()).entryList(QDir::Files | QDir::Hidden), QStringList{u"Takeover.txt"_s});
    EXPECT_TRUE(contents(folder() + u"/Takeover.txt"_s).contains("Timelog: 405 of 460 rows"));

    ASSERT_EQ(takeOver(damaged, {u"--damaged"_s}).code, 0);
    EXPECT_EQ(jet::openProgramFolder(folder())->lookup(u"SELECT COUNT(*) FROM Timelog"_s).toLong(),
              405);
}

TEST_P(TakeoverOfFiles, AMangledFileEndsInAMessage) {
    const QByteArray whole = old(u"jet3.mdb"_s);
    quint32 seed = 99;
    const auto random = [&seed](qsizetype below) {
        seed = seed * 1664525 + 1013904223;
        return static_cast<qsizetype>(seed >> 8) % below;
    };
    for (int round = 0; round < 3; ++round) {
        QByteArray mangled = whole;
        for (int i = 0; i < 60; ++i)
            mangled[2048 + random(mangled.size() - 2048)] = static_cast<char>(random(256));
        if (round % 3 == 2)
            mangled.truncate(2048 + random(mangled.size() - 2048));
        const auto answer = takeOver(mangled);
        EXPECT_TRUE(answer.code == 0 || answer.code == 1) << answer.code;
        EXPECT_EQ(answer.code == 0, QFile::exists(folder() + u"/Mirsa.mdb"_s));
        QFile::remove(folder() + u"/Mirsa.mdb"_s);
    }
    EXPECT_EQ(takeOver("").code, 1);
    EXPECT_EQ(takeOver("a letter to the customer").code, 1);
}

TEST_P(TakeoverOfFiles, AKilledRunLeavesNoHalfDatabase) {
    const QByteArray whole = old(u"jet3.mdb"_s);
    for (const int milliseconds : {20, 150, 400, 900}) {
        QProcess process;
        process.start(setuptest::program(), {u"takeover"_s, file(whole), folder()});
        process.waitForFinished(milliseconds);
        process.kill();
        process.waitForFinished();
        if (QFile::exists(folder() + u"/Mirsa.mdb"_s))
            break;
    }
    if (!QFile::exists(folder() + u"/Mirsa.mdb"_s)) {
        EXPECT_EQ(takeOver(whole).code, 0);
        EXPECT_EQ(QDir(folder()).entryList(QDir::Files | QDir::Hidden),
                  (QStringList{u"Mirsa.mdb"_s, u"Takeover.tsv"_s, u"Takeover.txt"_s}));
    }
    expectTruth(u"jet3"_s);
}

TEST(TakeoverValues, BecomeWhatTodaysColumnsHold) {
    QTemporaryDir folder;
    takeover::Remarks remarks(folder.filePath(u"values.tsv"_s));
    const auto value = [&](const char* text, jet::ColumnType type) {
        takeover::OldValue old;
        old.kind = takeover::OldValue::Kind::Text;
        old.bytes = text;
        jet::Column to;
        to.type = type;
        to.width = 5;
        return takeover::converted(old, {u"c"_s, takeover::OldType::Text, 50, false}, to,
                                   {u"T"_s, u"c"_s, u"k"_s}, remarks);
    };
    using jet::ColumnType;
    EXPECT_EQ(value(" 7 ", ColumnType::Long).toInteger(), 7);
    EXPECT_EQ(value("1,234.50", ColumnType::Double).toDouble(), 1234.5);
    EXPECT_EQ(value("-0.00005", ColumnType::Currency).toText(), u"0");
    EXPECT_EQ(remarks.changedValues(), 1);
    // Nobody knows whether these are numbers, and which.
    for (const char* text : {"12,5", "1,234", "n/a", "3:30", "1e999"})
        EXPECT_TRUE(value(text, ColumnType::Double).isNull()) << text;
    EXPECT_TRUE(value("70000", ColumnType::Integer).isNull());
    EXPECT_EQ(value("Grüße an alle", ColumnType::Text).toText(), u"Grüße"_s);
    EXPECT_EQ(value("yes", ColumnType::YesNo).toInteger(), 1);
    EXPECT_EQ(value("6/13/2007", ColumnType::DateTime).toDate(), QDate(2007, 6, 13));
    EXPECT_EQ(remarks.changedValues(), 8);
    // Before the first day the day counts back and its time forward.
    EXPECT_EQ(takeover::momentOf(-1.25), QDateTime(QDate(1899, 12, 29), QTime(6, 0), Qt::UTC));
    EXPECT_EQ(takeover::momentOf(40908.999998), QDateTime(QDate(2012, 1, 1), QTime(0, 0), Qt::UTC));
    EXPECT_FALSE(takeover::momentOf(1e300));
}
