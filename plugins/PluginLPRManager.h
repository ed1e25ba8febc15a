#pragma once
#include "PluginManager.h"
#include "corvane/LPRPlugin.h"

class PluginLPRManager : public PluginManager<LPRPlugin> {
  public:
    explicit PluginLPRManager(FolderSource applicationFolder);
    int InitList() { return Scan(); }
    // Called by each region's thread as it starts, several at once: the instance list is locked.
    LPRPlugin* GetLPRPlugin(const std::string& libraryName) { return Create(libraryName); }
    LPRPlugin* FindByLibName(const std::string& libraryName) const;
};
