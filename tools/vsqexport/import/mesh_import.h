#pragma once

#include <cstdint>
#include <vector>

#include <assimp/mesh.h>

#include "standins/host/sdk/max.h"

namespace vsqexport {

/// False if a face of the mesh refers to a vertex that doesn't exist.
bool faces_stay_in_range(const aiMesh& mesh);

struct MeshPart {
    const aiMesh* mesh;
    MtlID material_id;
    bool needs_coordinates = false;  ///< if it has none, it gets zeros in channel 1
};

/// The vertex of a source that no triangle uses.
inline constexpr std::uint32_t kNoVertex = 0xFFFFFFFF;

/// Joins the triangles of `parts` to one mesh of the host; leaves out points and lines. Returns
/// false, with nothing changed, if there are no triangles.
///
/// The readers split vertices that have several normals or coordinates. Here all vertices at the
/// same position become one again. Their normals become specified normals, explicit at each corner,
/// and their coordinates become vertices of mapping channels: set 0 goes to channel 1, and so on. A
/// triangle without normals at all corners is in smoothing group 1.
bool join_parts(const std::vector<MeshPart>& parts, Mesh& target);

/// Joins parts that move: only vertices with the same motion number become one.
///
/// A source is a vertex of a part, counted through all parts. `motion_numbers` has a number for
/// each source, and `vertex_of_source` gets the vertex that each has become. Specified normals have
/// the numbers of their sources.
bool join_parts(const std::vector<MeshPart>& parts,
                const std::vector<std::uint32_t>& motion_numbers, Mesh& target,
                std::vector<std::uint32_t>& vertex_of_source);

}  // namespace vsqexport
