#include "ServiceManager.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "Ticks.h"

extern char** environ;

namespace platform {

namespace {

constexpr size_t kMaxOutput = 64 * 1024;

std::string TrimmedLine(std::string text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == ' '))
        text.pop_back();
    return text;
}

}  // namespace

bool RunProgram(const std::vector<std::string>& argv, std::string& output, int timeoutMs) {
    output.clear();
    if (argv.empty())
        return false;
    int pipeFds[2];
    if (::pipe2(pipeFds, O_CLOEXEC) != 0)
        return false;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeFds[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    std::vector<char*> args;
    for (const auto& argument : argv)
        args.push_back(const_cast<char*>(argument.c_str()));
    args.push_back(nullptr);
    pid_t child = 0;
    const int spawned = ::posix_spawnp(&child, args[0], &actions, nullptr, args.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pipeFds[1]);
    if (spawned != 0) {
        ::close(pipeFds[0]);
        return false;
    }
    const uint32_t started = GetTickCount();
    bool timedOut = false;
    for (;;) {
        const int left = timeoutMs - static_cast<int>(ElapsedTicks(GetTickCount(), started));
        if (left <= 0) {
            timedOut = true;
            break;
        }
        pollfd entry{pipeFds[0], POLLIN, 0};
        if (::poll(&entry, 1, left) <= 0) {
            if (errno == EINTR)
                continue;
            timedOut = true;
            break;
        }
        char buffer[4096];
        const ssize_t got = ::read(pipeFds[0], buffer, sizeof buffer);
        if (got <= 0)
            break;
        if (output.size() < kMaxOutput)
            output.append(buffer, static_cast<size_t>(got));
    }
    ::close(pipeFds[0]);
    if (timedOut)
        ::kill(child, SIGKILL);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return !timedOut && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

ServiceManager::ServiceManager() {
    const char* chosen = std::getenv("CORVANE_SYSTEMCTL");
    systemctl_ = chosen != nullptr && *chosen != '\0' ? chosen : "systemctl";
}

bool ServiceManager::Call(const std::vector<std::string>& arguments, std::string& output) const {
    std::vector<std::string> argv{systemctl_};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    return RunProgram(argv, output, kCallTimeoutMs);
}

ServiceManager::State ServiceManager::Query(const std::string& service) const {
    std::string output;
    if (!Call({"show", "--property=LoadState", "--value", service + ".service"}, output) ||
        TrimmedLine(output) != "loaded")
        return State::Missing;
    // Starting, reloading and stopping units count as running: only a unit at rest is not.
    Call({"is-active", service + ".service"}, output);
    const std::string state = TrimmedLine(output);
    return state == "inactive" || state == "failed" || state.empty() ? State::NotRunning
                                                                     : State::Running;
}

bool ServiceManager::Stop(const std::string& service) const {
    std::string output;
    return Call({"stop", "--no-block", service + ".service"}, output);
}

bool ServiceManager::Start(const std::string& service) const {
    std::string output;
    return Call({"start", service + ".service"}, output);
}

}  // namespace platform
