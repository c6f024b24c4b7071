#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <utility>
#include <vector>

namespace velmora::demo {

// A small generator of random numbers (PCG, 32 bits out of 64) whose results are the same with every library, so that a
// seed makes the same demo site everywhere. Each subject draws from its own stream: a change of one leaves the
// others as they were.
class Random {
public:
    Random(std::uint64_t seed, std::uint64_t stream) : increment_((stream << 1U) | 1U) {
        Next();
        state_ += seed;
        Next();
    }

    std::uint32_t Next() {
        const std::uint64_t old = state_;
        state_ = old * 6364136223846793005ULL + increment_;
        const auto shifted = static_cast<std::uint32_t>(((old >> 18U) ^ old) >> 27U);
        const auto rotation = static_cast<std::uint32_t>(old >> 59U);
        return (shifted >> rotation) | (shifted << ((32U - rotation) & 31U));
    }

    // 0 to count - 1; `count` at least 1.
    int Below(int count) {
        return static_cast<int>((std::uint64_t{Next()} * static_cast<std::uint64_t>(count)) >> 32U);
    }
    // Both ends included.
    int Between(int low, int high) { return low + Below(high - low + 1); }
    bool Percent(int chance) { return Below(100) < chance; }

    template <typename List>
    const auto& Pick(const List& list) {
        return *(std::begin(list) + Below(static_cast<int>(std::size(list))));
    }

    // One of the items, each as often as its share of the sum of all shares.
    template <typename Item, typename Share>
    const Item& Draw(const std::vector<Item>& items, int sum, Share share) {
        int left = Below(sum);
        for (const Item& item : items) {
            left -= std::invoke(share, item);
            if (left < 0) {
                return item;
            }
        }
        return items.back();
    }

    template <typename T>
    void Shuffle(std::vector<T>& list) {
        for (std::size_t last = list.size(); last > 1; --last) {
            std::swap(list[last - 1], list[static_cast<std::size_t>(Below(static_cast<int>(last)))]);
        }
    }

private:
    std::uint64_t state_ = 0;
    std::uint64_t increment_;
};

} // namespace velmora::demo
