#pragma once

#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

/// A moving node of a scene file: its matrix, and what its track of changes multiplies it with.
struct ExportedTrack {
    using Matrix = std::array<double, 16>;

    std::string node;
    Matrix base = {};
    std::vector<std::int32_t> timestamps;
    std::vector<Matrix> changes;
};

/// Numbers from `at` on, with blanks, commas or line ends between them.
inline ExportedTrack::Matrix read_matrix(const std::string& text, size_t& at) {
    ExportedTrack::Matrix matrix;
    for (double& number : matrix) {
        at = text.find_first_of("-0123456789", at);
        char* end = nullptr;
        number = std::strtod(text.c_str() + at, &end);
        at = static_cast<size_t>(end - text.c_str());
    }
    return matrix;
}

/// Reads the tracks of nodes, not of cameras, off the bytes of a scene file that is well formed.
inline std::vector<ExportedTrack> tracks_of(const std::string& text) {
    const auto behind = [&text](const std::string& word, size_t at) {
        return text.find(word, at) + word.size();
    };
    std::vector<ExportedTrack> tracks;
    for (size_t at = text.find("3ds_animation\" {"); at != std::string::npos;
         at = text.find("3ds_animation\" {", at)) {
        const size_t name = text.rfind('"', at) + 1;
        ExportedTrack track;
        track.node = text.substr(name, at - name);
        size_t base = text.rfind("\ntransform ", at);
        at = behind("\"timestamps\" [ \1\2\3i", at);
        if (track.node.empty()) {
            continue;
        }
        track.base = read_matrix(text, base);
        // Integers are a block of bytes behind their number.
        std::uint32_t count = 0;
        std::memcpy(&count, text.data() + at, sizeof count);
        track.timestamps.resize(count);
        std::memcpy(track.timestamps.data(), text.data() + at + sizeof count, 4 * size_t{count});
        at = behind("\"matrices\" [ ", at);
        while (track.changes.size() < count) {
            track.changes.push_back(read_matrix(text, at));
        }
        tracks.push_back(track);
    }
    return tracks;
}
