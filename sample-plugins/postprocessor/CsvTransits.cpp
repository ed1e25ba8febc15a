// CsvTransits: the reference post processor. Appends every transit of its gate to a daily CSV
// file "<folder>/<gate>_YYYY_MM_DD.csv".
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <mutex>

#include "ParameterSheet.h"
#include "corvane/PostProcessorPlugin.h"

namespace {

constexpr const char* kHeader = "TIME;PLATE;GATE;PLACE;LANE_ID;PLACE_ID;IMAGE\n";

bool Append(const std::string& path, const std::string& line) {
    // The header goes in with the exclusive creation, so two writers never both write it.
    int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    std::string text = line;
    if (fd >= 0)
        text = kHeader + line;
    else
        fd = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool written = ::write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    ::close(fd);
    return written;
}

class CsvTransits : public PostProcessorPlugin {
  public:
    CsvTransits() : sheet_("CSV Transits") {
        sheet_.Add("Folder", "FOLDER", "Transits")
            .Add("Transit Direction", "STRING", "")
            .Add("Check Whitelist", "STRING", "")
            .Add("Check Blacklist", "STRING", "");
    }
    void Open(NativeWindow, int, std::string, int, std::string, std::string, std::string,
              std::string) override {}
    void Close(std::string, int) override {}
    std::string GetParameters(int) override { return sheet_.Description(); }
    void SetParameters(std::string text) override { sheet_.Apply(text); }
    std::string GetLibName() override { return "CsvTransits"; }
    std::string GetGuiName() override { return "CSV Transits"; }
    void SetBoardStatus(std::string) override {}
    std::string GetBoardCommands() override { return std::string(); }
    int UsesBoards() override { return 0; }
    void NewTransit(std::string plate, std::string image, PluginDateTime time, std::string gate,
                    std::string place, int laneId, int placeId) override {
        const std::string folder = sheet_.Text("Folder");
        ::mkdir(folder.c_str(), 0755);
        char date[32];
        std::snprintf(date, sizeof date, "_%04d_%02d_%02d.csv", time.year, time.month, time.day);
        char stamp[48];
        std::snprintf(stamp, sizeof stamp, "%02d-%02d-%04d %02d:%02d:%02d", time.day, time.month,
                      time.year, time.hour, time.minute, time.second);
        Append(folder + "/" + gate + date, std::string(stamp) + ";" + plate + ";" + gate + ";" +
                                               place + ";" + std::to_string(laneId) + ";" +
                                               std::to_string(placeId) + ";" + image + "\n");
    }
    int HasDialog() override { return 0; }
    int ShowDialog(NativeWindow, std::string) override { return 0; }

  private:
    ParameterSheet sheet_;
};

}  // namespace

CORVANE_PLUGIN_EXPORT PostProcessorPlugin* CreateProcessorPlugin() {
    return new CsvTransits();
}
