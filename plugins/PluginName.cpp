#include "PluginManager.h"

bool IsBareLibraryName(const std::string& name) {
    if (name.empty() || name.size() > kMaxLibraryName || name.front() == '.' ||
        name.find("..") != std::string::npos)
        return false;
    return std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               c == '_' || c == '-' || c == '.';
    });
}
