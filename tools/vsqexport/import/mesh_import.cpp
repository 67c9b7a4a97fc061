#include "tools/vsqexport/import/mesh_import.h"

#include <cmath>
#include <cstring>

namespace vsqexport {
namespace {

Point3 point_of(const aiVector3D& v) {
    return {v.x, v.y, v.z};
}

// Numbers distinct positions in the order in which they come. Positions are compared by their bits,
// so that NaN works as well; only the two zeros count as equal. Positions that move in different
// ways are distinct.
class PositionNumbers {
public:
    PositionNumbers(std::size_t expected, bool has_motions) : has_motions_(has_motions) {
        std::size_t size = 16;
        while (size < expected * 2) {
            size *= 2;
        }
        slots_.assign(size, kNoVertex);
        positions_.reserve(expected);
    }

    std::uint32_t number_of(const aiVector3D& v, std::uint32_t motion) {
        const Point3 position(v.x + 0.0f, v.y + 0.0f, v.z + 0.0f);
        const std::size_t mask = slots_.size() - 1;
        std::size_t slot = hash(position, motion) & mask;
        while (slots_[slot] != kNoVertex) {
            const std::uint32_t number = slots_[slot];
            if (std::memcmp(&positions_[number], &position, sizeof(position)) == 0 &&
                (motions_.empty() || motions_[number] == motion)) {
                return number;
            }
            slot = (slot + 1) & mask;
        }
        slots_[slot] = static_cast<std::uint32_t>(positions_.size());
        positions_.push_back(position);
        if (has_motions_) {
            motions_.push_back(motion);
        }
        return slots_[slot];
    }

    const std::vector<Point3>& positions() const { return positions_; }

private:
    static std::size_t hash(const Point3& position, std::uint32_t motion) {
        std::uint32_t bits[3];
        std::memcpy(bits, &position, sizeof(bits));
        std::uint64_t hash = bits[0];
        hash = hash * 0x9E3779B97F4A7C15u + bits[1];
        hash = hash * 0x9E3779B97F4A7C15u + bits[2];
        hash = hash * 0x9E3779B97F4A7C15u + motion;
        hash *= 0x9E3779B97F4A7C15u;
        return static_cast<std::size_t>(hash ^ (hash >> 32));
    }

