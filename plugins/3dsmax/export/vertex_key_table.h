#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
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
/// Vertices are numbered in the order of their finding. Storage is kept from one part to the next.
class VertexKeyTable {
public:
    struct Vertex {
        VertexKey key;
        DWORD host_vertex;
        int next;  ///< the next one of the same host vertex, or below 0
    };

    /// Starts a part of so many corners, of a mesh of so many host vertices. Without texture
    /// coordinates the normal alone decides.
    void begin(size_t host_vertices, size_t corners, bool has_coordinates);

    /// The number of the output vertex.
    int find_or_add(DWORD host_vertex, const VertexKey& key);

    /// In the order of their numbers.
    const std::vector<Vertex>& vertices() const { return vertices_; }

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

    bool matches(const VertexKey& found, const VertexKey& wanted) const;
    int add(DWORD host_vertex, const VertexKey& key);
    int find_or_add_in_crowd(DWORD host_vertex, const VertexKey& key);
    int find_in_crowd(const Crowd& crowd, const VertexKey& key) const;
    int first_match(const std::vector<int>& candidates, const VertexKey& key, int best) const;

    std::vector<int> heads_;  // one per host vertex, below 0 where it has none
    std::vector<Vertex> vertices_;
    std::unordered_map<DWORD, Crowd> crowds_;
    size_t corners_ = 0;
    bool has_coordinates_ = false;
};

inline int VertexKeyTable::find_or_add(DWORD host_vertex, const VertexKey& key) {
    int length = 0;
    int last = kNone;
    for (int i = heads_[host_vertex]; i != kNone; i = vertices_[static_cast<size_t>(i)].next) {
        if (matches(vertices_[static_cast<size_t>(i)].key, key)) {
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
        vertices_[static_cast<size_t>(last)].next = number;
    }
    return number;
}

// What is no number differs from nothing, so the tests ask whether a difference is too great.
inline bool VertexKeyTable::matches(const VertexKey& found, const VertexKey& wanted) const {
    if (std::fabs((found.normal - wanted.normal).LengthSquared()) > kTolerance) {
        return false;
    }
    return !has_coordinates_ || !(std::fabs(found.u - wanted.u) > kTolerance ||
                                  std::fabs(found.v - wanted.v) > kTolerance);
}

inline int VertexKeyTable::add(DWORD host_vertex, const VertexKey& key) {
    if (vertices_.size() == vertices_.capacity()) {
        // Once there are more vertices than the host has, there may be one for each corner. Room
        // that isn't used is never touched, while growing step by step would copy all there is.
        vertices_.reserve(corners_);
    }
    const int number = static_cast<int>(vertices_.size());
    vertices_.push_back({key, host_vertex, kNone});
    return number;
}
