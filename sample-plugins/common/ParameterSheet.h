#pragma once
// The parameters of a reference plug-in: the description its GetParameters returns (current
// values standing as defaults) and the reading of the value text SetParameters receives.
#include <string>
#include <vector>

#include "corvane/TagText.h"

class ParameterSheet {
  public:
    explicit ParameterSheet(std::string title) : title_(std::move(title)) {}

    // type: a keyword of the description ("STRING", "INT", "CHOICE", "FILE", "FOLDER",
    // "PIN_INP", "PIN_OUT"); choices: "a;b;" for CHOICE.
    ParameterSheet& Add(const std::string& name, const std::string& type, const std::string& value,
                        const std::string& choices = std::string()) {
        entries_.push_back({name, type, value, choices});
        return *this;
    }

    std::string Description() const {
        std::string text = "<TITLE>" + title_ + "<\\TITLE>\n";
        for (const auto& entry : entries_) {
            text +=
                "<PARAMETER>\n<NAME>" + entry.name + "<\\NAME>\n<TYPE>" + entry.type + "<\\TYPE>\n";
            if (!entry.choices.empty())
                text += "<SEL>" + entry.choices + "<\\SEL>\n";
            text += "<DEFAULT>" + entry.value + "<\\DEFAULT>\n<\\PARAMETER>\n";
        }
        return text;
    }

    // The values as the settings dialog returns them: what a plug-in with its own dialog gives
    // to be stored, and reads back through Apply.
    std::string ValueReturn() const {
        std::string text = "<RETURN>\n";
        for (const auto& entry : entries_)
            text += "<PARAMETER>\n<NAME>" + entry.name + "<\\NAME>\n<TYPE>" + entry.type +
                    "<\\TYPE>\n<VALUE>" + entry.value + "<\\VALUE>\n<\\PARAMETER>\n";
        return text + "<\\RETURN>\n";
    }

    // Takes the values of a value return (one <PARAMETER> block a parameter, found by name).
    // Parameters the text does not name keep their value.
    void Apply(const std::string& valueText) {
        std::string rest = valueText;
        size_t begin = 0;
        size_t end = 0;
        while (FindTag(rest, "PARAMETER", begin, end)) {
            const std::string block = rest.substr(begin, end - begin);
            std::string value;
            if (ReadTagString(block, "VALUE", value))
                Set(GetTagString(block, "NAME"), value);
            rest.erase(0, end + std::string("<\\PARAMETER>").size());
        }
    }

    void Set(const std::string& name, const std::string& value) {
        for (auto& entry : entries_)
            if (entry.name == name)
                entry.value = value;
    }

    std::string Text(const std::string& name) const {
        for (const auto& entry : entries_)
            if (entry.name == name)
                return entry.value;
        return std::string();
    }
    int Int(const std::string& name) const { return AtoI(Text(name)); }

    // A pin value "board;pin": the board name and pin id (-1 for none).
    void Pin(const std::string& name, std::string& board, int& pin) const {
        const std::string value = Text(name);
        const size_t semicolon = value.find(';');
        board = value.substr(0, semicolon);
        pin = semicolon == std::string::npos ? -1 : AtoI(value.substr(semicolon + 1));
        if (board == "NO BOARD")
            board.clear();
    }

  private:
    struct Entry {
        std::string name;
        std::string type;
        std::string value;
        std::string choices;
    };
    std::string title_;
    std::vector<Entry> entries_;
};
