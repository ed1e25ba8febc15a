#pragma once
#include <string>

namespace platform {

// Loads a shared library with immediate symbol resolution. Detach() forgets the handle without
// unloading, so a library that produced plug-in instances stays mapped for the process life.
class DynamicLibrary {
  public:
    DynamicLibrary() = default;
    DynamicLibrary(const DynamicLibrary&) = delete;
    DynamicLibrary& operator=(const DynamicLibrary&) = delete;
    ~DynamicLibrary() { Unload(); }

    bool Load(const std::string& path);
    void* GetSymbol(const char* name) const;
    void Unload();
    void Detach() { handle_ = nullptr; }
    bool IsLoaded() const { return handle_ != nullptr; }
    const std::string& LastError() const { return error_; }

  private:
    void* handle_ = nullptr;
    std::string error_;
};

}  // namespace platform
