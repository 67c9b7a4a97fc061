#pragma once

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

/// The bytes of mesh files, built without the product's writer.
namespace qort_bytes {

inline std::string words(const std::vector<std::uint32_t>& numbers) {
    std::string bytes;
    for (const std::uint32_t number : numbers) {
        for (int shift = 0; shift < 32; shift += 8) {
            bytes += static_cast<char>(number >> shift & 0xff);
        }
    }
    return bytes;
}

inline std::string floats(const std::vector<float>& numbers) {
    std::vector<std::uint32_t> bits(numbers.size());
    std::memcpy(bits.data(), numbers.data(), numbers.size() * sizeof(float));
    return words(bits);
}

inline std::string header(bool has_frames, const std::vector<float>& box, std::uint32_t data_end) {
    return "qorT" + words({3, has_frames ? 1u : 0u, has_frames ? 64u : 0u}) + floats(box) +
           words({data_end, 0, 0, 0, 0, 0});
}

inline std::string block(std::uint32_t tag, const std::string& payload) {
    return words({tag, static_cast<std::uint32_t>(payload.size())}) + payload;
}

/// `ranges` are the starts and counts of triangles, vertices, normals and texture coordinates.
inline std::string frame(std::uint32_t number, float time,
                         const std::vector<std::uint32_t>& ranges) {
    return words({number}) + floats({time}) + words(ranges);
}

}  // namespace qort_bytes
