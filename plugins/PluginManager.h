#pragma once
#include <algorithm>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <set>
#include <string>
#include <vector>

#include "platform/DynamicLibrary.h"
#include "platform/FileSystem.h"
#include "platform/Log.h"

// What distinguishes one kind of plug-in manager from another.
struct PluginKind {
    const char* subfolder;       // below the application folder, e.g. "plugin/board"
    const char* factory;         // exported factory symbol
    const char* missingMessage;  // warning when the directory cannot be opened
    bool acceptsUpperCaseDll;    // the post-processor scan also takes "DLL"
    const char* scanFunction;    // log context of the scan
};

// A plug-in is named by a bare library name: letters, digits, '_', '-' and '.', at most 64,
// not beginning with '.'. Nothing else (a path, "..", a NUL) ever reaches the loader.
bool IsBareLibraryName(const std::string& name);
constexpr size_t kMaxLibraryName = 64;

// Gives the application folder of the moment (absolute) to a manager: the project's, or a fixed
// one for a manager of its own.
using FolderSource = std::function<std::string()>;
inline FolderSource FixedFolder(std::string folder) {
    return [folder = std::move(folder)] { return folder; };
}

// Scans a plug-in directory into a list of prototypes and creates instances by library name.
// Libraries are found only in the plug-in folder of the application folder, by absolute path,
// and only when a listing of that folder holds them, so neither the working directory nor a
// name from a file can lead the loader elsewhere. Libraries that produced an instance stay
// loaded for the process life. The manager owns its prototypes and every instance it created;
// records hold instances by plain pointer, and an instance lives until Destroy() or the end of
// the process.
template <typename Plugin>
class PluginManager {
  public:
    PluginManager(const PluginKind& kind, FolderSource applicationFolder)
        : kind_(kind), applicationFolder_(std::move(applicationFolder)) {}
    PluginManager(const PluginManager&) = delete;
    PluginManager& operator=(const PluginManager&) = delete;

    // The folder this kind is scanned in and loaded from, absolute, with a trailing '/'. The
    // programs always give an application folder; a bare model without one (a test's) takes
    // the working directory.
    std::string Folder() const {
        std::string base = applicationFolder_();
        if (base.empty())
            base = platform::GetWorkingDirectory();
        return platform::AbsolutePath(base) + "/" + kind_.subfolder + "/";
    }

    // 0 when the directory was scanned, 1 when it could not be opened. A second scan (an
    // import scans again) adds only the libraries the first did not list.
    int Scan() {
        std::vector<std::string> entries;
        const std::string folder = Folder();
        if (!platform::ListDirectory(folder, entries)) {
            platform::Log(platform::LogLevel::Warning, {__FILE__, kind_.scanFunction, __LINE__},
                          kind_.missingMessage);
            return 1;
        }
        for (const std::string& entry : entries) {
            if (!IsLibraryFile(folder, entry) || !scanned_.insert(folder + entry).second)
                continue;
            if (Plugin* prototype = Instantiate(folder + entry))
                prototypes_.emplace_back(prototype);
        }
        return 0;
    }

    // The absolute path of the named library, or empty with the reason in why: the name is not
    // a bare library name, or no library of that name lies in the plug-in folder.
    std::string Locate(const std::string& libraryName, std::string* why = nullptr) const {
        const std::string folder = Folder();
        if (!IsBareLibraryName(libraryName)) {
            if (why != nullptr)
                *why = "plug-in name \"" + Printable(libraryName) +
                       "\" refused: not a bare library name";
            return std::string();
        }
        std::vector<std::string> entries;
        platform::ListDirectory(folder, entries);
        for (const std::string& entry : entries)
            if (IsLibraryFile(folder, entry) &&
                platform::FileNameWithoutExtension(entry) == libraryName)
                return folder + entry;
        if (why != nullptr)
            *why = "plug-in " + libraryName + " is not installed in " + folder;
        return std::string();
    }

    // A new instance of the named library, or null (with a warning when the name is refused or
    // the library is not installed).
    Plugin* Create(const std::string& libraryName) {
        std::string why;
        const std::string path = Locate(libraryName, &why);
        if (path.empty()) {
            platform::Log(platform::LogLevel::Warning, {__FILE__, kind_.scanFunction, __LINE__},
                          why);
            return nullptr;
        }
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

  protected:
    template <typename NameOf>
    Plugin* FindPrototype(const std::string& name, NameOf nameOf) const {
        for (const auto& prototype : prototypes_)
            if (nameOf(prototype.get()) == name)
                return prototype.get();
        return nullptr;
    }

  private:
    // A regular file (or a link to one) of the folder with this kind's ending.
    bool IsLibraryFile(const std::string& folder, const std::string& entry) const {
        const std::string extension = platform::FileExtension(entry);
        if (extension != "dll" && !(kind_.acceptsUpperCaseDll && extension == "DLL"))
            return false;
        return IsBareLibraryName(platform::FileNameWithoutExtension(entry)) &&
               platform::FileExists(folder + entry) && !platform::DirectoryExists(folder + entry);
    }

    // The name as a warning may show it: bytes outside printable ASCII as \xNN, bounded.
    static std::string Printable(const std::string& name) {
        static const char kHex[] = "0123456789abcdef";
        std::string out;
        for (unsigned char c : name.substr(0, 2 * kMaxLibraryName)) {
            if (c >= 0x20 && c < 0x7f) {
                out += static_cast<char>(c);
            } else {
                out += "\\x";
                out += kHex[c >> 4];
                out += kHex[c & 15];
            }
        }
        return name.size() > 2 * kMaxLibraryName ? out + "..." : out;
    }

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
    FolderSource applicationFolder_;
    std::vector<std::unique_ptr<Plugin>> prototypes_;
    std::set<std::string> scanned_;  // every library a scan has listed, by path
    std::mutex instancesMutex_;
    std::vector<std::unique_ptr<Plugin>> instances_;  // guarded by instancesMutex_
};
