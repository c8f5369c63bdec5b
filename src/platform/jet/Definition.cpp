#include "platform/jet/Lexer.h"
#include "platform/jet/Translate.h"
#include "platform/values/Literals.h"

namespace jet {

namespace {

[[noreturn]] void fail(const char16_t* statement) {
    throw Error(errors::syntax, u"Syntax error in %1."_s.arg(QStringView(statement)));
}

/// Reads CREATE TABLE, CREATE INDEX, ALTER TABLE and DROP TABLE.
class DefinitionReader {
  public:
    explicit DefinitionReader(QStringView text) : m_tokens(tokenize(text)) {}

    bool accept(QStringView word) {
        if (!peek().isWord(word))
            return false;
        ++m_at;
        return true;
    }
    bool acceptSymbol(QStringView symbol) {
        if (!peek().isSymbol(symbol))
            return false;
        ++m_at;
        return true;
    }
    void expect(QStringView word) {
        if (!accept(word))
            fail(m_statement);
    }
    void expectSymbol(QStringView symbol) {
        if (!acceptSymbol(symbol))
            fail(m_statement);
    }
    QString name() {
        if (peek().kind != Token::Kind::Word && peek().kind != Token::Kind::Name)
            fail(m_statement);
        return m_tokens[m_at++].text;
    }
    void expectEnd() {
        acceptSymbol(u";");
        if (peek().kind != Token::Kind::End)
            fail(m_statement);
    }
    void setStatement(const char16_t* statement) { m_statement = statement; }

    /// Behind CREATE TABLE.
    Table table() {
        Table result;
        result.name = name();
        expectSymbol(u"(");
        do {
            if (peek().isWord(u"constraint") || peek().isWord(u"unique") ||
                (peek().isWord(u"primary") && m_tokens[m_at + 1].isWord(u"key")))
                constraint(result);
            else
                result.columns.push_back(column());
        } while (acceptSymbol(u","));
        expectSymbol(u")");
        expectEnd();
        return result;
    }

    Column column() {
        Column result;
        result.name = name();
        result.type = type(result.width);
        while (true) {
            if (accept(u"primary")) {
                expect(u"key");
                result.primaryKey = true;
            } else if (accept(u"not")) {
                expect(u"null");
                notNull << result.name;
            } else if (accept(u"null")) {
                continue;
            } else if (accept(u"default")) {
                result.defaultValue = defaultValue();
            } else {
                return result;
            }
        }
    }

    QStringList columnList(QByteArrayList* directions = nullptr) {
        QStringList result;
        expectSymbol(u"(");
        do {
            result << name();
            const bool descending = accept(u"desc");
            if (!descending)
                accept(u"asc");
            if (directions != nullptr)
                directions->append(descending ? " DESC" : "");
        } while (acceptSymbol(u","));
        expectSymbol(u")");
        return result;
    }

    QStringList notNull;

  private:
    const Token& peek() const { return m_tokens[m_at]; }

    void constraint(Table& table) {
        QString indexName;
        if (accept(u"constraint"))
            indexName = name();
        const bool primary = accept(u"primary");
        expect(primary ? u"key" : u"unique");
        const QStringList columns = columnList();
        if (!primary) {
            if (indexName.isEmpty())
                indexName = table.name + u'_' + columns.join(u'_');
            table.indexes.push_back({indexName, columns, true});
            return;
        }
        for (const QString& key : columns) {
            const auto found =
                std::find_if(table.columns.begin(), table.columns.end(), [&](const Column& c) {
                    return c.name.compare(key, Qt::CaseInsensitive) == 0;
                });
            if (found == table.columns.end())
                fail(m_statement);
            found->primaryKey = true;
        }
    }

