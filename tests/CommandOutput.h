#pragma once
// What a command line prints, standard output and error together: how the tests run the real
// clients (ffprobe, gst-discoverer, node).
#include <cstdio>
#include <string>

inline std::string CommandOutput(const std::string& command) {
    std::string output;
    FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
    if (pipe == nullptr)
        return output;
    char chunk[512];
    while (std::fgets(chunk, sizeof chunk, pipe) != nullptr)
        output += chunk;
    ::pclose(pipe);
    return output;
}
