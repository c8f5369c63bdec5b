#include "platform/report/Layout.h"

#include "platform/report/Paginator.h"
#include "platform/report/ReportError.h"
#include "platform/report/SelectionFormula.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"

#include <QElapsedTimer>

#include <algorithm>

namespace report {

using jet::Value;

namespace {

/// Columns of a query by name.
struct Columns {
    QHash<QString, int> places;

    explicit Columns(const QStringList& names = {}) {
        for (qsizetype index = 0; index < names.size(); ++index) {
            const QString name = names[index].toLower();
            if (!places.contains(name))
                places.insert(name, static_cast<int>(index));
        }
    }
    int find(const QString& lowerName) const { return places.value(lowerName, -1); }
};

/// A list whose rows are going by.
struct Level {
    QString name; ///< lower case
    const List* list = nullptr;
    Columns columns;
    std::vector<Value> row;
    int rowNumber = 0;
};

struct Sum {
    qint64 count = 0;
    values::Currency money;
    double real = 0;
    bool isReal = false;
    Value least, greatest;

    void add(const Value& value) {
        if (value.isNull())
            return;
        ++count;
        if (value.kind() == Value::Kind::Money || value.kind() == Value::Kind::Integer) {
            money += value.toCurrency();
        } else {
            isReal = true;
            real += value.toDouble();
        }
        if (least.isNull() || value.toDouble() < least.toDouble())
            least = value;
        if (greatest.isNull() || value.toDouble() > greatest.toDouble())
            greatest = value;
    }
    Value sum() const { return isReal ? Value(money.toDouble() + real) : Value(money); }
    Value result(TotalKind kind) const {
        switch (kind) {
        case TotalKind::Sum:
            return sum();
        case TotalKind::Count:
            return count;
        case TotalKind::Average:
            return count == 0 ? Value() : sum().toDouble() / double(count);
        case TotalKind::Minimum:
            return least;
        case TotalKind::Maximum:
            return greatest;
        }
        return {};
    }
};

class Composer : public Scope {
  public:
    Composer(const ReportFile& file, RowSource& source, const LayoutOptions& options,
             Document& document)
        : m_file(file), m_source(source), m_options(options), m_document(document),
          m_bands(file, document),
          m_pages(file.paper, {[this](int page) { return header(page); },
                               [this](int page) { return frame(m_file.pageFooter, page); },
                               [this](Page&& page) { done(std::move(page)); }}) {
        m_sums.resize(static_cast<std::size_t>(file.totals));
        m_kinds.resize(m_sums.size());
    }

    void run(const QString& formula) {
        const QString sql = reportSql(m_file.query, m_source, formula);
        QStringList queries;
        for (const auto& parameter : m_file.parameters)
            queries << parameter.query;
        m_source.expect(queries << sql);
        for (const auto& parameter : m_file.parameters) {
            Level level;
            level.name = parameter.name.toLower();
            auto rows = m_source.open(parameter.query);
            level.columns = Columns(rows->fieldNames());
            if (!rows->next(level.row))
                level.row.assign(static_cast<std::size_t>(rows->fieldNames().size()), Value());
            m_parameters.push_back(std::move(level));
        }
        compose(m_file.body, sql);
        m_pages.finish();
    }

    Value field(const QString& name) const override {
        const QString wanted = name.toLower();
        for (auto level = m_levels.rbegin(); level != m_levels.rend(); ++level) {
            const int place = level->columns.find(wanted);
            if (place >= 0)
                return cell(*level, place);
            for (const auto& computed : level->list->computed) {
                if (computed.name == wanted)
                    return computedValue(computed);
            }
        }
        const auto dot = wanted.indexOf(u'.');
        if (dot > 0) {
            const QString owner = wanted.left(dot);
            const QString column = wanted.mid(dot + 1);
            for (const auto* levels : {&m_levels, &m_parameters}) {
                for (const auto& level : *levels) {
                    const int place = level.name == owner ? level.columns.find(column) : -1;
                    if (place >= 0)
                        return cell(level, place);
                }
            }
        }
        return special(wanted, name);
    }

    Value total(int id) const override {
        const auto place = static_cast<std::size_t>(id);
        return m_sums[place].result(m_kinds[place]);
    }

  private:
    Value computedValue(const Computed& computed) const {
        struct Depth {
            int& depth;
            explicit Depth(int& counter) : depth(counter) { ++depth; }
            ~Depth() { --depth; }
        } depth(m_depth);
        if (m_depth > 50)
            throw ReportError(codes::invalidFieldName,
                              u"%1: the computed field %2 is worked out of itself"_s.arg(
                                  m_file.path, computed.name));
        return computed.value.value(*this);
    }

    static Value cell(const Level& level, int place) {
        return level.row.empty() ? Value() : level.row[static_cast<std::size_t>(place)];
    }

