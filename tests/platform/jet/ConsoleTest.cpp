#include "platform/jet/Database.h"
#include "platform/values/Literals.h"
#include "support/Paths.h"
#include "support/Print.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

/// The administrator's console as a process of its own.
TEST(Console, RunsEachLineAndGoesOnBehindAnError) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"Mirsa.mdb"_s);
    const auto run = [&](const QStringList& arguments, const QByteArray& input, int exitCode) {
        QProcess process;
        process.start(testsupport::builtFile(u"tools/jetsql"_s), arguments);
        process.write(input);
        process.closeWriteChannel();
        EXPECT_TRUE(process.waitForFinished());
        EXPECT_EQ(process.exitCode(), exitCode);
        return QString::fromUtf8(process.readAllStandardOutput());
    };
    EXPECT_EQ(run({folder.path()}, "", 1), u"ERROR 3024 Could not find file '%1'.\n"_s.arg(path));
    jet::Database::createFile(path);
    EXPECT_EQ(run({folder.path()},
                  "CREATE TABLE Part (ID COUNTER PRIMARY KEY, Name TEXT(20), Price CURRENCY)\n"
                  "INSERT INTO Part (Name, Price) VALUES ('a\tb\\c', 2.5)\n"
                  "DELETE FROM Nothing WHERE\n"
                  "\n"
                  "INSERT INTO Part (Name) VALUES ('x')\n"
                  "SELECT Name, Price AS Each FROM Part\n",
                  1)
                  .replace(QRegularExpression(u"ERROR (\\d+)[^\n]*"_s), u"ERROR \\1"_s),
              u"0 rows\n\n1 rows\n\nERROR 3075\n\n1 rows\n\nName\tEach\na\\tb\\\\c\t2.5\nx\t\n\n");
    EXPECT_EQ(run({u"--schema"_s, path}, "", 0),
              u"Part\n\tID\tCOUNTER\tPRIMARY KEY\n\tName\tTEXT(20)\n\tPrice\tCURRENCY\n\n");
}

} // namespace
