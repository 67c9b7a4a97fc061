#pragma once

#include <vector>

#include "standins/host/sdk/max.h"

namespace memhost {

/// The host's Hair and Fur modifier, which grows hair on the node's mesh. The host doesn't show the
/// strands to plug-ins; a script has to convert them to splines.
struct HairModifier {
    int strands = 1000;
    int segments = 4;
    float length = 1;
    float droop = 0.25f;  ///< how far the tip hangs down, as a fraction of the length
    bool curved = true;   ///< if false, straight from knot to knot
    float root_thickness = 1;
    float tip_thickness = 0;
    Color root_color{0.25f, 0.15f, 0.05f};
    Color tip_color{0.6f, 0.45f, 0.25f};
    float hue_variation = 10;
    float value_variation = 50;
};

/// The strands in world space, one spline each. They are shared evenly between the faces; a mesh
/// without faces has none.
std::vector<Spline3D> grow_hair(const HairModifier& hair, const Mesh& mesh,
                                const Matrix3& world_from_object);

}  // namespace memhost
