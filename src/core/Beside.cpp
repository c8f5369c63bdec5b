#include "core/Beside.h"

#include <algorithm>
#include <vector>

namespace core {

namespace {

std::vector<Beside>& all() {
    static std::vector<Beside> known;
    return known;
}

} // namespace

void addBeside(Beside beside) {
    all().push_back(std::move(beside));
}

void endBeside() {
    std::for_each(all().rbegin(), all().rend(), [](const Beside& beside) { beside.end(); });
}

void beginBeside() {
    for (const Beside& beside : all())
        if (beside.begin)
            beside.begin();
}

} // namespace core
