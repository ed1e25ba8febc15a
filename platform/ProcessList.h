#pragma once
#include <sys/types.h>

#include <string>
#include <vector>

namespace platform {

struct ProcessEntry {
    pid_t pid = 0;
    std::string image;  // the program's file name, without folders
};

// Every process of the machine that can be seen, from /proc: the image is the file name of
// the first command-line word, or the kernel's short name when there is none.
std::vector<ProcessEntry> ListProcesses();

// Ends a process at once (the process cannot catch it). False when it cannot be signalled.
bool TerminateProcess(pid_t pid);

}  // namespace platform
