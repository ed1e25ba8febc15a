#include "BoardThread.h"

#include <mutex>
#include <vector>

#include "core/Project.h"
#include "corvane/IntegratorPlugin.h"
#include "corvane/PostProcessorPlugin.h"

void Project::StartBoardThread() {
    StopBoardThread();
    boardthread = std::make_unique<BoardThread>(*this);
    boardthread->Run();
}

void BoardThread::Entry() {
    while (!TestDestroy()) {
        Pass();
        Pause(kPauseMs);
    }
}

void BoardThread::Pass() {
    const std::string status = project_.GetBoardPins();
    {
        std::lock_guard<std::mutex> lock(project_.processorsmutex);
        for (auto& processor : project_.processors)
            if (processor.plugin != nullptr && processor.plugin->UsesBoards() != 0)
                processor.plugin->SetBoardStatus(status);
    }
    {
        std::lock_guard<std::mutex> lock(project_.integratorsmutex);
        for (auto& gate : project_.integrators)
            if (gate.plugin != nullptr)
                gate.plugin->SetBoardStatus(status);
    }
    {
        std::lock_guard<std::mutex> lock(project_.processorsmutex);
        for (auto& processor : project_.processors)
            if (processor.plugin != nullptr && processor.plugin->UsesBoards() != 0)
                project_.SetBoardPins(processor.plugin->GetBoardCommands());
    }
    {
        std::lock_guard<std::mutex> lock(project_.integratorsmutex);
        for (auto& gate : project_.integrators)
            if (gate.plugin != nullptr)
                project_.SetBoardPins(gate.plugin->GetBoardCommands());
    }
}
