#include "Sound.h"

#include <unistd.h>

#include <string>

#include "Log.h"

namespace platform {

void Beep(int frequencyHz, int durationMs) {
    if (::isatty(STDERR_FILENO) == 1) {
        const char bell = '\a';
        [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, &bell, 1);
    }
    Log(LogLevel::Message, {__FILE__, "Beep", __LINE__},
        "Beep " + std::to_string(frequencyHz) + " Hz " + std::to_string(durationMs) + " ms");
}

}  // namespace platform
