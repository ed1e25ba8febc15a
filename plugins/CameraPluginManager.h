#pragma once
#include "PluginManager.h"
#include "corvane/CameraPlugin.h"

class CameraPluginManager : public PluginManager<CameraPlugin> {
  public:
    CameraPluginManager();
    int InitList() { return Scan(); }
    // Null without a message when the library file does not exist.
    CameraPlugin* CreateCamera(const std::string& libraryName);
    std::string GuiNameToLibName(const std::string& guiName) const;
    std::string LibNameToGuiName(const std::string& libraryName) const;
    CameraPlugin* FindByLibName(const std::string& libraryName) const;
};
