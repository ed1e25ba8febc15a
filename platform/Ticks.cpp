#include "Ticks.h"

#include <chrono>
#include <thread>

namespace platform {

uint32_t GetTickCount() {
    const auto since_boot = std::chrono::steady_clock::now().time_since_epoch();
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(since_boot).count();
    return static_cast<uint32_t>(static_cast<uint64_t>(ms));
}

void SleepMs(int milliseconds) {
    if (milliseconds > 0)
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace platform
