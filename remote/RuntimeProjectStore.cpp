#include "RuntimeProjectStore.h"

#include <filesystem>
#include <system_error>

#include "platform/FileSystem.h"
#include "platform/Log.h"

namespace fs = std::filesystem;

namespace {

bool Rename(const std::string& from, const std::string& to) {
    std::error_code ec;
    fs::rename(from, to, ec);
    return !ec;
}

}  // namespace

// The project a runtime ran before its first upload (its demo) becomes the previous one, its
// project file named as the runtime's, so that the first upload can be rolled back too.
void RuntimeProjectStore::KeepAsPrevious(const std::string& running) const {
    const std::string previous = PreviousFolder();
    platform::RemoveTree(previous);
    std::error_code ec;
    fs::create_directories(previous, ec);
    for (const auto& entry : fs::directory_iterator(running, ec)) {
        if (!entry.is_regular_file())
            continue;
        const std::string name = entry.path().filename().string();
        const std::string target =
            previous + "/" + (entry.path().extension() == ".tlr" ? kProjectFile : name);
        if (!platform::CopyFileWhole(entry.path().string(), target, kMaxKeptFile)) {
            CORVANE_LOG_WARNING("RuntimeProjectStore::Replace",
                                "Cannot keep the running project as the previous one");
            platform::RemoveTree(previous);
            return;
        }
    }
    platform::SyncDirectory(previous);
}

bool RuntimeProjectStore::HasProject() const {
    return platform::FileExists(CurrentProject());
}

bool RuntimeProjectStore::Replace(const std::string& staged, const std::string& running) {
    platform::MakeDirectory(root_);
    const std::string current = CurrentFolder();
    const std::string previous = PreviousFolder();
    for (const char* name : kKeptFiles)
        if (platform::FileExists(current + "/" + name) &&
            !platform::FileExists(staged + "/" + name) &&
            !platform::CopyFileWhole(current + "/" + name, staged + "/" + name, kMaxKeptFile)) {
            CORVANE_LOG_WARNING("RuntimeProjectStore::Replace",
                                std::string("Cannot copy ") + name + " into the received project");
            return false;
        }
    if (!platform::DirectoryExists(current) && !running.empty())
        KeepAsPrevious(running);
    if (platform::DirectoryExists(current)) {
        platform::RemoveTree(previous);
        if (!Rename(current, previous)) {
            CORVANE_LOG_WARNING("RuntimeProjectStore::Replace",
                                "Cannot keep the previous project in " + previous);
            return false;
        }
    }
    if (!Rename(staged, current)) {
        CORVANE_LOG_WARNING("RuntimeProjectStore::Replace",
                            "Cannot move the received project to " + current);
        Rename(previous, current);
        return false;
    }
    return true;
}

bool RuntimeProjectStore::ReplayStaged() {
    const std::string ready = IncomingFolder() + "/" + kReady;
    const std::string taken = IncomingFolder() + "/" + kTaken;
    // The ready one is the newer: it supersedes one taken and not swapped in.
    const std::string staged = platform::DirectoryExists(ready)   ? ready
                               : platform::DirectoryExists(taken) ? taken
                                                                  : std::string();
    if (staged.empty() || !platform::FileExists(staged + "/" + kProjectFile))
        return false;
    const bool replaced = Replace(staged);
    platform::RemoveTree(taken);
    return replaced;
}

bool RuntimeProjectStore::Rollback() {
    const std::string current = CurrentFolder();
    const std::string previous = PreviousFolder();
    if (!platform::DirectoryExists(previous))
        return false;
    const std::string aside = root_ + "/runtime.rollback";
    platform::RemoveTree(aside);
    if (platform::DirectoryExists(current) && !Rename(current, aside))
        return false;
    if (!Rename(previous, current)) {
        Rename(aside, current);
        return false;
    }
    if (platform::DirectoryExists(aside))
        Rename(aside, previous);
    return true;
}