    ColumnType type(int& width) {
        const QString word = name().toLower();
        const auto bracket = [&] {
            int number = 0;
            if (acceptSymbol(u"(")) {
                const Token& token = m_tokens[m_at++];
                if (token.kind != Token::Kind::Literal || token.literalKind != LiteralKind::Integer)
                    fail(m_statement);
                number = static_cast<int>(token.value.toLong());
                expectSymbol(u")");
            }
            return number;
        };
        if (word == u"counter" || word == u"autoincrement")
            return ColumnType::Counter;
        if (word == u"long")
            return ColumnType::Long;
        if (word == u"integer" || word == u"short" || word == u"smallint" || word == u"byte")
            return ColumnType::Integer;
        if (word == u"double" || word == u"single" || word == u"float")
            return ColumnType::Double;
        if (word == u"currency" || word == u"money")
            return ColumnType::Currency;
        if (word == u"yesno" || word == u"bit")
            return ColumnType::YesNo;
        if (word == u"datetime" || word == u"date")
            return ColumnType::DateTime;
        if (word == u"memo" || word == u"longtext")
            return ColumnType::Memo;
        if (word == u"text" || word == u"char" || word == u"varchar") {
            width = bracket();
            if (width == 0)
                width = 255;
            return ColumnType::Text;
        }
        fail(u"field definition");
    }

    QString defaultValue() {
        const bool negative = acceptSymbol(u"-");
        const Token& token = m_tokens[m_at++];
        if (token.kind == Token::Kind::Literal) {
            if (token.literalKind == LiteralKind::Text)
                return u'\'' + token.value.toText().replace(u'\'', u"''"_s) + u'\'';
            return (negative ? u"-"_s : QString()) + token.value.toText();
        }
        if (token.isWord(u"true") || token.isWord(u"yes"))
            return u"True"_s;
        if (token.isWord(u"false") || token.isWord(u"no"))
            return u"False"_s;
        if (token.isWord(u"null"))
            return {};
        fail(m_statement);
    }

    std::vector<Token> m_tokens;
    std::size_t m_at = 0;
    const char16_t* m_statement = u"CREATE TABLE statement";
};

class DefinitionWriter {
  public:
    explicit DefinitionWriter(const Dialect& dialect)
        : m_dialect(dialect), m_postgres(dialect.isPostgres()) {}

    QByteArray quoted(const QString& name) const { return m_dialect.quoted(name); }

    QByteArray column(const QString& table, const Column& column, bool inlineKey,
                      bool notNull) const {
        QByteArray sql =
            quoted(column.name) + ' ' + declaredType(column.type, column.width, m_dialect);
        if (column.type == ColumnType::Counter)
            sql += m_postgres ? " GENERATED BY DEFAULT AS IDENTITY" : "";
        if (inlineKey)
            sql += column.type == ColumnType::Counter && !m_postgres ? " PRIMARY KEY AUTOINCREMENT"
                                                                     : " PRIMARY KEY";
        if (column.type == ColumnType::YesNo || column.type == ColumnType::Counter || notNull ||
            column.primaryKey)
            sql += " NOT NULL";
        QByteArray value = column.defaultValue.toUtf8();
        if (column.type == ColumnType::YesNo)
            value = value.isEmpty() || value == "0" || value == "False" ? "0" : "1";
        else if (value == "True" || value == "False")
            value = value == "True" ? "-1" : "0";
        if (!value.isEmpty() && column.type != ColumnType::Counter)
            sql += " DEFAULT " + value;
        if (column.type == ColumnType::Text)
            sql += " CONSTRAINT " + quoted(widthCheckName(table, column.name)) + " CHECK (" +
                   (m_postgres ? "char_length(" : "length(") + quoted(column.name) +
                   (m_postgres ? "::text" : "") + ") <= " + QByteArray::number(column.width) + ')';
        return sql;
    }

    QByteArray index(const QString& table, const Index& index, const QByteArrayList& directions,
                     const Table* known) const {
        QByteArray list;
        for (qsizetype i = 0; i < index.columns.size(); ++i) {
            const QByteArray direction = directions.value(i);
            list += (i == 0 ? "" : ", ") + quoted(index.columns[i]) + direction;
            // Reads order Nulls first; only an index of that order serves them.
            const Column* column = known != nullptr ? known->column(index.columns[i]) : nullptr;
            const bool never =
                column != nullptr && (column->primaryKey || column->type == ColumnType::YesNo ||
                                      column->type == ColumnType::Counter);
            if (m_postgres && !never)
                list += direction.isEmpty() ? " NULLS FIRST" : " NULLS LAST";
        }
        return QByteArray("CREATE ") + (index.unique ? "UNIQUE " : "") + "INDEX " +
               quoted(index.name) + " ON " + quoted(table) + " (" + list + ')';
    }

    bool postgres() const { return m_postgres; }

