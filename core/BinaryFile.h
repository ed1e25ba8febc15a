#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "platform/CodePage.h"

// Little-endian 32-bit integers and length-prefixed 8-bit strings, as the binary files hold
// them. Every read is bounded by what the buffer holds: a count, length or size beyond the end
// fails the read, and once a read failed all further reads fail too.
class BinaryReader {
  public:
    // codePage: the 8-bit code page of the strings (the project's, for its component files).
    explicit BinaryReader(std::vector<uint8_t> bytes, int codePage = platform::kWesternCodePage)
        : bytes_(std::move(bytes)), codePage_(codePage) {}

    bool ReadInt(int32_t& value);
    // A string: its length N, then N bytes in the 8-bit code page, returned as UTF-8.
    bool ReadString(std::string& value);
    bool ReadBytes(size_t count, std::vector<uint8_t>& out);

    size_t Remaining() const { return failed_ ? 0 : bytes_.size() - position_; }
    size_t Position() const { return position_; }
    bool Failed() const { return failed_; }

  private:
    bool Take(size_t count, const uint8_t*& data);

    std::vector<uint8_t> bytes_;
    int codePage_;
    size_t position_ = 0;
    bool failed_ = false;
};

class BinaryWriter {
  public:
    explicit BinaryWriter(int codePage = platform::kWesternCodePage) : codePage_(codePage) {}
    void WriteInt(int32_t value);
    // Converts to the 8-bit code page; the length written is the count of 8-bit characters.
    void WriteString(const std::string& value);
    const std::vector<uint8_t>& Bytes() const { return bytes_; }

  private:
    int codePage_;
    std::vector<uint8_t> bytes_;
};

// Binary project files are small; anything larger than this is refused as damaged.
constexpr size_t kMaxBinaryFileSize = 64u << 20;
