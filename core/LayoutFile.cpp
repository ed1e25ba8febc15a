#include "LayoutFile.h"

#include "BinaryFile.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"

bool SaveLayout(const std::string& path, const WindowLayout& layout) {
    BinaryWriter writer;
    writer.WriteInt(layout.x);
    writer.WriteInt(layout.y);
    writer.WriteInt(layout.width);
    writer.WriteInt(layout.height);
    writer.WriteString(layout.perspective);
    return platform::WriteWholeFile(path, writer.Bytes());
}

std::optional<WindowLayout> LoadLayout(const std::string& path) {
    std::vector<uint8_t> bytes;
    if (platform::ReadWholeFile(path, bytes, kMaxBinaryFileSize) != platform::ReadResult::Ok)
        return std::nullopt;
    BinaryReader reader(std::move(bytes));
    WindowLayout layout;
    if (!reader.ReadInt(layout.x) || !reader.ReadInt(layout.y) || !reader.ReadInt(layout.width) ||
        !reader.ReadInt(layout.height)) {
        CORVANE_LOG_WARNING("MyFrame::LoadPerspective", path + " is damaged: layout not restored");
        return std::nullopt;
    }
    if (!reader.ReadString(layout.perspective)) {
        CORVANE_LOG_WARNING("MyFrame::LoadPerspective",
                            path + " is damaged: the pane arrangement was not restored");
        layout.perspective.clear();
    }
    if (layout.width < 100) {
        layout.width = 400;
        layout.x = 0;
    }
    if (layout.height < 100) {
        layout.height = 300;
        layout.y = 0;
    }
    return layout;
}
