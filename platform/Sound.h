#pragma once

namespace platform {

// A short audible signal for a failure the operator should hear of: the terminal bell on a
// console, and a log line in every case, so a machine without a speaker still records it.
void Beep(int frequencyHz, int durationMs);

}  // namespace platform
