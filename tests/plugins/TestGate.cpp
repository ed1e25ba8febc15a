// A gate that copies one board input to one board output through the pin traffic:
// settings <BOARD>name<\BOARD><FROM>pin<\FROM><TO>pin<\TO>.
#include <mutex>

#include "BoardText.h"
#include "Journal.h"
#include "corvane/IntegratorPlugin.h"
#include "corvane/TagText.h"

namespace {

class TestGate : public IntegratorPlugin {
  public:
    void Open(NativeWindow, int id, std::string placeName, int placeId, std::string dbAddress,
              std::string, std::string, std::string) override {
        journal::Note("Open:" + std::to_string(id) + ":" + placeName + ":" +
                      std::to_string(placeId) + ":" + dbAddress);
    }
    void Close(std::string name, int id) override {
        journal::Note("Close:" + name + ":" + std::to_string(id));
    }
    std::string GetParameters(int) override { return settings_; }
    void SetParameters(std::string text) override {
        journal::Note("SetParameters:" + text);
        std::lock_guard<std::mutex> lock(mutex_);
        settings_ = text;
        board_ = GetTagString(text, "BOARD");
        from_ = GetTagInt(text, "FROM");
        to_ = GetTagInt(text, "TO");
    }
    std::string GetLibName() override { return "TestGate"; }
    std::string GetGuiName() override { return "Test Gate"; }
    void SetBoardStatus(std::string status) override {
        std::lock_guard<std::mutex> lock(mutex_);
        value_ = boardtext::PinValue(status, board_, from_);
    }
    std::string GetBoardCommands() override {
        std::lock_guard<std::mutex> lock(mutex_);
        if (value_ < 0)
            return std::string();
        return boardtext::SetPinCommand(board_, to_, value_);
    }
    void NewFrame(void* pixels, int width, int height, int depth, PluginDateTime, std::string lane,
                  std::string place) override {
        journal::Note("NewFrame:" + std::to_string(width) + "x" + std::to_string(height) + ":" +
                      std::to_string(depth) + ":" + lane + ":" + place +
                      (pixels != nullptr ? "" : ":null"));
    }
    // Answers a reading with a transit line, an empty frame with the script's "empty" line.
    std::string NewResult(std::string plate, PluginRect box, int charHeight, int reserved,
                          int confidence, std::string tags) override {
        journal::Note("NewResult:" + plate + ":" + std::to_string(box.x) + "," +
                      std::to_string(box.y) + "," + std::to_string(box.width) + "," +
                      std::to_string(box.height) + ":" + std::to_string(charHeight) + ":" +
                      std::to_string(reserved) + ":" + std::to_string(confidence) + ":" + tags);
        if (plate == " ")
            return journal::ScriptValue("empty", "");
        return plate + "::gate::01-01-2026 10:00:00::img.jpg";
    }
    int WantsSceneResult() override { return AtoI(journal::ScriptValue("scene", "0")); }
    int HasDialog() override { return 0; }
    int ShowDialog(NativeWindow, std::string) override { return 0; }

  private:
    std::mutex mutex_;
    std::string settings_;
    std::string board_;
    int from_ = 0;
    int to_ = 0;
    int value_ = -1;
};

}  // namespace

CORVANE_PLUGIN_EXPORT IntegratorPlugin* CreateIntegratorPlugin() {
    return new TestGate();
}
