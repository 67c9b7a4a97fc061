#include "model/deformable_triangle_animation.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <new>
#include <string_view>
#include <tuple>

#include "importers/sceneapi/dev/installation.h"
#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "model/material.h"
#include "model/qort_writer.h"
#include "model/triangle_object.h"
#include "platform/files.h"

namespace qor {

namespace {

constexpr double kTimeUnitsPerSecond = 1000.0;

constexpr std::uint32_t kGroupFlags = 0x1010000;

std::string default_folder() {
    const std::string resources =
        Installation::get().resource_folder(kOldestRenderer, kNewestRenderer);
    return (std::filesystem::u8path(resources) / "Animations").u8string();
}

// Replaces characters that a file name can't contain. A null, which a narrowed name can contain,
// would end the path early.
void sanitize(std::string& text) {
    const std::string_view kForbidden("\\/:?\"<>|\0", 9);
    std::replace_if(
        text.begin(), text.end(),
        [&kForbidden](char c) { return kForbidden.find(c) != std::string_view::npos; }, '_');
}

bool can_be_opened(const std::string& path) {
    const std::unique_ptr<std::FILE, platform::CloseStream> file(platform::open_file(path, "rb"));
    return file != nullptr;
}

// Limits the result to the format's largest count; the writer refuses arrays of that size.
std::uint32_t count(std::size_t numbers, std::size_t per_element) {
    constexpr std::size_t kLimit = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::min(numbers / per_element, kLimit));
}

// Memory for all expected frames is reserved with the first one, so that the array isn't copied as
// it grows. If there isn't enough memory for that, the array grows with each frame.
void append(std::vector<float>& array, const std::vector<float>& frame,
            std::size_t expected_frames) {
    if (array.empty() && expected_frames > 1 &&
        frame.size() <= array.max_size() / expected_frames) {
        try {
            array.reserve(frame.size() * expected_frames);
        } catch (const std::bad_alloc&) {
            array.clear();
        }
    }
    array.insert(array.end(), frame.begin(), frame.end());
}

// References to the arrays that frames share.
template <typename Arrays>
auto shared_part(Arrays& arrays) {
    return std::tie(arrays.triangles, arrays.uv_tex, arrays.triangles_uv, arrays.triangles_norm,
                    arrays.vcolors);
}

template <typename T>
T* data_or_null(std::vector<T>& array) {
    return array.empty() ? nullptr : array.data();
}

std::vector<std::uint32_t> unsigned_copy(const std::vector<int>& indices) {
    return std::vector<std::uint32_t>(indices.begin(), indices.end());
}

}  // namespace

DeformableTriangleAnimation::DeformableTriangleAnimation(std::string name, float start_time,
                                                         float duration, std::string folder,
                                                         std::string library)
    : LightGeometry(std::move(name)),
      start_time_(start_time),
      duration_(duration),
      folder_(folder.empty() ? default_folder() : std::move(folder)),
      library_(library.empty() ? get_name() : std::move(library)) {}

void DeformableTriangleAnimation::add_frame(const MeshFrame& entry) {
    const TriangleArrays& arrays = entry.object->arrays();
    std::shared_ptr<const SharedArrays> shared;
    if (!frames_.empty()) {
        shared = frames_.back().shared;
    }
    if (shared == nullptr || shared_part(*shared) != shared_part(arrays)) {
        if (shared != nullptr && shared->triangles != arrays.triangles) {
            has_constant_triangles_ = false;
        }
        const auto copy = std::make_shared<SharedArrays>();
        shared_part(*copy) = shared_part(arrays);
        shared = copy;
    }
    append(vertices_, arrays.vertices, expected_frames_);
    append(normals_, arrays.normals, expected_frames_);
    frames_.push_back({entry.frame, vertices_.size(), normals_.size(), std::move(shared)});
}

bool DeformableTriangleAnimation::write_library() {
    if (!has_constant_triangles_ || frames_.empty()) {
        return true;
    }
    make_library_path();
    const bool is_written = write_library_file();
    drop_frames();
    library_written_ = true;
    return is_written;
}

// An existing library is never overwritten, because a scene may refer to it.
void DeformableTriangleAnimation::make_library_path() {
    std::string library_name = library_;
    std::string object_name = get_name();
    if (get_material() != nullptr) {
        object_name += "_" + get_material()->get_name();
    }
    sanitize(library_name);
    sanitize(object_name);

    const std::string directory = folder_ + "/" + library_name;
    platform::create_folder(directory);
    const std::string base = directory + "/" + object_name;
    library_path_ = base + ".qorT";
    for (int n = 1; can_be_opened(library_path_); ++n) {
        library_path_ = base + "_" + std::to_string(n) + ".qorT";
    }
}

