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
