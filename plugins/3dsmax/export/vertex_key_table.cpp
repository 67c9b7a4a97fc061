#include "plugins/3dsmax/export/vertex_key_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

// Matching keys lie within these distances of one another, with a margin for rounding. A cell is
// four times as wide, so along each axis the matches of a key lie in at most two neighbouring
// cells. This holds even for values so large that a double can't resolve places within a cell, and
// for an infinite coordinate, which matches only itself.
constexpr double kNormalReach = 3.46e-4;
constexpr double kCoordinateReach = 1.2e-7;

// Where a normal or a coordinate lies: the hash of a cell, of a combination of infinities, or one
// of these two. NaN matches everything, so each vertex is listed under `kAnyPlace` as well once
// there are such keys. Different places may have the same hash, since all candidates are compared.
constexpr std::uint64_t kAnyPlace = 1;
constexpr std::uint64_t kPlaceOfNan = 2;

// The ways in which the components of a normal can be infinite: base 3, one digit for each.
constexpr int kInfinities = 27;

struct Places {
    std::array<std::uint64_t, kInfinities> hashes;
    size_t count = 0;

    void add(std::uint64_t hash) { hashes[count++] = hash; }
};

std::uint64_t mixed(std::uint64_t hash, std::uint64_t bits) {
    hash = (hash ^ bits) * 0x9e3779b97f4a7c15u;
    return hash ^ (hash >> 29);
}

std::uint64_t mixed(std::uint64_t hash, double cell) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &cell, sizeof bits);
    return mixed(hash, bits);
}

std::uint64_t combined(std::uint64_t normal, std::uint64_t u, std::uint64_t v) {
    return mixed(mixed(mixed(std::uint64_t{0}, normal), u), v);
}

double cell_of(double value, double reach) {
    return std::floor(value / (4 * reach)) + 0.0;
}

bool has_nan(const Point3& normal) {
    return std::isnan(normal.x) || std::isnan(normal.y) || std::isnan(normal.z);
}

// 0 if all components are finite.
int infinities_of(const Point3& normal) {
    int code = 0;
    for (const float component : {normal.x, normal.y, normal.z}) {
        code = 3 * code + (!std::isinf(component) ? 0 : component > 0 ? 1 : 2);
    }
    return code;
}

// Two normals match, whatever their other components, if one component is the same infinity in
// both.
bool share_an_infinity(int a, int b) {
    for (; a != 0 && b != 0; a /= 3, b /= 3) {
        if (a % 3 == b % 3 && a % 3 != 0) {
            return true;
        }
    }
    return false;
}

std::uint64_t place_of_infinities(int code) {
    return mixed(0, static_cast<double>(-code));
}

std::uint64_t place_of_normal(const Point3& normal) {
    if (has_nan(normal)) {
        return kPlaceOfNan;
    }
    if (const int code = infinities_of(normal); code != 0) {
        return place_of_infinities(code);
    }
    std::uint64_t hash = 0;
    for (const float component : {normal.x, normal.y, normal.z}) {
        hash = mixed(hash, cell_of(static_cast<double>(component), kNormalReach));
    }
    return hash;
}

std::uint64_t place_of_coordinate(float value) {
    return std::isnan(value) ? kPlaceOfNan
                             : mixed(0, cell_of(static_cast<double>(value), kCoordinateReach));
}

// The places of all normals that can match this one.
Places places_near_normal(const Point3& normal, bool has_open_places) {
    Places places;
    if (has_nan(normal)) {
        places.add(kAnyPlace);
        return places;
    }
    if (has_open_places) {
        places.add(kPlaceOfNan);
    }
    if (const int code = infinities_of(normal); code != 0) {
        for (int other = 1; other < kInfinities; ++other) {
            if (share_an_infinity(code, other)) {
                places.add(place_of_infinities(other));
            }
        }
        return places;
    }
    double cells[3][2];
    unsigned second_cell_of = 0;  // one bit for each axis along which two cells are in reach
    const float components[3] = {normal.x, normal.y, normal.z};
    for (int i = 0; i < 3; ++i) {
        const double value = static_cast<double>(components[i]);
        cells[i][0] = cell_of(value - kNormalReach, kNormalReach);
        cells[i][1] = cell_of(value + kNormalReach, kNormalReach);
        second_cell_of |= cells[i][0] != cells[i][1] ? 1u << i : 0u;
    }
    // Each subset of those axes selects one of the cells.
    for (unsigned subset = second_cell_of;; subset = (subset - 1) & second_cell_of) {
        std::uint64_t hash = 0;
        for (int i = 0; i < 3; ++i) {
            hash = mixed(hash, cells[i][subset >> i & 1u]);
        }
        places.add(hash);
        if (subset == 0) {
            return places;
        }
    }
}

Places places_near_coordinate(float coordinate, bool has_open_places) {
    Places places;
    if (std::isnan(coordinate)) {
        places.add(kAnyPlace);
        return places;
    }
    if (has_open_places) {
        places.add(kPlaceOfNan);
    }
    const double value = static_cast<double>(coordinate);
    const double first = cell_of(value - kCoordinateReach, kCoordinateReach);
    const double second = cell_of(value + kCoordinateReach, kCoordinateReach);
    places.add(mixed(0, first));
    if (second != first) {
        places.add(mixed(0, second));
    }
    return places;
}

