#pragma once

// How the program was started, from its first argument only, compared exactly:
// "-dbg" or "-DBG" opens a console (1), "-nopwd" opens one and skips the login (2), else 0.
enum StartMode { kStartNormal = 0, kStartConsole = 1, kStartNoPassword = 2 };

inline StartMode ParseStartMode(int argc, const char* const* argv) {
    if (argc < 2 || argv[1] == nullptr)
        return kStartNormal;
    const char* first = argv[1];
    auto equals = [first](const char* what) {
        const char* a = first;
        const char* b = what;
        while (*a != '\0' && *a == *b) {
            ++a;
            ++b;
        }
        return *a == *b;
    };
    if (equals("-dbg") || equals("-DBG"))
        return kStartConsole;
    if (equals("-nopwd"))
        return kStartNoPassword;
    return kStartNormal;
}
