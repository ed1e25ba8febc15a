#pragma once
#include <string>
#include <vector>

namespace platform {

// The machine's service manager, reached through systemctl. Every call is bounded in time: a
// manager that does not answer counts as a failed call.
class ServiceManager {
  public:
    // Running: any state but inactive or failed (activating, reloading, deactivating too).
    enum class State { Missing, Running, NotRunning };

    // systemctl from the path, or the program named by CORVANE_SYSTEMCTL.
    ServiceManager();
    explicit ServiceManager(std::string systemctl) : systemctl_(std::move(systemctl)) {}

    static constexpr int kCallTimeoutMs = 15000;

    State Query(const std::string& service) const;
    // Sends the stop without waiting for the service to reach the stopped state.
    bool Stop(const std::string& service) const;
    bool Start(const std::string& service) const;

  private:
    bool Call(const std::vector<std::string>& arguments, std::string& output) const;

    std::string systemctl_;
};

// Runs a program with arguments (no shell), collecting its standard output; kills it when it
// runs longer than timeoutMs. True when it ended by itself with exit code 0.
bool RunProgram(const std::vector<std::string>& argv, std::string& output, int timeoutMs);

}  // namespace platform
