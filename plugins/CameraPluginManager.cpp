#include "CameraPluginManager.h"

namespace {
const PluginKind kCameraKind = {"plugin/camera", "CreateCameraPlugin",
                                "Cannon find camera plugin directory", false,
                                "CameraPluginManager::InitList"};
}

CameraPluginManager::CameraPluginManager(FolderSource applicationFolder)
    : PluginManager(kCameraKind, std::move(applicationFolder)) {}

CameraPlugin* CameraPluginManager::CreateCamera(const std::string& libraryName) {
    return Create(libraryName);
}

std::string CameraPluginManager::GuiNameToLibName(const std::string& guiName) const {
    const CameraPlugin* found =
        FindPrototype(guiName, [](CameraPlugin* p) { return p->GetGuiName(nullptr); });
    return found ? const_cast<CameraPlugin*>(found)->GetLibName() : std::string();
}

std::string CameraPluginManager::LibNameToGuiName(const std::string& libraryName) const {
    CameraPlugin* found = FindByLibName(libraryName);
    return found ? found->GetGuiName(nullptr) : std::string();
}

CameraPlugin* CameraPluginManager::FindByLibName(const std::string& libraryName) const {
    return FindPrototype(libraryName, [](CameraPlugin* p) { return p->GetLibName(); });
}
