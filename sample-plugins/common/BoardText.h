#pragma once
// Reading a board status text and writing a board command text, as the reference plug-ins that
// take part in the pin traffic need it.
#include <string>

#include "corvane/TagText.h"

namespace boardtext {

// Value of pin of board in a status text; -1 when the board or the pin is not there.
inline int PinValue(const std::string& status, const std::string& board, int pin) {
    std::string rest = status;
    size_t begin = 0;
    size_t end = 0;
    while (FindTag(rest, "BOARD", begin, end)) {
        std::string block = rest.substr(begin, end - begin);
        rest.erase(0, end + std::string("<\\BOARD>").size());
        if (GetTagString(block, "NAME") != board)
            continue;
        while (FindTag(block, "PIN", begin, end)) {
            const std::string entry = block.substr(begin, end - begin);
            if (GetTagInt(entry, "ID") == pin)
                return GetTagInt(entry, "VALUE");
            block.erase(0, end + std::string("<\\PIN>").size());
        }
        return -1;
    }
    return -1;
}

// The command that sets one output pin.
inline std::string SetPinCommand(const std::string& board, int pin, int value) {
    std::string text;
    TagOpen("BOARD", text);
    TagString("NAME", board, text);
    TagInt("PINID", pin, text);
    TagInt("VALUE", value, text);
    TagClose("BOARD", text);
    return text;
}

}  // namespace boardtext
