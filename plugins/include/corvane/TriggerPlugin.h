#pragma once
#include "PluginTypes.h"

// Decides frame by frame whether a region's recognition runs (GetStatus not 0).
class TriggerPlugin {
  public:
    virtual void Open(std::string name, int id) = 0;
    virtual void Close(std::string name, int id) = 0;
    virtual std::string GetParameters(int reserved) = 0;
    virtual void SetParameters(std::string text) = 0;
    virtual std::string GetLibName() = 0;
    virtual std::string GetGuiName() = 0;
    virtual void Reserved1() {}
    virtual void SetBoardStatus(std::string status) = 0;
    virtual void ProcessFrame(void* pixels, int width, int height, int channels) = 0;
    virtual int GetStatus() = 0;
    virtual int HasDialog() = 0;
    virtual int ShowDialog(NativeWindow parent, std::string projectText) = 0;
    virtual ~TriggerPlugin() = default;
};

using CreateTriggerPluginFn = TriggerPlugin* (*)();
