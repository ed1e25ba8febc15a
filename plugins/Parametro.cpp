#include "Parametro.h"

#include <algorithm>

#include "corvane/TagText.h"

const char* const kNoBoard = "NO BOARD";
const char* const kNoPin = "NO PIN";

namespace {

const char kParameterOpen[] = "<PARAMETER>";
const char kParameterClose[] = "<\\PARAMETER>";
constexpr size_t kParameterOpenLength = sizeof(kParameterOpen) - 1;    // 11
constexpr size_t kParameterCloseLength = sizeof(kParameterClose) - 1;  // 12

// The position as a signed number, -1 when absent, as the reading loop compares it.
long long Position(const std::string& text, const char* what) {
    const size_t at = text.find(what);
    return at == std::string::npos ? -1 : static_cast<long long>(at);
}

Parametro ReadBlock(const std::string& block) {
    Parametro parameter;
    parameter.name = GetTagString(block, "NAME");
    const std::string typeText = GetTagString(block, "TYPE");
    parameter.choices = SplitChoices(GetTagString(block, "SEL"));
    parameter.type = ParameterTypeOf(typeText);
    const std::string defaultText = GetTagString(block, "DEFAULT");
    if (parameter.type == kParamInt)
        parameter.defaultInt = AtoI(defaultText);
    else
        parameter.defaultText = defaultText;
    return parameter;
}

const char* TypeKeywordOf(int type) {
    switch (type) {
        case kParamString:
            return "STRING";
        case kParamInt:
            return "INT";
        case kParamFile:
            return "FILE";
        case kParamChoice:
            return "CHOICE";
        case kParamPin:
        case kParamPinOut:
        case kParamPinInp:
            return "PIN";
        case kParamFolder:
            return "FOLDER";
        case kParamPassword:
            return "PASSWORD";
        default:
            return nullptr;
    }
}

std::string ValueTextOf(const Parametro& parameter, const ParameterValue& value) {
    switch (parameter.type) {
        case kParamInt:
            return std::to_string(value.number);
        case kParamChoice:
            if (value.choiceIndex < 0 ||
                static_cast<size_t>(value.choiceIndex) >= parameter.choices.size())
                return "Error";
            return parameter.choices[static_cast<size_t>(value.choiceIndex)];
        case kParamPin:
        case kParamPinOut:
        case kParamPinInp:
            return (value.board.empty() ? std::string(kNoBoard) : value.board) + ";" +
                   std::to_string(value.pin);
        default:
            return value.text;
    }
}

}  // namespace

int ParameterTypeOf(const std::string& typeText) {
    static const std::pair<const char*, int> kKeywords[] = {
        {"INT", kParamInt},          {"STRING", kParamString},  {"CHOICE", kParamChoice},
        {"PIN_OUT", kParamPinOut},   {"PIN_INP", kParamPinInp}, {"PIN", kParamPin},
        {"FILE", kParamFile},        {"FOLDER", kParamFolder},  {"HEADER", kParamHeader},
        {"PASSWORD", kParamPassword}};
    for (const auto& keyword : kKeywords)
        if (typeText.find(keyword.first) != std::string::npos)
            return keyword.second;
    return -1;
}

ParameterDescription ReadParameterDescription(const std::string& text) {
    ParameterDescription description;
    const std::string title = GetTagString(text, "TITLE");
    if (!title.empty())
        description.title = title;

    std::string rest = text;
    long long p = Position(rest, kParameterOpen);
    long long q = Position(rest, kParameterClose);
    if (p > 0)
        p += kParameterOpenLength;
    // A <PARAMETER> at position 0 of what remains ends the reading: p must be at least 1.
    while (p >= 1 && q >= 1) {
        const std::string block =
            q > p ? rest.substr(static_cast<size_t>(p), static_cast<size_t>(q - p)) : std::string();
        Parametro parameter = ReadBlock(block);
        if (parameter.type >= 0)
            description.parameters.push_back(std::move(parameter));
        const size_t consumed =
            std::min(rest.size(), static_cast<size_t>(q) + kParameterCloseLength);
        rest.erase(0, consumed);
        p = Position(rest, kParameterOpen);
        q = Position(rest, kParameterClose);
        if (p > 0)
            p += kParameterOpenLength;
    }
    return description;
}

std::string WriteValueReturn(const ArrayParametro& parameters,
                             const std::vector<ParameterValue>& values) {
    std::string text;
    TagOpen("RETURN", text);
    for (size_t i = 0; i < parameters.size(); ++i) {
        const Parametro& parameter = parameters[i];
        TagOpen("PARAMETER", text);
        TagString("NAME", parameter.name, text);
        const char* keyword = TypeKeywordOf(parameter.type);
        if (keyword != nullptr) {
            const ParameterValue value = i < values.size() ? values[i] : ParameterValue();
            TagString("TYPE", keyword, text);
            TagString("VALUE", ValueTextOf(parameter, value), text);
        }
        TagClose("PARAMETER", text);
    }
    TagClose("RETURN", text);
    return text;
}

ParameterValue DefaultValueOf(const Parametro& parameter) {
    ParameterValue value;
    value.text = parameter.defaultText;
    value.number = parameter.defaultInt;
    if (parameter.type == kParamChoice) {
        const auto it =
            std::find(parameter.choices.begin(), parameter.choices.end(), parameter.defaultText);
        value.choiceIndex = it == parameter.choices.end()
                                ? (parameter.choices.empty() ? -1 : 0)
                                : static_cast<int>(it - parameter.choices.begin());
    }
    return value;
}

ParameterValue ParsePinDefault(const std::string& defaultText,
                               const std::vector<std::string>& boardNames,
                               const std::vector<int>& pinIdsOfBoard) {
    ParameterValue value;
    const size_t semicolon = defaultText.find(';');
    if (semicolon == std::string::npos)
        return value;
    const std::string board = defaultText.substr(0, semicolon);
    if (std::find(boardNames.begin(), boardNames.end(), board) == boardNames.end())
        return value;
    value.board = board;
    const int pin = AtoI(defaultText.substr(semicolon + 1));
    if (std::find(pinIdsOfBoard.begin(), pinIdsOfBoard.end(), pin) != pinIdsOfBoard.end())
        value.pin = pin;
    return value;
}

std::string ValueTextOf(const std::vector<std::pair<std::string, std::string>>& values) {
    std::string text;
    for (const auto& [name, value] : values) {
        TagOpen("PARAMETER", text);
        TagString("NAME", name, text);
        TagString("VALUE", value, text);
        TagClose("PARAMETER", text);
    }
    return text;
}
