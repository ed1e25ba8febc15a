#include "StartThread.h"

#include "ProjectBlock.h"
#include "core/EventSink.h"
#include "core/Project.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"
#include "platform/Sound.h"
#include "platform/Ticks.h"

StartThread::StartThread(Project* project, EventSink* frame_, std::string ip_, int mode_)
    : ip(std::move(ip_)), mode(mode_), frame(frame_), project_(project) {
    SetReportName("StartThread");
}

StartThread::~StartThread() {
    Delete();
}

void StartThread::Post(int id) {
    if (frame != nullptr)
        frame->PostCommand(id, mode, std::string());
}

void StartThread::Entry() {
    // A project that cannot travel whole is refused before anything is sent.
    std::string block;
    if (mode == kUpload) {
        std::string problem;
        block = ProjectBlock::Compose(project_->prjdir, project_->prjname + ".tlr", &problem);
        if (block.empty()) {
            CORVANE_LOG_WARNING("StartThread::Entry", "Upload refused, nothing sent: " + problem);
            Post(ID_TRANSFER_FAILED);
            return;
        }
    }
    socket = platform::TcpSocket::Connect(ip, ProjectBlock::kRuntimePort, kConnectTimeoutMs);
    if (!socket.IsOpen()) {
        platform::Beep(1500, 50);
        Post(ID_TRANSFER_FAILED);
        Pause(1000);
    } else {
        socket.SetTimeouts(ProjectBlock::kSocketTimeoutMs, ProjectBlock::kSocketTimeoutMs);
        bool done = false;
        if (mode == kDownload)
            done = Download();
        else if (mode == kUpload)
            done = SendRequest(block) && ReplyHoldsOk();
        else
            done = Reboot();
        Post(done ? ID_TRANSFER_DONE : ID_TRANSFER_FAILED);
        socket.Close();
    }
}

bool StartThread::SendRequest(const std::string& request) {
    return socket.SendAll(ProjectBlock::KeyPrefix(key) + request);
}

bool StartThread::Download() {
    if (!SendRequest(ProjectBlock::kDownloadRequest))
        return false;
    platform::MakeDirectory(kTempFolder);
    char piece[ProjectBlock::kReadSize];
    size_t got = socket.Receive(piece, sizeof piece);
    std::string buffer;
    buffer.reserve(ProjectBlock::kMaxBlock);
    const uint32_t started = platform::GetTickCount();
    while (got > 0 &&
           platform::ElapsedTicks(platform::GetTickCount(), started) <
               static_cast<uint32_t>(ProjectBlock::kTransferMs) &&
           buffer.size() + got < ProjectBlock::kMaxBlock && !TestDestroy()) {
        buffer.append(piece, got);
        if (ProjectBlock::WriteSections(buffer, kTempFolder, "default.tlr"))
            return true;
        got = socket.Receive(piece, sizeof piece);
    }
    return false;
}

bool StartThread::Reboot() {
    return SendRequest(ProjectBlock::kRebootRequest) && ReplyHoldsOk();
}

bool StartThread::ReplyHoldsOk() {
    char reply[ProjectBlock::kReadSize + 1] = {};
    const size_t got = socket.Receive(reply, ProjectBlock::kReadSize);
    return got > 0 && std::string(reply, got).find(ProjectBlock::kOk) != std::string::npos;
}

void StartThreads::Start(Project* project, EventSink* frame, const std::string& ip, int mode,
                         const std::string& key) {
    threads_.remove_if(
        [](const std::unique_ptr<StartThread>& thread) { return !thread->IsRunning(); });
    auto thread = std::make_unique<StartThread>(project, frame, ip, mode);
    thread->key = key;
    thread->Run();
    threads_.push_back(std::move(thread));
}
