#include <gtest/gtest.h>

#include "corvane/TagText.h"

TEST(TagText, WritersAppendOneElementALineWithABackslashClosingTag) {
    std::string text = "x";
    TagOpen("RETURN", text);
    TagString("NAME", "Gate 1", text);
    TagInt("VALUE", -42, text);
    TagClose("RETURN", text);
    EXPECT_EQ(text, "x<RETURN>\n<NAME>Gate 1<\\NAME>\n<VALUE>-42<\\VALUE>\n<\\RETURN>\n");
}

TEST(TagText, ReadersTakeTheFirstOpeningAndTheFirstClosingString) {
    const std::string text = "<A>one<\\A><A>two<\\A>";
    EXPECT_EQ(GetTagString(text, "A"), "one");
    // Tag names are plain substrings: <BNAME> is not <NAME>.
    EXPECT_EQ(GetTagString("<BNAME>b<\\BNAME><NAME>n<\\NAME>", "NAME"), "n");
    EXPECT_EQ(GetTagString("<X>a<b>\\c<\\X>", "X"), "a<b>\\c");
}

TEST(TagText, MissingOrMisorderedElementsReadAsEmptyAndZero) {
    EXPECT_EQ(GetTagString("<A>text", "A"), "");
    EXPECT_EQ(GetTagString("<\\A><A>5", "A"), "");
    EXPECT_EQ(GetTagInt("<\\N>3<N>4", "N"), 0);
    EXPECT_EQ(GetTagString("<NAME><\\NAME>", "NAME"), "");
    EXPECT_EQ(GetTagInt("nothing here", "N"), 0);
}

TEST(TagText, NumbersHaveAtoiSemantics) {
    EXPECT_EQ(GetTagInt("<N>12x<\\N>", "N"), 12);
    EXPECT_EQ(GetTagInt("<N>  -7<\\N>", "N"), -7);
    EXPECT_EQ(GetTagInt("<N>x12<\\N>", "N"), 0);
    EXPECT_EQ(GetTagInt("<N>99999999999<\\N>", "N"), 2147483647);
    EXPECT_EQ(GetTagInt("<N>-99999999999<\\N>", "N"), -2147483647 - 1);
}

TEST(TagText, SplitChoicesNeedsASemicolon) {
    EXPECT_TRUE(SplitChoices("one").empty());
    EXPECT_EQ(SplitChoices("one;"), std::vector<std::string>({"one"}));
    EXPECT_EQ(SplitChoices("a;b"), std::vector<std::string>({"a", "b"}));
    EXPECT_EQ(SplitChoices("a;b;"), std::vector<std::string>({"a", "b"}));
    EXPECT_EQ(SplitChoices(";;"), std::vector<std::string>({"", ""}));
    EXPECT_TRUE(SplitChoices("").empty());
}
