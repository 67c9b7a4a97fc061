#pragma once

#include "standins/host/sdk/animatable.h"

/// Whatever refers to other parts of the scene.
class ReferenceMaker : public Animatable {};

/// Whatever other parts of the scene refer to.
class ReferenceTarget : public ReferenceMaker {};
