#include "platform/spelling/Speller.h"

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
    EXPECT_EQ(
        wordsOf(QStringLiteral("Mill 12A34 to 3/8\", don't 'burr' it.\r\nÄnderung x y2k")),
        QStringList({QStringLiteral("Mill"), QStringLiteral("to"), QStringLiteral("don't"),
                     QStringLiteral("burr"), QStringLiteral("it"), QStringLiteral("Änderung")}));
    EXPECT_TRUE(wordsOf(QString()).isEmpty());
}

TEST(Speller, TheUsersOwnWordsStayForTheNextRun) {
    QTemporaryDir folder;
    const QString own = folder.filePath(QStringLiteral("userdic.txt"));
    auto speller = Speller::open(own);
    ASSERT_TRUE(speller);
    const QString text = QStringLiteral("The fixtuer holds the Zornik block");
    spelling::Word wrong = speller->firstWrong(text);
    EXPECT_EQ(text.mid(wrong.start, wrong.length), QStringLiteral("fixtuer"));
    EXPECT_TRUE(
        speller->suggestions(QStringLiteral("fixtuer")).contains(QStringLiteral("fixture")));
    wrong = speller->firstWrong(text, wrong.start + wrong.length);
    EXPECT_EQ(text.mid(wrong.start, wrong.length), QStringLiteral("Zornik"));
    EXPECT_TRUE(speller->add(QStringLiteral("Zornik")));
    speller->ignore(QStringLiteral("fixtuer"));
    EXPECT_EQ(speller->firstWrong(text).length, 0);

    speller = Speller::open(own);
    EXPECT_TRUE(speller->isRight(QStringLiteral("zornik")));
    EXPECT_FALSE(speller->isRight(QStringLiteral("fixtuer")));
}

} // namespace
