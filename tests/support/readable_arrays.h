#pragma once

#include <cstdint>
#include <cstring>
#include <string>

/// Replaces the binary integer arrays in a scene file with their numbers, each with a blank after
/// it.
inline std::string with_readable_integers(const std::string& text) {
    const std::string mark = "\1\2\3i";
    std::string readable;
    size_t at = 0;
    for (size_t start; (start = text.find(mark, at)) != std::string::npos;) {
        readable += text.substr(at, start - at);
        at = start + mark.size();
        const auto next = [&] {
            std::int32_t number;
            std::memcpy(&number, text.data() + at, sizeof number);
            at += sizeof number;
            return number;
        };
        for (std::int32_t left = next(); left > 0; --left) {
            readable += std::to_string(next()) + " ";
        }
    }
    return readable + text.substr(at);
}