bool needs_open_places(const VertexKey& key) {
    return has_nan(key.normal) || std::isnan(key.u) || std::isnan(key.v);
}

}  // namespace

void VertexKeyTable::begin(const Mesh& mesh, const Matrix3& transform, size_t corners,
                           size_t expected, bool has_coordinates) {
    base_ += static_cast<int>(count_);
    if (corners > static_cast<size_t>(std::numeric_limits<int>::max() - base_)) {
        std::fill(heads_.begin(), heads_.end(), kNone);
        base_ = 0;
    }
    count_ = 0;
    mesh_ = &mesh;
    transform_ = transform;
    const size_t host_vertices = static_cast<size_t>(mesh.numVerts);
    positions_.clear();
    next_.clear();
    normals_.clear();
    coordinates_.clear();
    crowds_.clear();
    if (heads_.size() < host_vertices) {
        heads_.resize(host_vertices, kNone);
    }
    corners_ = corners;
    has_coordinates_ = has_coordinates;
    make_room(std::min(expected, corners));
}

void VertexKeyTable::make_room(size_t vertices) {
    positions_.reserve(3 * vertices);
    next_.reserve(vertices);
    normals_.reserve(3 * vertices);
    if (has_coordinates_) {
        coordinates_.reserve(2 * vertices);
    }
    room_ = vertices;
}

// Lengthens the arrays by so little that the new elements stay in the processor's cache until they
// are written.
void VertexKeyTable::extend() {
    constexpr size_t kStep = 1024;
    if (count_ == room_) {
        // Not more than twice what is used: some systems count memory that was asked for.
        make_room(std::min(corners_, 2 * room_ + 1));
    }
    const size_t length = std::min(room_, count_ + kStep);
    positions_.resize(3 * length);
    next_.resize(length);
    normals_.resize(3 * length);
    if (has_coordinates_) {
        coordinates_.resize(2 * length);
    }
}

std::vector<float> VertexKeyTable::take_positions() {
    positions_.resize(3 * count_);
    return std::move(positions_);
}

std::vector<float> VertexKeyTable::take_normals() {
    normals_.resize(3 * count_);
    return std::move(normals_);
}

std::vector<float> VertexKeyTable::take_coordinates() {
    coordinates_.resize(has_coordinates_ ? 2 * count_ : 0);
    return std::move(coordinates_);
}

void VertexKeyTable::keep_storage(std::vector<float> positions, std::vector<float> normals,
                                  std::vector<float> coordinates) {
    positions_ = std::move(positions);
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
    crowd
        .lists[combined(place_of_normal(key.normal), place_of_coordinate(key.u),
                        place_of_coordinate(key.v))]
        .push_back(number);
    if (crowd.has_open_places) {
        list_in_open_places(crowd, number);
    }
    return number;
}

// Finds the first of all matches, as a walk along a chain would.
int VertexKeyTable::find_in_crowd(Crowd& crowd, const VertexKey& key) const {
    if (!crowd.has_open_places && needs_open_places(key)) {
        crowd.has_open_places = true;
        for (const int number : crowd.all) {
            list_in_open_places(crowd, number);
        }
    }
    const Places normals = places_near_normal(key.normal, crowd.has_open_places);
    const Places us = places_near_coordinate(key.u, crowd.has_open_places);
    const Places vs = places_near_coordinate(key.v, crowd.has_open_places);
    int best = kNone;
    for (size_t n = 0; n < normals.count; ++n) {
        for (size_t u = 0; u < us.count; ++u) {
            for (size_t v = 0; v < vs.count; ++v) {
                const auto list =
                    crowd.lists.find(combined(normals.hashes[n], us.hashes[u], vs.hashes[v]));
                if (list != crowd.lists.end()) {
                    best = first_match(list->second, key, best);
                }
            }
        }
    }
    return best;
}

// Lists a vertex for keys that match any normal or any coordinate: once for each choice of these.
void VertexKeyTable::list_in_open_places(Crowd& crowd, int number) const {
    const VertexKey key = key_of(number);
    const std::uint64_t places[3] = {place_of_normal(key.normal), place_of_coordinate(key.u),
                                     place_of_coordinate(key.v)};
    for (unsigned open = 1; open < 8; ++open) {
        const auto place = [&places, open](unsigned i) {
            return (open >> i & 1u) != 0 ? kAnyPlace : places[i];
        };
        crowd.lists[combined(place(0), place(1), place(2))].push_back(number);
    }
}

VertexKey VertexKeyTable::key_of(int number) const {
    const size_t i = static_cast<size_t>(number);
    const float* normal = &normals_[3 * i];
    VertexKey key = {Point3(normal[0], normal[1], normal[2]), 0.0f, 0.0f};
    if (has_coordinates_) {
        key.u = coordinates_[2 * i];
        key.v = coordinates_[2 * i + 1];
    }
    return key;
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
