// VirtualBoard: the reference I/O board, held in memory. Inputs 1 to 4, outputs 11 to 14; with
// loopback each output drives the input of the same rank, so a gate's barrier output can be
// watched by a trigger. Input 1 can also pulse on a period, like a loop detector.
#include <chrono>
#include <mutex>

#include "ParameterSheet.h"
#include "corvane/BoardPlugin.h"

namespace {

constexpr int kPins = 4;
constexpr int kFirstInput = 1;
constexpr int kFirstOutput = 11;

class VirtualBoard : public BoardPlugin {
  public:
    VirtualBoard() : sheet_("Virtual Board") {
        sheet_.Add("Loopback", "CHOICE", "Yes", "Yes;No;")
            .Add("Pulse input 1 every (ms)", "INT", "0");
        started_ = std::chrono::steady_clock::now();
    }
    void Open(NativeWindow, std::string, int) override {}
    void Close(int) override {}
    int ReadPin(int pin, int) override {
        std::lock_guard<std::mutex> lock(mutex_);
        if (pin >= kFirstOutput && pin < kFirstOutput + kPins)
            return outputs_[pin - kFirstOutput];
        if (pin >= kFirstInput && pin < kFirstInput + kPins)
            return InputValue(pin - kFirstInput);
        return 0;
    }
    void GetPins(std::vector<std::string>& names, std::vector<int>& ids, int pinClass) override {
        const bool inputs = pinClass == kPinInputs0 || pinClass == kPinAll;
        const bool outputs = pinClass == kPinOutputs2 || pinClass == kPinAll;
        for (int i = 0; inputs && i < kPins; ++i) {
            names.push_back("IN" + std::to_string(i + 1));
            ids.push_back(kFirstInput + i);
        }
        for (int i = 0; outputs && i < kPins; ++i) {
            names.push_back("OUT" + std::to_string(i + 1));
            ids.push_back(kFirstOutput + i);
        }
    }
    void WritePin(int pin, int value) override {
        std::lock_guard<std::mutex> lock(mutex_);
        if (pin >= kFirstOutput && pin < kFirstOutput + kPins)
            outputs_[pin - kFirstOutput] = value;
        else if (pin >= kFirstInput && pin < kFirstInput + kPins)
            inputs_[pin - kFirstInput] = value;  // a test or operator forcing an input
    }
    std::string GetGuiName() override { return "Virtual Board"; }
    std::string GetLibName() override { return "VirtualBoard"; }
    std::string GetParameters(int) override {
        std::lock_guard<std::mutex> lock(mutex_);
        return sheet_.Description();
    }
    void SetParameters(std::string text) override {
        std::lock_guard<std::mutex> lock(mutex_);
        sheet_.Apply(text);
    }
    int HasDialog() override { return 0; }
    int ShowDialog(NativeWindow, std::string) override { return 0; }

  private:
    int InputValue(int index) const {
        if (sheet_.Text("Loopback") == "Yes" && outputs_[index] != 0)
            return outputs_[index];
        const int period = sheet_.Int("Pulse input 1 every (ms)");
        if (index == 0 && period > 0) {
            const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(
                                std::chrono::steady_clock::now() - started_)
                                .count();
            return (ms / period) % 2 == 0 ? 1 : 0;
        }
        return inputs_[index];
    }

    std::mutex mutex_;
    ParameterSheet sheet_;
    int inputs_[kPins] = {};
    int outputs_[kPins] = {};
    std::chrono::steady_clock::time_point started_;
};

}  // namespace

CORVANE_PLUGIN_EXPORT BoardPlugin* CreateBoardPlugin() {
    return new VirtualBoard();
}
