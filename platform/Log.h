#pragma once
#include <functional>
#include <string>
#include <vector>

namespace platform {

enum class LogLevel { Error, Warning, Message };

// Where a report comes from: the source file, the function as the operator's support reads it
// ("Project::LoadLane") and the line.
struct LogContext {
    const char* file;
    const char* function;
    int line;
};

using LogSink = std::function<void(LogLevel, const LogContext&, const std::string&)>;

// Installs the sink that receives every report and returns the previous one, once no report is
// in the previous sink any more. A sink must not report itself. The default sink
// writes to the standard error; the window installs one that shows warnings to the operator.
LogSink SetLogSink(LogSink sink);

void Log(LogLevel level, const LogContext& context, const std::string& message);

// Takes the warnings and errors that the current thread reports while it lives, instead of
// the sink: a check that reads files quietly and then reports once.
class ScopedLogCapture {
  public:
    ScopedLogCapture();
    ~ScopedLogCapture();
    ScopedLogCapture(const ScopedLogCapture&) = delete;
    ScopedLogCapture& operator=(const ScopedLogCapture&) = delete;
    const std::vector<std::string>& Messages() const { return messages_; }

  private:
    friend void Log(LogLevel, const LogContext&, const std::string&);
    std::vector<std::string> messages_;
    ScopedLogCapture* outer_;
};

// Source file name without its folders, as the log context shows it.
const char* BaseName(const char* path);

}  // namespace platform

#define CORVANE_LOG_WARNING(function, message) \
    ::platform::Log(::platform::LogLevel::Warning, {__FILE__, function, __LINE__}, message)
#define CORVANE_LOG_ERROR(function, message) \
    ::platform::Log(::platform::LogLevel::Error, {__FILE__, function, __LINE__}, message)
