#include "platform/spelling/Speller.h"
#include "platform/values/Literals.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

namespace {

using spelling::Speller;

QStringList wordsOf(const QString& text) {
    QStringList found;
    for (const spelling::Word& word : spelling::words(text))
        found << text.mid(word.start, word.length);
    return found;
}

TEST(Speller, PartNumbersAndMeasuresAreNoWords) {
    EXPECT_EQ(wordsOf(u"Mill 12A34 to 3/8\", don't 'burr' it.\r\nÄnderung x y2k"_s),
              QStringList({u"Mill"_s, u"to"_s, u"don't"_s, u"burr"_s, u"it"_s, u"Änderung"_s}));
    EXPECT_TRUE(wordsOf(QString()).isEmpty());
}

TEST(Speller, TheUsersOwnWordsStayForTheNextRun) {
    QTemporaryDir folder;
    const QString own = folder.filePath(u"userdic.txt"_s);
    auto speller = Speller::open(own);
    ASSERT_TRUE(speller);
    const QString text = u"The fixtuer holds the Zornik block"_s;
    spelling::Word wrong = speller->firstWrong(text);
    EXPECT_EQ(text.mid(wrong.start, wrong.length), u"fixtuer"_s);
    EXPECT_TRUE(speller->suggestions(u"fixtuer"_s).contains(u"fixture"_s));
    wrong = speller->firstWrong(text, wrong.start + wrong.length);
    EXPECT_EQ(text.mid(wrong.start, wrong.length), u"Zornik"_s);
    EXPECT_TRUE(speller->add(u"Zornik"_s));
    speller->ignore(u"fixtuer"_s);
    EXPECT_EQ(speller->firstWrong(text).length, 0);

    speller = Speller::open(own);
    EXPECT_TRUE(speller->isRight(u"zornik"_s));
    EXPECT_FALSE(speller->isRight(u"fixtuer"_s));
}

TEST(Speller, TheOptionsSayWhatIsLookedUpAndWhatIsWrong) {
    QTemporaryDir folder;
    const auto speller = Speller::open(folder.filePath(u"userdic.txt"_s));
    ASSERT_TRUE(speller);
    const auto wrong = [&](const char* text, const spelling::Options& options) {
        const QString whole = QString::fromUtf8(text);
        QStringList found;
        for (int from = 0;;) {
            const spelling::Word word = speller->firstWrong(whole, from, options);
            if (word.length == 0)
                return found.join(u' ');
            found << whole.mid(word.start, word.length);
            from = word.start + word.length;
        }
    };
    using Option = bool spelling::Options::*;
    struct Case {
        Option option;
        const char* text;
        const char* off;
        const char* on;
    };
    using spelling::Options;
    const Case cases[] = {
        {&Options::caseSensitive, "the monday shift", "", "monday"},
        {&Options::catchDoubleWords, "cut the The bar, the bar", "", "The"},
        {&Options::catchMixedCaseWords, "STEEL McDonald Bar", "", "McDonald"},
        {&Options::catchWordsWithDigits, "bar 12qqz 99", "", "12qqz"},
        {&Options::ignoreAllCapsWords, "QZXV qzxv", "QZXV qzxv", "qzxv"},
        {&Options::ignoreCapitalizedWords, "Qzxv qzxv QZXV", "Qzxv qzxv QZXV", "qzxv QZXV"},
        {&Options::ignoreDomainNames, "see qzxv.shop or me@vxzq, qzxv.", "qzxv vxzq qzxv", "qzxv"},
    };
    for (const Case& each : cases) {
        Options options;
        options.*each.option = false;
        EXPECT_EQ(wrong(each.text, options), QString::fromUtf8(each.off)) << each.text;
        options.*each.option = true;
        EXPECT_EQ(wrong(each.text, options), QString::fromUtf8(each.on)) << each.text;
    }
}

} // namespace
