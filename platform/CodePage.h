#pragma once
#include <string>

namespace platform {

// The binary files hold 8-bit text in the Windows "ANSI" code page 1252, one byte a character.
// In memory all text is UTF-8. Characters without a place in the code page become '?'.
std::string Utf8ToAnsi(const std::string& utf8);
std::string AnsiToUtf8(const std::string& ansi);
bool IsValidUtf8(const std::string& text);

}  // namespace platform
