#pragma once
#include <sys/types.h>

#include <string>
#include <vector>

namespace platform {

struct ProcessEntry {
    pid_t pid = 0;
    std::string image;                   // the program's file name, without folders
    std::string executable;              // the file it runs, absolute; empty when not readable
    std::vector<std::string> arguments;  // the command-line words after the first (bounded)
};

// The file this process runs, absolute.
std::string OwnExecutable();

// Every process of the machine that can be seen, from /proc: the image is the file name of
// the first command-line word, or the kernel's short name when there is none.
std::vector<ProcessEntry> ListProcesses();

// Ends a process at once (the process cannot catch it). False when it cannot be signalled.
bool TerminateProcess(pid_t pid);

}  // namespace platform
