#include "RuntimeProjectStore.h"

#include <filesystem>
#include <system_error>

#include "platform/FileSystem.h"
#include "platform/Log.h"

namespace fs = std::filesystem;

namespace {

// The files of a project folder that do not travel in a project block.
const char* const kKeptFiles[] = {"templates.xml", "countrycodes.txt"};

bool Rename(const std::string& from, const std::string& to) {
    std::error_code ec;
    fs::rename(from, to, ec);
    return !ec;
}

void RemoveTree(const std::string& folder) {
    std::error_code ec;
    fs::remove_all(folder, ec);
}

}  // namespace

bool RuntimeProjectStore::HasProject() const {
    return platform::FileExists(CurrentProject());
}

bool RuntimeProjectStore::Replace(const std::string& staged) {
    platform::MakeDirectory(root_);
    const std::string current = CurrentFolder();
    const std::string previous = PreviousFolder();
    for (const char* name : kKeptFiles)
        if (platform::FileExists(current + "/" + name) &&
            !platform::FileExists(staged + "/" + name))
            platform::CopyFileOver(current + "/" + name, staged + "/" + name);
    if (platform::DirectoryExists(current)) {
        RemoveTree(previous);
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

bool RuntimeProjectStore::Rollback() {
    const std::string current = CurrentFolder();
    const std::string previous = PreviousFolder();
    if (!platform::DirectoryExists(previous))
        return false;
    const std::string aside = root_ + "/runtime.rollback";
    RemoveTree(aside);
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
