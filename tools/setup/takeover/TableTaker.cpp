#include "setup/takeover/TableTaker.h"

#include "core/keeping/Files.h"
#include "platform/values/Literals.h"
#include "setup/Relations.h"
#include "setup/takeover/Convert.h"

#include <QSet>

namespace takeover {

using jet::ColumnType;

namespace {

constexpr const char* typeWords[] = {"COUNTER",  "LONG", "INTEGER", "DOUBLE",  "CURRENCY",
                                     "TEXT(%1)", "MEMO", "YESNO",   "DATETIME"};

QString wordOf(const jet::Column& column) {
    const QString word = QString::fromLatin1(typeWords[static_cast<int>(column.type)]);
    return column.type == ColumnType::Text ? word.arg(column.width) : word;
}

QString nameOf(ColumnType type) {
    return QString::fromLatin1(typeWords[static_cast<int>(type)]).section(u'(', 0, 0);
}

bool same(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

/// A name that the dialect can write between brackets, and both engines keep.
QString plainName(QString name) {
    for (QChar& c : name)
        if (u"[]!.`\"'"_s.contains(c) || c < u' ')
            c = u'_';
    while (name.toUtf8().size() > 55) // a server's names end at 63 bytes
        name.chop(1);
    return name;
}

/// The type that holds everything an old column could.
jet::Column keptColumn(const OldColumn& old) {
    jet::Column column;
    column.name = plainName(old.name);
    switch (old.type) {
    case OldType::YesNo:
        column.type = ColumnType::YesNo;
        break;
    case OldType::Byte:
    case OldType::Integer:
    case OldType::Long:
        column.type = ColumnType::Long;
        break;
    case OldType::Currency:
        column.type = ColumnType::Currency;
        break;
    case OldType::Single:
    case OldType::Double:
        column.type = ColumnType::Double;
        break;
    case OldType::DateTime:
        column.type = ColumnType::DateTime;
        break;
    default:
        column.type = ColumnType::Memo; // decimals and bytes too: as text they lose nothing
    }
    return column;
}

/// Repeated values of a primary key: the first row keeps it, later ones wait for a new one.
class Keys {
  public:
    explicit Keys(const jet::Column& key)
        : m_text(key.type == ColumnType::Text), m_width(key.width) {}

    bool take(const jet::Value& value) {
        if (value.isNull())
            return false;
        if (m_text) {
            const QString folded = value.toText().toCaseFolded();
            if (m_texts.contains(folded))
                return false;
            m_texts.insert(folded);
            return true;
        }
        const qint64 number = value.toInteger();
        m_highest = std::max(m_highest, number);
        if (m_numbers.contains(number))
            return false;
        m_numbers.insert(number);
        return true;
    }
    void startBehind(qint64 lastGiven) { m_highest = std::max(m_highest, lastGiven); }
    qint64 highest() const { return m_highest; }
    jet::Value next(const jet::Value& wanted) {
        if (!m_text)
            return {++m_highest};
        for (int i = 2;; ++i) {
            const QString ending = u"~%1"_s.arg(i);
            const jet::Value key(wanted.toText().left(m_width - ending.size()) + ending);
            if (take(key))
                return key;
        }
    }

  private:
    bool m_text;
    int m_width;
    qint64 m_highest = 0;
    QSet<qint64> m_numbers;
    QSet<QString> m_texts;
};

} // namespace

void TableTaker::create(const jet::Table& table) {
    QStringList columns;
    for (const jet::Column& column : table.columns)
        columns += u'[' + column.name + u"] "_s + wordOf(column);
    m_database.execute(u"CREATE TABLE ["_s + table.name + u"] ("_s + columns.join(u", "_s) + u')');
}

jet::Table TableTaker::keptTable(const QString& name, const std::vector<OldColumn>& columns,
                                 const jet::Column* key) const {
    jet::Table table;
    table.name = u"Old_"_s + plainName(name);
    while (m_database.schema().table(table.name))
        table.name += u'_';
    if (key) {
        table.columns.push_back(*key);
        if (key->type == ColumnType::Counter)
            table.columns.front().type = ColumnType::Long;
        table.columns.front().primaryKey = false;
    }
    for (const OldColumn& column : columns) {
        table.columns.push_back(keptColumn(column));
        QString& wanted = table.columns.back().name;
        const auto taken = [&] {
            return std::count_if(table.columns.begin(), table.columns.end(),
                                 [&](const jet::Column& c) { return same(c.name, wanted); }) > 1;
        };
        while (taken())
            wanted += u'_';
    }
    return table;
}

void TableTaker::compareTypes(const OldTable& old, const jet::Table& today) {
    for (const OldColumn& column : old.columns) {
        const jet::Column* now = today.column(column.name);
        if (!now)
            continue;
        const QString before = takeover::nameOf(column.type, column.counter);
        QString after = nameOf(now->type);
        if (now->type == ColumnType::Counter && !column.counter)
            m_remarks.count(u"type %1, today COUNTER"_s.arg(before), old.name, column.name);
        else if (before != after && !(column.counter && now->type == ColumnType::Long))
            m_remarks.count(u"type %1, today %2"_s.arg(before, after), old.name, column.name);
    }
}

/// A table between its reading and its end.
struct TableTaker::Pending {
    struct Mapped {
        std::size_t from;
        const jet::Column* to;
    };
    struct Row {
        std::vector<jet::Value> known, unknown;
    };

