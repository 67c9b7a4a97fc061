#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "plugins/3dsmax/export/host.h"

/// What distinguishes the output vertices of one host vertex.
struct VertexKey {
    Point3 normal;  ///< in the mesh's space
    float u, v;     ///< 0 for a part without texture coordinates
};

/// The output vertices of a mesh part, found by host vertex, normal and texture coordinates.
///
/// Corners with different normals or texture coordinates can share a host vertex, but a vertex of
/// the renderer has one of each. So a host vertex is split into one output vertex for each distinct
/// key. Different host vertices are never merged. Keys match within a small tolerance, and of
/// several matches the first one added counts:
///
///     corner of host vertex 7, normal up     vertex 0
///     corner of host vertex 7, normal left   vertex 1
///     corner of host vertex 7, normal up     vertex 0 again
///     corner of host vertex 8, normal up     vertex 2
///
/// Vertices are numbered from 0 in the order in which they are added. Their data is stored in the
/// renderer's layout, so it needn't be copied. Storage is reused from one part to the next.
class VertexKeyTable {
public:
    /// Starts a part of a mesh, with `corners` face corners. `expected` is how many output vertices
    /// there will probably be. Positions are transformed. Without texture coordinates only the
    /// normals are compared. Borrows the mesh until the last vertex is added.
    void begin(const Mesh& mesh, const Matrix3& transform, size_t corners, size_t expected,
               bool has_coordinates);

    /// The number of the output vertex with that key, which is added if there is none yet.
    int find_or_add(DWORD host_vertex, const VertexKey& key);

    /// How many output vertices there are.
    size_t count() const { return count_; }

    /// Three floats per vertex. Taking an array ends the part.
    std::vector<float> take_positions();
    /// Three floats per vertex, in the mesh's space.
    std::vector<float> take_normals();
    /// Two floats per vertex, or none without texture coordinates.
    std::vector<float> take_coordinates();

    /// Gives back arrays that were taken, to reuse their memory.
    void keep_storage(std::vector<float> positions, std::vector<float> normals,
                      std::vector<float> coordinates);

private:
    static constexpr int kNone = -1;

    // Applies to the squared distance of two normals, and to the difference of two coordinates.
    static constexpr float kTolerance = 1.1920929e-7f;

    // A host vertex with more output vertices than this is crowded, such as the tip of a cone.
    // Walking longer chains would take time that grows with the square of their length.
    static constexpr int kLongestChain = 32;

    // The vertices of a crowded host vertex that are not in its chain, in lists by the places of
    // their normal and their two coordinates. Places with the same hash share a list.
    struct Crowd {
        std::vector<int> all;
        std::unordered_map<std::uint64_t, std::vector<int>> lists;
        bool has_open_places = false;  // whether vertices are also listed under "any place"
    };

    bool matches(int found, const VertexKey& wanted) const;
    int add(DWORD host_vertex, const VertexKey& key);
    void make_room(size_t vertices);
    void extend();
    int find_or_add_in_crowd(DWORD host_vertex, const VertexKey& key);
    int find_in_crowd(Crowd& crowd, const VertexKey& key) const;
    void list_in_open_places(Crowd& crowd, int number) const;
    VertexKey key_of(int number) const;
    int first_match(const std::vector<int>& candidates, const VertexKey& key, int best) const;

    const Mesh* mesh_ = nullptr;
    Matrix3 transform_;
    // The first vertex of each host vertex, plus `base_`. Numbers below `base_` are of earlier
    // parts, so a small part of a large mesh needn't reset them.
    std::vector<int> heads_;
    int base_ = 0;
    // These arrays are a little longer than `count_`, so that an added vertex is just written.
    std::vector<float> positions_;
    std::vector<int> next_;  // the next vertex of the same host vertex, or kNone
    std::vector<float> normals_;
    std::vector<float> coordinates_;
    std::unordered_map<DWORD, Crowd> crowds_;
    size_t count_ = 0;
    size_t room_ = 0;  // vertices that the arrays are reserved for
    size_t corners_ = 0;
    bool has_coordinates_ = false;
};

inline int VertexKeyTable::find_or_add(DWORD host_vertex, const VertexKey& key) {
    int length = 0;
    int last = kNone;
    const int head = heads_[host_vertex];
    for (int i = head < base_ ? kNone : head - base_; i != kNone;
         i = next_[static_cast<size_t>(i)]) {
        if (matches(i, key)) {
            return i;
        }
        last = i;
        ++length;
    }
    if (length == kLongestChain) {
        return find_or_add_in_crowd(host_vertex, key);
    }
    const int number = add(host_vertex, key);
    if (last == kNone) {
        heads_[host_vertex] = base_ + number;
    } else {
        next_[static_cast<size_t>(last)] = number;
    }
    return number;
}

// NaN must match everything, so the tests check for a difference that is too large.
inline bool VertexKeyTable::matches(int found, const VertexKey& wanted) const {
    const float* normal = &normals_[3 * static_cast<size_t>(found)];
    const Point3 difference = Point3(normal[0], normal[1], normal[2]) - wanted.normal;
    if (std::fabs(difference.LengthSquared()) > kTolerance) {
        return false;
    }
    if (!has_coordinates_) {
        return true;
    }
    const float* place = &coordinates_[2 * static_cast<size_t>(found)];
    return !(std::fabs(place[0] - wanted.u) > kTolerance ||
             std::fabs(place[1] - wanted.v) > kTolerance);
}

inline int VertexKeyTable::add(DWORD host_vertex, const VertexKey& key) {
    if (count_ == next_.size()) {
        extend();
    }
    const size_t number = count_++;
    next_[number] = kNone;
    const Point3 place = mesh_->verts[host_vertex] * transform_;
    float* const position = &positions_[3 * number];
    position[0] = place.x;
    position[1] = place.y;
    position[2] = place.z;
    float* const normal = &normals_[3 * number];
    normal[0] = key.normal.x;
    normal[1] = key.normal.y;
    normal[2] = key.normal.z;
    if (has_coordinates_) {
        coordinates_[2 * number] = key.u;
        coordinates_[2 * number + 1] = key.v;
    }
    return static_cast<int>(number);
}
