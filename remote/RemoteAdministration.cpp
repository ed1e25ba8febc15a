#include "RemoteAdministration.h"

#include "core/EventSink.h"
#include "core/Project.h"
#include "core/ProjectSession.h"

void RemoteAdministration::Start(const std::string& ip, int mode) {
    project_.runtimeip = ip;
    threads_.Start(&project_, frame_, ip, mode, key_);
}

void RemoteAdministration::OnTransferEvent(int id, int mode) {
    if (id == ID_TRANSFER_FAILED) {
        if (mode == StartThread::kDownload)
            host_.ShowMessage("Cannot download project");
        else if (mode == StartThread::kUpload)
            host_.ShowMessage("Error while uploading project");
        else
            host_.ShowMessage("Reboot error");
        return;
    }
    if (id != ID_TRANSFER_DONE)
        return;
    if (mode == StartThread::kDownload) {
        host_.ShowMessage("Project correctly downloaded");
        session_.OpenDownloaded();
    } else if (mode == StartThread::kUpload) {
        if (host_.AskYesNo("Reboot remote runtime?"))
            Start(project_.runtimeip, StartThread::kReboot);
    } else {
        host_.ShowMessage("Runtime is rebooting...");
    }
}
