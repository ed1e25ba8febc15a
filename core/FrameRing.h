#pragma once
#include <atomic>
#include <memory>

// Three-slot hand-over from a producing worker to a view. The producer fills the slot at the
// index and then advances it; the view reads the slot before the index. Slots are swapped as
// whole shared pointers, so a view that falls behind sees an older picture, never a torn one.
template <typename Picture>
class FrameRing {
  public:
    static constexpr int kSlots = 3;

    void Publish(Picture picture) {
        const int slot = next_.load(std::memory_order_relaxed);
        std::atomic_store_explicit(&slots_[slot],
                                   std::make_shared<const Picture>(std::move(picture)),
                                   std::memory_order_release);
        next_.store(slot == kSlots - 1 ? 0 : slot + 1, std::memory_order_release);
    }

    // The most recent picture, or null when none was published since the last Clear.
    std::shared_ptr<const Picture> Latest() const {
        const int next = next_.load(std::memory_order_acquire);
        const int slot = next == 0 ? kSlots - 1 : next - 1;
        return std::atomic_load_explicit(&slots_[slot], std::memory_order_acquire);
    }

    void Clear() {
        for (auto& slot : slots_)
            std::atomic_store(&slot, std::shared_ptr<const Picture>());
        next_.store(0, std::memory_order_release);
    }

    int NextSlot() const { return next_.load(std::memory_order_acquire); }

  private:
    std::shared_ptr<const Picture> slots_[kSlots];
    std::atomic<int> next_{0};
};
