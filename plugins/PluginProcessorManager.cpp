#include "PluginProcessorManager.h"

namespace {
const PluginKind kKind = {"./plugin/postprocessor/",
                          "./plugin/postprocessor/%s.dll",
                          "CreateProcessorPlugin",
                          "Cannon find integrator plugin directory",
                          true,
                          "PluginProcessorManager::LoadPlugin"};
const char kMirrorDBPath[] = "./MirrorDB.dll";
const char kMirrorDBName[] = "MIRRORDB";
}  // namespace

PluginProcessorManager::PluginProcessorManager() : PluginManager(kKind) {}

PostProcessorPlugin* PluginProcessorManager::FindByGuiName(const std::string& guiName) const {
    return FindPrototype(guiName, [](PostProcessorPlugin* p) { return p->GetGuiName(); });
}

PostProcessorPlugin* PluginProcessorManager::CreaMirrorDBProcessorPlugin(const std::string&) {
    return CreateFromPath(kMirrorDBPath);
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
