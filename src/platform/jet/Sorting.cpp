#include "platform/jet/Sorting.h"

#include "platform/values/Letters.h"

#include <QSet>

#include <algorithm>
#include <bit>
#include <numeric>

namespace jet {

namespace {

bool isWide(const Cell& cell) {
    return cell.kind == Cell::Kind::Text && !values::isPlain(QByteArrayView(cell.text, cell.size));
}

bool isNumber(const std::optional<ColumnType>& type, const Cell& cell) {
    if (!type)
        return cell.kind != Cell::Kind::Text;
    return type != ColumnType::Text && type != ColumnType::Memo && type != ColumnType::DateTime;
}

/// Bytes of a number that stand to each other as the numbers do.
QByteArray numberKey(double number) {
    auto bits = std::bit_cast<quint64>(number == 0 ? 0.0 : number);
    bits = (bits >> 63) != 0 ? ~bits : bits | (Q_UINT64_C(1) << 63);
    QByteArray key(8, '\0');
    for (int i = 7; i >= 0; --i, bits >>= 8)
        key[i] = static_cast<char>(bits & 0xff);
    return key;
}

/// A row's terms as bytes that stand to each other as the rows do.
class RowKeys {
  public:
    RowKeys(const Rows& rows, const std::vector<SortTerm>& terms, int behind) : m_rows(rows) {
        for (const SortTerm& term : terms)
            m_terms.push_back(
                {term.column >= 0 ? term.column : behind++, term.type, term.descending});
    }

    bool isWide(int row) const {
        return std::any_of(m_terms.begin(), m_terms.end(), [&](const SortTerm& term) {
            return jet::isWide(m_rows.cell(row, term.column));
        });
    }

    QByteArray key(int row) const {
        QByteArray key;
        for (const SortTerm& term : m_terms) {
            const Cell cell = m_rows.cell(row, term.column);
            const qsizetype start = key.size();
            key += cell.isNull() ? '\0' : '\1';
            if (cell.isNull())
                ;
            else if (isNumber(term.type, cell))
                key += numberKey(valueOf(cell, term.type).toDouble());
            else if (cell.kind == Cell::Kind::Text)
                key += values::sortKey(QByteArrayView(cell.text, cell.size)) + '\0';
            else
                key += values::sortKey(valueOf(cell, term.type).toText().toUtf8()) + '\0';
            if (term.descending)
                for (char* at = key.data() + start; at < key.data() + key.size(); ++at)
                    *at = static_cast<char>(~*at);
        }
        return key;
    }

  private:
    const Rows& m_rows;
    std::vector<SortTerm> m_terms;
};

struct Placed {
    QByteArray key;
    int row;
    bool operator<(const Placed& other) const { return key < other.key; }
};

/// The first row from `from` on that is behind; a place near by costs few looks, so that rows which
/// take turns are as cheap as rows which stand together.
template <typename IsBehind>
std::vector<int>::const_iterator nextPlace(std::vector<int>::const_iterator from,
                                           std::vector<int>::const_iterator end,
                                           const IsBehind& isBehind) {
    std::ptrdiff_t step = 1;
    while (end - from >= step && !isBehind(from[step - 1])) {
        from += step;
        step *= 2;
    }
    return std::partition_point(from, from + std::min(step - 1, end - from),
                                [&](int row) { return !isBehind(row); });
}

} // namespace

void sortRows(Rows& rows, const std::vector<SortTerm>& terms, int behind, EngineOrder order) {
    if (terms.empty() || rows.count() < 2)
        return;
    const RowKeys keys(rows, terms, behind);
    std::vector<int> plain;
    std::vector<Placed> moved;
    for (int row = 0; row < rows.count(); ++row) {
        if (order == EngineOrder::Other || keys.isWide(row)) {
            if (moved.empty()) {
                plain.resize(static_cast<std::size_t>(row));
                std::iota(plain.begin(), plain.end(), 0);
            }
            moved.push_back({keys.key(row), row});
        } else if (!moved.empty()) {
            plain.push_back(row);
        }
    }
    if (moved.empty())
        return;
    std::stable_sort(moved.begin(), moved.end());
    std::vector<int> sorted;
    sorted.reserve(static_cast<std::size_t>(rows.count()));
    auto from = plain.cbegin();
    for (const Placed& one : moved) {
        const auto place =
            nextPlace(from, plain.cend(), [&](int row) { return one.key < keys.key(row); });
        sorted.insert(sorted.end(), from, place);
        sorted.push_back(one.row);
        from = place;
    }
    sorted.insert(sorted.end(), from, plain.cend());
    rows.pick(sorted);
}

void dropRepeated(Rows& rows, int columns) {
    QSet<QByteArray> known;
    std::vector<int> kept;
    std::vector<Cell> cells;
    for (int row = 0; row < rows.count(); ++row) {
        rows.read(row, cells);
        cells.resize(static_cast<std::size_t>(columns));
        if (std::any_of(cells.begin(), cells.end(), isWide)) {
            QByteArray all;
            for (const Cell& cell : cells) {
                all += static_cast<char>(cell.kind);
                all += cell.kind == Cell::Kind::Text
                           ? values::lowered(QString::fromUtf8(cell.text, cell.size)).toUtf8()
                           : valueOf(cell, {}).toText().toUtf8();
                all += '\0';
            }
            if (known.contains(all))
                continue;
            known.insert(all);
        }
        kept.push_back(row);
    }
    if (static_cast<int>(kept.size()) < rows.count())
        rows.pick(kept);
}

} // namespace jet
