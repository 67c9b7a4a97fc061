#pragma once

#include <string>
#include <vector>

#include <assimp/material.h>

#include "standins/host/sdk/max.h"

namespace vsqexport {

/// What the pictures of a material hold on average, each from 0 to 1. The values of a file are
/// factors of these.
struct TextureMeans {
    Color base = Color(1, 1, 1);
    float metallic = 1;
    float roughness = 1;
};

/// A material's values as the host's Standard material holds them, each from 0 to 1. An opacity of
/// 0 counts as 1, unless the file says how alpha is meant.
struct MaterialValues {
    Color diffuse;
    Color specular;
    float level = 0;  ///< how much of the specular colour is reflected
    float opacity = 1;
    float glow = 0;           ///< self-illumination
    bool has_factor = false;  ///< the diffuse colour is a factor of the diffuse texture
};

/// How the alpha of a material counts.
struct AlphaUse {
    bool counts = false;
    float cutoff = -1;  ///< from that alpha on a point is opaque, below it isn't there; -1 for none
};

/// `reader` is the name of assimp's reader, since readers differ in what they mean by a value.
MaterialValues values_of(const aiMaterial& source, const std::string& reader,
                         const TextureMeans& means);

/// Whether the material may be metal, so that `values_of` needs the mean of its diffuse texture.
bool may_be_metal(const aiMaterial& source);

/// Whether the alpha of the diffuse texture makes the material transparent.
AlphaUse alpha_use(const aiMaterial& source);

/// What the host's Standard material can't hold, each as the end of a sentence about the material:
/// "its clear coat isn't used".
std::vector<std::string> losses_of(const aiMaterial& source);

}  // namespace vsqexport
