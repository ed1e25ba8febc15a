#pragma once
#include <string>

namespace platform {

// The binary files hold 8-bit text in a Windows "ANSI" code page, one byte a character: 1252
// (Western) unless the site sets 1250 (Central European) or 1251 (Cyrillic): each reader and
// writer of a project's files carries the project's page. In memory all text is UTF-8.
// Characters without a place in the code page become '?'.
constexpr int kWesternCodePage = 1252;
bool IsSupportedCodePage(int codePage);

// An unsupported code page converts as the Western one.
std::string Utf8ToAnsi(const std::string& utf8, int codePage = kWesternCodePage);
std::string AnsiToUtf8(const std::string& ansi, int codePage = kWesternCodePage);
bool IsValidUtf8(const std::string& text);

}  // namespace platform
