#pragma once

namespace spelling {

/// What counts as wrong, as the user set it for this run of the program.
struct Options {
    bool canUndo = true;               ///< changes go on the undo list of the text
    bool caseSensitive = true;         ///< a name written small is wrong
    bool catchDoubleWords = false;     ///< the second of "the the" is wrong
    bool catchMixedCaseWords = false;  ///< capitals behind the first letter ("sTeel") are wrong
    bool catchWordsWithDigits = false; ///< words with letters and digits ("2nd") are looked up
    bool ignoreAllCapsWords = false;
    bool ignoreCapitalizedWords = false;
    bool ignoreDomainNames = true;   ///< "shop.example", "me@shop.example", "http://shop"
    bool ignoreNonAlphaWords = true; ///< words without a letter ("2026") are not looked up
};

/// The options of this run.
Options& options();

} // namespace spelling
