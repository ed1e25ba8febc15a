#pragma once
#include "PluginManager.h"
#include "corvane/IntegratorPlugin.h"

class PluginIntegratorManager : public PluginManager<IntegratorPlugin> {
  public:
    explicit PluginIntegratorManager(FolderSource applicationFolder);
    int LoadPlugin() { return Scan(); }
    IntegratorPlugin* CreaIntegratorPlugin(const std::string& libraryName) {
        return Create(libraryName);
    }
    // The prototype whose shown name is guiName, or null.
    IntegratorPlugin* FindByGuiName(const std::string& guiName) const;
};
