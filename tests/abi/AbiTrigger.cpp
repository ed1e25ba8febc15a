// A trigger built by the ABI test from the public headers alone.
#include <string>

#include "AbiJournal.h"
#include "corvane/TriggerPlugin.h"

class AbiTrigger : public TriggerPlugin {
  public:
    void Open(std::string name, int id) override {
        Note("Open:" + name + ":" + std::to_string(id));
    }
    void Close(std::string name, int id) override {
        Note("Close:" + name + ":" + std::to_string(id));
    }
    std::string GetParameters(int reserved) override {
        Note("GetParameters:" + std::to_string(reserved));
        return "";
    }
    void SetParameters(std::string text) override { Note("SetParameters:" + text); }
    std::string GetLibName() override {
        Note("GetLibName");
        return "AbiTrigger";
    }
    std::string GetGuiName() override {
        Note("GetGuiName");
        return "ABI trigger";
    }
    void Reserved1() override { Note("Reserved1"); }
    void SetBoardStatus(std::string status) override { Note("SetBoardStatus:" + status); }
    void ProcessFrame(void* pixels, int width, int height, int channels) override {
        Note("ProcessFrame:" + std::to_string(static_cast<unsigned char*>(pixels)[0]) + ":" +
             std::to_string(width) + "x" + std::to_string(height) + "x" + std::to_string(channels));
    }
    int GetStatus() override {
        Note("GetStatus");
        return 1;
    }
    int HasDialog() override {
        Note("HasDialog");
        return 0;
    }
    int ShowDialog(NativeWindow, std::string projectText) override {
        Note("ShowDialog:" + projectText);
        return 1;
    }
    ~AbiTrigger() override { Note("~AbiTrigger"); }
};

extern "C" TriggerPlugin* CreateTriggerPlugin() {
    return new AbiTrigger;
}
