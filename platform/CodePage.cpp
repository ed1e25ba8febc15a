#include "CodePage.h"

#include <array>
#include <cstdint>

namespace platform {
namespace {

// Code points of bytes 0x80..0x9F; the five unassigned bytes map to the C1 control of the same
// number, as the Windows conversion does, so every byte survives a round trip.
constexpr std::array<char32_t, 32> kHighControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char32_t ByteToCodePoint(unsigned char byte) {
    if (byte >= 0x80 && byte < 0xA0)
        return kHighControls[byte - 0x80];
    return byte;
}

int CodePointToByte(char32_t cp) {
    if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF))
        return static_cast<int>(cp);
    for (size_t i = 0; i < kHighControls.size(); ++i)
        if (kHighControls[i] == cp)
            return static_cast<int>(0x80 + i);
    return -1;
}

void AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

// Decodes one UTF-8 sequence at text[pos]; a malformed byte decodes as itself (as Latin-1)
// so that no input is ever dropped.
char32_t DecodeUtf8(const std::string& text, size_t& pos) {
    const auto lead = static_cast<unsigned char>(text[pos]);
    int extra = 0;
    char32_t cp = lead;
    if (lead >= 0xF0 && lead < 0xF8) {
        extra = 3;
        cp = lead & 0x07;
    } else if (lead >= 0xE0) {
        extra = 2;
        cp = lead & 0x0F;
    } else if (lead >= 0xC0) {
        extra = 1;
        cp = lead & 0x1F;
    } else {
        ++pos;
        return lead;
    }
    if (pos + extra >= text.size()) {
        ++pos;
        return lead;
    }
    for (int i = 1; i <= extra; ++i) {
        const auto next = static_cast<unsigned char>(text[pos + i]);
        if ((next & 0xC0) != 0x80) {
            ++pos;
            return lead;
        }
        cp = (cp << 6) | (next & 0x3F);
    }
    pos += extra + 1;
    return cp;
}

}  // namespace

std::string Utf8ToAnsi(const std::string& utf8) {
    std::string out;
    out.reserve(utf8.size());
    size_t pos = 0;
    while (pos < utf8.size()) {
        const int byte = CodePointToByte(DecodeUtf8(utf8, pos));
        out += byte < 0 ? '?' : static_cast<char>(byte);
    }
    return out;
}

std::string AnsiToUtf8(const std::string& ansi) {
    std::string out;
    out.reserve(ansi.size() + ansi.size() / 4);
    for (unsigned char byte : ansi)
        AppendUtf8(out, ByteToCodePoint(byte));
    return out;
}

bool IsValidUtf8(const std::string& text) {
    size_t i = 0;
    while (i < text.size()) {
        const auto lead = static_cast<unsigned char>(text[i]);
        size_t extra = 0;
        if (lead < 0x80)
            extra = 0;
        else if (lead >= 0xC2 && lead < 0xE0)
            extra = 1;
        else if (lead >= 0xE0 && lead < 0xF0)
            extra = 2;
        else if (lead >= 0xF0 && lead < 0xF5)
            extra = 3;
        else
            return false;
        if (extra >= text.size() - i)
            return false;
        for (size_t k = 1; k <= extra; ++k)
            if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80)
                return false;
        i += extra + 1;
    }
    return true;
}

}  // namespace platform
