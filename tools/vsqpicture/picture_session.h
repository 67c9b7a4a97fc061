#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/vsqpicture/path_tracer.h"
#include "tools/vsqpicture/scene_builder.h"

namespace vsqpicture {

/// What a picture is to show.
struct PictureRequest {
    std::string camera;  ///< empty: the first one, or a view of the whole scene if there is none
    std::string view;    ///< "front", "right", "top", "iso" or "all"; empty: a camera
    double frame = 0;    ///< from the first one of the animation range
    bool ids = false;    ///< each object in a colour of its own
    /// What a view of the whole scene shows; nothing: the scene as it is at the frame.
    std::optional<SceneBox> box;
    PictureOptions options;
};

/// A finished picture, and what is to be told of it.
struct Picture {
    Image image{1, 1};
    SceneBox box;
    std::string ids;                 ///< the JSON, if ids were wanted
    std::vector<std::string> notes;  ///< what couldn't be drawn, a line each
};

/// Draws a scene. Throws `std::runtime_error` with one line if there is no such camera.
Picture draw(PictureScene& scene, const std::string& title, const PictureRequest& request);

/// Puts pictures side by side, in rows that make the sheet about as wide as high, each with its
/// name below. Throws `std::runtime_error` if a file can't be read.
Image contact_sheet(const std::vector<std::string>& files);

}  // namespace vsqpicture
