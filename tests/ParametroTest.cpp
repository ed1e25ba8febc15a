#include <gtest/gtest.h>

#include "plugins/Parametro.h"

namespace {

std::string Block(const std::string& name, const std::string& type, const std::string& extra = "") {
    return "<PARAMETER>\n<NAME>" + name + "<\\NAME>\n<TYPE>" + type + "<\\TYPE>\n" + extra +
           "<\\PARAMETER>\n";
}

}  // namespace

TEST(ParameterDescription, ReadsTitleTypesChoicesAndDefaults) {
    const std::string text =
        "<TITLE>Camera<\\TITLE>\n" + Block("Port", "INT", "<DEFAULT>554<\\DEFAULT>") +
        Block("Mode", "CHOICE", "<SEL>Day;Night;<\\SEL><DEFAULT>Night<\\DEFAULT>") +
        Block("Out", "PIN_OUT", "<DEFAULT>B1;10<\\DEFAULT>") + Block("Pw", "PASSWORD");
    const ParameterDescription description = ReadParameterDescription(text);
    EXPECT_EQ(description.title, "Camera");
    ASSERT_EQ(description.parameters.size(), 4u);
    EXPECT_EQ(description.parameters[0].type, kParamInt);
    EXPECT_EQ(description.parameters[0].defaultInt, 554);
    EXPECT_EQ(description.parameters[0].defaultText, "");
    EXPECT_EQ(description.parameters[1].type, kParamChoice);
    EXPECT_EQ(description.parameters[1].choices, std::vector<std::string>({"Day", "Night"}));
    EXPECT_EQ(description.parameters[1].defaultText, "Night");
    EXPECT_EQ(description.parameters[2].type, kParamPinOut);
    EXPECT_EQ(description.parameters[3].type, kParamPassword);
}

TEST(ParameterDescription, TypeIsFoundByContainmentInFixedOrder) {
    EXPECT_EQ(ParameterTypeOf("PRINT"), kParamInt);
    EXPECT_EQ(ParameterTypeOf("PIN_INPUT"), kParamPinInp);
    EXPECT_EQ(ParameterTypeOf("PIN_OUT"), kParamPinOut);
    EXPECT_EQ(ParameterTypeOf("PIN"), kParamPin);
    EXPECT_EQ(ParameterTypeOf("FOLDER"), kParamFolder);
    EXPECT_EQ(ParameterTypeOf("HEADER"), kParamHeader);
    EXPECT_EQ(ParameterTypeOf("BOOLEAN"), -1);
}

TEST(ParameterDescription, UnknownTypesAreSkipped) {
    const auto description =
        ReadParameterDescription("\n" + Block("A", "BOOLEAN") + Block("B", "STRING"));
    ASSERT_EQ(description.parameters.size(), 1u);
    EXPECT_EQ(description.parameters[0].name, "B");
}

TEST(ParameterDescription, AParameterAtPositionZeroEndsTheReading) {
    EXPECT_TRUE(ReadParameterDescription(Block("A", "STRING")).parameters.empty());
    // Nothing between one block's end and the next block's start: the rest is not read.
    const std::string glued =
        "\n<PARAMETER><NAME>A<\\NAME><TYPE>INT<\\TYPE><\\PARAMETER>"
        "<PARAMETER><NAME>B<\\NAME><TYPE>INT<\\TYPE><\\PARAMETER>\n";
    const auto description = ReadParameterDescription(glued);
    ASSERT_EQ(description.parameters.size(), 1u);
    EXPECT_EQ(description.parameters[0].name, "A");
}

TEST(ParameterDescription, EmptyOrMissingElementsStayEmpty) {
    const auto description = ReadParameterDescription(
        "\n<PARAMETER><NAME><\\NAME><TYPE>STRING<\\TYPE><SEL>one<\\SEL><\\PARAMETER>\n");
    ASSERT_EQ(description.parameters.size(), 1u);
    EXPECT_EQ(description.parameters[0].name, "");
    EXPECT_TRUE(description.parameters[0].choices.empty());
    EXPECT_TRUE(ReadParameterDescription("no parameters at all").parameters.empty());
}

TEST(ValueReturn, IsWrittenBlockByBlockWithTheTypeKeywordsOfTheReturn) {
    ArrayParametro parameters(6);
    parameters[0].type = kParamHeader;
    parameters[0].name = "Section";
    parameters[1].type = kParamInt;
    parameters[1].name = "Port";
    parameters[2].type = kParamChoice;
    parameters[2].name = "Mode";
    parameters[2].choices = {"Day", "Night"};
    parameters[3].type = kParamPinInp;
    parameters[3].name = "In";
    parameters[4].type = kParamPinOut;
    parameters[4].name = "Out";
    parameters[5].type = kParamChoice;
    parameters[5].name = "Bad";
    std::vector<ParameterValue> values(6);
    values[1].number = 8554;
    values[2].choiceIndex = 1;
    values[3].board = "B1";
    values[3].pin = 3;
    values[5].choiceIndex = 2;
    EXPECT_EQ(
        WriteValueReturn(parameters, values),
        "<RETURN>\n"
        "<PARAMETER>\n<NAME>Section<\\NAME>\n<\\PARAMETER>\n"
        "<PARAMETER>\n<NAME>Port<\\NAME>\n<TYPE>INT<\\TYPE>\n<VALUE>8554<\\VALUE>\n<\\PARAMETER>\n"
        "<PARAMETER>\n<NAME>Mode<\\NAME>\n<TYPE>CHOICE<\\TYPE>\n<VALUE>Night<\\VALUE>\n<"
        "\\PARAMETER>\n"
        "<PARAMETER>\n<NAME>In<\\NAME>\n<TYPE>PIN<\\TYPE>\n<VALUE>B1;3<\\VALUE>\n<\\PARAMETER>\n"
        "<PARAMETER>\n<NAME>Out<\\NAME>\n<TYPE>PIN<\\TYPE>\n<VALUE>NO "
        "BOARD;-1<\\VALUE>\n<\\PARAMETER>\n"
        "<PARAMETER>\n<NAME>Bad<\\NAME>\n<TYPE>CHOICE<\\TYPE>\n<VALUE>Error<\\VALUE>\n<\\PARAMETER>"
        "\n"
        "<\\RETURN>\n");
}

TEST(ValueReturn, PinDefaultsResolveOnlyToExistingBoardsAndPins) {
    const std::vector<std::string> boards = {"B1", "B2"};
    const std::vector<int> pins = {1, 2, 10};
    ParameterValue value = ParsePinDefault("B2;10", boards, pins);
    EXPECT_EQ(value.board, "B2");
    EXPECT_EQ(value.pin, 10);
    value = ParsePinDefault("B2;7", boards, pins);
    EXPECT_EQ(value.board, "B2");
    EXPECT_EQ(value.pin, -1);
    EXPECT_EQ(ParsePinDefault("b2;10", boards, pins).board, "");
    EXPECT_EQ(ParsePinDefault("B2", boards, pins).board, "");
}
