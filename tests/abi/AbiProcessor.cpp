// A post processor built by the ABI test from the public headers alone.
#include <string>

#include "AbiJournal.h"
#include "corvane/PostProcessorPlugin.h"

class AbiProcessor : public PostProcessorPlugin {
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
        return "AbiProcessor";
    }
    std::string GetGuiName() override {
        Note("GetGuiName");
        return "ABI processor";
    }
    void Reserved1() override { Note("Reserved1"); }
    void SetBoardStatus(std::string status) override { Note("SetBoardStatus:" + status); }
    std::string GetBoardCommands() override {
        Note("GetBoardCommands");
        return "";
    }
    int UsesBoards() override {
        Note("UsesBoards");
        return 0;
    }
    void NewTransit(std::string plate, std::string image, PluginDateTime time, std::string gate,
                    std::string place, int laneId, int placeId) override {
        Note("NewTransit:" + plate + ":" + image + ":" + std::to_string(time.day) + ":" + gate +
             ":" + place + ":" + std::to_string(laneId) + ":" + std::to_string(placeId));
    }
    int HasDialog() override {
        Note("HasDialog");
        return 0;
    }
    int ShowDialog(NativeWindow, std::string projectText) override {
        Note("ShowDialog:" + projectText);
        return 1;
    }
    ~AbiProcessor() override { Note("~AbiProcessor"); }
};

extern "C" PostProcessorPlugin* CreateProcessorPlugin() {
    return new AbiProcessor;
}
