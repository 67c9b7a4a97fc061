#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

/// The entry point that libFuzzer calls for each input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

/// Ends the program if a result is wrong, so that the fuzzer keeps the input.
inline void require(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "wrong: %s\n", what);
        std::abort();
    }
}

/// Takes an input apart into numbers and texts. Behind its end everything is 0 or empty.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : next_(data), left_(size) {}

    bool is_at_end() const { return left_ == 0; }

    template <typename Number>
    Number take() {
        Number number{};
        const std::size_t count = left_ < sizeof number ? left_ : sizeof number;
        std::memcpy(&number, next_, count);
        skip(count);
        return number;
    }

    /// From 0 to `limit` - 1.
    unsigned below(unsigned limit) { return take<std::uint8_t>() % limit; }

    /// At most 15 bytes, without null.
    std::string text() {
        std::string bytes;
        for (unsigned left = below(16); left > 0; --left) {
            const char c = static_cast<char>(take<std::uint8_t>());
            bytes += c == '\0' ? 'a' : c;
        }
        return bytes;
    }

    std::string rest() {
        std::string bytes(reinterpret_cast<const char*>(next_), left_);
        skip(left_);
        return bytes;
    }

private:
    void skip(std::size_t count) {
        next_ += count;
        left_ -= count;
    }

    const std::uint8_t* next_;
    std::size_t left_;
};
