#pragma once

#include <assimp/scene.h>

#include <memory>

#include "standins/host/memory/scene_builder.h"

/// The scenes of the mesh benchmarks, for the host and for the peers.
namespace mesh_scenes {

enum class Shading {
    kSmooth,    ///< one smoothing group
    kHard,      ///< no two faces of a vertex share a group
    kOneHard,   ///< one smoothing group, but for one face
    kExplicit,  ///< one smoothing group, and an explicit normal for every corner
    kNone,      ///< no smoothing groups
};

/// A wavy surface with texture coordinates and at least that many triangles.
Mesh surface(int triangles, Shading shading);

/// A host with one node that has the mesh and a textured material.
std::unique_ptr<memhost::SceneBuilder> scene_of(const Mesh& mesh);

/// A host with one node that has a smooth mesh, which deforms in every frame.
std::unique_ptr<memhost::SceneBuilder> deforming_scene(int triangles, int frames);

/// A host with a tree of that many boxes.
std::unique_ptr<memhost::SceneBuilder> scene_of_boxes(int count);

/// The same scene for the peers. These share no vertices, so each corner has its own.
std::unique_ptr<aiScene> peer_scene_of(const Mesh& mesh);
std::unique_ptr<aiScene> peer_scene_of_boxes(int count);

}  // namespace mesh_scenes
