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

/// The mesh in one frame.
struct MeshFrame {
    std::shared_ptr<TriangleObject> object;
    int frame;  ///< frame number, counted from the start of the range
};

/// A mesh whose shape changes over time, given frame by frame.
///
/// If all frames have the same triangles, `write_library` writes a single `.qorT` file: the
/// positions and normals of all frames, and the indices and texture coordinates of the first. The
/// scene only refers to the file. Otherwise each frame goes into the scene as an object of its own.
///
/// A material must be set before `write_library` and `emit`; its name is part of the file name.
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
    /// Times are in seconds. `folder` is the base folder of all libraries; if it is empty,
    /// "Animations" in the renderer's resource folder is used. `library` names a folder in it; if
    /// it is empty, `name` is used.
    DeformableTriangleAnimation(std::string name, float start_time, float duration,
                                std::string folder, std::string library);

    /// Sets how many frames to expect. The first frame reserves memory for all of them.
    void reserve_frames(std::size_t count) { expected_frames_ = count; }

    /// Copies the frame's arrays, so the caller can refill its object. Each frame needs a
    /// timestamp; a frame without one is written with time 0.
    void add_frame(const MeshFrame& entry);

    /// `timestamp` counts 33 units per frame.
    void add_timestamp(float timestamp) { timestamps_.push_back(timestamp); }

    /// Writes the library and drops the frames. Does nothing if the triangles changed between
    /// frames. False if the file couldn't be written completely: the reason goes to standard error,
    /// and the scene still refers to the file.
    bool write_library();

    void emit(qorSceneapi_oo& scene) override;
    /// Does nothing: an animation can't be defined for later use.
    void define(qorSceneapi_oo&) override {}
    std::size_t data_size() const override;

    /// Empty until the library is written. The folder is UTF-8; the names after it keep their
    /// original bytes.
    const std::string& library_path() const { return library_path_; }

private:
    // The arrays that frames share while only positions and normals change. `vertices` and
    // `normals` stay empty in it.
    using SharedArrays = TriangleArrays;

    struct StoredFrame {
        int frame;
        std::size_t vertices_end;  // index in `vertices_` where the next frame begins
        std::size_t normals_end;
        std::shared_ptr<const SharedArrays> shared;
    };

    void make_library_path();
    bool write_library_file();
    void drop_frames();
    void emit_library(qorSceneapi_oo& scene) const;
    void emit_frames(qorSceneapi_oo& scene) const;
    void emit_frame(std::size_t index, qorSceneapi_oo& scene) const;
    void emit_times(qorSceneapi_oo& scene) const;

    float start_time_;
    float duration_;
    std::size_t expected_frames_ = 0;
    std::vector<StoredFrame> frames_;
    std::vector<float> vertices_;  // of all frames in order
    std::vector<float> normals_;
    std::vector<float> timestamps_;  // one per frame
    std::string folder_;
    std::string library_;
    bool has_constant_triangles_ = true;
    std::string library_path_;
    bool library_written_ = false;
};

}  // namespace qor
