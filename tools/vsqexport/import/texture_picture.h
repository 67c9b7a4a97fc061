#pragma once

#include "standins/host/memory/image.h"
#include "standins/host/sdk/max.h"
#include "tools/vsqexport/import/material_values.h"

namespace vsqexport {

/// Whether any pixel isn't opaque.
bool has_alpha(const memhost::Image& image);

/// Whether the colours are directions, as in a normal map: most of them blueish, around
/// (0.5, 0.5, 1).
bool shows_normals(const memhost::Image& image);

/// The mean of the numbers of each channel, each from 0 to 1.
Color mean_color(const memhost::Image& image);
/// The mean in linear light.
Color mean_light(const memhost::Image& image);

/// Greys, for an opacity map: the alpha of each pixel or its brightness, times `opacity`. With a
/// cutoff, black or white.
memhost::Image opacity_picture(const memhost::Image& image, bool takes_alpha, float opacity,
                               float cutoff = -1);

/// The image with its colours multiplied by the factor, which counts in linear light.
memhost::Image tinted(const memhost::Image& image, const Color& factor);

}  // namespace vsqexport
