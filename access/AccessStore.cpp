#include "AccessStore.h"

#include "core/BinaryFile.h"
#include "core/Project.h"
#include "platform/FileSystem.h"

void SetAccessDefaults(Project& project) {
    project.username = "steer";
    project.password = "gatekeep";
    project.accessmode = 1;
    project.lastactivity = 0;
    project.timeout = 1;
}

void LoadAccess(Project& project, const std::string& path) {
    std::vector<uint8_t> bytes;
    if (platform::ReadWholeFile(path, bytes, kMaxBinaryFileSize) != platform::ReadResult::Ok)
        return;
    BinaryReader reader(std::move(bytes));
    // Each read assigns only when its field was whole, so a damaged tail keeps the defaults.
    int32_t version = 0;
    const bool whole = reader.ReadInt(version) && reader.ReadString(project.username) &&
                       reader.ReadString(project.password) && reader.ReadInt(project.accessmode) &&
                       reader.ReadInt(project.timeout);
    if (!whole)
        CORVANE_LOG_WARNING("Project::LoadAccess",
                            path + " is damaged: the access data was read only in part");
}

void SaveAccess(const Project& project, const std::string& path) {
    BinaryWriter writer;
    writer.WriteInt(kAccessStoreVersion);
    writer.WriteString(project.username);
    writer.WriteString(project.password);
    writer.WriteInt(project.accessmode);
    writer.WriteInt(project.timeout);
    platform::WriteWholeFile(path, writer.Bytes());
}
