#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "tests/support/installation_entries.h"
#include "tests/support/temporary_folder.h"

/// An installation of the renderer that is registered during the object's lifetime. Exports put
/// their mesh files into its resource folder.
class ExportedLibraries {
public:
    ExportedLibraries()
        : entries_(installation_entries("HKEY_CURRENT_USER", "Velmora 11", folder_ / "program",
                                        folder_.path().u8string(), folder_.path().u8string())) {
        std::ofstream(folder_.path() / "program") << "program";
        std::filesystem::create_directories(folder_.path() / "textures");
        std::filesystem::create_directories(animations());
    }

    /// The folder in which exports create theirs.
    std::filesystem::path animations() const { return folder_.path() / "Animations"; }

    /// The paths of the mesh files so far, sorted.
    std::vector<std::string> paths() const {
        std::vector<std::string> found;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(animations())) {
            if (entry.is_regular_file()) {
                found.push_back(entry.path().u8string());
            }
        }
        std::sort(found.begin(), found.end());
        return found;
    }

    /// The names of the mesh files so far, without their folder.
    std::vector<std::string> names() const {
        std::vector<std::string> result = paths();
        for (std::string& path : result) {
            path = std::filesystem::u8path(path).filename().u8string();
        }
        return result;
    }

private:
    TemporaryFolder folder_;
    RegistryEntries entries_;
};

/// The blocks of a mesh file as numbers. The file must be well-formed.
struct LibraryArrays {
    using Vector = std::array<float, 3>;
    struct Frame {
        std::uint32_t number;
        float time;
        std::uint32_t ranges[8];  // starts and counts of triangles, vertices, normals and uvs
    };

    explicit LibraryArrays(const std::string& path_utf8) {
        const std::string bytes = file_contents(path_utf8);
        header = bytes.substr(0, 64);
        std::map<std::uint32_t, std::string> payloads;  // by tag
        for (size_t at = 64; at < bytes.size();) {
            std::uint32_t head[2];
            std::memcpy(head, bytes.data() + at, sizeof head);
            payloads[head[0]] = bytes.substr(at + 8, head[1]);
            at += 8 + size_t{head[1]};
        }
        const auto take = [&payloads](std::uint32_t tag, auto& elements) {
            const std::string& payload = payloads[tag];
            elements.resize(payload.size() / sizeof elements[0]);
            std::copy(payload.begin(), payload.end(), reinterpret_cast<char*>(elements.data()));
        };
        take(9, frames);
        take(1, triangles);
        take(2, vertices);
        take(3, normals);
        take(5, uvs);
    }

    std::string header;
    std::vector<Frame> frames;
    std::vector<std::uint32_t> triangles;
    std::vector<Vector> vertices;
    std::vector<Vector> normals;
    std::vector<std::array<float, 2>> uvs;
};
