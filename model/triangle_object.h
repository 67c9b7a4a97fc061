#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "model/light_geometry.h"
#include "model/triangle_arrays.h"

namespace qor {

/// A plain triangle mesh. Its creator fills the arrays, and `emit` writes them to the scene.
///
///     TriangleObject object("Box01");
///     object.add_vertex(0, 0, 0);
///     object.add_vertex(1, 0, 0);
///     object.add_vertex(0, 1, 0);
///     object.add_triangle(0, 1, 2);
///     object.emit(scene);
///
/// Nothing is checked while it is added. A mesh whose arrays don't match is written all the same,
/// with an error after it; only a mesh without triangles isn't written.
///
/// Meshes that are written one after another can share storage:
///
///     object.set_arrays(std::move(storage));  // empty, but keeps its memory
///     ...                                     // fill and emit
///     storage = object.take_arrays();
///     storage.clear();
class TriangleObject final : public LightGeometry {
public:
    /// The material is a `Diffuse` named "default" until another one is set.
    explicit TriangleObject(std::string name);

    void add_vertex(float x, float y, float z) { append(arrays_.vertices, x, y, z); }
    void add_normal(float x, float y, float z) { append(arrays_.normals, x, y, z); }
    void add_vcolor(float r, float g, float b) { append(arrays_.vcolors, r, g, b); }
    void add_uv(float u, float v) {
        arrays_.uv_tex.push_back(u);
        arrays_.uv_tex.push_back(v);
    }
    void add_triangle(int a, int b, int c) { append(arrays_.triangles, a, b, c); }
    void add_triangle_uv(int a, int b, int c) { append(arrays_.triangles_uv, a, b, c); }
    void add_triangle_norm(int a, int b, int c) { append(arrays_.triangles_norm, a, b, c); }

    /// These replace a whole array; `TriangleArrays` describes the layouts.
    void set_vertices(std::vector<float> values) { arrays_.vertices = std::move(values); }
    void set_triangles(std::vector<int> values) { arrays_.triangles = std::move(values); }
    void set_uv_tex(std::vector<float> values) { arrays_.uv_tex = std::move(values); }
    void set_triangles_uv(std::vector<int> values) { arrays_.triangles_uv = std::move(values); }
    void set_normals(std::vector<float> values) { arrays_.normals = std::move(values); }
    void set_triangles_norm(std::vector<int> values) { arrays_.triangles_norm = std::move(values); }

    /// `count` is in whole vertices, triangles, texture coordinates or normals.
    void reserve_vertices(std::size_t count) { arrays_.vertices.reserve(3 * count); }
    void reserve_triangles(std::size_t count) { arrays_.triangles.reserve(3 * count); }
    void reserve_uv_tex(std::size_t count) { arrays_.uv_tex.reserve(2 * count); }
    void reserve_triangles_uv(std::size_t count) { arrays_.triangles_uv.reserve(3 * count); }
    void reserve_normals(std::size_t count) { arrays_.normals.reserve(3 * count); }
    void reserve_triangles_norm(std::size_t count) { arrays_.triangles_norm.reserve(3 * count); }

    const TriangleArrays& arrays() const { return arrays_; }
    const std::vector<float>& vertices() const { return arrays_.vertices; }
    const std::vector<int>& triangles() const { return arrays_.triangles; }
    const std::vector<float>& uv_tex() const { return arrays_.uv_tex; }
    const std::vector<int>& triangles_uv() const { return arrays_.triangles_uv; }
    const std::vector<float>& normals() const { return arrays_.normals; }
    const std::vector<int>& triangles_norm() const { return arrays_.triangles_norm; }
    const std::vector<float>& vcolors() const { return arrays_.vcolors; }

    /// These move all arrays at once, with their memory. `take_arrays` leaves the object without
    /// arrays.
    void set_arrays(TriangleArrays arrays) { arrays_ = std::move(arrays); }
    TriangleArrays take_arrays() { return std::exchange(arrays_, {}); }

    /// Empties all arrays and frees their memory.
    void clear_arrays() { arrays_ = {}; }

    void set_flags(std::uint32_t flags) { flags_ = flags; }

    /// Returns whether the object has triangles, and keeps a description of all mismatches for
    /// `error`. A defined object always passes and keeps its last error. Nothing is written to the
    /// scene.
    bool validate(qorSceneapi_oo& scene);

    /// All faults that the last `validate` found, in one text; empty if there were none.
    const std::string& error() const { return error_; }

    /// Writes the object with its material, then the error if there is one.
    void emit(qorSceneapi_oo& scene) override;

    /// Writes the shape without its material, then drops the arrays.
    void define(qorSceneapi_oo& scene) override;

    /// Writes only the geometry block, into the open object block.
    void emit_geometry(qorSceneapi_oo& scene);

    std::size_t data_size() const override;

private:
    template <typename Number>
    static void append(std::vector<Number>& array, Number a, Number b, Number c) {
        array.push_back(a);
        array.push_back(b);
        array.push_back(c);
    }

    TriangleArrays arrays_;
    std::uint32_t flags_ = 0;
    std::string error_;
};

}  // namespace qor
