#include "DynamicLibrary.h"

#include <dlfcn.h>

#include "FileSystem.h"

namespace platform {

bool DynamicLibrary::Load(const std::string& path) {
    Unload();
    std::string native = NativePath(path);
    // dlopen searches the library path for a bare name; plug-ins are always named by path.
    if (native.find('/') == std::string::npos)
        native = "./" + native;
    // The loader knows an opened library by the name it was given, so a relative name would
    // find a library of another working directory. Relative names are made absolute.
    if (native[0] != '/')
        native = GetWorkingDirectory() + "/" + native;
    handle_ = dlopen(native.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle_ == nullptr) {
        const char* why = dlerror();
        error_ = why ? why : "unknown error";
    }
    return handle_ != nullptr;
}

void* DynamicLibrary::GetSymbol(const char* name) const {
    return handle_ ? dlsym(handle_, name) : nullptr;
}

void DynamicLibrary::Unload() {
    if (handle_ != nullptr)
        dlclose(handle_);
    handle_ = nullptr;
}

}  // namespace platform
