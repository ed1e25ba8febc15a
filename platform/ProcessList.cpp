#include "ProcessList.h"

#include <dirent.h>
#include <signal.h>
#include <unistd.h>

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

std::string LinkTarget(const std::string& path) {
    char target[4096];
    const ssize_t size = ::readlink(path.c_str(), target, sizeof target - 1);
    return size > 0 ? std::string(target, static_cast<size_t>(size)) : std::string();
}

std::vector<std::string> ArgumentsOf(const std::string& procEntry) {
    const std::string commandLine = ReadSmallFile(procEntry + "/cmdline");
    std::vector<std::string> words;
    size_t start = commandLine.find('\0');
    while (start != std::string::npos && start + 1 < commandLine.size()) {
        const size_t end = commandLine.find('\0', start + 1);
        words.push_back(commandLine.substr(start + 1, end - start - 1));
        start = end;
    }
    return words;
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
        process.executable = LinkTarget("/proc/" + name + "/exe");
        process.arguments = ArgumentsOf("/proc/" + name);
        if (!process.image.empty())
            processes.push_back(std::move(process));
    }
    ::closedir(proc);
    return processes;
}

std::string OwnExecutable() {
    return LinkTarget("/proc/self/exe");
}

bool TerminateProcess(pid_t pid) {
    return pid > 0 && ::kill(pid, SIGKILL) == 0;
}

}  // namespace platform
