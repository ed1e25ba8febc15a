#include "PluginTriggerManager.h"

namespace {
const PluginKind kKind = {"plugin/trigger", "CreateTriggerPlugin", "Cannon find plugin directory",
                          false, "PluginTriggerManager::LoadPlugin"};
}

PluginTriggerManager::PluginTriggerManager(FolderSource applicationFolder)
    : PluginManager(kKind, std::move(applicationFolder)) {}

TriggerPlugin* PluginTriggerManager::FindByGuiName(const std::string& guiName) const {
    return FindPrototype(guiName, [](TriggerPlugin* p) { return p->GetGuiName(); });
}
