#pragma once
#include <string>

// The project block that travels between a workstation and a runtime on TCP 14400: seven
// sections, each an opening tag, the exact bytes of one project file and a closing tag.
namespace ProjectBlock {

constexpr int kRuntimePort = 14400;
constexpr const char* kDownloadRequest = "<DOWNLOAD>DWN<\\DOWNLOAD>";
constexpr const char* kRebootRequest = "<REQREBOOT><\\REQREBOOT>";
constexpr const char* kOk = "<OK>";
// A block must stay below this size and arrive within kTransferMs of its first byte.
constexpr size_t kMaxBlock = 1000000;
constexpr int kTransferMs = 10000;
constexpr size_t kReadSize = 1000;
constexpr int kSocketTimeoutMs = 1000;

constexpr int kSections = 7;
struct Section {
    const char* tag;   // FILEPROJECT: <FILEPROJECT> ... <\FILEPROJECT>
    const char* file;  // nullptr for the project file, whose name is the project's
};
extern const Section kSectionTable[kSections];

std::string OpeningTag(const Section& section);
// Where a section's file lies in folder: its own name, or projectFile for the project file.
std::string SectionPath(const std::string& folder, const Section& section,
                        const std::string& projectFile);
std::string ClosingTag(const Section& section);

// The block of the files in folder, the project file being projectFile; a file that is
// missing makes an empty section. Empty when the block cannot be made whole: a file cannot be
// read, or the block would not stay below kMaxBlock; problem then says which and why.
std::string Compose(const std::string& folder, const std::string& projectFile,
                    std::string* problem = nullptr);

// The key prefix that a runtime with a shared key expects before any request:
// <KEY>key<\KEY>. Empty for an empty key, so that peers without one send the plain requests.
std::string KeyPrefix(const std::string& key);
// Reads a shared key from a file (its first line); empty when there is none.
std::string ReadKeyFile(const std::string& path);

// When every tag is in the buffer, writes each section in turn into folder (the project file
// as projectFile) and answers true after the last. A section whose opening tag stands behind
// its closing one ends the check there; sections written before it stay written. False too
// when a file cannot be written whole, problem then says which and why.
bool WriteSections(const std::string& buffer, const std::string& folder,
                   const std::string& projectFile, std::string* problem = nullptr);

}  // namespace ProjectBlock
