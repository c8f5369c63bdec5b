#pragma once

#include <QDate>
#include <QDateTime>

#include <optional>

namespace values {

/// The moment that the program takes for now. Tests set it.
QDateTime now();
QDate today();
/// Fixes the clock for tests; std::nullopt lets it run again.
void setNow(std::optional<QDateTime> moment);

} // namespace values
