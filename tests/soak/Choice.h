#pragma once

#include <cstdint>

/// The soak's only source of randomness: the same seed gives the same choices with every compiler.
class Choice
{
public:
    explicit Choice(std::uint64_t seed)
        : state(seed)
    { }

    std::uint64_t bits()
    {
        std::uint64_t mixed = state += 0x9e3779b97f4a7c15u;
        mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9u;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebu;
        return mixed ^ (mixed >> 31);
    }

    /// \return whole number in [0, limit), 0 when the limit is less than 1
    int below(int limit)
    {
        return limit < 1 ? 0 : static_cast<int>(bits() % static_cast<std::uint64_t>(limit));
    }
    /// \return whole number in [low, high]
    int between(int low, int high) { return low + below(high - low + 1); }
    bool oneIn(int chances) { return below(chances) == 0; }

    template <typename Container> auto oneOf(const Container &container)
    {
        return *(container.begin() + below(static_cast<int>(container.size())));
    }

private:
    std::uint64_t state;
};
