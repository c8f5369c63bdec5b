#include "platform/values/Clock.h"

namespace values {

namespace {
std::optional<QDateTime> fixedMoment;
}

QDateTime now() {
    return fixedMoment ? *fixedMoment : QDateTime::currentDateTime();
}

QDate today() {
    return now().date();
}

void setNow(std::optional<QDateTime> moment) {
    fixedMoment = std::move(moment);
}

} // namespace values
