#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vsqexport {

/// The mesh files that exports to one target have made. Each export adds new ones, which a later
/// export to the same target can remove.
///
/// The list is a hidden text file beside the target: `.shot.vsq.meshes`. A line holds the size of a
/// mesh file and its path, in the bytes of the scene.
class MeshFileList {
public:
    /// Reads the list of a target. A file of another form counts as none. `target` is UTF-8.
    explicit MeshFileList(const std::string& target);

    /// Takes the mesh files of a new export. With `clean`, all others of the list are removed; a
    /// file that isn't a mesh file of the listed size isn't. Then writes the list, or removes it if
    /// it is empty. Throws `std::runtime_error` with one line if that fails.
    void update(const std::vector<std::string>& new_files, bool clean);

private:
    std::string path_;
    std::map<std::string, std::uint64_t> sizes_;  // by the path
};

}  // namespace vsqexport