    Value special(const QString& wanted, const QString& name) const {
        if (wanted == u"page")
            return m_framed > 0 ? m_framed : m_pages.pageNumber();
        if (wanted == u"pages")
            return QString(QChar(pageTotalMark));
        if (wanted == u"title")
            return m_file.title;
        if (wanted == u"currency")
            return m_options.currencySymbol;
        if (wanted == u"printdate")
            return values::today();
        if (wanted == u"printtime")
            return QDateTime(QDate(1899, 12, 30), values::now().time(), Qt::UTC);
        if (wanted == u"rownumber")
            return m_levels.empty() ? 0 : m_levels.back().rowNumber;
        throw ReportError(codes::invalidFieldName,
                          u"%1: no query gives the field %2"_s.arg(m_file.path, name));
    }

    void compose(const List& list, const QString& sql) {
        auto rows = m_source.open(sql);
        Level level;
        level.name = list.name.toLower();
        level.list = &list;
        level.columns = Columns(rows->fieldNames());
        m_levels.push_back(std::move(level));
        resetTotals(list, -1);
        std::vector<Value> next;
        bool more = rows->next(next);
        if (!more) {
            print(list.none, 0);
        } else {
            composeRows(list, *rows, next);
        }
        m_levels.pop_back();
    }

    void composeRows(const List& list, Rows& rows, std::vector<Value>& next) {
        const std::size_t depth = m_levels.size() - 1;
        std::vector<Value> keys;
        std::vector<int> groupHeaders(list.groups.size(), 0);
        int header = 0;
        bool first = true;
        const auto current = [&]() -> Level& { return m_levels[depth]; };
        do {
            std::vector<Value> before = std::exchange(current().row, std::move(next));
            std::vector<Value> nowKeys;
            for (const auto& group : list.groups)
                nowKeys.push_back(group.by.value(*this));
            std::size_t changed = 0;
            while (!first && changed < keys.size() && keys[changed] == nowKeys[changed])
                ++changed;
            if (!first && changed < list.groups.size()) {
                std::swap(before, current().row);
                closeGroups(list, changed, groupHeaders);
                std::swap(before, current().row);
            }
            keys = std::move(nowKeys);
            ++current().rowNumber;
            if (first && &list == &m_file.body) {
                m_document.name = m_file.documentName.text(*this).simplified();
                m_document.mailTo = m_file.mailTo.text(*this).simplified();
            }
            if (first) {
                header = list.repeatHeader ? ++m_headers : 0;
                print(list.header, header);
            }
            if (first || changed < list.groups.size())
                openGroups(list, first ? 0 : changed, first, groupHeaders);
            for (const auto& total : list.totals) {
                auto& sum = m_sums[static_cast<std::size_t>(total.id)];
                sum.add(total.of ? nodeValue(*total.of, *this) : Value(1));
            }
            print(list.detail, 0);
            first = false;
        } while (rows.next(next));
        closeGroups(list, 0, groupHeaders);
        print(list.footer, 0);
        if (header > 0)
            m_pages.endRepeat(header);
    }

    void openGroups(const List& list, std::size_t from, bool first, std::vector<int>& headers) {
        for (std::size_t index = from; index < list.groups.size(); ++index) {
            const auto& group = list.groups[index];
            resetTotals(list, static_cast<int>(index));
            if (group.newPage && !first)
                m_pages.newPage();
            if (group.keepTogether)
                m_pages.hold();
            headers[index] = group.repeat ? ++m_headers : 0;
            print(group.header, headers[index]);
        }
    }

    void closeGroups(const List& list, std::size_t from, const std::vector<int>& headers) {
        for (std::size_t index = list.groups.size(); index-- > from;) {
            const auto& group = list.groups[index];
            print(group.footer, 0);
            if (headers[index] > 0)
                m_pages.endRepeat(headers[index]);
            if (group.keepTogether)
                m_pages.release();
        }
    }

    void resetTotals(const List& list, int group) {
        for (const auto& total : list.totals) {
            if (total.group >= group) {
                m_sums[static_cast<std::size_t>(total.id)] = {};
                m_kinds[static_cast<std::size_t>(total.id)] = total.kind;
            }
        }
    }

    void print(const Section& section, int repeat) {
        for (const auto& part : section) {
            if (const auto* band = std::get_if<Band>(&part)) {
                if (band->showIf && !band->showIf->isTrue(*this))
                    continue;
                auto placed = m_bands.place(*band, *this);
                placed.repeat = repeat;
                m_pages.place(std::move(placed));
            } else {
                const auto& list = *std::get<std::unique_ptr<List>>(part);
                compose(list, list.query.sql(*this));
            }
        }
    }

    std::vector<PlacedBand> header(int page) {
        if (page == 1 && !m_file.headerOnFirstPage)
            return {};
        return frame(m_file.pageHeader, page);
    }

    /// Bands around a page speak of the row at which the page begins.
    std::vector<PlacedBand> frame(const Section& section, int page) {
        m_framed = page;
        std::vector<PlacedBand> bands;
        for (const auto& part : section) {
            const auto* band = std::get_if<Band>(&part);
            if (band && (!band->showIf || band->showIf->isTrue(*this)))
                bands.push_back(m_bands.place(*band, *this));
        }
        m_framed = 0;
        return bands;
    }

