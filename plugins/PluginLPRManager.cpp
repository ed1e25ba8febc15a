#include "PluginLPRManager.h"

namespace {
const PluginKind kKind = {"./plugin/lpr/",
                          "./plugin/lpr/%s.dll",
                          "CreateLPRPlugin",
                          "Cannon find lpr plugin directory",
                          false,
                          "PluginLPRManager::InitList"};
}

PluginLPRManager::PluginLPRManager() : PluginManager(kKind) {}

LPRPlugin* PluginLPRManager::FindByLibName(const std::string& libraryName) const {
    return FindPrototype(libraryName, [](LPRPlugin* p) { return p->GetLibName(); });
}
