#pragma once
#include <string>

#include "platform/ProcessList.h"

// The unattended runtime of the same machine: the workstation ends its processes and stops its
// service at start, and may start the service again on the way out. Outcomes are lines on the
// standard output only.
namespace LocalRuntime {

constexpr const char* kServiceName = "Corvane-Runtime";
constexpr const char* kRuntimeImage = "CORVANE-RUNTIME.EXE";
constexpr const char* kWatchdogImage = "TARVOWATCHDOG.EXE";
constexpr const char* kWizardImage = "TARVOWIZARD.EXE";

// True when a process image is the wanted one, compared in upper case; the program file of a
// Linux installation has no ".EXE" and matches without it.
bool ImageMatches(const std::string& image, const std::string& wanted);

// Each answers the number of processes ended. A runtime is a process named corvane-runtime (or
// the runtime image of older installations), or one that runs the program's own executable
// with --runtime.
int KillRuntimeProcesses(const std::string& ownExecutable = platform::OwnExecutable());
int KillWizardProcess();
int ServiceExists();
void StopService(const std::string& service);
void StartService(const std::string& service);

// The workstation's start: the service is stopped first, so that its manager does not start
// again what is ended next, then the runtime's and the wizard's processes are ended. True when
// the service exists (the close path then offers to start it again).
bool StopForWorkstation();

}  // namespace LocalRuntime
