#include "OdbcText.h"

std::basic_string<SQLWCHAR> ToOdbcWide(const std::string& text) {
    std::basic_string<SQLWCHAR> wide;
    wide.reserve(text.size());
    for (size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        int extra = 0;
        char32_t code = lead;
        if (lead >= 0xF0) {
            extra = 3;
            code = lead & 0x07;
        } else if (lead >= 0xE0) {
            extra = 2;
            code = lead & 0x0F;
        } else if (lead >= 0xC0) {
            extra = 1;
            code = lead & 0x1F;
        } else if (lead >= 0x80) {
            code = 0xFFFD;  // a stray continuation byte
        }
        ++i;
        for (int k = 0; k < extra; ++k, ++i) {
            if (i >= text.size() || (static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) {
                code = 0xFFFD;
                break;
            }
            code = (code << 6) | (static_cast<unsigned char>(text[i]) & 0x3F);
        }
        if (code >= 0x10000) {
            code -= 0x10000;
            wide.push_back(static_cast<SQLWCHAR>(0xD800 + (code >> 10)));
            wide.push_back(static_cast<SQLWCHAR>(0xDC00 + (code & 0x3FF)));
        } else {
            wide.push_back(static_cast<SQLWCHAR>(code));
        }
    }
    return wide;
}
