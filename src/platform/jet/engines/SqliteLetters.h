#pragma once

struct sqlite3;

namespace jet {

/// Gives a connection what its statements compare texts with where NOCASE, which knows the letters
/// of ASCII alone, isn't enough: letters_lower, letters_upper, letters_fold and letters_like(mask,
/// text), by the rules of values/Letters.h. No table, index or trigger uses them, so that the file
/// stays one that every program can write.
void addLetters(sqlite3* db);

} // namespace jet
