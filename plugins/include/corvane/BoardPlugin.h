#pragma once
#include "PluginTypes.h"

// Pin classes: 0 and 1 the input groups, 2 and 3 the output groups, 99 every pin.
enum PinClass {
    kPinInputs0 = 0,
    kPinInputs1 = 1,
    kPinOutputs2 = 2,
    kPinOutputs3 = 3,
    kPinAll = 99
};

// An I/O board seen as numbered pins.
class BoardPlugin {
  public:
    virtual void Open(NativeWindow mainWindow, std::string name, int id) = 0;
    virtual void Close(int reserved) = 0;
    virtual int ReadPin(int pin, int pinClass) = 0;
    virtual void Reserved1() {}
    virtual void GetPins(std::vector<std::string>& names, std::vector<int>& ids, int pinClass) = 0;
    virtual void WritePin(int pin, int value) = 0;
    virtual std::string GetGuiName() = 0;
    virtual std::string GetLibName() = 0;
    virtual std::string GetParameters(int reserved) = 0;
    virtual void SetParameters(std::string text) = 0;
    virtual int HasDialog() = 0;
    virtual int ShowDialog(NativeWindow parent, std::string projectText) = 0;
    virtual ~BoardPlugin() = default;
};

using CreateBoardPluginFn = BoardPlugin* (*)();
