#pragma once
#include "PluginTypes.h"

// Receives the transits of the gate it refers to by name.
class PostProcessorPlugin {
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
    virtual int UsesBoards() = 0;
    virtual void NewTransit(std::string plate, std::string image, PluginDateTime time,
                            std::string gate, std::string place, int laneId, int placeId) = 0;
    virtual int HasDialog() = 0;
    virtual int ShowDialog(NativeWindow parent, std::string projectText) = 0;
    virtual ~PostProcessorPlugin() = default;
};

using CreateProcessorPluginFn = PostProcessorPlugin* (*)();
