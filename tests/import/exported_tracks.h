#pragma once

#include <algorithm>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "tests/support/readable_arrays.h"

/// A moving node of a scene file.
struct ExportedTrack {
    std::string node;
    std::vector<double> matrix;
    std::vector<double> timestamps;
    std::vector<double> changes;  // for each timestamp the matrix that multiplies the node's
};

/// The first numbers after `at`, separated by blanks, commas or line feeds.
inline std::vector<double> numbers_after(const std::string& text, size_t at) {
    const std::string digits = "-0123456789";
    const size_t start = text.find_first_of(digits, at);
    const size_t end = text.find_first_not_of(digits + ".e+, \n", start);
    std::string list = text.substr(start, end - start);
    std::replace(list.begin(), list.end(), ',', ' ');
    std::istringstream stream(list);
    return {std::istream_iterator<double>(stream), {}};
}

/// The tracks of nodes, but not of cameras, in the bytes of a well-formed scene file.
inline std::vector<ExportedTrack> tracks_of(const std::string& bytes) {
    const std::string text = with_readable_integers(bytes);
    std::vector<ExportedTrack> tracks;
    for (size_t at = 0; (at = text.find("3ds_animation\" {", at + 1)) != std::string::npos;) {
        const size_t name = text.rfind('"', at) + 1;
        if (name < at) {
            tracks.push_back({text.substr(name, at - name),
                              numbers_after(text, text.rfind("\ntransform ", at)),
                              numbers_after(text, text.find("\"timestamps\"", at)),
                              numbers_after(text, text.find("\"matrices\"", at))});
        }
    }
    return tracks;
}
