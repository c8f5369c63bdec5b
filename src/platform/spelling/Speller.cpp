#include "platform/spelling/Speller.h"

#include "platform/values/Literals.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLocale>

#include <hunspell/hunspell.hxx>

namespace spelling {

namespace {

bool isInside(QChar character) {
    return character == QLatin1Char('\'') || character == QChar(0x2019);
}

/// Whether the stretch between blanks around a place reads as an address on a network.
bool isInDomainName(const QString& text, int place) {
    int start = place;
    while (start > 0 && !text[start - 1].isSpace())
        --start;
    int end = place;
    while (end < text.size() && !text[end].isSpace())
        ++end;
    const QStringView stretch = QStringView(text).mid(start, end - start);
    if (stretch.contains(u'@') || stretch.contains(u"://"_s))
        return true;
    for (qsizetype i = 1; i + 1 < stretch.size(); ++i) {
        if (stretch[i] == u'.' && stretch[i - 1].isLetterOrNumber() && stretch[i + 1].isLetter())
            return true;
    }
    return false;
}

QStringList dictionaryFolders() {
    QStringList folders{QCoreApplication::applicationDirPath() + u"/dictionaries"_s};
#ifndef Q_OS_WIN
    folders << u"/usr/share/hunspell"_s << u"/usr/share/myspell/dicts"_s
            << u"/usr/local/share/hunspell"_s;
#endif
    return folders;
}

} // namespace

Options& options() {
    static Options theOptions;
    return theOptions;
}

std::vector<Word> words(const QString& text, const Options& options) {
    std::vector<Word> found;
    const int end = static_cast<int>(text.size());
    for (int i = 0; i < end;) {
        if (!text[i].isLetterOrNumber()) {
            ++i;
            continue;
        }
        const int start = i;
        bool digits = false;
        bool letters = false;
        while (i < end && (text[i].isLetterOrNumber() || text[i].isMark() ||
                           (isInside(text[i]) && i + 1 < end && text[i + 1].isLetter()))) {
            digits |= text[i].isDigit();
            letters |= text[i].isLetter();
            ++i;
        }
        const bool counts =
            !letters ? !options.ignoreNonAlphaWords : !digits || options.catchWordsWithDigits;
        if (counts && i - start > 1 && !(options.ignoreDomainNames && isInDomainName(text, start)))
            found.push_back({start, i - start});
    }
    return found;
}

std::unique_ptr<Speller> Speller::open(const QString& ownWords) {
    const QStringList names{QLocale::system().name(), u"en_US"_s, u"en_GB"_s};
    for (const QString& name : names) {
        const QStringList folders = dictionaryFolders();
        for (const QString& folder : folders) {
            if (auto speller = openDictionary(folder + QLatin1Char('/') + name, ownWords))
                return speller;
        }
    }
    return nullptr;
}

std::unique_ptr<Speller> Speller::openDictionary(const QString& base, const QString& ownWords) {
    if (!QFile::exists(base + u".aff"_s) || !QFile::exists(base + u".dic"_s))
        return nullptr;
    return std::unique_ptr<Speller>(new Speller(base, ownWords));
}

Speller::Speller(const QString& base, const QString& ownWords)
    : m_hunspell(std::make_unique<Hunspell>(QFile::encodeName(base + u".aff"_s).constData(),
                                            QFile::encodeName(base + u".dic"_s).constData())),
      m_ownWords(ownWords) {
    m_utf8 = QString::fromStdString(m_hunspell->get_dict_encoding())
                 .contains(u"UTF"_s, Qt::CaseInsensitive);
    QFile own(m_ownWords);
    if (own.open(QIODevice::ReadOnly | QIODevice::Text)) {
        const auto lines = QString::fromUtf8(own.readAll()).split(QLatin1Char('\n'));
        for (const QString& line : lines) {
            if (!line.trimmed().isEmpty())
                m_right.insert(line.trimmed().toCaseFolded());
        }
    }
}

Speller::~Speller() = default;

std::string Speller::encoded(const QString& word) const {
    QString plain = word;
    plain.replace(QChar(0x2019), QLatin1Char('\''));
    const QByteArray bytes = m_utf8 ? plain.toUtf8() : plain.toLatin1();
    return bytes.toStdString();
}

QString Speller::decoded(const std::string& word) const {
    const auto size = static_cast<qsizetype>(word.size());
    return m_utf8 ? QString::fromUtf8(word.data(), size) : QString::fromLatin1(word.data(), size);
}

bool Speller::isRight(const QString& word) const {
    return m_right.count(word.toCaseFolded()) > 0 || m_hunspell->spell(encoded(word));
}

QStringList Speller::suggestions(const QString& word) const {
    QStringList result;
    for (const std::string& suggestion : m_hunspell->suggest(encoded(word)))
        result << decoded(suggestion);
    return result;
}

void Speller::ignore(const QString& word) {
    m_right.insert(word.toCaseFolded());
}

bool Speller::add(const QString& word) {
    ignore(word);
    QFile own(m_ownWords);
    return own.open(QIODevice::Append | QIODevice::Text) &&
           own.write(word.toUtf8() + '\n') == word.toUtf8().size() + 1;
}

bool Speller::isRight(const QString& word, const Options& options) const {
    const bool allCaps = word == word.toUpper();
    const bool capitalsInside = word.mid(1) != word.mid(1).toLower();
    if ((options.ignoreAllCapsWords && allCaps) ||
        (options.ignoreCapitalizedWords && word[0].isUpper() && !capitalsInside))
        return true;
    if (options.catchMixedCaseWords && !allCaps && capitalsInside)
        return m_right.count(word.toCaseFolded()) > 0;
    if (isRight(word))
        return true;
    const QString small = word.toLower();
    return !options.caseSensitive &&
           (isRight(small) || isRight(small.at(0).toUpper() + small.mid(1)) ||
            isRight(word.toUpper()));
}

Word Speller::firstWrong(const QString& text, int from, const Options& options) const {
    Word before;
    for (const Word& word : words(text, options)) {
        const QString letters = text.mid(word.start, word.length);
        const int end = before.start + before.length;
        const bool twice =
            options.catchDoubleWords && before.length > 0 &&
            text.mid(end, word.start - end).trimmed().isEmpty() &&
            letters.compare(text.mid(before.start, before.length), Qt::CaseInsensitive) == 0;
        if (word.start >= from && (twice || !isRight(letters, options)))
            return word;
        before = word;
    }
    return {};
}

} // namespace spelling