bool DeformableTriangleAnimation::write_library_file() {
    const SharedArrays& first = *frames_.front().shared;
    std::vector<std::uint32_t> triangles = unsigned_copy(first.triangles);
    std::vector<std::uint32_t> normal_indices = unsigned_copy(first.triangles_norm);
    std::vector<std::uint32_t> uv_indices = unsigned_copy(first.triangles_uv);
    std::vector<float> uvs = first.uv_tex;

    QorTMesh mesh;
    mesh.triangle_count = count(triangles.size(), 3);
    mesh.uv_count = count(uvs.size(), 2);
    std::vector<QorTFrame> records;
    records.reserve(frames_.size());
    for (std::size_t i = 0; i < frames_.size(); ++i) {
        const std::uint32_t vertices_end = count(frames_[i].vertices_end, 3);
        const std::uint32_t normals_end = count(frames_[i].normals_end, 3);
        QorTFrame record = {};
        record.frame = static_cast<std::uint32_t>(frames_[i].frame);
        record.time =
            i < timestamps_.size() ? static_cast<float>(timestamps_[i] / kTimeUnitsPerSecond) : 0;
        record.triangles_count = mesh.triangle_count;
        record.vertices_start = mesh.vertex_count;
        record.vertices_count = vertices_end - mesh.vertex_count;
        record.normals_start = mesh.normal_count;
        record.normals_count = normals_end - mesh.normal_count;
        record.uvs_count = mesh.uv_count;
        records.push_back(record);
        mesh.vertex_count = vertices_end;
        mesh.normal_count = normals_end;
    }

    mesh.triangles = data_or_null(triangles);
    mesh.normal_indices = data_or_null(normal_indices);
    mesh.uv_indices = data_or_null(uv_indices);
    mesh.vertices = data_or_null(vertices_);
    mesh.normals = data_or_null(normals_);
    mesh.uvs = data_or_null(uvs);
    mesh.frames = data_or_null(records);
    mesh.frame_count = static_cast<std::uint32_t>(records.size());
    return write_qort_file(mesh, library_path_.c_str(), 0);
}

void DeformableTriangleAnimation::drop_frames() {
    frames_ = std::vector<StoredFrame>();
    vertices_ = std::vector<float>();
    normals_ = std::vector<float>();
}

void DeformableTriangleAnimation::emit(qorSceneapi_oo& scene) {
    scene.begin_group(get_name());
    scene.set_flags(kGroupFlags);
    if (library_written_) {
        emit_library(scene);
    } else {
        emit_frames(scene);
    }
    scene.end_group();
}

void DeformableTriangleAnimation::emit_library(qorSceneapi_oo& scene) const {
    qorScene_api& api = *scene.get_api();
    api.begin_object(get_name().c_str(), true);
    const int id = scene.next_id();
    api.begin_geometry("triangles");
    scene.set_parameter("file", library_path_);
    api.end_geometry();
    get_material()->emit(scene);
    api.end_object();

    api.begin_animation("deformable_qortlib", (get_name() + "_deformable").c_str());
    emit_times(scene);
    scene.set_parameter("target_object_id", id);
    api.end_animation();
}

void DeformableTriangleAnimation::emit_frames(qorSceneapi_oo& scene) const {
    qorScene_api& api = *scene.get_api();
    api.begin_animation("deformable", (get_name() + "_deformable").c_str());
    emit_times(scene);
    scene.set_array("timestamps", timestamps_);
    api.end_animation();

    for (std::size_t i = 0; i < frames_.size(); ++i) {
        emit_frame(i, scene);
    }
}

void DeformableTriangleAnimation::emit_frame(std::size_t index, qorSceneapi_oo& scene) const {
    const StoredFrame& stored = frames_[index];
    const std::size_t vertices_start = index == 0 ? 0 : frames_[index - 1].vertices_end;
    const std::size_t normals_start = index == 0 ? 0 : frames_[index - 1].normals_end;
    const auto slice = [](const std::vector<float>& array, std::size_t start, std::size_t end) {
        return std::vector<float>(array.data() + start, array.data() + end);
    };
    TriangleArrays arrays = *stored.shared;
    arrays.vertices = slice(vertices_, vertices_start, stored.vertices_end);
    arrays.normals = slice(normals_, normals_start, stored.normals_end);

    TriangleObject object("qor_deform_" + std::to_string(stored.frame));
    object.set_arrays(std::move(arrays));
    object.set_material(get_material());
    object.emit(scene);
}

void DeformableTriangleAnimation::emit_times(qorSceneapi_oo& scene) const {
    scene.set_parameter("start_time", start_time_);
    scene.set_parameter("duration", duration_);
    scene.set_parameter("duration_org", duration_);
}

std::size_t DeformableTriangleAnimation::data_size() const {
    std::size_t numbers = vertices_.size() + normals_.size() + timestamps_.size();
    const SharedArrays* last = nullptr;
    for (const StoredFrame& stored : frames_) {
        if (stored.shared.get() != last) {
            last = stored.shared.get();
            numbers += std::apply([](const auto&... array) { return (array.size() + ...); },
                                  shared_part(*last));
        }
    }
    return numbers * sizeof(float);
}

}  // namespace qor
