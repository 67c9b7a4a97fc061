#pragma once

#include <array>
#include <cstdint>

namespace vsqpicture {

/// Random numbers of one sample of one pixel. They depend on nothing but what the constructor gets,
/// so a picture is the same whichever thread draws a pixel.
///
/// Successive samples of a pixel are spread evenly, in each pair of numbers, by scrambled Sobol
/// points; this gives less noise than independent numbers.
class RandomNumbers {
public:
    RandomNumbers(std::uint32_t seed, std::uint32_t pixel, std::uint32_t sample)
        : scramble_(mixed(seed * 0x9e3779b9u + mixed(pixel))), sample_(sample) {}

    /// Two numbers from 0 up to, but not including, 1.
    std::array<float, 2> pair() {
        const std::uint32_t key = mixed(scramble_ + ++pairs_ * 0x85ebca6bu);
        const std::uint32_t index = scrambled(sample_, key);
        return {to_float(scrambled(reversed(index), mixed(key ^ 0xa511e9b3u))),
                to_float(scrambled(second_sobol(index), mixed(key ^ 0x63d83595u)))};
    }

    float one() { return pair()[0]; }

private:
    static std::uint32_t mixed(std::uint32_t x) {
        x ^= x >> 16;
        x *= 0x7feb352du;
        x ^= x >> 15;
        x *= 0x846ca68bu;
        return x ^ x >> 16;
    }

    static std::uint32_t reversed(std::uint32_t x) {
        x = x << 16 | x >> 16;
        x = (x & 0x00ff00ffu) << 8 | (x & 0xff00ff00u) >> 8;
        x = (x & 0x0f0f0f0fu) << 4 | (x & 0xf0f0f0f0u) >> 4;
        x = (x & 0x33333333u) << 2 | (x & 0xccccccccu) >> 2;
        return (x & 0x55555555u) << 1 | (x & 0xaaaaaaaau) >> 1;
    }

    // Flips each bit depending on the higher ones only, which keeps the points' even spread.
    static std::uint32_t scrambled(std::uint32_t x, std::uint32_t key) {
        x = reversed(x);
        x += key;
        x ^= x * 0x6c50b47cu;
        x ^= x * 0xb82f1e52u;
        x ^= x * 0xc7afe638u;
        x ^= x * 0x8d22f6e6u;
        return reversed(x);
    }

    static std::uint32_t second_sobol(std::uint32_t index) {
        std::uint32_t result = 0;
        for (std::uint32_t direction = 0x80000000u; index != 0; index >>= 1) {
            if ((index & 1) != 0) {
                result ^= direction;
            }
            direction ^= direction >> 1;
        }
        return result;
    }

    static float to_float(std::uint32_t x) {
        return static_cast<float>(x >> 8) * (1.0f / 16777216.0f);
    }

    std::uint32_t scramble_;
    std::uint32_t sample_;
    std::uint32_t pairs_ = 0;
};

}  // namespace vsqpicture
