#include "ProcessList.h"

#include <dirent.h>
#include <signal.h>

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>

namespace platform {

namespace {

std::string ReadSmallFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::string text;
    char buffer[4096];
    in.read(buffer, sizeof buffer);  // bounded: only the start is of interest
    text.assign(buffer, static_cast<size_t>(in.gcount()));
    return text;
}

std::string ImageOf(const std::string& procEntry) {
    std::string commandLine = ReadSmallFile(procEntry + "/cmdline");
    std::string first = commandLine.substr(0, commandLine.find('\0'));
    if (first.empty()) {
        first = ReadSmallFile(procEntry + "/comm");
        while (!first.empty() && (first.back() == '\n' || first.back() == '\0'))
            first.pop_back();
        return first;
    }
    const size_t slash = first.rfind('/');
    return slash == std::string::npos ? first : first.substr(slash + 1);
}

}  // namespace

std::vector<ProcessEntry> ListProcesses() {
    std::vector<ProcessEntry> processes;
    DIR* proc = ::opendir("/proc");
    if (proc == nullptr)
        return processes;
    while (const dirent* entry = ::readdir(proc)) {
        const std::string name = entry->d_name;
        if (name.empty() || !std::all_of(name.begin(), name.end(),
                                         [](unsigned char c) { return std::isdigit(c) != 0; }))
            continue;
        ProcessEntry process;
        process.pid = static_cast<pid_t>(std::stol(name));
        process.image = ImageOf("/proc/" + name);
        if (!process.image.empty())
            processes.push_back(std::move(process));
    }
    ::closedir(proc);
    return processes;
}

bool TerminateProcess(pid_t pid) {
    return pid > 0 && ::kill(pid, SIGKILL) == 0;
}

}  // namespace platform