    void done(Page&& page) {
        m_document.append(page);
        constexpr int milliseconds = 100;
        if (!m_options.progress || m_sinceProgress.elapsed() < milliseconds)
            return;
        if (!m_options.progress(m_document.pageCount()))
            throw ReportError(codes::cancelled, u"Cancelled"_s);
        m_sinceProgress.restart();
    }

    const ReportFile& m_file;
    RowSource& m_source;
    const LayoutOptions& m_options;
    Document& m_document;
    BandLayout m_bands;
    Paginator m_pages;
    std::vector<Level> m_levels, m_parameters;
    std::vector<Sum> m_sums;
    std::vector<TotalKind> m_kinds;
    int m_headers = 0;
    mutable int m_depth = 0; ///< of computed fields that name each other
    int m_framed = 0;        ///< the page whose frame is being laid out; 0: none
    QElapsedTimer m_sinceProgress = [] {
        QElapsedTimer timer;
        timer.start();
        return timer;
    }();
};

/// A table of a from clause and the name that it goes by.
struct FromTable {
    QString table, name;
};

/// The tables that a from clause names, with their aliases.
std::vector<FromTable> tablesOf(const QString& from) {
    static const QSet<QString> words{u"inner"_s, u"left"_s, u"right"_s, u"outer"_s,
                                     u"join"_s,  u"on"_s,   u"as"_s};
    QStringList tokens;
    for (qsizetype at = 0; at < from.size();) {
        const QChar c = from[at];
        if (c.isSpace()) {
            ++at;
            continue;
        }
        auto end = at + 1;
        if (c == u'[') {
            end = from.indexOf(u']', at) + 1;
            if (end == 0)
                end = from.size();
        } else if (c.isLetter() || c == u'_') {
            while (end < from.size() && (from[end].isLetterOrNumber() || from[end] == u'_'))
                ++end;
        }
        tokens.append(from.mid(at, end - at));
        at = end;
    }
    std::vector<FromTable> tables;
    bool expected = true; // a table's name may come now
    const auto isName = [](const QString& token) {
        return token.front().isLetter() || token.front() == u'_' || token.front() == u'[';
    };
    const auto bare = [](const QString& token) {
        return token.startsWith(u'[') ? token.mid(1, token.size() - 2) : token;
    };
    for (qsizetype index = 0; index < tokens.size(); ++index) {
        const QString word = tokens[index].toLower();
        if (word == u"," || word == u"join") {
            expected = true;
        } else if (word == u"on") {
            expected = false;
        } else if (expected && isName(word) && !words.contains(word)) {
            FromTable found{bare(tokens[index]), bare(tokens[index])};
            qsizetype next = index + 1;
            if (next < tokens.size() && tokens[next].toLower() == u"as")
                ++next;
            if (next < tokens.size() && isName(tokens[next]) &&
                !words.contains(tokens[next].toLower())) {
                found.name = bare(tokens[next]);
                index = next;
            }
            tables.push_back(std::move(found));
            expected = false;
        }
    }
    return tables;
}

} // namespace

QString reportSql(const Query& query, const RowSource& source, const QString& formula) {
    const auto tables = tablesOf(query.from);
    const QString condition = whereCondition(
        formula, [&](const QString& table, const QString& field) -> std::optional<FormulaField> {
            for (const auto& known : tables) {
                if (known.name.compare(table, Qt::CaseInsensitive) != 0)
                    continue;
                if (const auto type = source.columnType(known.table, field))
                    return FormulaField{u"[%1].[%2]"_s.arg(known.name, field), *type, {}};
            }
            for (const auto& below : query.through) {
                if (below.table.compare(table, Qt::CaseInsensitive) != 0)
                    continue;
                if (const auto type = source.columnType(below.table, field))
                    return FormulaField{u"[%1].[%2]"_s.arg(below.table, field), *type,
                                        u"%1 IN (SELECT [%2].[%3] FROM [%2] WHERE "_s.arg(
                                            below.key, below.table, below.column)};
            }
            return std::nullopt;
        });
    QString sql = u"SELECT "_s;
    if (query.distinct)
        sql += u"DISTINCT "_s;
    sql += query.select + u" FROM "_s + query.from;
    if (!query.where.isEmpty() && !condition.isEmpty())
        sql += u" WHERE ("_s + query.where + u") AND ("_s + condition + u')';
    else if (!query.where.isEmpty() || !condition.isEmpty())
        sql += u" WHERE "_s + query.where + condition;
    if (!query.groupBy.isEmpty())
        sql += u" GROUP BY "_s + query.groupBy;
    if (!query.orderBy.isEmpty())
        sql += u" ORDER BY "_s + query.orderBy;
    return sql;
}

std::unique_ptr<Document> layOut(const ReportFile& file, RowSource& source, const QString& formula,
                                 const LayoutOptions& options) {
    auto document = std::make_unique<Document>();
    Composer(file, source, options, *document).run(formula);
    return document;
}

} // namespace report
