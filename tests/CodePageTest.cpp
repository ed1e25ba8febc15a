#include <gtest/gtest.h>

#include "platform/CodePage.h"

TEST(CodePage, EveryByteSurvivesARoundTripThroughUtf8) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    const std::string utf8 = platform::AnsiToUtf8(all);
    EXPECT_TRUE(platform::IsValidUtf8(utf8));
    EXPECT_EQ(platform::Utf8ToAnsi(utf8), all);
}

TEST(CodePage, WesternLettersAndTheEuroSignTakeOneByte) {
    EXPECT_EQ(platform::Utf8ToAnsi("Citt\xC3\xA0 \xE2\x82\xAC"), "Citt\xE0 \x80");
    EXPECT_EQ(platform::AnsiToUtf8("Citt\xE0 \x80"), "Citt\xC3\xA0 \xE2\x82\xAC");
}

TEST(CodePage, CharactersOutsideTheCodePageBecomeQuestionMarks) {
    // Polish L with stroke and a CJK character have no place in the 8-bit files.
    EXPECT_EQ(platform::Utf8ToAnsi("\xC5\x81\xC3\xB3"
                                   "d\xC5\xBA \xE4\xB8\xAD"),
              "?\xF3"
              "d? ?");
}

TEST(CodePage, MalformedUtf8LosesNoByte) {
    const std::string broken = "a\xC3";  // a lead byte without its follower
    EXPECT_FALSE(platform::IsValidUtf8(broken));
    EXPECT_EQ(platform::Utf8ToAnsi(broken), "a\xC3");
}

TEST(CodePage, CentralEuropeanAndCyrillicSitesKeepTheirLetters) {
    // "Łódź" in 1250 and "Москва" in 1251, each one byte a letter.
    EXPECT_EQ(platform::Utf8ToAnsi("\xC5\x81\xC3\xB3"
                                   "d\xC5\xBA",
                                   1250),
              "\xA3\xF3\x64\x9F");
    EXPECT_EQ(platform::AnsiToUtf8("\xA3\xF3\x64\x9F", 1250),
              "\xC5\x81\xC3\xB3"
              "d\xC5\xBA");
    const std::string moscow = "\xD0\x9C\xD0\xBE\xD1\x81\xD0\xBA\xD0\xB2\xD0\xB0";
    EXPECT_EQ(platform::Utf8ToAnsi(moscow, 1251), "\xCC\xEE\xF1\xEA\xE2\xE0");
    EXPECT_EQ(platform::AnsiToUtf8("\xCC\xEE\xF1\xEA\xE2\xE0", 1251), moscow);
    // The same bytes read in another page give other letters: the page is the site's.
    EXPECT_NE(platform::AnsiToUtf8("\xCC\xEE\xF1\xEA\xE2\xE0", 1252), moscow);
    // Every byte of every page survives a round trip, unassigned ones included.
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    for (int page : {1250, 1251, 1252})
        EXPECT_EQ(platform::Utf8ToAnsi(platform::AnsiToUtf8(all, page), page), all) << page;
    // Malformed UTF-8 loses no byte in any page.
    EXPECT_EQ(platform::Utf8ToAnsi("a\xC3", 1251), "a\xC3");
}

TEST(CodePage, OnlyTheThreeSitePagesAreTaken) {
    EXPECT_TRUE(platform::IsSupportedCodePage(1250));
    EXPECT_TRUE(platform::IsSupportedCodePage(1251));
    EXPECT_TRUE(platform::IsSupportedCodePage(1252));
    EXPECT_FALSE(platform::IsSupportedCodePage(65001));
    // Another number converts as the Western page.
    EXPECT_EQ(platform::AnsiToUtf8("Citt\xE0", 437), platform::AnsiToUtf8("Citt\xE0", 1252));
}
