// PinTrigger: the reference trigger. Recognition runs while a board input has its active value;
// without the board in the status text it follows its "Without board" choice.
#include <mutex>

#include "BoardText.h"
#include "ParameterSheet.h"
#include "corvane/TriggerPlugin.h"

namespace {

class PinTrigger : public TriggerPlugin {
  public:
    PinTrigger() : sheet_("Pin Trigger") {
        sheet_.Add("Input pin", "PIN_INP", "NO BOARD;-1")
            .Add("Active value", "INT", "1")
            .Add("Without board", "CHOICE", "Always on", "Always on;Always off;");
    }
    void Open(std::string, int) override {}
    void Close(std::string, int) override {}
    std::string GetParameters(int) override {
        std::lock_guard<std::mutex> lock(mutex_);
        return sheet_.Description();
    }
    void SetParameters(std::string text) override {
        std::lock_guard<std::mutex> lock(mutex_);
        sheet_.Apply(text);
        sheet_.Pin("Input pin", board_, pin_);
    }
    std::string GetLibName() override { return "PinTrigger"; }
    std::string GetGuiName() override { return "Pin Trigger"; }
    void SetBoardStatus(std::string status) override {
        std::lock_guard<std::mutex> lock(mutex_);
        value_ = board_.empty() ? -1 : boardtext::PinValue(status, board_, pin_);
    }
    void ProcessFrame(void*, int, int, int) override {}
    int GetStatus() override {
        std::lock_guard<std::mutex> lock(mutex_);
        if (value_ < 0)
            return sheet_.Text("Without board") == "Always off" ? 0 : 1;
        return value_ == sheet_.Int("Active value") ? 1 : 0;
    }
    int HasDialog() override { return 0; }
    int ShowDialog(NativeWindow, std::string) override { return 0; }

  private:
    std::mutex mutex_;
    ParameterSheet sheet_;
    std::string board_;
    int pin_ = -1;
    int value_ = -1;
};

}  // namespace

CORVANE_PLUGIN_EXPORT TriggerPlugin* CreateTriggerPlugin() {
    return new PinTrigger();
}
