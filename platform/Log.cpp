#include "Log.h"

#include <cstdio>
#include <cstring>
#include <mutex>
#include <shared_mutex>

namespace platform {
namespace {

// Reports hold it shared while they are in the sink; a change of sink holds it alone, so when
// SetLogSink returns no thread is still inside the sink it replaced.
std::shared_mutex& SinkMutex() {
    static std::shared_mutex mutex;
    return mutex;
}

void WriteToStandardError(LogLevel level, const LogContext& context, const std::string& message) {
    const char* label = level == LogLevel::Error     ? "Error"
                        : level == LogLevel::Warning ? "Warning"
                                                     : "Message";
    std::fprintf(stderr, "%s: %s (%s:%d, %s)\n", label, message.c_str(), BaseName(context.file),
                 context.line, context.function);
}

LogSink& CurrentSink() {
    static LogSink sink = WriteToStandardError;
    return sink;
}

thread_local ScopedLogCapture* t_capture = nullptr;

}  // namespace

ScopedLogCapture::ScopedLogCapture() : outer_(t_capture) {
    t_capture = this;
}

ScopedLogCapture::~ScopedLogCapture() {
    t_capture = outer_;
}

LogSink SetLogSink(LogSink sink) {
    std::unique_lock<std::shared_mutex> lock(SinkMutex());
    LogSink previous = CurrentSink();
    CurrentSink() = sink ? std::move(sink) : LogSink(WriteToStandardError);
    return previous;
}

void Log(LogLevel level, const LogContext& context, const std::string& message) {
    if (t_capture != nullptr && level != LogLevel::Message) {
        t_capture->messages_.push_back(message);
        return;
    }
    std::shared_lock<std::shared_mutex> lock(SinkMutex());
    CurrentSink()(level, context, message);
}

const char* BaseName(const char* path) {
    const char* slash = std::strrchr(path, '/');
    return slash ? slash + 1 : path;
}

}  // namespace platform
