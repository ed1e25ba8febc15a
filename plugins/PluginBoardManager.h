#pragma once
#include "PluginManager.h"
#include "corvane/BoardPlugin.h"

class PluginBoardManager : public PluginManager<BoardPlugin> {
  public:
    explicit PluginBoardManager(FolderSource applicationFolder);
    int LoadPlugin() { return Scan(); }
    BoardPlugin* CreaBoardPlugin(const std::string& libraryName) { return Create(libraryName); }
    // The prototype whose shown name is guiName, or null.
    BoardPlugin* FindByGuiName(const std::string& guiName) const;
};
