#pragma once
#include <cstdint>
#include <string>
#include <vector>

namespace platform {

// Paths of the program are written with either separator; both name the same place here.
std::string NativePath(std::string path);

std::string GetWorkingDirectory();
bool SetWorkingDirectory(const std::string& path);

// Changes the working directory for one scope and returns to the previous one on exit.
class ScopedWorkingDirectory {
  public:
    explicit ScopedWorkingDirectory(const std::string& path);
    ~ScopedWorkingDirectory();
    ScopedWorkingDirectory(const ScopedWorkingDirectory&) = delete;
    ScopedWorkingDirectory& operator=(const ScopedWorkingDirectory&) = delete;
    bool Entered() const { return entered_; }

  private:
    std::string previous_;
    bool entered_ = false;
};

bool FileExists(const std::string& path);
bool DirectoryExists(const std::string& path);
// Creates one directory level; fails when it already exists or the parent is missing.
bool MakeDirectory(const std::string& path);
// Removes a folder and everything in it; nothing happens when it is not there.
void RemoveTree(const std::string& path);
bool CopyFileOver(const std::string& from, const std::string& to);

// Lists every entry of a directory (files, folders, hidden ones) by name, sorted by name.
// Returns false when the directory cannot be opened.
bool ListDirectory(const std::string& path, std::vector<std::string>& names);

enum class ReadResult { Ok, Missing, CannotOpen, TooLarge };

// Reads a whole file, refusing files larger than limit bytes.
ReadResult ReadWholeFile(const std::string& path, std::vector<uint8_t>& bytes, size_t limit);
ReadResult ReadWholeFile(const std::string& path, std::string& text, size_t limit);

// Writes through a temporary file and a rename, so a failed write never leaves a half file.
// A symbolic link is followed and stays; the file keeps its permissions and owner; a file that
// nobody may write is refused and left as it is.
bool WriteWholeFile(const std::string& path, const void* data, size_t size);
inline bool WriteWholeFile(const std::string& path, const std::string& text) {
    return WriteWholeFile(path, text.data(), text.size());
}
inline bool WriteWholeFile(const std::string& path, const std::vector<uint8_t>& bytes) {
    return WriteWholeFile(path, bytes.data(), bytes.size());
}

// Copies a file of at most limit bytes through WriteWholeFile: the copy is whole and on disk,
// or the call fails (errno says why) and the target is left as it was.
bool CopyFileWhole(const std::string& from, const std::string& to, size_t limit);
// Puts a folder's entries (new names, renames) on disk.
bool SyncDirectory(const std::string& path);

// The path made absolute against the working directory, with "." and ".." folded.
std::string AbsolutePath(const std::string& path);
std::string FileExtension(const std::string& path);
std::string FileNameWithoutExtension(const std::string& path);
// The last part of a path: "site.tlr" of "/p/site.tlr".
std::string FileNameOf(const std::string& path);
std::string DirectoryOf(const std::string& path);

}  // namespace platform
