#include "core/records/RecordNumbers.h"

#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

namespace core {

bool keepsLargeNumbers(const jet::Database& database) {
    const jet::Table* settings = database.schema().table(u"SystemSettings"_s);
    return settings && settings->column(u"LargeNumbers");
}

void checkRecordNumber(jet::Database& database, qint64 number) {
    try {
        values::cInt(static_cast<double>(number));
    } catch (const values::Overflow&) {
        if (keepsLargeNumbers(database) &&
            database.lookup(u"SELECT LargeNumbers FROM SystemSettings"_s).toBool())
            return;
        throw jet::Error(
            jet::errors::overflow,
            u"Overflow. The number %1 is above 32,767, and other programs on this database may "
            "know no such numbers. If none of them is in use, an administrator can switch on "
            "\"Allow numbers above 32,767\" in the System Preferences."_s.arg(number));
    }
}

} // namespace core
