#pragma once

#include "platform/spelling/Options.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <set>
#include <vector>

class Hunspell;

namespace spelling {

/// A stretch of a text, in characters.
struct Word {
    int start = 0;
    int length = 0;
};

/// The words of a text: letters, with apostrophes inside. Single letters are no words, and what
/// holds a digit (part numbers, measures) or belongs to a domain name is one by the options only.
std::vector<Word> words(const QString& text, const Options& options = {});

/// Tells right words from wrong ones by the dictionary of a language and by the user's own words.
class Speller {
  public:
    /// The dictionary of the user's language, else the English one, among those installed.
    /// `ownWords` is the file of the user's own words, one a line; it is made when needed.
    /// nullptr if no dictionary is installed.
    static std::unique_ptr<Speller> open(const QString& ownWords);
    /// The dictionary of that base name ("/usr/share/hunspell/en_US").
    static std::unique_ptr<Speller> openDictionary(const QString& base, const QString& ownWords);
    ~Speller();

    bool isRight(const QString& word) const;
    QStringList suggestions(const QString& word) const;
    /// Takes a word as right for the life of the program.
    void ignore(const QString& word);
    /// Takes a word as right for good. False if the file can't be written; the word then counts
    /// for the life of the program.
    bool add(const QString& word);

    /// The first word at or behind a place that is wrong by the options; its length is 0 if there
    /// is none.
    Word firstWrong(const QString& text, int from = 0, const Options& options = {}) const;

  private:
    Speller(const QString& base, const QString& ownWords);
    bool isRight(const QString& word, const Options& options) const;
    std::string encoded(const QString& word) const;
    QString decoded(const std::string& word) const;

    std::unique_ptr<Hunspell> m_hunspell;
    bool m_utf8 = true; ///< else Latin-1
    QString m_ownWords;
    std::set<QString> m_right;
};

} // namespace spelling
