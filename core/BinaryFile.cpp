#include "BinaryFile.h"

#include "platform/CodePage.h"

bool BinaryReader::Take(size_t count, const uint8_t*& data) {
    if (failed_ || count > bytes_.size() - position_) {
        failed_ = true;
        return false;
    }
    data = bytes_.data() + position_;
    position_ += count;
    return true;
}

bool BinaryReader::ReadInt(int32_t& value) {
    const uint8_t* data = nullptr;
    if (!Take(4, data))
        return false;
    const uint32_t raw = static_cast<uint32_t>(data[0]) | (static_cast<uint32_t>(data[1]) << 8) |
                         (static_cast<uint32_t>(data[2]) << 16) |
                         (static_cast<uint32_t>(data[3]) << 24);
    value = static_cast<int32_t>(raw);
    return true;
}

bool BinaryReader::ReadString(std::string& value) {
    int32_t length = 0;
    if (!ReadInt(length))
        return false;
    if (length < 0) {
        failed_ = true;
        return false;
    }
    const uint8_t* data = nullptr;
    if (!Take(static_cast<size_t>(length), data))
        return false;
    value = platform::AnsiToUtf8(
        std::string(reinterpret_cast<const char*>(data), static_cast<size_t>(length)), codePage_);
    return true;
}

bool BinaryReader::ReadBytes(size_t count, std::vector<uint8_t>& out) {
    const uint8_t* data = nullptr;
    if (!Take(count, data))
        return false;
    out.assign(data, data + count);
    return true;
}

void BinaryWriter::WriteInt(int32_t value) {
    const auto raw = static_cast<uint32_t>(value);
    for (int shift = 0; shift < 32; shift += 8)
        bytes_.push_back(static_cast<uint8_t>(raw >> shift));
}

void BinaryWriter::WriteString(const std::string& value) {
    const std::string ansi = platform::Utf8ToAnsi(value, codePage_);
    WriteInt(static_cast<int32_t>(ansi.size()));
    bytes_.insert(bytes_.end(), ansi.begin(), ansi.end());
}
