#include "CheckDBThread.h"

#include <mutex>

#include "TransitStore.h"
#include "core/EventSink.h"
#include "core/Project.h"

CheckDBThread::CheckDBThread(EventSink* frame, Project* project)
    : frame_(frame), project_(project) {
    SetReportName("CheckDBThread");
}

CheckDBThread::~CheckDBThread() {
    Delete();
}

const char* CheckDBThread::StatusText(int state) {
    switch (state) {
        case -1:
            return "Database Connection: database not defined";
        case 0:
            return "Database Connection: NOT CONNECTED";
        case 1:
            return "Database Connection: CONNECTED";
        default:
            return "Database Connection: checking...";
    }
}

int CheckDBThread::CheckOnce(int lastState) {
    // The address is read under the settings lock too: the project dialog may be writing it.
    std::string connectionString;
    {
        std::lock_guard<std::mutex> lock(project_->settingsmutex);
        if (!project_->place.placedbip.empty())
            connectionString = TransitStore::MonitorConnectionString(project_->place);
    }
    if (connectionString.empty()) {
        frame_->PostCommand(ID_DB_STATUS, -1, std::string());
        return -1;
    }
    TransitStore store;
    store.Connect(connectionString);
    int state = lastState;
    if (store.connected != 0 && lastState != 1) {
        frame_->PostCommand(ID_DB_STATUS, 1, std::string());
        state = 1;
    } else if (store.connected == 0 && lastState != 0) {
        state = 0;
        frame_->PostCommand(ID_DB_STATUS, 0, std::string());
    }
    store.Close();
    return state;
}

void CheckDBThread::Entry() {
    int state = 1;
    while (!TestDestroy()) {
        state = CheckOnce(state);
        for (int step = 0; step < kSteps; ++step)
            if (!Pause(state == 1 ? kConnectedStepMs : kFailedStepMs))
                return;
    }
}
