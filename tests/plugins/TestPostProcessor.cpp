// A post processor that takes part in the pin traffic when its settings hold <USES>1<\USES>.
#include <atomic>

#include "Journal.h"
#include "corvane/PostProcessorPlugin.h"
#include "corvane/TagText.h"

namespace {

class TestPostProcessor : public PostProcessorPlugin {
  public:
    void Open(NativeWindow, int id, std::string placeName, int, std::string, std::string,
              std::string, std::string) override {
        journal::Note("Open:" + std::to_string(id) + ":" + placeName);
    }
    void Close(std::string name, int id) override {
        journal::Note("Close:" + name + ":" + std::to_string(id));
    }
    std::string GetParameters(int) override { return "<USES>0<\\USES>"; }
    void SetParameters(std::string text) override {
        journal::Note("SetParameters:" + text);
        uses_ = GetTagInt(text, "USES");
    }
    std::string GetLibName() override { return "TestPostProcessor"; }
    std::string GetGuiName() override { return "Test Post Processor"; }
    void SetBoardStatus(std::string) override {
        journal::Note("SetBoardStatus:uses=" + std::to_string(uses_));
    }
    std::string GetBoardCommands() override {
        journal::Note("GetBoardCommands:uses=" + std::to_string(uses_));
        return std::string();
    }
    int UsesBoards() override { return uses_; }
    void NewTransit(std::string plate, std::string image, PluginDateTime, std::string gate,
                    std::string, int laneId, int) override {
        journal::Note("NewTransit:" + plate + ":" + image + ":" + gate + ":" +
                      std::to_string(laneId));
    }
    int HasDialog() override { return 0; }
    int ShowDialog(NativeWindow, std::string) override { return 0; }

  private:
    std::atomic<int> uses_{0};
};

}  // namespace

CORVANE_PLUGIN_EXPORT PostProcessorPlugin* CreateProcessorPlugin() {
    return new TestPostProcessor();
}