    TableResult result;
    jet::Table today;
    std::vector<Mapped> known;
    std::vector<std::size_t> unknown;
    std::vector<OldColumn> unknownColumns;
    std::vector<jet::Column> columns; ///< that are written, in order
    const jet::Column* key = nullptr;
    std::optional<std::size_t> keyAt; ///< of the key among `columns`
    bool numbered = false;            ///< the key is new: numbered in the order of reading
    std::optional<Keys> keys;
    std::optional<Loader> loader, keptLoader;
    std::vector<Row> waiting; ///< whose key another row has taken

    void write(Row& row) {
        loader->add(row.known);
        ++result.written;
        if (!keptLoader)
            return;
        if (key)
            row.unknown.front() = row.known[*keyAt];
        keptLoader->add(row.unknown);
    }
};

TableTaker::TableTaker(jet::Database& database, const OldReader& reader, Remarks& remarks)
    : m_database(database), m_reader(reader), m_remarks(remarks) {}

TableTaker::~TableTaker() = default;

void TableTaker::take(const OldTable& old, const jet::Table& today) {
    Pending& pending = *m_pending.emplace_back(std::make_unique<Pending>());
    TableResult& result = pending.result;
    result.name = today.name;
    result.oldName = old.name;
    result.told = old.rowsTold;
    pending.today = today;
    compareTypes(old, today);

    pending.key = pending.today.key();
    for (std::size_t i = 0; i < old.columns.size(); ++i) {
        if (const jet::Column* column = pending.today.column(old.columns[i].name)) {
            if (pending.key && same(column->name, pending.key->name))
                pending.keyAt = pending.columns.size();
            pending.known.push_back({i, column});
            pending.columns.push_back(*column);
        } else {
            pending.unknown.push_back(i);
            pending.unknownColumns.push_back(old.columns[i]);
            result.unknown += old.columns[i].name;
            m_remarks.count(u"column unknown today"_s, old.name, old.columns[i].name, 1);
        }
    }
    for (const jet::Column& column : pending.today.columns) {
        if (std::any_of(old.columns.begin(), old.columns.end(),
                        [&](const OldColumn& c) { return same(c.name, column.name); }))
            continue;
        result.missing += column.name;
        m_remarks.count(u"column missing"_s, today.name, column.name);
    }
    if (pending.key) {
        pending.numbered = !pending.keyAt;
        if (pending.numbered) {
            pending.keyAt = pending.columns.size();
            pending.columns.push_back(*pending.key);
        }
        if (pending.key->type == ColumnType::Counter)
            result.counter = pending.key->name;
        pending.keys.emplace(*pending.key).startBehind(old.lastGiven);
    }
    pending.loader.emplace(m_database, today.name, pending.columns);
    if (!pending.unknown.empty()) {
        const jet::Table kept = keptTable(old.name, pending.unknownColumns, pending.key);
        create(kept);
        result.kept = kept.name;
        pending.keptLoader.emplace(m_database, kept.name, kept.columns);
    }
    read(old, pending);
}

void TableTaker::read(const OldTable& old, Pending& pending) {
    TableResult& result = pending.result;
    Remarks::Place place{result.name, {}, {}};
    const auto knownOf = [&](const std::vector<OldValue>& read) {
        place.key = pending.keyAt && !pending.numbered
                        ? pending.key->name + u' ' + shown(read[pending.known[*pending.keyAt].from])
                        : u"row "_s + QString::number(result.read);
        std::vector<jet::Value> values;
        values.reserve(pending.columns.size());
        for (const Pending::Mapped& column : pending.known) {
            place.column = column.to->name;
            values.push_back(converted(read[column.from], old.columns[column.from], *column.to,
                                       place, m_remarks));
        }
        if (pending.numbered)
            values.push_back(pending.keys->next({}));
        return values;
    };
    const auto unknownOf = [&](const std::vector<OldValue>& read) {
        std::vector<jet::Value> values;
        if (pending.key)
            values.emplace_back(); // the key that the row gets
        place.table = result.kept;
        for (const std::size_t at : pending.unknown) {
            const jet::Column column = keptColumn(old.columns[at]);
            place.column = column.name;
            values.push_back(converted(read[at], old.columns[at], column, place, m_remarks));
        }
        place.table = result.name;
        return values;
    };

    QString problem;
    const auto end = m_reader.rows(
        old,
        [&](const std::vector<OldValue>& read) {
            ++result.read;
            Pending::Row row{knownOf(read), {}};
            if (pending.keptLoader)
                row.unknown = unknownOf(read);
            if (pending.keys && !pending.numbered && !pending.keys->take(row.known[*pending.keyAt]))
                pending.waiting.push_back(std::move(row));
            else
                pending.write(row);
        },
        problem);
    if (!end)
        result.damages += problem;
    else if (end->damagedRows > 0)
        result.damages += u"%1 rows stand on damaged places"_s.arg(end->damagedRows);
    if (end && end->brokenValues > 0)
        result.damages += u"%1 long texts are broken"_s.arg(end->brokenValues);
    if (result.read != old.rowsTold)
        result.damages += u"%1 of %2 rows could be read"_s.arg(result.read).arg(old.rowsTold);
}

void TableTaker::keep(const OldTable& old) {
    m_remarks.count(u"table unknown today"_s, old.name, {});
    const jet::Table table = keptTable(old.name, old.columns, nullptr);
    create(table);
    OldTable renamed = old;
    for (std::size_t i = 0; i < old.columns.size(); ++i)
        renamed.columns[i].name = table.columns[i].name;
    take(renamed, table);
}

void TableTaker::pass(const OldTable& old, const QString& today) {
    TableResult& result = m_pending.emplace_back(std::make_unique<Pending>())->result;
    result.name = today;
    result.oldName = old.name;
    if (!old.problem.isEmpty())
        result.damages += old.problem;
}

/// A number that something names must not come to mean another row.
qint64 TableTaker::highestReference(const QString& table, const QString& key) {
    qint64 highest = 0;
    for (const setup::Reference& reference : setup::references())
        if (same(reference.target, table) && same(reference.key, key))
            highest = std::max(highest, m_database
                                            .lookup(u"SELECT MAX([%1]) FROM [%2]"_s.arg(
                                                reference.column, reference.table))
                                            .toLong());
    return highest;
}

void TableTaker::writeWaiting(Pending& pending) {
    if (pending.key->type != ColumnType::Text)
        pending.keys->startBehind(highestReference(pending.result.name, pending.key->name));
    for (Pending::Row& row : pending.waiting) {
        jet::Value& key = row.known[*pending.keyAt];
        const jet::Value before = key;
        key = pending.keys->next(before);
        m_remarks.changed(
            u"duplicate of today's primary key"_s,
            {pending.result.name, pending.key->name, pending.key->name + u' ' + before.toText()},
            before.toText(), key.toText());
        ++pending.result.renumbered[pending.key->name];
        pending.write(row);
    }
}

std::vector<TableResult> TableTaker::finish() {
    for (const auto& pending : m_pending)
        for (std::optional<Loader>* loader : {&pending->loader, &pending->keptLoader})
            if (*loader)
                (*loader)->finish();
    std::vector<TableResult> results;
    for (const auto& pending : m_pending) {
        if (!pending->waiting.empty())
            writeWaiting(*pending);
        for (std::optional<Loader>* loader : {&pending->loader, &pending->keptLoader}) {
            if (!*loader)
                continue;
            (*loader)->finish();
            if (!((*loader)->readBack() == (*loader)->written()))
                throw keeping::Refusal(u"What was read back from the table "_s +
                                       pending->result.name +
                                       u" is not what was written. Nothing was taken over."_s);
        }
        if (pending->keys && pending->key->type != ColumnType::Text)
            pending->result.lastGiven = pending->keys->highest();
        results.push_back(pending->result);
    }
    return results;
}

} // namespace takeover
