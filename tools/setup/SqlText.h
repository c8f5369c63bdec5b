#pragma once

#include <vector>

namespace setup {

/// The subsystems' tables.sql, delivered.sql and server.sql, each as one UTF-8 text of statements.
const std::vector<const char8_t*>& tableTexts();
const std::vector<const char8_t*>& deliveredTexts();
const std::vector<const char8_t*>& serverTexts();

} // namespace setup
