#include "LocalRuntime.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <initializer_list>

#include "platform/ProcessList.h"
#include "platform/ServiceManager.h"

namespace LocalRuntime {

namespace {

std::string Upper(std::string text) {
    for (char& c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

int KillImages(std::initializer_list<const char*> wanted) {
    int ended = 0;
    for (const auto& process : platform::ListProcesses()) {
        if (process.pid == ::getpid())
            continue;
        for (const char* image : wanted)
            if (ImageMatches(process.image, image) && platform::TerminateProcess(process.pid)) {
                ++ended;
                break;
            }
    }
    return ended;
}

}  // namespace

bool ImageMatches(const std::string& image, const std::string& wanted) {
    const std::string upper = Upper(image);
    return upper == wanted || upper + ".EXE" == wanted;
}

int KillRuntimeProcesses(const std::string& ownExecutable) {
    int ended = KillImages({kRuntimeImage, kWatchdogImage});
    if (ownExecutable.empty())
        return ended;
    for (const auto& process : platform::ListProcesses()) {
        const auto& args = process.arguments;
        if (process.pid != ::getpid() && process.executable == ownExecutable &&
            std::find(args.begin(), args.end(), "--runtime") != args.end() &&
            platform::TerminateProcess(process.pid))
            ++ended;
    }
    return ended;
}

int KillWizardProcess() {
    return KillImages({kWizardImage});
}

int ServiceExists() {
    const platform::ServiceManager manager;
    if (manager.Query(kServiceName) == platform::ServiceManager::State::Missing) {
        std::printf("il servizio %s non esiste\n", kServiceName);
        return 0;
    }
    std::printf("Trovato il servizio %s\n", kServiceName);
    return 1;
}

void StopService(const std::string& service) {
    const platform::ServiceManager manager;
    if (manager.Query(service) != platform::ServiceManager::State::Running) {
        std::printf("Service not running.\n");
        return;
    }
    std::printf(manager.Stop(service) ? "Service stopped.\n" : "Service failed to stop.\n");
}

void StartService(const std::string& service) {
    const platform::ServiceManager manager;
    if (manager.Query(service) == platform::ServiceManager::State::Running) {
        std::printf("Service already running.\n");
        return;
    }
    std::printf(manager.Start(service) ? "Service started.\n" : "Service failed to start.\n");
}

bool StopForWorkstation() {
    const bool exists = ServiceExists() == 1;
    if (exists)
        StopService(kServiceName);
    KillRuntimeProcesses();
    KillWizardProcess();
    return exists;
}

}  // namespace LocalRuntime
