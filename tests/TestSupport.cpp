#include "TestSupport.h"

#include "platform/FileSystem.h"

#include <arpa/inet.h>
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

TempDir::TempDir() {
    std::string pattern = (fs::temp_directory_path() / "corvane-test-XXXXXX").string();
    path_ = ::mkdtemp(pattern.data()) ? pattern : std::string();
    EXPECT_FALSE(path_.empty());
}

TempDir::~TempDir() {
    std::error_code ec;
    fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ec);
    fs::remove_all(path_, ec);
}

LogCapture::LogCapture() {
    previous_ = platform::SetLogSink(
        [this](platform::LogLevel, const platform::LogContext& context, const std::string& text) {
            std::lock_guard<std::mutex> lock(mutex_);
            messages_.push_back(text);
            functions_.push_back(context.function);
        });
}

LogCapture::~LogCapture() {
    platform::SetLogSink(previous_);
}

std::vector<std::string> LogCapture::Messages() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return messages_;
}

std::vector<std::string> LogCapture::Functions() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return functions_;
}

bool LogCapture::Contains(const std::string& fragment) const {
    std::lock_guard<std::mutex> lock(mutex_);
    for (const auto& message : messages_)
        if (message.find(fragment) != std::string::npos)
            return true;
    return false;
}

Bytes& Bytes::Int(int32_t value) {
    const auto raw = static_cast<uint32_t>(value);
    for (int shift = 0; shift < 32; shift += 8)
        data_.push_back(static_cast<uint8_t>(raw >> shift));
    return *this;
}

Bytes& Bytes::Str(const std::string& eightBit) {
    Int(static_cast<int32_t>(eightBit.size()));
    data_.insert(data_.end(), eightBit.begin(), eightBit.end());
    return *this;
}

Bytes& Bytes::Raw(const std::vector<uint8_t>& raw) {
    data_.insert(data_.end(), raw.begin(), raw.end());
    return *this;
}

std::vector<uint8_t> ReadFileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(in), {});
}

void WriteFileBytes(const std::string& path, const std::vector<uint8_t>& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
}

std::string ReadFileText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

void WriteFileText(const std::string& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
}

std::string AppDir() {
    return TEST_APP_DIR;
}

std::string PluginPath(const std::string& kind, const std::string& name) {
    return AppDir() + "/plugin/" + kind + "/" + name + ".dll";
}

namespace {
void* LoadedHandle(const std::string& libraryPath) {
    return ::dlopen(libraryPath.c_str(), RTLD_NOW | RTLD_NOLOAD);
}
}  // namespace

std::string JournalOf(const std::string& libraryPath) {
    void* handle = LoadedHandle(libraryPath);
    if (handle == nullptr)
        return "(not loaded)";
    using TextFn = const char* (*)();
    auto text = reinterpret_cast<TextFn>(::dlsym(handle, "TestJournalText"));
    std::string result = text ? text() : "(no journal)";
    ::dlclose(handle);
    return result;
}

void ClearJournal(const std::string& libraryPath) {
    void* handle = LoadedHandle(libraryPath);
    if (handle == nullptr)
        return;
    using ClearFn = void (*)();
    if (auto clear = reinterpret_cast<ClearFn>(::dlsym(handle, "TestJournalClear")))
        clear();
    ::dlclose(handle);
}

void SetScript(const std::string& libraryPath, const std::string& script) {
    void* handle = LoadedHandle(libraryPath);
    if (handle == nullptr)
        return;
    using SetFn = void (*)(const char*);
    auto set = reinterpret_cast<SetFn>(::dlsym(handle, "TestScriptSet"));
    if (set != nullptr)
        set(script.c_str());
    ::dlclose(handle);
}

void FillAppFolder(const TempDir& folder, const std::string& builtAppDir) {
    EXPECT_EQ(::symlink((builtAppDir + "/plugin").c_str(), folder.File("plugin").c_str()), 0);
    for (const char* file : {"templates.xml", "countrycodes.txt"})
        platform::CopyFileOver(builtAppDir + "/" + file, folder.File(file));
    platform::MakeDirectory(folder.File("templ"));
    platform::CopyFileOver(builtAppDir + "/templ/probematches_templ.xml",
                           folder.File("templ/probematches_templ.xml"));
}

int ConnectFromAddress(const char* source, int port) {
    const int sock = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in from{};
    from.sin_family = AF_INET;
    ::inet_pton(AF_INET, source, &from.sin_addr);
    ::bind(sock, reinterpret_cast<sockaddr*>(&from), sizeof from);
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_port = htons(static_cast<uint16_t>(port));
    to.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(sock, reinterpret_cast<sockaddr*>(&to), sizeof to) != 0) {
        ::close(sock);
        return -1;
    }
    return sock;
}
