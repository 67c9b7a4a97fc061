#include "plugins/3dsmax/export/vertex_key_table.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// Matching keys lie within these distances of one another, with a margin for rounding. A cell is
// four times as wide, so along each axis the matches of a key lie in at most two neighbouring
// cells. This holds even for values so large that a double can't resolve places within a cell.
constexpr double kNormalReach = 3.46e-4;
constexpr double kCoordinateReach = 1.2e-7;

constexpr int kAxes = 5;

struct KeyAxis {
    double value;
    double reach;

    double cell_of(double place) const { return std::floor(place / (4 * reach)) + 0.0; }
};

void list_axes(const VertexKey& key, KeyAxis (&axes)[kAxes]) {
    axes[0] = {static_cast<double>(key.normal.x), kNormalReach};
    axes[1] = {static_cast<double>(key.normal.y), kNormalReach};
    axes[2] = {static_cast<double>(key.normal.z), kNormalReach};
    axes[3] = {static_cast<double>(key.u), kCoordinateReach};
    axes[4] = {static_cast<double>(key.v), kCoordinateReach};
}

std::uint64_t mixed(std::uint64_t hash, double cell) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &cell, sizeof bits);
    hash = (hash ^ bits) * 0x9e3779b97f4a7c15u;
    return hash ^ (hash >> 29);
}

// True if a key's matches can't be found by cell. NaN matches everything. Two normals match,
// whatever their other components, if one component is the same infinity in both. An infinite
// texture coordinate matches only itself, so it has a cell.
bool is_outside_the_grid(const VertexKey& key) {
    return !std::isfinite(key.normal.x) || !std::isfinite(key.normal.y) ||
           !std::isfinite(key.normal.z) || std::isnan(key.u) || std::isnan(key.v);
}

}  // namespace

void VertexKeyTable::begin(size_t host_vertices, size_t corners, bool has_coordinates) {
    // Only the host vertices of the last part need a reset.
    for (const DWORD host_vertex : host_vertices_) {
        heads_[host_vertex] = kNone;
    }
    host_vertices_.clear();
    next_.clear();
    normals_.clear();
    coordinates_.clear();
    crowds_.clear();
    if (heads_.size() < host_vertices) {
        heads_.resize(host_vertices, kNone);
    }
    corners_ = corners;
    has_coordinates_ = has_coordinates;
    make_room(std::min(host_vertices, corners));
}

void VertexKeyTable::make_room(size_t vertices) {
    host_vertices_.reserve(vertices);
    next_.reserve(vertices);
    normals_.reserve(3 * vertices);
    if (has_coordinates_) {
        coordinates_.reserve(2 * vertices);
    }
    room_ = vertices;
}

void VertexKeyTable::keep_storage(std::vector<float> normals, std::vector<float> coordinates) {
    normals_ = std::move(normals);
    coordinates_ = std::move(coordinates);
}

int VertexKeyTable::find_or_add_in_crowd(DWORD host_vertex, const VertexKey& key) {
    Crowd& crowd = crowds_[host_vertex];
    const int found = find_in_crowd(crowd, key);
    if (found != kNone) {
        return found;
    }
    const int number = add(host_vertex, key);
    crowd.all.push_back(number);
    if (is_outside_the_grid(key)) {
        crowd.outside.push_back(number);
        return number;
    }
    KeyAxis axes[kAxes];
    list_axes(key, axes);
    std::uint64_t hash = 0;
    for (const KeyAxis& axis : axes) {
        hash = mixed(hash, axis.cell_of(axis.value));
    }
    crowd.cells[hash].push_back(number);
    return number;
}

// Finds the first of all matches, as a walk along a chain would.
int VertexKeyTable::find_in_crowd(const Crowd& crowd, const VertexKey& key) const {
    if (is_outside_the_grid(key)) {
        return first_match(crowd.all, key, kNone);
    }
    int best = first_match(crowd.outside, key, kNone);

    KeyAxis axes[kAxes];
    list_axes(key, axes);
    double cells[kAxes][2];
    unsigned second_cell_of = 0;  // one bit for each axis along which two cells are in reach
    for (int i = 0; i < kAxes; ++i) {
        cells[i][0] = axes[i].cell_of(axes[i].value - axes[i].reach);
        cells[i][1] = axes[i].cell_of(axes[i].value + axes[i].reach);
        second_cell_of |= cells[i][0] != cells[i][1] ? 1u << i : 0u;
    }
    // Each subset of those axes selects one of the cells.
    for (unsigned subset = second_cell_of;; subset = (subset - 1) & second_cell_of) {
        std::uint64_t hash = 0;
        for (int i = 0; i < kAxes; ++i) {
            hash = mixed(hash, cells[i][subset >> i & 1u]);
        }
        const auto cell = crowd.cells.find(hash);
        if (cell != crowd.cells.end()) {
            best = first_match(cell->second, key, best);
        }
        if (subset == 0) {
            return best;
        }
    }
}

int VertexKeyTable::first_match(const std::vector<int>& candidates, const VertexKey& key,
                                int best) const {
    for (const int candidate : candidates) {
        if (best != kNone && candidate > best) {
            break;
        }
        if (matches(candidate, key)) {
            return candidate;
        }
    }
    return best;
}
