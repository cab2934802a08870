// The demo's own random numbers: splitmix64, so that one seed gives the same
// utility with every compiler and standard library (the std distributions
// are free to differ between implementations).
#pragma once

#include <cstddef>
#include <cstdint>

namespace tarvin::demo {

inline std::uint64_t splitmix64(std::uint64_t& state) {
    std::uint64_t z = (state += 0x9E3779B97F4A7C15ULL);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
}

// Mixes a seed with a stream number (a customer, a unit, a purpose) into an
// independent starting state: customer i's data then depends only on the
// seed and i, not on how many numbers anything before it drew.
inline std::uint64_t streamSeed(std::uint64_t seed, std::uint64_t stream) {
    std::uint64_t s = seed ^ (stream * 0xD1B54A32D192ED03ULL + 0x8CB92BA72F3D8DD7ULL);
    splitmix64(s);
    return splitmix64(s);
}

class Random {
public:
    explicit Random(std::uint64_t state = 0) : state_(state) {}
    Random(std::uint64_t seed, std::uint64_t stream) : state_(streamSeed(seed, stream)) {}

    std::uint64_t next() { return splitmix64(state_); }
    // 0 <= value < n (n > 0); the modulo bias is far below anything visible.
    std::int64_t below(std::int64_t n) { return n <= 1 ? 0 : std::int64_t(next() % std::uint64_t(n)); }
    // lo <= value <= hi
    std::int64_t between(std::int64_t lo, std::int64_t hi) { return lo + below(hi - lo + 1); }
    // 0 <= value < 1, 53 bits
    double unit() { return double(next() >> 11) * (1.0 / 9007199254740992.0); }
    double real(double lo, double hi) { return lo + (hi - lo) * unit(); }
    bool chance(double p) { return unit() < p; }
    template <typename T, std::size_t N>
    const T& pick(const T (&items)[N]) { return items[below(std::int64_t(N))]; }

private:
    std::uint64_t state_;
};

}  // namespace tarvin::demo
