#include "PluginIntegratorManager.h"

namespace {
const PluginKind kKind = {"./plugin/integrator/",
                          "./plugin/integrator/%s.dll",
                          "CreateIntegratorPlugin",
                          "Cannon find integrator plugin directory",
                          false,
                          "PluginIntegratorManager::LoadPlugin"};
}

PluginIntegratorManager::PluginIntegratorManager() : PluginManager(kKind) {}

IntegratorPlugin* PluginIntegratorManager::FindByGuiName(const std::string& guiName) const {
    return FindPrototype(guiName, [](IntegratorPlugin* p) { return p->GetGuiName(); });
}
