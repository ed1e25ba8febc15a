#include "PluginTriggerManager.h"

namespace {
const PluginKind kKind = {"./plugin/trigger/",
                          ".\\plugin\\trigger\\%s.dll",
                          "CreateTriggerPlugin",
                          "Cannon find plugin directory",
                          false,
                          "PluginTriggerManager::LoadPlugin"};
}

PluginTriggerManager::PluginTriggerManager() : PluginManager(kKind) {}

TriggerPlugin* PluginTriggerManager::FindByGuiName(const std::string& guiName) const {
    return FindPrototype(guiName, [](TriggerPlugin* p) { return p->GetGuiName(); });
}
