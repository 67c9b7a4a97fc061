#include "tools/vsqexport/import/mesh_deformation.h"

#include <algorithm>

#include "tools/vsqexport/import/matrix_conversion.h"
#include "tools/vsqexport/import/mesh_import.h"

namespace vsqexport {
namespace {

// The transposed inverse, which keeps normals perpendicular to a surface that `matrix` transforms.
Matrix3 matrix_of_normals(const Matrix3& matrix) {
    const Matrix3 inverse = inverse_or_identity(matrix);
    const Point3 rows[3] = {inverse.GetRow(0), inverse.GetRow(1), inverse.GetRow(2)};
    return Matrix3({rows[0].x, rows[1].x, rows[2].x}, {rows[0].y, rows[1].y, rows[2].y},
                   {rows[0].z, rows[1].z, rows[2].z}, {0, 0, 0});
}

}  // namespace

bool MeshDeformation::is_still() const {
    const bool targets_stay = std::all_of(morphs_.begin(), morphs_.end(), [](const Morph& morph) {
        return !morph.motion || morph.motion->is_still();
    });
    return targets_stay && (bones_.empty() || pose_.is_still());
}

Interval MeshDeformation::validity(TimeValue t) const {
    Interval valid = bones_.empty() ? FOREVER : pose_.validity(t);
    for (const Morph& morph : morphs_) {
        if (morph.motion) {
            morph.motion->narrow_to_rest(t, valid);
        }
    }
    return valid;
}

void MeshDeformation::apply(TimeValue t, const Mesh& at_rest, Mesh& mesh) const {
    std::copy(at_rest.verts, at_rest.verts + at_rest.numVerts, mesh.verts);
    for (std::size_t i = 0; i < rest_normals_.size(); ++i) {
        mesh.GetSpecifiedNormals()->Normal(static_cast<int>(i)) = rest_normals_[i];
    }
    move_to_targets(t, mesh);
    if (!bones_.empty()) {
        move_with_bones(t, mesh);
    }
}

void MeshDeformation::move_to_targets(TimeValue t, Mesh& mesh) const {
    for (const Morph& morph : morphs_) {
        std::vector<float> weights = morph.rest_weights;
        if (morph.motion) {
            morph.motion->apply(t, weights);
        }
        for (std::size_t i = 0; i < weights.size(); ++i) {
            if (weights[i] == 0.0f) {
                continue;
            }
            for (const Shift& shift : morph.vertices[i]) {
                mesh.verts[shift.number] += shift.by * weights[i];
            }
            for (const Shift& shift : morph.normals[i]) {
                mesh.GetSpecifiedNormals()->Normal(static_cast<int>(shift.number)) +=
                    shift.by * weights[i];
            }
        }
    }
}

// Vertices without bones stay where they are in the mesh's space.
void MeshDeformation::move_with_bones(TimeValue t, Mesh& mesh) const {
    std::vector<Matrix3> matrices;
    pose_.at(t, matrices);
    std::vector<Matrix3> vertex_matrices;
    std::vector<Matrix3> normal_matrices;
    for (const Bone& bone : bones_) {
        vertex_matrices.push_back(bone.bone_from_mesh * matrices[bone.joint]);
        normal_matrices.push_back(matrix_of_normals(vertex_matrices.back()));
    }

    const auto first_of = [this](std::size_t vertex) {
        return vertex == 0 ? 0 : ends_[vertex - 1];
    };
    for (std::size_t v = 0; v < ends_.size(); ++v) {
        if (first_of(v) == ends_[v]) {
            continue;
        }
        Point3 moved(0, 0, 0);
        for (std::size_t i = first_of(v); i < ends_[v]; ++i) {
            moved += mesh.verts[v] * vertex_matrices[influences_[i].bone] * influences_[i].weight;
        }
        mesh.verts[v] = moved;
    }
    for (std::size_t n = 0; n < rest_normals_.size(); ++n) {
        const std::uint32_t v = vertex_of_normal_[n];
        if (v == kNoVertex || first_of(v) == ends_[v]) {
            continue;
        }
        Point3& normal = mesh.GetSpecifiedNormals()->Normal(static_cast<int>(n));
        Point3 moved(0, 0, 0);
        for (std::size_t i = first_of(v); i < ends_[v]; ++i) {
            moved += normal_matrices[influences_[i].bone].VectorTransform(normal) *
                     influences_[i].weight;
        }
        normal = Normalize(moved);
    }
}

}  // namespace vsqexport