  private:
    Dialect m_dialect;
    bool m_postgres;
};

const Table& existing(const Schema& schema, const QString& name) {
    const Table* table = schema.table(name);
    if (table == nullptr)
        throw noSuchTableError(name);
    return *table;
}

Translation createTable(DefinitionReader& reader, const DefinitionWriter& writer) {
    const Table table = reader.table();
    Translation result;
    result.kind = StatementKind::CreateTable;
    result.table = table.name;
    QStringList keys;
    for (const Column& column : table.columns)
        if (column.primaryKey)
            keys << column.name;
    const bool hasCounter =
        std::any_of(table.columns.begin(), table.columns.end(),
                    [](const Column& c) { return c.type == ColumnType::Counter; });
    QByteArray list;
    for (const Column& column : table.columns) {
        // SQLite counts only in the primary key.
        const bool inlineKey =
            keys.size() <= 1 && (column.primaryKey || (keys.isEmpty() && !writer.postgres() &&
                                                       column.type == ColumnType::Counter));
        list += (list.isEmpty() ? "" : ", ") +
                writer.column(table.name, column, inlineKey, reader.notNull.contains(column.name));
    }
    if (keys.size() > 1) {
        QByteArray names;
        for (const QString& key : keys)
            names += (names.isEmpty() ? "" : ", ") + writer.quoted(key);
        list += ", PRIMARY KEY (" + names + ')';
    }
    if (writer.postgres() && keys.size() != 1 && !hasCounter)
        list += ", " + writer.quoted(QString::fromUtf16(hiddenIdentity)) +
                " integer GENERATED ALWAYS AS IDENTITY UNIQUE";
    result.sql = "CREATE TABLE " + writer.quoted(table.name) + " (" + list + ')';
    for (const Index& index : table.indexes)
        result.more.push_back(writer.index(table.name, index, {}, &table));
    return result;
}

} // namespace

Table tableFromDefinition(QStringView createTable) {
    const Normalized text = normalize(createTable);
    DefinitionReader reader(text.key);
    reader.expect(u"create");
    reader.expect(u"table");
    return reader.table();
}

/// The definitions among the statements; see translate().
Translation translateDefinition(const Normalized& statement, const Schema& schema,
                                const Dialect& dialect) {
    DefinitionReader reader(statement.key);
    const DefinitionWriter writer(dialect);
    Translation result;
    if (reader.accept(u"create")) {
        if (reader.accept(u"table"))
            return createTable(reader, writer);
        reader.setStatement(u"CREATE INDEX statement");
        Index index;
        index.unique = reader.accept(u"unique");
        reader.expect(u"index");
        index.name = reader.name();
        reader.expect(u"on");
        const Table& table = existing(schema, reader.name());
        QByteArrayList directions;
        index.columns = reader.columnList(&directions);
        reader.expectEnd();
        for (QString& name : index.columns) {
            const Column* column = table.column(name);
            if (column == nullptr)
                throw Error(errors::itemNotFound, u"Item not found in this collection."_s);
            name = column->name;
        }
        result.kind = StatementKind::CreateIndex;
        result.table = table.name;
        result.sql = writer.index(table.name, index, directions, &table);
        return result;
    }
    if (reader.accept(u"drop")) {
        reader.setStatement(u"DROP TABLE statement");
        reader.expect(u"table");
        const Table& table = existing(schema, reader.name());
        reader.expectEnd();
        result.kind = StatementKind::DropTable;
        result.table = table.name;
        result.sql = "DROP TABLE " + writer.quoted(table.name);
        return result;
    }
    reader.expect(u"alter");
    reader.setStatement(u"ALTER TABLE statement");
    reader.expect(u"table");
    const Table& table = existing(schema, reader.name());
    result.kind = StatementKind::AlterTable;
    result.table = table.name;
    result.sql = "ALTER TABLE " + writer.quoted(table.name);
    if (reader.accept(u"drop")) {
        reader.accept(u"column");
        const Column* column = table.column(reader.name());
        if (column == nullptr)
            throw Error(errors::itemNotFound, u"Item not found in this collection."_s);
        result.sql += " DROP COLUMN " + writer.quoted(column->name);
    } else {
        reader.expect(u"add");
        reader.accept(u"column");
        const Column column = reader.column();
        result.sql += " ADD COLUMN " + writer.column(table.name, column, column.primaryKey,
                                                     reader.notNull.contains(column.name));
    }
    reader.expectEnd();
    return result;
}

} // namespace jet