    std::vector<std::uint32_t> slots_;  // open addressing, at most half of them taken
    std::vector<Point3> positions_;
    std::vector<std::uint32_t> motions_;  // by position; empty if nothing moves
    bool has_motions_;
};

bool is_triangle(const aiFace& face) {
    return face.mNumIndices == 3;
}

// A source is a vertex of a part, counted through all parts.
struct Sources {
    std::uint32_t count = 0;
    std::vector<std::uint32_t> first_of_part;
    int triangles = 0;
};

Sources count_sources(const std::vector<MeshPart>& parts) {
    Sources sources;
    for (const MeshPart& part : parts) {
        sources.first_of_part.push_back(sources.count);
        sources.count += part.mesh->mNumVertices;
        for (unsigned f = 0; f < part.mesh->mNumFaces; ++f) {
            sources.triangles += is_triangle(part.mesh->mFaces[f]);
        }
    }
    return sources;
}

// Calls `visit(part, first_source, source_face, target_face)` for each triangle.
template <typename Visit>
void for_each_triangle(const std::vector<MeshPart>& parts, const Sources& sources,
                       const Visit& visit) {
    int target_face = 0;
    for (std::size_t p = 0; p < parts.size(); ++p) {
        const aiMesh& mesh = *parts[p].mesh;
        for (unsigned f = 0; f < mesh.mNumFaces; ++f) {
            if (is_triangle(mesh.mFaces[f])) {
                visit(parts[p], sources.first_of_part[p], mesh.mFaces[f], target_face++);
            }
        }
    }
}

// Copies the triangles to `target`, with one vertex for each position that they use.
void take_faces(const std::vector<MeshPart>& parts, const Sources& sources,
                const std::vector<std::uint32_t>& motion_numbers, Mesh& target,
                std::vector<std::uint32_t>& vertex_of_source) {
    vertex_of_source.assign(sources.count, kNoVertex);
    PositionNumbers numbers(sources.count, !motion_numbers.empty());
    for_each_triangle(
        parts, sources, [&](const MeshPart& part, std::uint32_t first, const aiFace& face, int) {
            for (int corner = 0; corner < 3; ++corner) {
                const unsigned v = face.mIndices[corner];
                if (vertex_of_source[first + v] == kNoVertex) {
                    vertex_of_source[first + v] =
                        numbers.number_of(part.mesh->mVertices[v],
                                          motion_numbers.empty() ? 0 : motion_numbers[first + v]);
                }
            }
        });

    target.reset(static_cast<int>(numbers.positions().size()), sources.triangles);
    std::copy(numbers.positions().begin(), numbers.positions().end(), target.verts);
    for_each_triangle(
        parts, sources, [&](const MeshPart& part, std::uint32_t first, const aiFace& face, int f) {
            for (int corner = 0; corner < 3; ++corner) {
                target.faces[f].v[corner] = vertex_of_source[first + face.mIndices[corner]];
            }
            target.faces[f].smGroup = 1;
            target.faces[f].setMatID(part.material_id);
        });
}

void take_coordinates(const std::vector<MeshPart>& parts, const Sources& sources, unsigned set,
                      Mesh& target) {
    const int channel = static_cast<int>(set) + 1;
    bool is_used = false;
    for (const MeshPart& part : parts) {
        is_used =
            is_used || part.mesh->HasTextureCoords(set) || (set == 0 && part.needs_coordinates);
    }
    if (!is_used) {
        return;
    }

    target.reset_map(channel, static_cast<int>(sources.count));
    UVVert* coordinates = target.mapVerts(channel);
    for (std::size_t p = 0; p < parts.size(); ++p) {
        const aiMesh& mesh = *parts[p].mesh;
        for (unsigned v = 0; mesh.HasTextureCoords(set) && v < mesh.mNumVertices; ++v) {
            coordinates[sources.first_of_part[p] + v] = point_of(mesh.mTextureCoords[set][v]);
        }
    }
    TVFace* faces = target.mapFaces(channel);
    for_each_triangle(parts, sources,
                      [&](const MeshPart&, std::uint32_t first, const aiFace& face, int f) {
                          for (int corner = 0; corner < 3; ++corner) {
                              faces[f].t[corner] = first + face.mIndices[corner];
                          }
                      });
}

// False for a normal that is zero or not finite.
bool is_direction(const aiVector3D& normal) {
    const float length = normal.SquareLength();
    return std::isfinite(length) && length > 0;
}

void take_normals(const std::vector<MeshPart>& parts, const Sources& sources, Mesh& target) {
    bool are_used = false;
    for (const MeshPart& part : parts) {
        are_used = are_used || part.mesh->HasNormals();
    }
    if (!are_used) {
        return;
    }

    MeshNormalSpec& normals = target.reset_normals(static_cast<int>(sources.count));
    for_each_triangle(parts, sources,
                      [&](const MeshPart& part, std::uint32_t first, const aiFace& face, int f) {
                          int specified = 0;
                          for (int corner = 0; part.mesh->HasNormals() && corner < 3; ++corner) {
                              const unsigned v = face.mIndices[corner];
                              if (!is_direction(part.mesh->mNormals[v])) {
                                  continue;
                              }
                              const int id = static_cast<int>(first + v);
                              normals.Normal(id) = point_of(part.mesh->mNormals[v]);
                              normals.set_normal_index(f, corner, id);
                              ++specified;
                          }
                          target.faces[f].smGroup = specified == 3 ? 0 : 1;
                      });
}

}  // namespace

bool faces_stay_in_range(const aiMesh& mesh) {
    for (unsigned f = 0; f < mesh.mNumFaces; ++f) {
        const aiFace& face = mesh.mFaces[f];
        for (unsigned i = 0; i < face.mNumIndices; ++i) {
            if (!face.mIndices || face.mIndices[i] >= mesh.mNumVertices) {
                return false;
            }
        }
    }
    return mesh.mNumFaces == 0 || mesh.mVertices;
}

bool join_parts(const std::vector<MeshPart>& parts, Mesh& target) {
    std::vector<std::uint32_t> vertex_of_source;
    return join_parts(parts, {}, target, vertex_of_source);
}

bool join_parts(const std::vector<MeshPart>& parts,
                const std::vector<std::uint32_t>& motion_numbers, Mesh& target,
                std::vector<std::uint32_t>& vertex_of_source) {
    const Sources sources = count_sources(parts);
    if (sources.triangles == 0) {
        return false;
    }
    take_faces(parts, sources, motion_numbers, target, vertex_of_source);
    for (unsigned set = 0; set < AI_MAX_NUMBER_OF_TEXTURECOORDS; ++set) {
        take_coordinates(parts, sources, set, target);
    }
    take_normals(parts, sources, target);
    return true;
}

}  // namespace vsqexport
