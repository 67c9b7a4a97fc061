#include "model/triangle_object.h"

#include <memory>

#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "model/diffuse.h"

namespace qor {

namespace {

// The checks and messages below count single numbers, not whole elements.

std::string normals_fault(const TriangleArrays& arrays) {
    const std::size_t indices = arrays.triangles_norm.size();
    const std::size_t corners = arrays.triangles.size();
    if (arrays.normals.empty()) {
        return indices == 0 ? "" : "No normals defined for index";
    }
    if (indices == 0) {
        return arrays.normals.size() == arrays.vertices.size()
                   ? ""
                   : "Number of normals does not equal number of vertices";
    }
    return indices == corners ? ""
                              : "Normals count does not match number of triangles " +
                                    std::to_string(indices) + " vs " + std::to_string(corners);
}

std::string uvs_fault(const TriangleArrays& arrays) {
    const std::size_t uvs = arrays.uv_tex.size();
    const std::size_t indices = arrays.triangles_uv.size();
    const std::size_t vertices = arrays.vertices.size();
    if (uvs == 0) {
        return indices == 0 ? "" : "No uvs defined for index";
    }
    if (indices == 0) {
        return 2 * vertices == 3 * uvs
                   ? ""
                   : "Number of uvs(" + std::to_string(uvs) + ")  does not match vertex count(" +
                         std::to_string(vertices) + ")";
    }
    return indices == arrays.triangles.size() ? "" : "UV index count does not match triangle count";
}

std::string vcolors_fault(const TriangleArrays& arrays) {
    return arrays.vcolors.empty() || arrays.vcolors.size() == arrays.vertices.size()
               ? ""
               : "VetexColor count does not match number of vertices";
}

std::string triangles_fault(const TriangleArrays& arrays) {
    return arrays.triangles.empty() ? "No triangles defined" : "";
}

}  // namespace

TriangleObject::TriangleObject(std::string name) : LightGeometry(std::move(name)) {
    LightGeometry::set_material(std::make_shared<Diffuse>("default"));
}

bool TriangleObject::validate(qorSceneapi_oo&) {
    if (is_defined()) {
        return true;
    }
    error_ = normals_fault(arrays_) + uvs_fault(arrays_) + vcolors_fault(arrays_) +
             triangles_fault(arrays_);
    return !arrays_.triangles.empty();
}

void TriangleObject::emit(qorSceneapi_oo& scene) {
    if (validate(scene)) {
        qorScene_api& api = *scene.get_api();
        api.begin_object(get_name().c_str(), true);
        api.set_flags(flags_);
        emit_geometry(scene);
        get_material()->emit(scene);
        api.end_object();
    }
    if (!error_.empty()) {
        scene.print_error(error_);
    }
}

void TriangleObject::define(qorSceneapi_oo& scene) {
    qorScene_api& api = *scene.get_api();
    api.begin_object(get_name().c_str(), false);
    const int id = scene.next_id();
    api.set_flags(flags_);
    emit_geometry(scene);
    api.end_object();

    // From now on the object is written as an instance, which has no arrays.
    clear_arrays();
    mark_defined(id);
}

void TriangleObject::emit_geometry(qorSceneapi_oo& scene) {
    qorScene_api& api = *scene.get_api();
    if (is_defined()) {
        api.begin_geometry("instance");
        scene.set_parameter("id", static_cast<int>(definition_id()));
        api.end_geometry();
        return;
    }

    api.begin_geometry("triangles");
    scene.set_vec3_array("vertices", arrays_.vertices);
    scene.set_array("triangles", arrays_.triangles);
    if (!arrays_.triangles_uv.empty()) {
        scene.set_array("triangles_uv", arrays_.triangles_uv);
    }
    if (!arrays_.uv_tex.empty()) {
        scene.set_array("uv_tex", arrays_.uv_tex);
    }
    if (!arrays_.triangles_norm.empty()) {
        scene.set_array("triangles_norm", arrays_.triangles_norm);
    }
    if (!arrays_.normals.empty()) {
        scene.set_vec3_array("normals", arrays_.normals);
    }
    if (!arrays_.vcolors.empty()) {
        scene.set_vec3_array("vcolors", arrays_.vcolors);
    }
    api.end_geometry();
}

std::size_t TriangleObject::data_size() const {
    constexpr std::size_t kBytesPerNumber = 4;
    return kBytesPerNumber *
           (arrays_.vertices.size() + arrays_.triangles.size() + arrays_.uv_tex.size() +
            arrays_.triangles_uv.size() + arrays_.normals.size() + arrays_.triangles_norm.size() +
            arrays_.vcolors.size());
}

}  // namespace qor
