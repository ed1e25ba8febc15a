#include "SecretText.h"

#include <cctype>

namespace {

constexpr const char kMask[] = "****";

std::string Lower(const std::string& text) {
    std::string lower = text;
    for (char& c : lower)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lower;
}

bool HasWord(const std::string& lower, const std::string& word) {
    for (size_t at = lower.find(word); at != std::string::npos; at = lower.find(word, at + 1)) {
        const size_t end = at + word.size();
        const bool startsWord = at == 0 || !std::isalpha(static_cast<unsigned char>(lower[at - 1]));
        const bool endsWord =
            end == lower.size() || !std::isalpha(static_cast<unsigned char>(lower[end]));
        if (startsWord && endsWord)
            return true;
    }
    return false;
}

// The text between <TAG> and <\TAG> inside [from, to), as positions; false when absent.
bool FindTagValue(const std::string& text, const std::string& tag, size_t from, size_t to,
                  size_t& begin, size_t& end) {
    const std::string open = "<" + tag + ">";
    const size_t at = text.find(open, from);
    if (at == std::string::npos || at >= to)
        return false;
    begin = at + open.size();
    end = text.find("<\\" + tag + ">", begin);
    return end != std::string::npos && end <= to;
}

}  // namespace

bool IsSecretSetting(const std::string& name) {
    const std::string lower = Lower(name);
    return lower.find("password") != std::string::npos ||
           lower.find("passwd") != std::string::npos || lower.find("secret") != std::string::npos ||
           HasWord(lower, "key");
}

std::string MaskSecrets(const std::string& settingsText) {
    std::string text = settingsText;
    const std::string open = "<PARAMETER>";
    const std::string close = "<\\PARAMETER>";
    for (size_t at = text.find(open); at != std::string::npos; at = text.find(open, at + 1)) {
        size_t blockEnd = text.find(close, at);
        if (blockEnd == std::string::npos)
            blockEnd = text.size();
        size_t begin = 0;
        size_t end = 0;
        const bool named = FindTagValue(text, "NAME", at, blockEnd, begin, end);
        const bool secretName = named && IsSecretSetting(text.substr(begin, end - begin));
        const bool typed = FindTagValue(text, "TYPE", at, blockEnd, begin, end);
        const bool secretType = typed && Lower(text.substr(begin, end - begin)) == "password";
        if ((secretName || secretType) && FindTagValue(text, "VALUE", at, blockEnd, begin, end) &&
            end > begin)
            text.replace(begin, end - begin, kMask);
    }
    return text;
}
