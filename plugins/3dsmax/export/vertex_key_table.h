#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "plugins/3dsmax/export/host.h"

/// What tells the output vertices of one host vertex apart.
struct VertexKey {
    Point3 normal;  ///< in the mesh's space
    float u, v;     ///< 0 for a part without texture coordinates
};

/// The output vertices of a mesh part, found by host vertex, normal and texture coordinates.
///
/// The host shares positions, while the renderer wants one normal and one coordinate for a vertex,
/// so a host vertex splits into as many as it has distinct keys. Host vertices are never merged.
/// Two keys are the same within a small tolerance, and of several that match, the one found first
/// counts:
///
///     corner of host vertex 7, normal up     vertex 0
///     corner of host vertex 7, normal left   vertex 1
///     corner of host vertex 7, normal up     vertex 0 again
///     corner of host vertex 8, normal up     vertex 2
///
/// Vertices are numbered in the order of their finding. What is known of them stands in arrays of
/// the renderer's form, so that these needn't be copied. Storage is kept from one part to the next.
class VertexKeyTable {
public:
    /// Starts a part of so many corners, of a mesh of so many host vertices. Without texture
    /// coordinates the normal alone decides.
    void begin(size_t host_vertices, size_t corners, bool has_coordinates);

    /// The number of the output vertex.
    int find_or_add(DWORD host_vertex, const VertexKey& key);

    /// Of each output vertex, its host vertex.
    const std::vector<DWORD>& host_vertices() const { return host_vertices_; }

    /// Three floats for each vertex. What is taken ends the part.
    std::vector<float> take_normals() { return std::move(normals_); }
    /// Two floats for each vertex, or none without texture coordinates.
    std::vector<float> take_coordinates() { return std::move(coordinates_); }

    /// Gives arrays back that were taken, for the memory that they have.
    void keep_storage(std::vector<float> normals, std::vector<float> coordinates);

private:
    static constexpr int kNone = -1;

    // Of the squared distance of two normals, and of the plain difference of two coordinates.
    static constexpr float kTolerance = 1.1920929e-7f;

    // A host vertex with more output vertices than this is crowded, as the tip of a cone is. A
    // longer chain would make the time grow with its square.
    static constexpr int kLongestChain = 32;

    // The vertices of a crowded host vertex that are not in its chain, by the cell of a grid that
    // their key lies in. Other cells may share a bucket.
    struct Crowd {
        std::vector<int> all;
        std::vector<int> outside;  // in no cell
        std::unordered_map<std::uint64_t, std::vector<int>> cells;
    };

    bool matches(int found, const VertexKey& wanted) const;
    int add(DWORD host_vertex, const VertexKey& key);
    void make_room(size_t vertices);
    int find_or_add_in_crowd(DWORD host_vertex, const VertexKey& key);
    int find_in_crowd(const Crowd& crowd, const VertexKey& key) const;
    int first_match(const std::vector<int>& candidates, const VertexKey& key, int best) const;

    std::vector<int> heads_;  // one per host vertex, below 0 where it has none
    std::vector<DWORD> host_vertices_;
    std::vector<int> next_;  // the next vertex of the same host vertex, or below 0
    std::vector<float> normals_;
    std::vector<float> coordinates_;
    std::unordered_map<DWORD, Crowd> crowds_;
    size_t room_ = 0;  // of vertices in the arrays
    size_t corners_ = 0;
    bool has_coordinates_ = false;
};

inline int VertexKeyTable::find_or_add(DWORD host_vertex, const VertexKey& key) {
    int length = 0;
    int last = kNone;
    for (int i = heads_[host_vertex]; i != kNone; i = next_[static_cast<size_t>(i)]) {
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
        heads_[host_vertex] = number;
    } else {
        next_[static_cast<size_t>(last)] = number;
    }
    return number;
}

// What is no number differs from nothing, so the tests ask whether a difference is too great.
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
    if (host_vertices_.size() == room_) {
        // Once there are more vertices than the host has, there may be one for each corner. Room
        // that isn't used is never touched, while growing step by step would copy all there is.
        make_room(corners_);
    }
    const int number = static_cast<int>(host_vertices_.size());
    host_vertices_.push_back(host_vertex);
    next_.push_back(kNone);
    normals_.push_back(key.normal.x);
    normals_.push_back(key.normal.y);
    normals_.push_back(key.normal.z);
    if (has_coordinates_) {
        coordinates_.push_back(key.u);
        coordinates_.push_back(key.v);
    }
    return number;
}
