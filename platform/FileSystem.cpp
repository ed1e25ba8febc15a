#include "FileSystem.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace fs = std::filesystem;

namespace platform {

std::string NativePath(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string GetWorkingDirectory() {
    std::error_code ec;
    const auto cwd = fs::current_path(ec);
    return ec ? std::string() : cwd.string();
}

bool SetWorkingDirectory(const std::string& path) {
    return !path.empty() && ::chdir(NativePath(path).c_str()) == 0;
}

ScopedWorkingDirectory::ScopedWorkingDirectory(const std::string& path)
    : previous_(GetWorkingDirectory()), entered_(SetWorkingDirectory(path)) {}

ScopedWorkingDirectory::~ScopedWorkingDirectory() {
    if (entered_)
        SetWorkingDirectory(previous_);
}

bool FileExists(const std::string& path) {
    std::error_code ec;
    return fs::is_regular_file(NativePath(path), ec);
}

bool DirectoryExists(const std::string& path) {
    std::error_code ec;
    return fs::is_directory(NativePath(path), ec);
}

bool MakeDirectory(const std::string& path) {
    std::string native = NativePath(path);
    while (native.size() > 1 && native.back() == '/')
        native.pop_back();
    std::error_code ec;
    return fs::create_directory(native, ec) && !ec;
}

bool CopyFileOver(const std::string& from, const std::string& to) {
    std::error_code ec;
    fs::copy_file(NativePath(from), NativePath(to), fs::copy_options::overwrite_existing, ec);
    return !ec;
}

bool ListDirectory(const std::string& path, std::vector<std::string>& names) {
    std::error_code ec;
    fs::directory_iterator it(NativePath(path), ec);
    if (ec)
        return false;
    for (const auto& entry : it)
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return true;
}

namespace {

template <typename Container>
ReadResult ReadInto(const std::string& path, Container& out, size_t limit) {
    out.clear();
    const std::string native = NativePath(path);
    std::error_code ec;
    if (!fs::exists(native, ec))
        return ReadResult::Missing;
    std::ifstream in(native, std::ios::binary);
    if (!in || fs::is_directory(native, ec))
        return ReadResult::CannotOpen;
    const auto size = fs::file_size(native, ec);
    if (ec)
        return ReadResult::CannotOpen;
    if (size > limit)
        return ReadResult::TooLarge;
    out.resize(static_cast<size_t>(size));
    if (size > 0)
        in.read(reinterpret_cast<char*>(&out[0]), static_cast<std::streamsize>(size));
    out.resize(static_cast<size_t>(in.gcount()));
    return ReadResult::Ok;
}

}  // namespace

ReadResult ReadWholeFile(const std::string& path, std::vector<uint8_t>& bytes, size_t limit) {
    return ReadInto(path, bytes, limit);
}

ReadResult ReadWholeFile(const std::string& path, std::string& text, size_t limit) {
    return ReadInto(path, text, limit);
}

bool WriteWholeFile(const std::string& path, const void* data, size_t size) {
    const std::string native = NativePath(path);
    const std::string temporary = native + ".tmp";
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        if (!out)
            return false;
        out.write(static_cast<const char*>(data), static_cast<std::streamsize>(size));
        out.flush();
        if (!out) {
            out.close();
            std::remove(temporary.c_str());
            return false;
        }
    }
    std::error_code ec;
    fs::rename(temporary, native, ec);
    if (ec) {
        std::remove(temporary.c_str());
        return false;
    }
    return true;
}

std::string FileExtension(const std::string& path) {
    const std::string name = fs::path(NativePath(path)).filename().string();
    const auto dot = name.rfind('.');
    return (dot == std::string::npos || dot == 0) ? std::string() : name.substr(dot + 1);
}

std::string FileNameWithoutExtension(const std::string& path) {
    return fs::path(NativePath(path)).stem().string();
}

std::string DirectoryOf(const std::string& path) {
    return fs::path(NativePath(path)).parent_path().string();
}

}  // namespace platform
