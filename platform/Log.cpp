#include "Log.h"

#include <cstdio>
#include <cstring>
#include <mutex>

namespace platform {
namespace {

std::mutex& SinkMutex() {
    static std::mutex mutex;
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
    std::lock_guard<std::mutex> lock(SinkMutex());
    LogSink previous = CurrentSink();
    CurrentSink() = sink ? std::move(sink) : LogSink(WriteToStandardError);
    return previous;
}

void Log(LogLevel level, const LogContext& context, const std::string& message) {
    if (t_capture != nullptr && level != LogLevel::Message) {
        t_capture->messages_.push_back(message);
        return;
    }
    LogSink sink;
    {
        std::lock_guard<std::mutex> lock(SinkMutex());
        sink = CurrentSink();
    }
    sink(level, context, message);
}

const char* BaseName(const char* path) {
    const char* slash = std::strrchr(path, '/');
    return slash ? slash + 1 : path;
}

}  // namespace platform
