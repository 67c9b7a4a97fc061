#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "model/light_geometry.h"
#include "model/triangle_arrays.h"

namespace qor {

class TriangleObject;

/// A mesh as it is in one frame.
struct MeshFrame {
    std::shared_ptr<TriangleObject> object;
    int frame;  ///< its number, counted from the start of the range
};

/// A mesh whose shape changes over time, told frame by frame.
///
/// As long as all frames have the same triangles, `write_library` puts their positions and normals
/// into one `.qorT` file, with the indices and texture coordinates of the first, and the scene only
/// points to it. Otherwise each frame goes into the scene as an object of its own.
///
/// A material must be set before `write_library` and `emit`: its name goes into that of the file.
///
///     DeformableTriangleAnimation animation("Flag", 0.0f, duration, "", "3ds max");
///     animation.set_material(material);
///     animation.reserve_frames(101);
///     animation.add_frame({object, 0});
///     animation.add_timestamp(0.0f);
///     ...
///     animation.write_library();
///     animation.emit(scene);
class DeformableTriangleAnimation final : public LightGeometry {
public:
    /// Times are in seconds. `folder` is the base folder of libraries; empty stands for that of the
    /// renderer's installation. `library` names a folder in it; empty stands for `name`.
    DeformableTriangleAnimation(std::string name, float start_time, float duration,
                                std::string folder, std::string library);

    /// How many frames to expect.
    void reserve_frames(std::size_t count) { expected_frames_ = count; }

    /// Takes a copy of the frame's arrays, so that its object can be filled again. Each frame needs
    /// a timestamp; one without it is written with the time 0.
    void add_frame(const MeshFrame& entry);

    /// 33 units to a frame.
    void add_timestamp(float timestamp) { timestamps_.push_back(timestamp); }

    /// Writes the library and drops the frames. Does nothing if the triangles have changed on the
    /// way. A failure is told on standard error, and the scene refers to the file all the same.
    void write_library();

    void emit(qorSceneapi_oo& scene) override;
    /// An animation is only ever written in place, so there is nothing to define.
    void define(qorSceneapi_oo&) override {}
    std::size_t data_size() const override;

    /// Empty until the library is written. The folder part is UTF-8; the bytes of the names follow
    /// unconverted.
    const std::string& library_path() const { return library_path_; }

private:
    // What frames share as long as only positions and normals change. Those two stay empty in it.
    using SharedArrays = TriangleArrays;

    struct StoredFrame {
        int frame;
        std::size_t vertices_end;  // in `vertices_`, where the next frame's begin
        std::size_t normals_end;
        std::shared_ptr<const SharedArrays> shared;
    };

    void make_library_path();
    void write_library_file();
    void drop_frames();
    void emit_library(qorSceneapi_oo& scene) const;
    void emit_frames(qorSceneapi_oo& scene) const;
    void emit_frame(std::size_t index, qorSceneapi_oo& scene) const;
    void emit_times(qorSceneapi_oo& scene) const;

    float start_time_;
    float duration_;
    std::size_t expected_frames_ = 0;
    std::vector<StoredFrame> frames_;
    std::vector<float> vertices_;  // of all frames, one after the other
    std::vector<float> normals_;
    std::vector<float> timestamps_;  // one per frame
    std::string folder_;
    std::string library_;
    bool has_constant_triangles_ = true;
    std::string library_path_;
    bool library_written_ = false;
};

}  // namespace qor
