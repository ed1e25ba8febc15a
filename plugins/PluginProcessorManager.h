#pragma once
#include "PluginManager.h"
#include "PluginOpenArgs.h"
#include "corvane/PostProcessorPlugin.h"

class PluginProcessorManager : public PluginManager<PostProcessorPlugin> {
  public:
    explicit PluginProcessorManager(FolderSource applicationFolder);
    int LoadPlugin() { return Scan(); }
    PostProcessorPlugin* CreaProcessorPlugin(const std::string& libraryName) {
        return Create(libraryName);
    }
    PostProcessorPlugin* FindByGuiName(const std::string& guiName) const;

    // The local database synchronisation plug-in "MirrorDB.dll" of the application folder, held
    // here and by no record.
    PostProcessorPlugin* CreaMirrorDBProcessorPlugin(const std::string& name);
    void StartMirrorDB(int period, int storage, const PluginOpenArgs& args);
    int StopMirrorDB();
    PostProcessorPlugin* MirrorDB() const { return mirrordb_; }

  private:
    PostProcessorPlugin* mirrordb_ = nullptr;
};
