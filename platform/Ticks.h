#pragma once
#include <cstdint>

namespace platform {

// Millisecond tick of all time-outs and rate limits. It wraps every 49.7 days, so ticks are
// compared only by unsigned subtraction (ElapsedTicks).
uint32_t GetTickCount();

inline uint32_t ElapsedTicks(uint32_t now, uint32_t then) {
    return now - then;
}

void SleepMs(int milliseconds);

}  // namespace platform
