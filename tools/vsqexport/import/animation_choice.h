#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include <assimp/scene.h>

#include "tools/vsqexport/import/import_warning.h"

namespace vsqexport {

/// 3DS files play at 30 frames a second, which their reader doesn't say. Other formats get assimp's
/// own default.
double ticks_per_second(const aiScene& model, const aiAnimation& animation);

/// Whether any key of the channel differs from another.
bool moves(const aiNodeAnim& channel);

/// A name of an animation that the file hasn't got. `what` is one line.
class UnknownAnimation : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The animations of a model that play together. An animation for each object is how many programs
/// write a scene, so those that move different nodes and morph targets are all taken. Of those that
/// move the same, the longest is taken; one that rests never keeps out one that moves.
///
/// If `wanted` isn't empty, only the animations of these names are looked at. Throws
/// `UnknownAnimation` if there is none of a name. `warnings` gets a line for the animations that
/// are left out, and one for those that replace meshes.
std::vector<const aiAnimation*> choose_animations(const aiScene& model,
                                                  const std::vector<std::string>& wanted,
                                                  ImportWarnings& warnings);

/// A line for each animation: its name, its length, and how many nodes and morph targets it has
/// keys for.
std::string list_of_animations(const aiScene& model);

}  // namespace vsqexport
