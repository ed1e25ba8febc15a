#include "PluginBoardManager.h"

namespace {
const PluginKind kKind = {"plugin/board", "CreateBoardPlugin", "Cannon find plugin directory",
                          false, "PluginBoardManager::LoadPlugin"};
}

PluginBoardManager::PluginBoardManager(FolderSource applicationFolder)
    : PluginManager(kKind, std::move(applicationFolder)) {}

BoardPlugin* PluginBoardManager::FindByGuiName(const std::string& guiName) const {
    return FindPrototype(guiName, [](BoardPlugin* p) { return p->GetGuiName(); });
}
