#include "core/records/DocumentColumns.h"

#include "core/drafts/Draft.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace core {

namespace {

bool equal(const jet::Value& a, const jet::Value& b) {
    return a.isNull() == b.isNull() && a.toText() == b.toText();
}

QString shown(const DocumentColumn& column, const jet::Value& value) {
    if (value.kind() == jet::Value::Kind::Boolean)
        return value.toBool() ? u"Yes"_s : u"No"_s;
    return maskedText(value, column.numberMask);
}

} // namespace

QString ChangedElsewhere::text() const {
    const auto said = [](const QString& value) { return value.isEmpty() ? u"(empty)"_s : value; };
    return what + u" has been changed at another station since you opened this record.\r\n"_s +
           u"There: "_s + said(theirs) + u"\r\nHere: "_s + said(mine);
}

template <>
QString memberOf(const jet::Value& value) {
    return value.toText();
}

template <>
qint64 memberOf(const jet::Value& value) {
    // What a column of 32 bits can't hold is for the checks to tell, with the number as it was
    // typed.
    constexpr double most = 1e15;
    return std::llrint(std::clamp(value.toDouble(), -most, most));
}

template <>
int memberOf(const jet::Value& value) {
    return static_cast<int>(std::clamp<qint64>(memberOf<qint64>(value), INT_MIN, INT_MAX));
}

template <>
std::optional<double> memberOf(const jet::Value& value) {
    return value.isNull() ? std::nullopt : std::optional(value.toDouble());
}

template <>
double memberOf(const jet::Value& value) {
    return value.toDouble();
}

template <>
bool memberOf(const jet::Value& value) {
    return value.toBool();
}

template <>
values::Currency memberOf(const jet::Value& value) {
    return value.toCurrency();
}

template <>
std::optional<QDate> memberOf(const jet::Value& value) {
    return value.toDate();
}

QString maskedText(const jet::Value& value, const QString& mask) {
    if (mask.isEmpty())
        return value.toText();
    return value.kind() == jet::Value::Kind::Money ? values::format(value.toCurrency(), mask)
                                                   : values::format(value.toDouble(), mask);
}

jet::Value typedValue(QString typed, const QString& mask) {
    return jet::Value(mask.isEmpty() ? typed : typed.remove(u',').trimmed());
}

DocumentColumn& DocumentColumn::field(const QString& controlName, const QString& spoken) {
    control = controlName;
    words = spoken;
    return *this;
}

DocumentColumn& DocumentColumn::mask(const QString& numbers) {
    numberMask = numbers;
    return *this;
}

DocumentColumn& DocumentColumn::secured() {
    hidesMoney = true;
    return *this;
}

DocumentColumn& DocumentColumn::locked() {
    shownOnly = true;
    return *this;
}

DocumentColumn& DocumentColumn::key() {
    byKey = true;
    return *this;
}

DocumentColumn& DocumentColumn::copied(bool into) {
    carried = into;
    return *this;
}

DocumentColumn& DocumentColumn::computed() {
    reckoned = true;
    return *this;
}

const DocumentColumn& ColumnTable::column(QStringView name) const {
    const auto found =
        std::find_if(m_columns.begin(), m_columns.end(),
                     [name](const DocumentColumn& column) { return column.name == name; });
    Q_ASSERT(found != m_columns.end());
    return *found;
}

QStringList ColumnTable::names() const {
    QStringList names;
    for (const DocumentColumn& column : m_columns)
        names << column.name;
    return names;
}

std::vector<jet::Value> ColumnTable::values(const void* document) const {
    std::vector<jet::Value> values;
    for (const DocumentColumn& column : m_columns)
        values.push_back(column.get(document));
    return values;
}

void ColumnTable::load(void* document, const jet::Recordset& row) const {
    for (const DocumentColumn& column : m_columns)
        column.set(document, row[column.name]);
}

void ColumnTable::write(const void* document, jet::Recordset& row) const {
    for (const DocumentColumn& column : m_columns)
        row.set(column.name, column.get(document));
}

void ColumnTable::writeChanges(const void* document, const void* stored,
                               jet::Recordset& row) const {
    for (const DocumentColumn& column : m_columns) {
        const jet::Value now = column.get(document);
        if (!equal(now, column.get(stored)))
            row.set(column.name, now);
    }
}

bool ColumnTable::same(const void* a, const void* b) const {
    return std::all_of(m_columns.begin(), m_columns.end(), [&](const DocumentColumn& column) {
        return column.reckoned || equal(column.get(a), column.get(b));
    });
}

void ColumnTable::carry(const void* from, void* into) const {
    for (const DocumentColumn& column : m_columns) {
        if (column.carried)
            column.set(into, column.get(from));
    }
}

QJsonArray ColumnTable::pack(const void* document, const void* before, bool withMoney) const {
    QJsonArray packed;
    for (const DocumentColumn& column : m_columns) {
        const jet::Value value = column.get(document);
        const bool hidden =
            column.hidesMoney && !withMoney && (!before || equal(value, column.get(before)));
        packed.append(hidden ? QJsonValue(QJsonArray()) : packedValue(value));
    }
    return packed;
}

void ColumnTable::unpack(const QJsonArray& packed, const QStringList& columns,
                         void* document) const {
    for (const DocumentColumn& column : m_columns) {
        const qsizetype place = columns.indexOf(column.name);
        if (place >= 0 && place < packed.size() && !packed[place].isArray())
            column.set(document, unpackedValue(packed[place]));
    }
}

QStringList packedColumns(const QJsonObject& packed) {
    return packed[u"columns"_s].toVariant().toStringList();
}

std::optional<ChangedElsewhere> ColumnTable::join(const void* before, const void* theirs,
                                                  void* mine, const QStringList& settled) const {
    std::vector<const DocumentColumn*> taken;
    for (const DocumentColumn& column : m_columns) {
        const jet::Value was = column.get(before), there = column.get(theirs);
        const jet::Value here = column.get(mine);
        if (column.reckoned || equal(there, was) || equal(there, here) ||
            settled.contains(column.name))
            continue;
        if (equal(here, was)) {
            taken.push_back(&column);
            continue;
        }
        return ChangedElsewhere{column.words.isEmpty() ? column.name : column.words,
                                shown(column, there), shown(column, here), column.name,
                                column.control};
    }
    for (const DocumentColumn* column : taken)
        column->set(mine, column->get(theirs));
    return std::nullopt;
}

} // namespace core
