#include <benchmark/benchmark.h>

#include <map>

#include "bench/bench_table.h"
#include "bench/mesh_scenes.h"
#include "model/triangle_object.h"
#include "plugins/3dsmax/export/material_table.h"
#include "plugins/3dsmax/export/mesh_part.h"

// Measures one vertex that very many faces share. The time must be linear in the faces, not
// quadratic.

namespace {

enum class Crowd { kNoGroups, kGroups, kNormals, kNan };

constexpr int kChannel = 1;
constexpr int kFew = 30'000;
constexpr int kMany = 60'000;

Mesh fan(int faces, Crowd crowd) {
    std::vector<Point3> places = {{0, 0, 0}};
    std::vector<memhost::Triangle> triangles;
    std::vector<DWORD> groups;
    for (int i = 0; i < faces; ++i) {
        places.emplace_back(1.0f, static_cast<float>(i), static_cast<float>(i % 7));
        triangles.push_back({0, static_cast<DWORD>(i == 0 ? faces : i), static_cast<DWORD>(i + 1)});
        groups.push_back(crowd == Crowd::kGroups ? 1u << (i % 32) : 0);
    }
    memhost::MeshBuilder builder(places, triangles);
    builder.groups(groups);
    if (crowd == Crowd::kNan) {
        std::vector<memhost::Triangle> map_faces;
        for (DWORD i = 0; i < static_cast<DWORD>(faces); ++i) {
            map_faces.push_back({i, i, i});
        }
        builder.map(kChannel, places, map_faces);
    }
    Mesh mesh = builder;
    if (crowd == Crowd::kNormals || crowd == Crowd::kNan) {
        MeshNormalSpec& spec = mesh.reset_normals(faces);
        for (int f = 0; f < faces; ++f) {
            spec.Normal(f) = Point3(static_cast<float>(f % 200) - 100.0f,
                                    static_cast<float>(f / 200) - 100.0f, 80.0f)
                                 .Normalize();
            if (crowd == Crowd::kNan) {
                spec.Normal(f) = Point3(NAN, 0.0f, 1.0f);
            }
            spec.set_normal_index(f, 0, f);
        }
    }
    return mesh;
}

void extract(benchmark::State& state, int faces, Crowd crowd) {
    memhost::SceneBuilder scene;
    auto& map = scene.bitmap(L"missing.png").channel(kChannel);
    auto& material = scene.make<memhost::StandardMaterial>(L"m").map(memhost::kDiffuseSlot, &map);
    auto fan_node = scene.node(L"fan");
    if (crowd == Crowd::kNan) {
        fan_node.material(material);
    }
    INode& node = fan_node.node();
    Mesh mesh = fan(faces, crowd);
    const CopiedMesh copy(mesh);
    const MaterialTable table = make_material_table(copy.mesh, &node, 0);
    MeshPartBuilder parts;
    for (auto _ : state) {
        qor::TriangleObject object("fan");
        parts.begin(copy, table);
        parts.build(0, Matrix3(), object);
        benchmark::DoNotOptimize(object.vertices().data());
        parts.keep_storage_of(object);
    }
}

bool register_pair(const std::string& name, Crowd crowd) {
    for (const int faces : {kFew, kMany}) {
        const std::string full_name = "crowded/" + name + (faces == kFew ? ", half" : "");
        benchmark::RegisterBenchmark(full_name.c_str(), [faces, crowd](benchmark::State& state) {
            extract(state, faces, crowd);
        })->Unit(benchmark::kMillisecond);
    }
    return compare({"60,000 faces at a vertex against 30,000: " + name, "crowded/" + name,
                    "crowded/" + name + ", half", 2.2});
}

const bool kRegistered = register_pair("no groups", Crowd::kNoGroups) &&
                         register_pair("32 groups", Crowd::kGroups) &&
                         register_pair("distinct normals", Crowd::kNormals) &&
                         register_pair("NaN and distinct coordinates", Crowd::kNan);

}  // namespace
