// A gate built by the ABI test from the public headers alone.
#include <string>

#include "AbiJournal.h"
#include "corvane/IntegratorPlugin.h"

class AbiGate : public IntegratorPlugin {
  public:
    void Open(NativeWindow, int id, std::string placeName, int placeId, std::string dbAddress,
              std::string dbName, std::string dbUser, std::string dbPassword) override {
        Note("Open:" + std::to_string(id) + ":" + placeName + ":" + std::to_string(placeId) + ":" +
             dbAddress + ":" + dbName + ":" + dbUser + ":" + dbPassword);
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
        return "AbiGate";
    }
    std::string GetGuiName() override {
        Note("GetGuiName");
        return "ABI gate";
    }
    void Reserved1() override { Note("Reserved1"); }
    void SetBoardStatus(std::string status) override { Note("SetBoardStatus:" + status); }
    std::string GetBoardCommands() override {
        Note("GetBoardCommands");
        return "";
    }
    void NewFrame(void*, int width, int height, int depth, PluginDateTime time, std::string lane,
                  std::string place) override {
        Note("NewFrame:" + std::to_string(width) + "x" + std::to_string(height) + ":" +
             std::to_string(depth) + ":" + std::to_string(time.year) + "-" +
             std::to_string(time.millisecond) + ":" + lane + ":" + place);
    }
    std::string NewResult(std::string plate, PluginRect box, int charHeight, int reserved,
                          int confidence, std::string tags) override {
        Note("NewResult:" + plate + ":" + std::to_string(box.x) + "," + std::to_string(box.y) +
             "," + std::to_string(box.width) + "," + std::to_string(box.height) + ":" +
             std::to_string(charHeight) + ":" + std::to_string(reserved) + ":" +
             std::to_string(confidence) + ":" + tags);
        return "";
    }
    int WantsSceneResult() override {
        Note("WantsSceneResult");
        return 0;
    }
    int HasDialog() override {
        Note("HasDialog");
        return 0;
    }
    int ShowDialog(NativeWindow, std::string projectText) override {
        Note("ShowDialog:" + projectText);
        return 1;
    }
    ~AbiGate() override { Note("~AbiGate"); }
};

extern "C" IntegratorPlugin* CreateIntegratorPlugin() {
    return new AbiGate;
}
