#include "PluginProcessorManager.h"

namespace {
const PluginKind kKind = {"plugin/postprocessor", "CreateProcessorPlugin",
                          "Cannon find integrator plugin directory", true,
                          "PluginProcessorManager::LoadPlugin"};
const char kMirrorDBFile[] = "MirrorDB.dll";
const char kMirrorDBName[] = "MIRRORDB";
}  // namespace

PluginProcessorManager::PluginProcessorManager(FolderSource applicationFolder)
    : PluginManager(kKind, std::move(applicationFolder)) {}

PostProcessorPlugin* PluginProcessorManager::FindByGuiName(const std::string& guiName) const {
    return FindPrototype(guiName, [](PostProcessorPlugin* p) { return p->GetGuiName(); });
}

PostProcessorPlugin* PluginProcessorManager::CreaMirrorDBProcessorPlugin(const std::string&) {
    // Beside the plug-in folders: the folder of this kind, one level up twice.
    return CreateFromPath(Folder() + "../../" + kMirrorDBFile);
}

void PluginProcessorManager::StartMirrorDB(int period, int storage, const PluginOpenArgs& args) {
    StopMirrorDB();
    mirrordb_ = CreaMirrorDBProcessorPlugin(kMirrorDBName);
    if (mirrordb_ == nullptr)
        return;
    mirrordb_->SetParameters("<VALUE>" + std::to_string(period) + "<\\VALUE><VALUE>" +
                             std::to_string(storage) + "<\\VALUE>");
    OpenWith(mirrordb_, 0, args);
}

int PluginProcessorManager::StopMirrorDB() {
    if (mirrordb_ != nullptr) {
        mirrordb_->Close(kMirrorDBName, 0);
        Destroy(mirrordb_);
        mirrordb_ = nullptr;
    }
    return 1;
}
