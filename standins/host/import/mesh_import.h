#pragma once

#include <vector>

#include <assimp/mesh.h>

#include "standins/host/sdk/max.h"

namespace memhost {

/// False for a mesh one of whose faces names a vertex that isn't there.
bool faces_stay_in_range(const aiMesh& mesh);

struct MeshPart {
    const aiMesh* mesh;
    MtlID material_id;
};

/// Puts the triangles of `parts` together to one mesh of the host; points and lines are left out.
/// False, with nothing changed, if there are no triangles.
///
/// A file's reader splits a vertex by its normal and its coordinates; here all that lie at the same
/// place are one again, and what split them are specified normals, explicit at each corner, and the
/// vertices of the mapping channels. Coordinates 0 come to channel 1, and so on. A triangle without
/// a full set of normals is in smoothing group 1.
bool join_parts(const std::vector<MeshPart>& parts, Mesh& target);

}  // namespace memhost
