#pragma once

#include "estimating/EstimateStore.h"

namespace estimating {

/// All that a job takes from an estimate on the screen.
struct EstimateForJob {
    qint64 estNo = 0;
    EstimateHeader header;
    std::vector<OperRow> operations;
    std::vector<MiscRow> fixedCosts;
};

} // namespace estimating
