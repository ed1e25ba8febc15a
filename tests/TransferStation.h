#pragma once
// The workstation's side of project transfer in the tests: a folder of its own as the working
// directory (where TempPrj receives downloads), its events, and one transfer thread at a time.
#include <chrono>
#include <string>
#include <utility>

#include "TestSupport.h"
#include "core/EventQueue.h"
#include "core/Project.h"
#include "platform/FileSystem.h"
#include "remote/StartThread.h"

// The first transfer result posted, or {0, -1} when none came in time.
inline std::pair<int, int> TransferResult(
    EventQueue& events, std::chrono::milliseconds limit = std::chrono::seconds(20)) {
    std::pair<int, int> result{0, -1};
    const auto end = std::chrono::steady_clock::now() + limit;
    while (result.first == 0 && std::chrono::steady_clock::now() < end)
        events.Drain(
            [&](const EventQueue::Event& event) {
                if (result.first == 0 &&
                    (event.id == ID_TRANSFER_DONE || event.id == ID_TRANSFER_FAILED))
                    result = {event.id, event.value};
            },
            std::chrono::milliseconds(50));
    return result;
}

struct Workstation {
    Workstation() : cwd(dir.Path()) {
        project.appdir = dir.Path();
        project.mainframe = &events;
    }
    // The result event and its mode; key: the runtime's shared key, if it has one.
    std::pair<int, int> Transfer(int mode, const std::string& ip = "127.0.0.1",
                                 const std::string& key = {}) {
        StartThread thread(&project, &events, ip, mode);
        thread.key = key;
        thread.Run();
        return TransferResult(events);
    }
    TempDir dir;
    platform::ScopedWorkingDirectory cwd;
    EventQueue events;
    Project project;
};
