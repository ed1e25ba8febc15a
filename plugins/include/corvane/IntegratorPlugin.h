#pragma once
#include "PluginTypes.h"

// A gate: turns the readings of its regions into transit lines ("::"-separated, 12 fields).
class IntegratorPlugin {
  public:
    virtual void Open(NativeWindow mainWindow, int id, std::string placeName, int placeId,
                      std::string dbAddress, std::string dbName, std::string dbUser,
                      std::string dbPassword) = 0;
    virtual void Close(std::string name, int id) = 0;
    virtual std::string GetParameters(int reserved) = 0;
    virtual void SetParameters(std::string text) = 0;
    virtual std::string GetLibName() = 0;
    virtual std::string GetGuiName() = 0;
    virtual void Reserved1() {}
    virtual void SetBoardStatus(std::string status) = 0;
    virtual std::string GetBoardCommands() = 0;
    virtual void NewFrame(void* pixels, int width, int height, int depth, PluginDateTime time,
                          std::string lane, std::string place) = 0;
    virtual std::string NewResult(std::string plate, PluginRect box, int charHeight, int reserved,
                                  int confidence, std::string tags) = 0;
    virtual int WantsSceneResult() = 0;
    virtual int HasDialog() = 0;
    virtual int ShowDialog(NativeWindow parent, std::string projectText) = 0;
    virtual ~IntegratorPlugin() = default;
};

using CreateIntegratorPluginFn = IntegratorPlugin* (*)();
