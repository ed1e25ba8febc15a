#pragma once
#include <string>

namespace platform {

// The binary files hold 8-bit text in a Windows "ANSI" code page, one byte a character: 1252
// (Western) unless the site sets 1250 (Central European) or 1251 (Cyrillic). In memory all
// text is UTF-8. Characters without a place in the code page become '?'.
bool IsSupportedCodePage(int codePage);
// The code page of the open project's binary files, for the whole process; an unsupported
// number sets 1252.
void SetAnsiCodePage(int codePage);
int AnsiCodePage();

std::string Utf8ToAnsi(const std::string& utf8, int codePage);
std::string AnsiToUtf8(const std::string& ansi, int codePage);
// The same in the code page of the open project.
std::string Utf8ToAnsi(const std::string& utf8);
std::string AnsiToUtf8(const std::string& ansi);
bool IsValidUtf8(const std::string& text);

}  // namespace platform
