#pragma once
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "platform/Log.h"

// A fresh directory below the system's temporary folder, removed with everything in it.
class TempDir {
  public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    const std::string& Path() const { return path_; }
    std::string File(const std::string& name) const { return path_ + "/" + name; }

  private:
    std::string path_;
};

// Collects the warnings and errors reported while it lives.
class LogCapture {
  public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    // Copies: reports may come from other threads while the test reads.
    std::vector<std::string> Messages() const;
    std::vector<std::string> Functions() const;
    bool Contains(const std::string& fragment) const;

  private:
    platform::LogSink previous_;
    mutable std::mutex mutex_;
    std::vector<std::string> messages_;
    std::vector<std::string> functions_;
};

// Little-endian image of a binary file, built field by field.
class Bytes {
  public:
    Bytes& Int(int32_t value);
    Bytes& Str(const std::string& eightBit);
    Bytes& Raw(const std::vector<uint8_t>& raw);
    const std::vector<uint8_t>& Data() const { return data_; }

  private:
    std::vector<uint8_t> data_;
};

std::vector<uint8_t> ReadFileBytes(const std::string& path);
void WriteFileBytes(const std::string& path, const std::vector<uint8_t>& bytes);
std::string ReadFileText(const std::string& path);
void WriteFileText(const std::string& path, const std::string& text);

// Makes folder an application folder of the build in builtAppDir: its plug-ins (linked), the
// stock templates, country codes and discovery answer (copied).
void FillAppFolder(const TempDir& folder, const std::string& builtAppDir);

// The test application folder with its ./plugin/<kind>/ directories.
std::string AppDir();
// Path of a test plug-in library, e.g. PluginPath("board", "TestBoard").
std::string PluginPath(const std::string& kind, const std::string& name);
// The call journal of a loaded test plug-in, and its reset.
std::string JournalOf(const std::string& libraryPath);
void ClearJournal(const std::string& libraryPath);
// Sets the script of a loaded test plug-in ("key=value" lines).
void SetScript(const std::string& libraryPath, const std::string& script);

// A TCP connection to a port of 127.0.0.1 from a chosen loopback address, as a client of that
// address would come; -1 when refused.
int ConnectFromAddress(const char* source, int port);
