#include "sample/Shop.h"

#include "platform/values/Format.h"
#include "platform/values/Literals.h"
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
        m_columns += u", "_s;
        m_values += u", "_s;
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
    return add(column, yes ? u"True"_s : u"False"_s);
}

Row& Row::set(const char16_t* column, const QDate& date) {
    return add(column, u'#' + values::sqlDate(date) + u'#');
}

Row& Row::set(const char16_t* column, const QDateTime& moment) {
    return add(column, u'#' + values::format(moment, u"mm/dd/yyyy hh:nn:ss AM/PM") + u'#');
}

qint64 Row::insert(jet::Database& database) const {
    database.execute(u"INSERT INTO "_s + m_table + u" ("_s + m_columns + u") VALUES ("_s +
                     m_values + u')');
    return database.lastCounter();
}

Part madeUpPart(Random& random) {
    static const QStringList things = {
        u"Bushing"_s,       u"Bracket"_s, u"Shaft"_s,        u"Punch"_s,       u"Die insert"_s,
        u"Fixture plate"_s, u"Spacer"_s,  u"Housing"_s,      u"Flange"_s,      u"Core pin"_s,
        u"Gear blank"_s,    u"Clamp"_s,   u"Locating pin"_s, u"Cavity block"_s};
    static const QStringList makes = {
        u"hardened"_s,   u"ground"_s,    u"anodized"_s,   u"rev. B"_s,
        u"3/4\" bore"_s, u"left hand"_s, u"right hand"_s, u"per customer's print"_s};
    const QString letters =
        QString(QChar(u'A' + random.below(26))) + QChar(u'A' + random.below(26));
    return {letters + u'-' + QString::number(random.between(10, 99)) +
                QString::number(random.between(100, 999)),
            random.of(things) + u", "_s + random.of(makes)};
}

} // namespace sample
