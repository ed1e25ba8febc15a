#pragma once
#include <string>
#include <utility>
#include <vector>

// Type codes of a described plug-in parameter; the codes are not contiguous.
enum ParameterType {
    kParamString = 0,
    kParamInt = 1,
    kParamFile = 3,
    kParamChoice = 4,
    kParamPin = 5,
    kParamFolder = 6,
    kParamPinOut = 7,
    kParamPinInp = 8,
    kParamHeader = 9,
    kParamPassword = 10,
};

// One parameter of a plug-in's description.
struct Parametro {
    int type = kParamString;
    std::string name;
    std::vector<std::string> choices;
    std::string defaultText;
    int defaultInt = 0;
};

using ArrayParametro = std::vector<Parametro>;

struct ParameterDescription {
    std::string title;
    ArrayParametro parameters;
};

// Reads a description as a plug-in's GetParameters returns it. Parameters whose type names no
// known keyword are skipped.
ParameterDescription ReadParameterDescription(const std::string& text);

// Type code of a <TYPE> text by containment, first hit in the fixed keyword order; -1 for none.
int ParameterTypeOf(const std::string& typeText);

// What the operator chose for one parameter: text for text-like types, number for INT,
// choiceIndex for CHOICE, board name and pin id for the pin types.
struct ParameterValue {
    std::string text;
    int number = 0;
    int choiceIndex = -1;
    std::string board;  // empty: no board selected
    int pin = -1;       // -1: no pin selected
};

extern const char* const kNoBoard;  // "NO BOARD"
extern const char* const kNoPin;    // "NO PIN"

// The value return handed to a plug-in's SetParameters: one block per parameter, in order.
std::string WriteValueReturn(const ArrayParametro& parameters,
                             const std::vector<ParameterValue>& values);

// A value return written from name and value pairs, for settings made without a dialog (the
// demo project, tests).
std::string ValueTextOf(const std::vector<std::pair<std::string, std::string>>& values);

// Initial value of a parameter's control, from its default.
ParameterValue DefaultValueOf(const Parametro& parameter);

// Splits a pin default "board;pin". The board is kept only if it is one of boardNames; the pin
// only if the board offers it (pinIdsOfBoard for that board). Otherwise they read as none.
ParameterValue ParsePinDefault(const std::string& defaultText,
                               const std::vector<std::string>& boardNames,
                               const std::vector<int>& pinIdsOfBoard);
