#pragma once

#include "importers/sceneapi/dev/light_node.h"

namespace qor {

/// Anything that makes a node or a camera change over time.
class Animation : public LightNode {};

}  // namespace qor
