// A value that callers post and the callback reads without waiting: a sequence lock. The sequence number is odd during
// a post. A reader that finds it odd, or changed after reading, may hold parts of two values; it discards them and
// tries again with the next block. The value is stored in atomic words, so that such a read is harmless.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace hullrider {

template <typename T>
class Posted {
public:
    // One caller at a time. Returns the value's number: 1 for the first, at most 31 bits.
    uint32_t Post(const T& value) {
        Words words{};
        std::memcpy(words.data(), &value, sizeof value);
        const uint32_t before = sequence_.load();
        sequence_.store(before + 1);
        for (size_t i = 0; i < kWords; i++) words_[i].store(words[i]);
        sequence_.store(before + 2);
        return (before + 2) / 2;
    }

    // Any thread. Reads the newest value if its number differs from `seen`, which then becomes that number; 0 stands
    // for no value.
    bool ReadNewer(uint32_t& seen, T& value) const {
        const uint32_t before = sequence_.load();
        if (before % 2 != 0 || before / 2 == seen) return false;
        Words words;
        for (size_t i = 0; i < kWords; i++) words[i] = words_[i].load();
        // In the total order of these accesses, no post began between the two loads.
        if (sequence_.load() != before) return false;
        std::memcpy(static_cast<void*>(&value), words.data(), sizeof value);
        seen = before / 2;
        return true;
    }

private:
    static constexpr size_t kWords = (sizeof(T) + sizeof(uint64_t) - 1) / sizeof(uint64_t);
    using Words = std::array<uint64_t, kWords>;
    static_assert(std::is_trivially_copyable_v<T>);
    static_assert(std::atomic<uint64_t>::is_always_lock_free);

    std::atomic<uint32_t> sequence_{0};
    std::array<std::atomic<uint64_t>, kWords> words_{};
};

}  // namespace hullrider
