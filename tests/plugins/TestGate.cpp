// A gate that copies one board input to one board output through the pin traffic:
// settings <BOARD>name<\BOARD><FROM>pin<\FROM><TO>pin<\TO>.
#include <mutex>

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
        value_ = -1;
        // Find this board's block, then the pin's block inside it.
        std::string rest = status;
        size_t begin = 0;
        size_t end = 0;
        while (FindTag(rest, "BOARD", begin, end)) {
            std::string block = rest.substr(begin, end - begin);
            if (GetTagString(block, "NAME") == board_) {
                while (FindTag(block, "PIN", begin, end)) {
                    const std::string pin = block.substr(begin, end - begin);
                    if (GetTagInt(pin, "ID") == from_)
                        value_ = GetTagInt(pin, "VALUE");
                    block.erase(0, end + 6);
                }
                return;
            }
            rest.erase(0, end + 8);
        }
    }
    std::string GetBoardCommands() override {
        std::lock_guard<std::mutex> lock(mutex_);
        if (value_ < 0)
            return std::string();
        std::string text;
        TagOpen("BOARD", text);
        TagString("NAME", board_, text);
        TagInt("PINID", to_, text);
        TagInt("VALUE", value_, text);
        TagClose("BOARD", text);
        return text;
    }
    void NewFrame(void*, int, int, int, PluginDateTime, std::string, std::string) override {}
    std::string NewResult(std::string plate, PluginRect, int, int, int, std::string) override {
        return plate == " " ? std::string() : plate + "::gate::01-01-2026 10:00:00::img.jpg";
    }
    int WantsSceneResult() override { return 0; }
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
