#include "sample/Shop.h"

#include "platform/values/Format.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

namespace sample {

int Random::below(int limit) {
    m_state += 0x9E3779B97F4A7C15ULL;
    std::uint64_t z = m_state;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return static_cast<int>((z ^ (z >> 31)) % static_cast<std::uint64_t>(limit));
}

Row& Row::add(const char16_t* column, const QString& literal) {
    if (!m_columns.isEmpty()) {
        m_columns += QStringLiteral(", ");
        m_values += QStringLiteral(", ");
    }
    m_columns += u'[' + QString::fromUtf16(column) + u']';
    m_values += literal;
    return *this;
}

Row& Row::set(const char16_t* column, const QString& text) {
    return add(column, u'\'' + values::quoted(text) + u'\'');
}

Row& Row::set(const char16_t* column, qint64 number) {
    return add(column, QString::number(number));
}

Row& Row::set(const char16_t* column, double number) {
    return add(column, values::numberText(number));
}

Row& Row::set(const char16_t* column, values::Currency amount) {
    return add(column, amount.toText());
}

Row& Row::set(const char16_t* column, bool yes) {
    return add(column, yes ? QStringLiteral("True") : QStringLiteral("False"));
}

Row& Row::set(const char16_t* column, const QDate& date) {
    return add(column, u'#' + values::sqlDate(date) + u'#');
}

Row& Row::set(const char16_t* column, const QDateTime& moment) {
    return add(column, u'#' + values::format(moment, u"mm/dd/yyyy hh:nn:ss AM/PM") + u'#');
}

qint64 Row::insert(jet::Database& database) const {
    database.execute(QStringLiteral("INSERT INTO ") + m_table + QStringLiteral(" (") + m_columns +
                     QStringLiteral(") VALUES (") + m_values + u')');
    return database.lastCounter();
}

Part madeUpPart(Random& random) {
    static const QStringList things = {
        QStringLiteral("Bushing"),      QStringLiteral("Bracket"),
        QStringLiteral("Shaft"),        QStringLiteral("Punch"),
        QStringLiteral("Die insert"),   QStringLiteral("Fixture plate"),
        QStringLiteral("Spacer"),       QStringLiteral("Housing"),
        QStringLiteral("Flange"),       QStringLiteral("Core pin"),
        QStringLiteral("Gear blank"),   QStringLiteral("Clamp"),
        QStringLiteral("Locating pin"), QStringLiteral("Cavity block")};
    static const QStringList makes = {
        QStringLiteral("hardened"),   QStringLiteral("ground"),
        QStringLiteral("anodized"),   QStringLiteral("rev. B"),
        QStringLiteral("3/4\" bore"), QStringLiteral("left hand"),
        QStringLiteral("right hand"), QStringLiteral("per customer's print")};
    const QString letters =
        QString(QChar(u'A' + random.below(26))) + QChar(u'A' + random.below(26));
    return {letters + u'-' + QString::number(random.between(10, 99)) +
                QString::number(random.between(100, 999)),
            random.of(things) + QStringLiteral(", ") + random.of(makes)};
}

} // namespace sample
