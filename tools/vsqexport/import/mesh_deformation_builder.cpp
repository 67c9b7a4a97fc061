#include "tools/vsqexport/import/mesh_deformation_builder.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <tuple>

#include "tools/vsqexport/import/mesh_import.h"

namespace vsqexport {
namespace {

using Shift = MeshDeformation::Shift;

// The offsets other than 0 from `rest` to `target`, or those in `target` if it holds offsets.
std::vector<Shift> shifts(const aiVector3D* rest, const aiVector3D* target, bool is_change,
                          unsigned count, std::uint32_t first_number) {
    std::vector<Shift> result;
    for (unsigned i = 0; rest && target && i < count; ++i) {
        const aiVector3D by = is_change ? target[i] : target[i] - rest[i];
        if (std::isfinite(by.SquareLength()) && by != aiVector3D()) {
            result.push_back({first_number + i, {by.x, by.y, by.z}});
        }
    }
    return result;
}

}  // namespace

void MeshDeformationBuilder::add_part(const aiMesh& mesh, const BoneWeights& bones,
                                      const std::vector<MorphTarget>& targets,
                                      std::shared_ptr<const MorphMotion> motion) {
    add_bones(bones, mesh.mNumVertices);
    if (!targets.empty()) {
        add_targets(mesh, targets, std::move(motion));
    }
    first_source_ += mesh.mNumVertices;
}

// Parts with the same bone share it.
std::size_t MeshDeformationBuilder::number_of(const BoneWeights::Bone& bone) {
    const std::size_t joint = result_.pose_.add(*bone.node, animation_);
    std::array<float, 12> numbers;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        numbers[i] = bone.bone_from_mesh.GetRow(static_cast<int>(i / 3))[static_cast<int>(i % 3)];
    }
    const auto [known, is_new] = bone_numbers_.try_emplace({joint, numbers}, result_.bones_.size());
    if (is_new) {
        result_.bones_.push_back({joint, bone.bone_from_mesh});
    }
    return known->second;
}

void MeshDeformationBuilder::add_bones(const BoneWeights& bones, unsigned vertices) {
    std::vector<std::size_t> numbers;
    for (const BoneWeights::Bone& bone : bones.bones) {
        numbers.push_back(number_of(bone));
    }
    const std::size_t first = result_.influences_.size();
    for (const BoneWeights::Influence& influence : bones.influences) {
        result_.influences_.push_back({numbers[influence.bone], influence.weight});
    }
    for (unsigned v = 0; v < vertices; ++v) {
        result_.ends_.push_back(first + (bones.ends.empty() ? 0 : bones.ends[v]));
    }
}

void MeshDeformationBuilder::add_targets(const aiMesh& mesh,
                                         const std::vector<MorphTarget>& targets,
                                         std::shared_ptr<const MorphMotion> motion) {
    MeshDeformation::Morph morph;
    morph.motion = std::move(motion);
    for (const MorphTarget& target : targets) {
        morph.rest_weights.push_back(target.rest_weight);
        morph.vertices.push_back(shifts(mesh.mVertices, target.mesh->mVertices, target.is_change,
                                        mesh.mNumVertices, first_source_));
        morph.normals.push_back(shifts(mesh.mNormals, target.mesh->mNormals, target.is_change,
                                       mesh.mNumVertices, first_source_));
    }
    result_.morphs_.push_back(std::move(morph));
}

std::vector<std::vector<MeshDeformationBuilder::Pull>> MeshDeformationBuilder::pulls() const {
    std::vector<std::vector<Pull>> result(result_.ends_.size());
    std::size_t next = 0;
    for (std::size_t source = 0; source < result.size(); ++source) {
        for (; next < result_.ends_[source]; ++next) {
            const BoneWeights::Influence& influence = result_.influences_[next];
            result[source].push_back({influence.bone, {influence.weight, 0, 0}});
        }
    }
    std::size_t by = result_.bones_.size();
    for (const MeshDeformation::Morph& morph : result_.morphs_) {
        for (const std::vector<Shift>& target : morph.vertices) {
            for (const Shift& shift : target) {
                result[shift.number].push_back({by, {shift.by.x, shift.by.y, shift.by.z}});
            }
            ++by;
        }
    }
    return result;
}

std::vector<std::uint32_t> MeshDeformationBuilder::motion_numbers() const {
    std::vector<std::vector<Pull>> all = pulls();
    for (std::vector<Pull>& of_source : all) {
        std::sort(of_source.begin(), of_source.end(), [](const Pull& a, const Pull& b) {
            return std::tie(a.by, a.how) < std::tie(b.by, b.how);
        });
    }
    const auto comes_before = [&all](std::uint32_t a, std::uint32_t b) {
        return std::lexicographical_compare(all[a].begin(), all[a].end(), all[b].begin(),
                                            all[b].end(), [](const Pull& p, const Pull& q) {
                                                return std::tie(p.by, p.how) <
                                                       std::tie(q.by, q.how);
                                            });
    };
    std::vector<std::uint32_t> order(all.size());
    std::iota(order.begin(), order.end(), 0u);
    std::sort(order.begin(), order.end(), comes_before);

    std::vector<std::uint32_t> numbers(all.size(), 0);
    std::uint32_t number = 0;
    for (std::size_t i = 1; i < order.size(); ++i) {
        number += comes_before(order[i - 1], order[i]) ? 1 : 0;
        numbers[order[i]] = number;
    }
    return numbers;
}

MeshDeformation MeshDeformationBuilder::finish(Mesh& mesh,
                                               const std::vector<std::uint32_t>& vertex_of_source) {
    constexpr std::uint32_t kNoSource = 0xFFFFFFFF;
    std::vector<std::uint32_t> source_of_vertex(static_cast<std::size_t>(mesh.numVerts), kNoSource);
    for (std::uint32_t source = 0; source < vertex_of_source.size(); ++source) {
        const std::uint32_t vertex = vertex_of_source[source];
        if (vertex != kNoVertex && source_of_vertex[vertex] == kNoSource) {
            source_of_vertex[vertex] = source;
        }
    }

    // Sources that have become one vertex move in the same way, so the first one stands for all.
    std::vector<BoneWeights::Influence> influences;
    std::vector<std::size_t> ends;
    for (const std::uint32_t source : source_of_vertex) {
        const std::size_t first = source == 0 ? 0 : result_.ends_[source - 1];
        for (std::size_t i = first; i < result_.ends_[source]; ++i) {
            influences.push_back(result_.influences_[i]);
        }
        ends.push_back(influences.size());
    }
    result_.influences_ = std::move(influences);
    result_.ends_ = std::move(ends);
    MeshNormalSpec* normals = mesh.GetSpecifiedNormals();
    for (MeshDeformation::Morph& morph : result_.morphs_) {
        for (std::vector<Shift>& target : morph.vertices) {
            std::vector<Shift> kept;
            for (const Shift& shift : target) {
                const std::uint32_t vertex = vertex_of_source[shift.number];
                if (vertex != kNoVertex && source_of_vertex[vertex] == shift.number) {
                    kept.push_back({vertex, shift.by});
                }
            }
            target = std::move(kept);
        }
        if (!normals) {
            morph.normals.assign(morph.normals.size(), {});
        }
    }
    for (int i = 0; normals && i < normals->GetNumNormals(); ++i) {
        result_.rest_normals_.push_back(normals->Normal(i));
    }
    result_.vertex_of_normal_ = vertex_of_source;
    return std::move(result_);
}

}  // namespace vsqexport
