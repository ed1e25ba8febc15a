#include "PluginIntegratorManager.h"

namespace {
const PluginKind kKind = {"plugin/integrator", "CreateIntegratorPlugin",
                          "Cannon find integrator plugin directory", false,
                          "PluginIntegratorManager::LoadPlugin"};
}

PluginIntegratorManager::PluginIntegratorManager(FolderSource applicationFolder)
    : PluginManager(kKind, std::move(applicationFolder)) {}

IntegratorPlugin* PluginIntegratorManager::FindByGuiName(const std::string& guiName) const {
    return FindPrototype(guiName, [](IntegratorPlugin* p) { return p->GetGuiName(); });
}
