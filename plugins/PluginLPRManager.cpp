#include "PluginLPRManager.h"

namespace {
const PluginKind kKind = {"plugin/lpr", "CreateLPRPlugin", "Cannon find lpr plugin directory",
                          false, "PluginLPRManager::InitList"};
}

PluginLPRManager::PluginLPRManager(FolderSource applicationFolder)
    : PluginManager(kKind, std::move(applicationFolder)) {}

LPRPlugin* PluginLPRManager::FindByLibName(const std::string& libraryName) const {
    return FindPrototype(libraryName, [](LPRPlugin* p) { return p->GetLibName(); });
}
