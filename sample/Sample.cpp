#include "sample/Sample.h"

#include "core/journal/JournalTriggers.h"
#include "platform/values/Clock.h"
#include "sample/Shop.h"

namespace sample {

void fill(jet::Database& database, const Options& options) {
    // Before the shift's start the day's sign-ins would lie in the future.
    const QDate today =
        options.today.isValid() ? options.today : values::now().addSecs(-7 * 3600 - 900).date();
    Shop shop{database,
              options,
              today,
              today.addYears(-options.years),
              Random(20260101),
              {},
              {},
              {},
              {},
              {},
              {},
              {},
              {},
              {},
              {},
              {}};
    jet::Transaction transaction(database);
    core::removeJournal(database); // rows that nobody entered are no changes
    makeCatalogue(shop);
    makeMasters(shop);
    makeWork(shop);
    makePurchasing(shop);
    makeInventory(shop);
    makeSent(shop);
    makeUsers(shop);
    core::installJournal(database);
    transaction.commit();
}

} // namespace sample
