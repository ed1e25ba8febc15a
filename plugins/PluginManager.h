#pragma once
#include <algorithm>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <vector>

#include "platform/DynamicLibrary.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"

// What distinguishes one kind of plug-in manager from another.
struct PluginKind {
    const char* directory;       // scanned, e.g. "./plugin/board/"
    const char* createFormat;    // path of a library by name, "%s" is the name
    const char* factory;         // exported factory symbol
    const char* missingMessage;  // warning when the directory cannot be opened
    bool acceptsUpperCaseDll;    // the post-processor scan also takes "DLL"
    const char* scanFunction;    // log context of the scan
};

// Scans a plug-in directory into a list of prototypes and creates instances by library name.
// Libraries that produced an instance stay loaded for the process life. The manager owns its
// prototypes and every instance it created; records hold instances by plain pointer, and an
// instance lives until Destroy() or the end of the process.
template <typename Plugin>
class PluginManager {
  public:
    explicit PluginManager(const PluginKind& kind) : kind_(kind) {}
    PluginManager(const PluginManager&) = delete;
    PluginManager& operator=(const PluginManager&) = delete;

    // 0 when the directory was scanned, 1 when it could not be opened.
    int Scan() {
        std::vector<std::string> entries;
        if (!platform::ListDirectory(kind_.directory, entries)) {
            platform::Log(platform::LogLevel::Warning, {__FILE__, kind_.scanFunction, __LINE__},
                          kind_.missingMessage);
            return 1;
        }
        for (const std::string& entry : entries) {
            const std::string path = std::string(kind_.directory) + entry;
            const std::string extension = platform::FileExtension(path);
            if (extension != "dll" && !(kind_.acceptsUpperCaseDll && extension == "DLL"))
                continue;
            if (Plugin* prototype = Instantiate(path))
                prototypes_.emplace_back(prototype);
        }
        return 0;
    }

    // A new instance of the named library, or null.
    Plugin* Create(const std::string& libraryName) {
        const std::string path = PathOf(libraryName);
        std::string extension = platform::FileExtension(path);
        std::transform(extension.begin(), extension.end(), extension.begin(), ::tolower);
        if (extension != "dll")
            return nullptr;
        return Keep(Instantiate(path));
    }

    Plugin* CreateFromPath(const std::string& path) { return Keep(Instantiate(path)); }

    // Frees an instance made by Create; for instances that a cancelled dialog leaves unused.
    void Destroy(Plugin* instance) {
        std::lock_guard<std::mutex> lock(instancesMutex_);
        const auto it =
            std::find_if(instances_.begin(), instances_.end(),
                         [instance](const auto& held) { return held.get() == instance; });
        if (it != instances_.end())
            instances_.erase(it);
    }

    size_t GetCount() const { return prototypes_.size(); }
    Plugin* Item(size_t index) const { return prototypes_[index].get(); }
    const std::vector<std::unique_ptr<Plugin>>& Prototypes() const { return prototypes_; }

    std::string PathOf(const std::string& libraryName) const {
        std::string path = kind_.createFormat;
        path.replace(path.find("%s"), 2, libraryName);
        return platform::NativePath(path);
    }

  protected:
    template <typename NameOf>
    Plugin* FindPrototype(const std::string& name, NameOf nameOf) const {
        for (const auto& prototype : prototypes_)
            if (nameOf(prototype.get()) == name)
                return prototype.get();
        return nullptr;
    }

  private:
    Plugin* Instantiate(const std::string& path) {
        platform::DynamicLibrary library;
        if (!library.Load(path))
            return nullptr;
        using Factory = Plugin* (*)();
        auto factory = reinterpret_cast<Factory>(library.GetSymbol(kind_.factory));
        if (factory == nullptr)
            return nullptr;  // the loader unloads the library again
        library.Detach();
        try {
            return factory();
        } catch (const std::bad_alloc&) {
            CORVANE_LOG_WARNING(kind_.scanFunction, "Not enough memory");
            return nullptr;
        }
    }

    // Regions create their readers on their own threads, side by side: the list is locked.
    Plugin* Keep(Plugin* instance) {
        if (instance != nullptr) {
            std::lock_guard<std::mutex> lock(instancesMutex_);
            instances_.emplace_back(instance);
        }
        return instance;
    }

    PluginKind kind_;
    std::vector<std::unique_ptr<Plugin>> prototypes_;
    std::mutex instancesMutex_;
    std::vector<std::unique_ptr<Plugin>> instances_;  // guarded by instancesMutex_
};
