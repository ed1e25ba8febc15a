#include "FileSystem.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
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

void RemoveTree(const std::string& path) {
    std::error_code ec;
    fs::remove_all(NativePath(path), ec);
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

namespace {

// The file a write lands in: the end of a chain of symbolic links, so that the link stays.
std::string WriteTarget(const std::string& native) {
    std::error_code ec;
    if (!fs::is_symlink(native, ec))
        return native;
    fs::path target = native;
    for (int hops = 0; hops < 40 && fs::is_symlink(target, ec); ++hops) {
        const fs::path next = fs::read_symlink(target, ec);
        if (ec)
            return native;
        target = next.is_absolute() ? next : target.parent_path() / next;
    }
    return target.lexically_normal().string();
}

// A file nobody may write is left alone, even by the superuser, who passes every access check.
bool IsReadOnly(const std::string& target, const struct stat& info) {
    if (::geteuid() == 0)
        return (info.st_mode & 0222) == 0;
    return ::access(target.c_str(), W_OK) != 0;
}

bool WriteAll(int fd, const char* bytes, size_t size) {
    while (size > 0) {
        const ssize_t written = ::write(fd, bytes, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes += written;
        size -= static_cast<size_t>(written);
    }
    return true;
}

}  // namespace

bool WriteWholeFile(const std::string& path, const void* data, size_t size) {
    const std::string target = WriteTarget(NativePath(path));
    struct stat existing {};
    const bool exists = ::stat(target.c_str(), &existing) == 0;
    if (exists && (!S_ISREG(existing.st_mode) || IsReadOnly(target, existing)))
        return false;
    const std::string temporary = target + ".tmp";
    const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0)
        return false;
    bool written = WriteAll(fd, static_cast<const char*>(data), size);
    if (written && exists) {
        // The new file takes the place of the old one with its permissions and owner.
        written = ::fchmod(fd, existing.st_mode & 07777) == 0;
        if (::fchown(fd, existing.st_uid, existing.st_gid) != 0 && ::geteuid() == 0)
            written = false;
    }
    written = written && ::fsync(fd) == 0;
    written = ::close(fd) == 0 && written;
    if (!written || ::rename(temporary.c_str(), target.c_str()) != 0) {
        const int why = errno;  // the caller may tell the operator: "No space left on device"
        ::unlink(temporary.c_str());
        errno = why;
        return false;
    }
    return true;
}

bool CopyFileWhole(const std::string& from, const std::string& to, size_t limit) {
    std::vector<uint8_t> bytes;
    if (ReadWholeFile(from, bytes, limit) != ReadResult::Ok)
        return false;
    return WriteWholeFile(to, bytes);
}

bool SyncDirectory(const std::string& path) {
    const int fd = ::open(NativePath(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0)
        return false;
    const bool synced = ::fsync(fd) == 0;
    ::close(fd);
    return synced;
}

std::string AbsolutePath(const std::string& path) {
    std::error_code ec;
    const fs::path absolute = fs::absolute(NativePath(path), ec);
    return ec ? NativePath(path) : absolute.lexically_normal().string();
}

std::string FileExtension(const std::string& path) {
    const std::string name = fs::path(NativePath(path)).filename().string();
    const auto dot = name.rfind('.');
    return (dot == std::string::npos || dot == 0) ? std::string() : name.substr(dot + 1);
}

std::string FileNameWithoutExtension(const std::string& path) {
    return fs::path(NativePath(path)).stem().string();
}

std::string FileNameOf(const std::string& path) {
    return fs::path(NativePath(path)).filename().string();
}

std::string DirectoryOf(const std::string& path) {
    return fs::path(NativePath(path)).parent_path().string();
}

}  // namespace platform
