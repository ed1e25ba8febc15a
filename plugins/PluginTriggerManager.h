#pragma once
#include "PluginManager.h"
#include "corvane/TriggerPlugin.h"

class PluginTriggerManager : public PluginManager<TriggerPlugin> {
  public:
    explicit PluginTriggerManager(FolderSource applicationFolder);
    int LoadPlugin() { return Scan(); }
    TriggerPlugin* CreaTriggerPlugin(const std::string& libraryName) { return Create(libraryName); }
    // The prototype whose shown name is guiName, or null.
    TriggerPlugin* FindByGuiName(const std::string& guiName) const;
};
