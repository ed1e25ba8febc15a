// A board built by the ABI test from the public headers alone.
#include <string>
#include <vector>

#include "AbiJournal.h"
#include "corvane/BoardPlugin.h"

class AbiBoard : public BoardPlugin {
  public:
    void Open(NativeWindow, std::string name, int id) override {
        Note("Open:" + name + ":" + std::to_string(id));
    }
    void Close(int reserved) override { Note("Close:" + std::to_string(reserved)); }
    int ReadPin(int pin, int pinClass) override {
        Note("ReadPin:" + std::to_string(pin) + ":" + std::to_string(pinClass));
        return 1;
    }
    void Reserved1() override { Note("Reserved1"); }
    void GetPins(std::vector<std::string>& names, std::vector<int>& ids, int pinClass) override {
        Note("GetPins:" + std::to_string(pinClass));
        names.push_back("IN1");
        ids.push_back(11);
    }
    void WritePin(int pin, int value) override {
        Note("WritePin:" + std::to_string(pin) + ":" + std::to_string(value));
    }
    std::string GetGuiName() override {
        Note("GetGuiName");
        return "ABI board";
    }
    std::string GetLibName() override {
        Note("GetLibName");
        return "AbiBoard";
    }
    std::string GetParameters(int reserved) override {
        Note("GetParameters:" + std::to_string(reserved));
        return "";
    }
    void SetParameters(std::string text) override { Note("SetParameters:" + text); }
    int HasDialog() override {
        Note("HasDialog");
        return 0;
    }
    int ShowDialog(NativeWindow, std::string projectText) override {
        Note("ShowDialog:" + projectText);
        return 1;
    }
    ~AbiBoard() override { Note("~AbiBoard"); }
};

extern "C" BoardPlugin* CreateBoardPlugin() {
    return new AbiBoard;
}
