#pragma once
#include "PluginManager.h"
#include "corvane/CameraPlugin.h"

class CameraPluginManager : public PluginManager<CameraPlugin> {
  public:
    explicit CameraPluginManager(FolderSource applicationFolder);
    int InitList() { return Scan(); }
    // Null, with a warning, when the name is refused or the library is not installed.
    CameraPlugin* CreateCamera(const std::string& libraryName);
    std::string GuiNameToLibName(const std::string& guiName) const;
    std::string LibNameToGuiName(const std::string& libraryName) const;
    CameraPlugin* FindByLibName(const std::string& libraryName) const;
};
