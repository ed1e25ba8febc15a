#pragma once
// A program the test starts with its standard output on a pipe to the test.
#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <string>
#include <vector>

extern char** environ;

// Starts command (its first word a path) and returns its pid, or -1; output: the read end of
// its standard output, or -1. With dropErrors its standard error goes to /dev/null.
inline pid_t StartWithOutput(std::vector<std::string> command, int& output,
                             bool dropErrors = false) {
    output = -1;
    int out[2];
    if (command.empty() || ::pipe2(out, O_CLOEXEC) != 0)
        return -1;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out[1], 1);
    if (dropErrors)
        posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    std::vector<char*> argv;
    for (auto& arg : command)
        argv.push_back(arg.data());
    argv.push_back(nullptr);
    pid_t pid = -1;
    if (posix_spawn(&pid, command[0].c_str(), &actions, nullptr, argv.data(), environ) != 0)
        pid = -1;
    posix_spawn_file_actions_destroy(&actions);
    ::close(out[1]);
    if (pid < 0)
        ::close(out[0]);
    else
        output = out[0];
    return pid;
}
