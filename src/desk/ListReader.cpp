#include "desk/ListReader.h"

#include "platform/jet/Native.h"
#include "platform/values/Literals.h"

#include <QHash>

#include <algorithm>

namespace desk {

using jet::Cell;
using rows::Kind;

namespace {

constexpr int rowsBetweenLooks = 1000;

std::string_view textOf(const Cell& cell) {
    return cell.kind == Cell::Kind::Text
               ? std::string_view(cell.text, static_cast<std::size_t>(cell.size))
               : std::string_view();
}

double numberOf(const Cell& cell) {
    switch (cell.kind) {
    case Cell::Kind::Integer:
        return static_cast<double>(cell.integer);
    case Cell::Kind::Real:
        return cell.real;
    default:
        return QByteArray::fromRawData(cell.text, cell.size).toDouble();
    }
}

/// The day of "2026-03-02 14:05:00"; 0 for what isn't a date.
double dayOf(const Cell& cell) {
    const std::string_view text = textOf(cell);
    if (text.size() < 10)
        return 0;
    const auto digits = [&](std::size_t at, std::size_t count) {
        int number = 0;
        for (std::size_t i = at; i < at + count; ++i)
            number = number * 10 + (text[i] - '0');
        return number;
    };
    return static_cast<double>(QDate(digits(0, 4), digits(5, 2), digits(8, 2)).toJulianDay());
}

void addText(rows::Store& store, int column, const Cell& cell) {
    if (cell.kind == Cell::Kind::Text) {
        store.addText(column, textOf(cell));
    } else {
        const QByteArray number = cell.kind == Cell::Kind::Integer
                                      ? QByteArray::number(cell.integer)
                                      : QByteArray::number(cell.real);
        store.addText(column, {number.constData(), static_cast<std::size_t>(number.size())});
    }
}

/// The texts that numbers stand for.
struct Names {
    rows::Texts texts;
    QHash<qint64, int> places;
};

Names readNames(jet::Native& native, const QString& select) {
    Names names;
    native.each(select.toUtf8(), [&](const std::vector<Cell>& cells) {
        names.places.insert(cells[0].integer, static_cast<int>(names.texts.count()));
        names.texts.add(textOf(cells[1]));
    });
    return names;
}

void readBeside(jet::Native& native, rows::Store& store, int column, const QString& select) {
    const Kind kind = store.kind(column);
    if (kind == Kind::Text) {
        const Names names = readNames(native, select);
        store.setChoices(column, names.texts);
        store.fill(column);
        for (auto found = names.places.cbegin(); found != names.places.cend(); ++found) {
            if (const int row = store.rowOf(found.key()); row >= 0)
                store.choose(column, row, found.value());
        }
        return;
    }
    store.fill(column);
    native.each(select.toUtf8(), [&](const std::vector<Cell>& cells) {
        const int row = cells[0].isNull() ? -1 : store.rowOf(cells[0].integer);
        if (row >= 0 && !cells[1].isNull())
            store.set(column, row, numberOf(cells[1]));
    });
}

} // namespace

ListReader::ListReader(const ListKind& kind, bool money) : m_kind(kind) {
    std::copy_if(kind.columns.begin(), kind.columns.end(), std::back_inserter(m_columns),
                 [money](const ListColumn& column) { return money || column.kind != Kind::Money; });
}

std::shared_ptr<const rows::Store> ListReader::read(jet::Database& database,
                                                    const std::function<void()>& goOn) const {
    return readTable(database, 0, true, goOn);
}

std::shared_ptr<const rows::Store> ListReader::readLatest(jet::Database& database,
                                                          int count) const {
    return readTable(database, count, false, {});
}

std::shared_ptr<rows::Store> ListReader::readTable(jet::Database& database, int count,
                                                   bool complete,
                                                   const std::function<void()>& goOn) const {
    jet::Native native(database);
    std::vector<Kind> kinds;
    for (const ListColumn& column : m_columns)
        kinds.push_back(column.kind);
    auto store = std::make_shared<rows::Store>(std::move(kinds));

    struct Place {
        int column;
        Kind kind;
        bool named;
        Names names;
    };
    std::vector<Place> places;
    const QByteArray key = native.quoted(m_kind.key);
    QByteArray select = "SELECT " + key;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const ListColumn& column = m_columns[i];
        if (!column.beside.isEmpty())
            continue;
        const bool expression = column.field.contains(u' ') || column.field.contains(u'(');
        select += ", " + (expression ? column.field.toUtf8() : native.quoted(column.field));
        Place& place = places.emplace_back(
            Place{static_cast<int>(i), column.kind, !column.names.isEmpty(), {}});
        if (place.named) {
            place.names = readNames(native, column.names);
            store->setChoices(place.column, place.names.texts);
        }
    }
    select += " FROM " + native.quoted(m_kind.table) + " ORDER BY " + key + " DESC";
    if (count > 0)
        select += " LIMIT " + QByteArray::number(count);

    native.each(select, [&](const std::vector<Cell>& cells) {
        store->beginRow(cells[0].integer);
        for (std::size_t i = 0; i < places.size(); ++i) {
            const Place& place = places[i];
            const Cell& cell = cells[i + 1];
            if (place.named)
                store->addChoice(place.column,
                                 cell.isNull() ? -1 : place.names.places.value(cell.integer, -1));
            else if (cell.isNull() && place.kind == Kind::YesNo)
                store->addNumber(place.column, 0);
            else if (cell.isNull())
                store->addEmpty(place.column);
            else if (place.kind == Kind::Text)
                addText(*store, place.column, cell);
            else if (place.kind == Kind::Date)
                store->addNumber(place.column, dayOf(cell));
            else
                store->addNumber(place.column, numberOf(cell));
        }
        if (goOn && store->count() % rowsBetweenLooks == 0)
            goOn();
    });
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const QString& beside = m_columns[i].beside;
        if (beside.isEmpty())
            continue;
        if (goOn)
            goOn();
        if (complete)
            readBeside(native, *store, static_cast<int>(i), beside);
        else
            store->fill(static_cast<int>(i));
    }
    return store;
}

} // namespace desk
