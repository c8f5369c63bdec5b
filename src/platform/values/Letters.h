#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QStringView>

/// How texts are compared, searched and sorted, everywhere and on every engine: without regard to
/// the case of any letter, accents being letters of their own; sorted by what a letter is without
/// its accents, so that Österreich stands with O.
namespace values {

/// Each letter small, one for one; no letter beyond ASCII becomes one of ASCII.
QString lowered(QStringView text);
/// Each letter a capital, one for one.
QString uppered(QStringView text);
/// What texts are sorted by: small letters without their accents, ß as ss.
QString folded(QStringView text);

/// Whether two texts are the same: Müller is MÜLLER, but not Muller.
bool sameText(QStringView a, QStringView b);
/// Less than 0, 0 (only for sameText) or greater: the order of lists. By folded(), then lowered(),
/// both by code points.
int compareText(QStringView a, QStringView b);
inline bool textLess(QStringView a, QStringView b) {
    return compareText(a, b) < 0;
}
/// Where `part` stands in a text from a place on, in any case; -1 for nowhere.
qsizetype indexOfText(QStringView text, QStringView part, qsizetype from = 0);
inline bool containsText(QStringView text, QStringView part) {
    return indexOfText(text, part) >= 0;
}
bool startsWithText(QStringView text, QStringView start);
/// Where a list has a text, in any case; -1 for nowhere.
qsizetype indexOfText(const QStringList& list, QStringView text);

/// Whether a UTF-8 text is of ASCII alone.
bool isPlain(QByteArrayView utf8);
/// Bytes that stand to each other as compareText says of their texts.
QByteArray sortKey(QByteArrayView utf8);

/// How many spellings beside ASCII's a text has that are the same.
enum class Spellings { One, Few, Many };
Spellings spellingsOf(QStringView text);
/// Those of a text with few: each letter beyond ASCII in each of its cases.
QStringList spellings(QStringView text);

/// folded() of small letters as data, for engines that have to do it themselves.
struct FoldedLetters {
    QString from, to; ///< letter by letter; letters of `from` beyond the end of `to` go
    QList<std::pair<QString, QString>> longer; ///< that become two letters
};
const FoldedLetters& foldedLetters();

} // namespace values
