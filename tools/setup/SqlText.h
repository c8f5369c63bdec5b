#pragma once

#include <vector>

namespace setup {

/// The subsystems' tables.sql and delivered.sql, each as one UTF-8 text of statements.
const std::vector<const char8_t*>& tableTexts();
const std::vector<const char8_t*>& deliveredTexts();

} // namespace setup
