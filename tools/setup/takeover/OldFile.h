#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

class QIODevice;

/// Database files of the old system (Jet 3 and Jet 4), as they are read. The reading itself runs in
/// a process of its own: damaged files can bring the library down.
namespace takeover {

enum class OldType : int {
    YesNo = 1,
    Byte = 2,
    Integer = 3,
    Long = 4,
    Currency = 5,
    Single = 6,
    Double = 7,
    DateTime = 8,
    Binary = 9,
    Text = 10,
    Ole = 11,
    Memo = 12,
    Guid = 15,
    Decimal = 16,
    Unknown = 0,
};
QString nameOf(OldType type, bool counter = false);

struct OldColumn {
    QString name;
    OldType type = OldType::Unknown;
    int width = 0; ///< characters of a text
    bool counter = false;
};

struct OldTable {
    QString name;
    std::vector<OldColumn> columns;
    qint64 rowsTold = 0;  ///< as the table's own first page says
    qint64 lastGiven = 0; ///< of its counter
    QString problem;      ///< why it can't be read; empty where it can
};

struct OldCatalogue {
    QString format; ///< "Jet 3", "Jet 4"
    int codePage = 0;
    std::vector<OldTable> tables;
    QStringList linked;  ///< tables whose rows stand in another file
    QStringList others;  ///< queries, forms and the like, by kind and number
    QStringList damages; ///< what is wrong with the file as a whole
};

/// One value as the file holds it.
struct OldValue {
    enum class Kind : char { Null, Whole, Money, Real, Date, Text, Decimal, Bytes, Broken };
    Kind kind = Kind::Null;
    qint64 whole = 0; ///< also ten-thousandths of a Money
    double real = 0;  ///< also days since 12/30/1899 of a Date
    QByteArray bytes; ///< UTF-8 of a Text, the digits of a Decimal, a GUID as text
};

/// What came of reading a table's rows.
struct OldEnd {
    qint64 rows = 0;
    qint64 deleted = 0;
    qint64 damagedRows = 0;  ///< rows whose place on their page makes no sense
    qint64 brokenValues = 0; ///< long texts whose chain of pages is broken
};

/// The reading process: writes a file's catalogue, or the rows of a table, to its output. Called by
/// main() for the words "old-catalogue" and "old-rows". Returns the exit code.
int writeCatalogue(const QString& path, QIODevice& out);
int writeRows(const QString& path, const QString& table, QIODevice& out);

} // namespace takeover
