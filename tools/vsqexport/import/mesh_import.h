#pragma once

#include <cstdint>
#include <vector>

#include <assimp/mesh.h>

#include "standins/host/sdk/max.h"

namespace vsqexport {

/// False for a mesh one of whose faces names a vertex that isn't there.
bool faces_stay_in_range(const aiMesh& mesh);

struct MeshPart {
    const aiMesh* mesh;
    MtlID material_id;
};

/// Stands for a source that no triangle uses.
inline constexpr std::uint32_t kNoVertex = 0xFFFFFFFF;

/// Puts the triangles of `parts` together to one mesh of the host; points and lines are left out.
/// False, with nothing changed, if there are no triangles.
///
/// A file's reader splits a vertex by its normal and its coordinates; here all that lie at the same
/// place are one again, and what split them are specified normals, explicit at each corner, and the
/// vertices of the mapping channels. Coordinates 0 come to channel 1, and so on. A triangle without
/// a full set of normals is in smoothing group 1.
bool join_parts(const std::vector<MeshPart>& parts, Mesh& target);

/// The same for parts that move: only vertices with the same motion number become one.
///
/// A source is a vertex of a part, counted through all parts; each has a motion number, and
/// `vertex_of_source` gets the vertex that it has become. Specified normals are numbered as
/// sources.
bool join_parts(const std::vector<MeshPart>& parts,
                const std::vector<std::uint32_t>& motion_numbers, Mesh& target,
                std::vector<std::uint32_t>& vertex_of_source);

}  // namespace vsqexport
