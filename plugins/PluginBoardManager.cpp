#include "PluginBoardManager.h"

namespace {
const PluginKind kKind = {"./plugin/board/",
                          "./plugin/board/%s.dll",
                          "CreateBoardPlugin",
                          "Cannon find plugin directory",
                          false,
                          "PluginBoardManager::LoadPlugin"};
}

PluginBoardManager::PluginBoardManager() : PluginManager(kKind) {}

BoardPlugin* PluginBoardManager::FindByGuiName(const std::string& guiName) const {
    return FindPrototype(guiName, [](BoardPlugin* p) { return p->GetGuiName(); });
}
