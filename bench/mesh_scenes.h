#pragma once

#include <assimp/scene.h>

#include <memory>

#include "standins/host/memory/scene_builder.h"

/// The scenes of the mesh benchmarks, in the host and in the form of the peers.
namespace mesh_scenes {

enum class Shading {
    kSmooth,    ///< one smoothing group
    kHard,      ///< no two faces of a vertex share a group
    kExplicit,  ///< a normal of its own for every corner, beside one smoothing group
    kNone,      ///< no smoothing groups
};

/// A wavy surface with texture coordinates, of at least that many triangles.
Mesh surface(int triangles, Shading shading);

/// A host that holds one node with that mesh and a material that is mapped.
std::unique_ptr<memhost::SceneBuilder> scene_of(const Mesh& mesh);

/// The same for a mesh of smooth shading that changes its shape from frame to frame.
std::unique_ptr<memhost::SceneBuilder> deforming_scene(int triangles, int frames);

/// A host with a tree of that many boxes.
std::unique_ptr<memhost::SceneBuilder> scene_of_boxes(int count);

/// The same scene for the peers: they share no vertices, so each corner has one of its own.
std::unique_ptr<aiScene> peer_scene_of(const Mesh& mesh);
std::unique_ptr<aiScene> peer_scene_of_boxes(int count);

}  // namespace mesh_scenes
