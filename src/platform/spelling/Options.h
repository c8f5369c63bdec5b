#pragma once

namespace spelling {

/// What counts as wrong, as the user set it for this run of the program.
struct Options {
    bool canUndo = true;               ///< each change goes on the text's undo list
    bool caseSensitive = true;         ///< a name in small letters is wrong
    bool catchDoubleWords = false;     ///< "the the"
    bool catchMixedCaseWords = false;  ///< "sTeel"
    bool catchWordsWithDigits = false; ///< "2nd": a part number is one, too
    bool ignoreAllCapsWords = false;
    bool ignoreCapitalizedWords = false;
    bool ignoreDomainNames = false;  ///< "shop.example.com", "me@shop.example"
    bool ignoreNonAlphaWords = true; ///< words that hold anything but letters and apostrophes
};

/// The options of this run.
Options& options();

} // namespace spelling
