#include "RuntimeServer.h"

#include <algorithm>
#include <cstring>

#include "ProjectBlock.h"
#include "core/EventSink.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"
#include "platform/Ticks.h"

namespace {

bool StartsLike(const std::string& buffer, const char* request) {
    const size_t length = std::min(buffer.size(), std::strlen(request));
    return buffer.compare(0, length, request, length) == 0;
}

}  // namespace

RuntimeServer::RuntimeServer(EventSink* events, std::string address, int port,
                             std::string incomingFolder)
    : events_(events),
      address_(std::move(address)),
      port_(port),
      incoming_(std::move(incomingFolder)) {
    SetReportName("RuntimeServer");
}

RuntimeServer::~RuntimeServer() {
    Delete();
}

void RuntimeServer::SetServedProject(const std::string& folder, const std::string& projectFile) {
    std::lock_guard<std::mutex> lock(mutex_);
    servedFolder_ = folder;
    servedFile_ = projectFile;
}

bool RuntimeServer::TakeIncoming(const std::string& folder, const std::string& projectFile) {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!incomingReady_)
        return false;
    platform::MakeDirectory(folder);
    for (const auto& section : ProjectBlock::kSectionTable) {
        std::string content;
        if (platform::ReadWholeFile(
                ProjectBlock::SectionPath(incoming_, section, kIncomingProjectFile), content,
                ProjectBlock::kMaxBlock) == platform::ReadResult::Ok)
            platform::WriteWholeFile(ProjectBlock::SectionPath(folder, section, projectFile),
                                     content);
    }
    incomingReady_ = false;
    return true;
}

bool RuntimeServer::MayBeRequest(const std::string& buffer) {
    return StartsLike(buffer, ProjectBlock::kDownloadRequest) ||
           StartsLike(buffer, ProjectBlock::kRebootRequest) || StartsLike(buffer, "<FILEPROJECT>");
}

void RuntimeServer::Entry() {
    platform::TcpSocket listener;
    while (!TestDestroy()) {
        if (!listener.IsOpen()) {
            listener = platform::TcpSocket::Listen(address_, port_);
            listening_ = listener.IsOpen();
            if (!listener.IsOpen()) {
                CORVANE_LOG_WARNING("RuntimeServer::Entry",
                                    "Cannot listen on TCP " + std::to_string(port_));
                Pause(kBindRetryMs);
                continue;
            }
        }
        platform::TcpSocket peer = listener.Accept(kAcceptPollMs);
        if (peer.IsOpen())
            Serve(peer);
    }
    listening_ = false;
}

void RuntimeServer::Serve(platform::TcpSocket& peer) {
    peer.SetTimeouts(ProjectBlock::kSocketTimeoutMs, ProjectBlock::kSocketTimeoutMs);
    std::string buffer;
    char piece[ProjectBlock::kReadSize];
    const uint32_t started = platform::GetTickCount();
    while (!TestDestroy() && platform::ElapsedTicks(platform::GetTickCount(), started) <
                                 static_cast<uint32_t>(ProjectBlock::kTransferMs)) {
        const size_t got = peer.Receive(piece, sizeof piece);
        if (got == 0)
            break;
        if (buffer.size() + got >= ProjectBlock::kMaxBlock) {
            CORVANE_LOG_WARNING("RuntimeServer::Serve", "Project block too large: dropped");
            return;
        }
        buffer.append(piece, got);
        if (!MayBeRequest(buffer)) {
            CORVANE_LOG_WARNING("RuntimeServer::Serve", "Unknown request: dropped");
            return;
        }
        if (buffer.find(ProjectBlock::kDownloadRequest) == 0) {
            std::string block;
            {
                std::lock_guard<std::mutex> lock(mutex_);
                block = ProjectBlock::Compose(servedFolder_, servedFile_);
            }
            peer.SendAll(block);
            return;
        }
        if (buffer.find(ProjectBlock::kRebootRequest) == 0) {
            peer.SendAll(ProjectBlock::kOk);
            events_->PostCommand(kRebootRequested, 0, std::string());
            return;
        }
        bool stored = false;
        {
            std::lock_guard<std::mutex> lock(mutex_);
            platform::MakeDirectory(incoming_);
            stored = ProjectBlock::WriteSections(buffer, incoming_, kIncomingProjectFile);
            if (stored)
                incomingReady_ = true;
        }
        if (stored) {
            peer.SendAll(ProjectBlock::kOk);
            events_->PostCommand(kProjectReceived, 0, std::string());
            return;
        }
    }
    CORVANE_LOG_WARNING("RuntimeServer::Serve", "Request incomplete: dropped");
}
