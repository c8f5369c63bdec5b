#include "platform/jet/Location.h"
#include "platform/jet/Native.h"
#include "platform/values/Literals.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

namespace {

constexpr char usage[] = R"(jetsql: runs statements on a database of Mirsa Project Manager.

  jetsql FOLDER              the database of a program folder: the server that its Mirsa.server names,
                             else its Mirsa.mdb
  jetsql FILE                a database file
  jetsql postgresql://...    a server's database
  jetsql --schema WHERE      prints the tables, columns and indexes

Statements are read from standard input, one a line, and run one after another, also behind one that
failed. A select prints a line of names and its rows, fields parted by tabs (tabs, line ends and
backslashes within them as \t, \r, \n and \\; Null is empty); a write prints "N rows"; a failure prints
"ERROR number text". An empty line follows each. The exit code is 1 if any statement failed.
)";

QString escaped(QString text) {
    return text.replace(u'\\', u"\\\\"_s)
        .replace(u'\t', u"\\t"_s)
        .replace(u'\r', u"\\r"_s)
        .replace(u'\n', u"\\n"_s);
}

QString typeName(const jet::Column& column) {
    switch (column.type) {
    case jet::ColumnType::Counter:
        return u"COUNTER"_s;
    case jet::ColumnType::Long:
        return u"LONG"_s;
    case jet::ColumnType::Integer:
        return u"INTEGER"_s;
    case jet::ColumnType::Double:
        return u"DOUBLE"_s;
    case jet::ColumnType::Currency:
        return u"CURRENCY"_s;
    case jet::ColumnType::Text:
        return u"TEXT(%1)"_s.arg(column.width);
    case jet::ColumnType::Memo:
        return u"MEMO"_s;
    case jet::ColumnType::YesNo:
        return u"YESNO"_s;
    case jet::ColumnType::DateTime:
        return u"DATETIME"_s;
    }
    return {};
}

void printSchema(const jet::Database& database, QTextStream& out) {
    for (const jet::Table& table : database.schema().tables()) {
        out << table.name << '\n';
        for (const jet::Column& column : table.columns) {
            out << '\t' << column.name << '\t' << typeName(column);
            if (column.primaryKey)
                out << "\tPRIMARY KEY";
            if (!column.defaultValue.isEmpty())
                out << "\tDEFAULT " << column.defaultValue;
            out << '\n';
        }
        for (const jet::Index& index : table.indexes)
            out << '\t' << (index.unique ? "UNIQUE INDEX " : "INDEX ") << index.name << '\t'
                << index.columns.join(u", "_s) << '\n';
        out << '\n';
    }
}

void printRows(jet::Recordset rs, QTextStream& out) {
    QStringList names = rs.fieldNames();
    const int columns = static_cast<int>(names.size());
    for (QString& name : names)
        name = escaped(name);
    out << names.join(u'\t') << '\n';
    for (; !rs.eof(); rs.moveNext()) {
        for (int i = 0; i < columns; ++i)
            out << (i == 0 ? "" : "\t") << escaped(rs.field(i).toText());
        out << '\n';
    }
}

void run(jet::Database& database, const QString& statement, QTextStream& out) {
    try {
        out << database.execute(statement) << " rows\n";
    } catch (const jet::Error& error) {
        if (error.number() != jet::errors::cannotExecuteSelect)
            throw;
        printRows(database.openRecordset(statement, jet::RecordsetType::Snapshot), out);
    }
}

std::unique_ptr<jet::Database> openAt(const QString& where) {
    if (jet::isServerUri(where))
        return jet::Database::openServer(where);
    return QFileInfo(where).isDir() ? jet::openProgramFolder(where)
                                    : jet::Database::openFile(where);
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    QTextStream in(stdin), out(stdout), complaints(stderr);
    QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool schema = arguments.removeAll(u"--schema"_s) > 0;
    if (arguments.size() != 1 || arguments.first().startsWith(u'-')) {
        complaints << usage;
        return 2;
    }

    bool failed = false;
    const auto fail = [&](int number, const QString& text) {
        out << "ERROR " << number << ' ' << escaped(text) << '\n';
        failed = true;
    };
    std::unique_ptr<jet::Database> database;
    try {
        database = openAt(arguments.first());
        jet::Native(*database).setWriter(u"jetsql "_s + qEnvironmentVariable("USER"));
        if (schema)
            printSchema(*database, out);
    } catch (const jet::Error& error) {
        fail(error.number(), error.text());
        return 1;
    }
    while (!schema && !in.atEnd()) {
        const QString statement = in.readLine().trimmed();
        if (statement.isEmpty())
            continue;
        try {
            run(*database, statement, out);
        } catch (const jet::Error& error) {
            fail(error.number(), error.text());
        } catch (const std::exception& error) {
            fail(jet::errors::other, QString::fromUtf8(error.what()));
        }
        out << '\n';
        out.flush();
    }
    return failed ? 1 : 0;
}
