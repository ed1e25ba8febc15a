#pragma once
// Tag text: elements <KEY>value<\KEY>, with a backslash in the closing tag. Not XML: no nesting,
// no escaping, no attributes; reading means finding the first opening and the first closing
// string. Header-only, so plug-ins use the same rules without linking anything.
#include <climits>
#include <string>
#include <vector>

// atoi semantics: leading blanks, an optional sign, the leading digits; 0 without a number.
// Values beyond the 32-bit range saturate instead of being undefined.
inline int AtoI(const std::string& text) {
    size_t pos = 0;
    while (pos < text.size() && (text[pos] == ' ' || (text[pos] >= '\t' && text[pos] <= '\r')))
        ++pos;
    bool negative = false;
    if (pos < text.size() && (text[pos] == '+' || text[pos] == '-'))
        negative = text[pos++] == '-';
    long long value = 0;
    while (pos < text.size() && text[pos] >= '0' && text[pos] <= '9') {
        value = value * 10 + (text[pos++] - '0');
        if (value > static_cast<long long>(INT_MAX) + 1)
            value = static_cast<long long>(INT_MAX) + 1;
    }
    if (negative)
        value = -value;
    if (value > INT_MAX)
        value = INT_MAX;
    return static_cast<int>(value);
}

inline void TagOpen(const std::string& tag, std::string& target) {
    target += "<" + tag + ">\n";
}

inline void TagClose(const std::string& tag, std::string& target) {
    target += "<\\" + tag + ">\n";
}

inline void TagString(const std::string& tag, const std::string& value, std::string& target) {
    target += "<" + tag + ">" + value + "<\\" + tag + ">\n";
}

inline void TagInt(const std::string& tag, int value, std::string& target) {
    TagString(tag, std::to_string(value), target);
}

// Finds the element: true when the first opening string exists and the first closing string
// stands behind it. begin and end delimit the value.
inline bool FindTag(const std::string& text, const std::string& tag, size_t& begin, size_t& end) {
    const std::string open = "<" + tag + ">";
    const std::string close = "<\\" + tag + ">";
    const size_t at = text.find(open);
    if (at == std::string::npos)
        return false;
    const size_t closing = text.find(close);
    if (closing == std::string::npos || closing < at + open.size())
        return false;
    begin = at + open.size();
    end = closing;
    return true;
}

// Sets value to the element's text and returns true when the element is present; otherwise
// leaves value as it was, so the caller keeps its own default.
inline bool ReadTagString(const std::string& text, const std::string& tag, std::string& value) {
    size_t begin = 0;
    size_t end = 0;
    if (!FindTag(text, tag, begin, end))
        return false;
    value = text.substr(begin, end - begin);
    return true;
}

inline std::string GetTagString(const std::string& text, const std::string& tag) {
    std::string value;
    ReadTagString(text, tag, value);
    return value;
}

inline int GetTagInt(const std::string& text, const std::string& tag) {
    return AtoI(GetTagString(text, tag));
}

// Entries of a <SEL> text. Every entry is ended by ';' except possibly the last, and a text
// without any ';' gives no entry at all: "a;" is one entry, "a;b" and "a;b;" are two.
inline std::vector<std::string> SplitChoices(const std::string& selection) {
    std::vector<std::string> entries;
    std::string rest = selection;
    if (rest.find(';') == std::string::npos)
        return entries;
    size_t semicolon;
    while ((semicolon = rest.find(';')) != std::string::npos) {
        entries.push_back(rest.substr(0, semicolon));
        rest = rest.substr(semicolon + 1);
    }
    if (!rest.empty())
        entries.push_back(rest);
    return entries;
}
