// A board with input pins 1..4 (class 0), 5 (class 1) and output pins 10, 11 (class 2).
// Inputs can be set from the settings: <PIN1>value<\PIN1> and so on.
#include <map>
#include <mutex>

#include "Journal.h"
#include "corvane/BoardPlugin.h"
#include "corvane/TagText.h"

namespace {

class TestBoard : public BoardPlugin {
  public:
    void Open(NativeWindow, std::string name, int id) override {
        name_ = name;
        journal::Note("Open:" + name + ":" + std::to_string(id));
    }
    void Close(int reserved) override {
        journal::Note("Close:" + name_ + ":" + std::to_string(reserved));
    }
    // Pins are read by the board thread and by the window (or a test) at the same time.
    int ReadPin(int pin, int) override {
        std::lock_guard<std::mutex> lock(mutex_);
        return values_[pin];
    }
    void GetPins(std::vector<std::string>& names, std::vector<int>& ids, int pinClass) override {
        for (const auto& pin : kPins)
            if (pinClass == kPinAll || pinClass == pin.pinClass) {
                names.push_back(pin.name);
                ids.push_back(pin.id);
            }
    }
    void WritePin(int pin, int value) override {
        journal::Note("WritePin:" + name_ + ":" + std::to_string(pin) + "=" +
                      std::to_string(value));
        std::lock_guard<std::mutex> lock(mutex_);
        values_[pin] = value;
    }
    std::string GetGuiName() override { return "Test Board"; }
    std::string GetLibName() override { return "TestBoard"; }
    std::string GetParameters(int) override { return "<PIN1>0<\\PIN1>"; }
    void SetParameters(std::string text) override {
        journal::Note("SetParameters:" + text);
        std::lock_guard<std::mutex> lock(mutex_);
        for (int pin = 1; pin <= 5; ++pin)
            values_[pin] = GetTagInt(text, "PIN" + std::to_string(pin));
    }
    int HasDialog() override { return 0; }
    int ShowDialog(NativeWindow, std::string) override { return 0; }

  private:
    struct Pin {
        const char* name;
        int id;
        int pinClass;
    };
    static constexpr Pin kPins[] = {{"IN1", 1, 0}, {"IN2", 2, 0},    {"IN3", 3, 0},   {"IN4", 4, 0},
                                    {"IN5", 5, 1}, {"OUT10", 10, 2}, {"OUT11", 11, 2}};
    std::string name_;
    std::mutex mutex_;
    std::map<int, int> values_;  // guarded by mutex_
};

}  // namespace

CORVANE_PLUGIN_EXPORT BoardPlugin* CreateBoardPlugin() {
    return new TestBoard();
}
