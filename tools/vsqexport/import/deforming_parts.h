#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <assimp/scene.h>

#include "standins/host/sdk/max.h"
#include "tools/vsqexport/import/animation_import.h"
#include "tools/vsqexport/import/import_warning.h"
#include "tools/vsqexport/import/mesh_deformation_builder.h"
#include "tools/vsqexport/import/mesh_import.h"
#include "tools/vsqexport/import/node_index.h"

namespace vsqexport {

/// The bones and morph targets of a model's meshes, from which nodes get their deforming meshes.
class DeformingParts {
public:
    /// Borrows the model and its animation. `warnings` gets a line for each kind of thing that is
    /// left out.
    DeformingParts(const aiScene& model, const NodeIndex& nodes, const ModelAnimation& animation,
                   ImportWarnings& warnings);

    /// True if a mesh has bones or targets, so that each node that shows it needs a separate mesh.
    bool deforms(const aiMesh& mesh) const { return meshes_.count(&mesh) != 0; }

    /// Like `join_parts`, if some of the parts deform. `deformation` becomes the deformation of the
    /// mesh where `node` shows it.
    bool join(const aiNode& node, const std::vector<MeshPart>& parts, Mesh& target,
              std::shared_ptr<const MeshDeformation>& deformation) const;

private:
    struct Deforming {
        BoneWeights bones;
        std::vector<MorphTarget> targets;
    };

    const ModelAnimation& animation_;
    std::map<const aiMesh*, Deforming> meshes_;
};

}  // namespace vsqexport
