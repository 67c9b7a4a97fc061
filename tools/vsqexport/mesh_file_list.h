#pragma once

#include <map>
#include <string>
#include <vector>

namespace vsqexport {

/// The mesh files that exports to one target have made. Each export adds new ones, which a later
/// export to the same target can remove.
///
/// The list is a hidden text file beside the target: `.shot.vsq.meshes`. A line holds a
/// mark of a mesh file - its size, a hash and the time of its last change - and its whole path, in
/// the bytes of the scene.
class MeshFileList {
public:
    /// Reads the list of a target. A file of another form counts as none. `target` is UTF-8.
    explicit MeshFileList(const std::string& target);

    /// Takes the mesh files of a new export. With `clean`, all others of the list are removed; a
    /// file that has another mark, or isn't in a resource folder's "Animations/3ds max", isn't.
    /// Then writes the list, or removes it if it is empty. Throws `std::runtime_error` with one
    /// line if that fails.
    void update(const std::vector<std::string>& new_files, bool clean);

private:
    std::string path_;
    std::map<std::string, std::string> marks_;  // by the path
};

}  // namespace vsqexport
