#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <assimp/scene.h>

#include "standins/host/memory/local_transform.h"
#include "standins/host/memory/scene_builder.h"
#include "tools/vsqexport/import/gltf_curves.h"
#include "tools/vsqexport/import/import_warning.h"
#include "tools/vsqexport/import/morph_motion.h"
#include "tools/vsqexport/import/node_index.h"
#include "tools/vsqexport/import/node_motion.h"

namespace vsqexport {

/// The motion that a model file gives to its nodes and morph targets, in those of its animations
/// that play together.
class ModelAnimation {
public:
    /// `warnings` gets a line for each kind of thing that is left out. `wanted` has the names of
    /// the animations; none means those that `choose_animations` chooses. `curves` has the curves
    /// that aren't linear.
    ModelAnimation(const aiScene& model, const NodeIndex& nodes, ImportWarnings& warnings,
                   const std::vector<std::string>& wanted = {}, const GltfCurves& curves = {});

    bool animates(const aiNode& node) const { return motions_.count(&node) != 0; }

    /// Null for a node that has no keys.
    std::shared_ptr<const NodeMotion> motion_of(const aiNode& node) const;

    /// The motion of a mesh's morph targets where `node` shows the mesh; null if the file has none.
    std::shared_ptr<const MorphMotion> morph_of(const aiNode& node, const aiMesh& mesh) const;

    /// The node's transform over time, in the space of the parent that isn't a pivot helper.
    /// `before` is applied before it, and `after` after it.
    memhost::LocalTransform place(const aiNode& node, const Matrix3& before,
                                  const Matrix3& after) const;

    /// Sets the animation range of `scene` from frame 0 to the last key, rounded up to a whole
    /// frame at the scene's rate. Leaves the range alone if the file has no keys after time 0.
    void set_range(memhost::SceneBuilder& scene) const;

private:
    using CurveOf = std::function<const GltfCurve*(const std::string& node, const char* path)>;

    void read(const aiAnimation& animation, const NodeIndex& nodes, double file_ticks_per_second,
              const CurveOf& curve_of, ImportWarnings& warnings);
    void read_morphs(const aiAnimation& animation, double file_ticks_per_second,
                     const CurveOf& curve_of, int& dropped_keys, ImportWarnings& warnings);

    std::map<const aiNode*, std::shared_ptr<const NodeMotion>> motions_;
    std::map<std::string, std::shared_ptr<const MorphMotion>> morphs_;  // by node's or mesh's name
    double end_seconds_ = 0;
};

}  // namespace vsqexport
