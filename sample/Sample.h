#pragma once

#include "platform/jet/Database.h"

#include <QDate>

namespace sample {

/// How large a shop, and on which day it is today.
struct Options {
    int years = 2;
    int jobs = 400;
    QDate today; ///< invalid: the clock's
};

/// Fills a database that holds the delivered rows only with a made-up shop: masters, operations,
/// estimates, jobs with their floor hours, purchasing, inventory. Deterministic: the same options
/// give the same rows. Awkward cases are in it: late and shipped jobs, partial receipts, open
/// sign-ins, apostrophes and accents in names, gaps in the numbers.
void fill(jet::Database& database, const Options& options = {});

} // namespace sample
