#include <benchmark/benchmark.h>

#include <algorithm>
#include <assimp/Exporter.hpp>
#include <cmath>
#include <cstdio>
#include <map>
#include <stdexcept>
#include <utility>

#include "bench/bench_table.h"
#include "bench/mesh_scenes.h"
#include "bench/scratch_file.h"
#include "plugins/3dsmax/export/scene_exporter.h"

// Measures whole exports of meshes to a file in memory, and assimp's exporters with the same scene.
// Those compute no normals and share no vertices.

namespace {

using mesh_scenes::Shading;

constexpr int kMillion = 1'000'000;
constexpr int kBoxes = 20'000;

struct Scene {
    const char* name;
    int triangles;  // in one surface; 0 for the boxes
    Shading shading;
    double against_peers;  // target of the ratio to each peer's time; 0 if there is none
    double against_limit;  // target of the ratio to `run_limit`; 0 if there is none
};

constexpr Scene kScenes[] = {
    {"smooth", kMillion, Shading::kSmooth, 0.65, 2.1},
    {"hard edges", kMillion, Shading::kHard, 0.6, 1.9},
    {"explicit normals", kMillion, Shading::kExplicit, 0, 0},
    {"no smoothing groups", kMillion, Shading::kNone, 0, 0},
    {"10 million", 10 * kMillion, Shading::kSmooth, 0.25, 2.1},
    {"20,000 boxes", 0, Shading::kSmooth, 0.67, 5.5},
};

void export_scene(memhost::SceneBuilder& scene, const std::string& path) {
    memhost::MemoryHost& host = scene.host();
    SceneExporter exporter(&host, host.GetRootNode(), std::make_shared<Qor::Options>(&host), {});
    exporter.Run(path, false, true, false);
}

std::string benchmark_name(const Scene& scene, const std::string& what) {
    return std::string("mesh/") + scene.name + what;
}

// Scenes are built on first use and never destroyed, since the host of a scene must not outlive the
// host library's list of hosts.
memhost::SceneBuilder& host_scene(const Scene& scene) {
    static auto& scenes = *new std::map<const Scene*, std::unique_ptr<memhost::SceneBuilder>>;
    auto& built = scenes[&scene];
    if (!built) {
        built = scene.triangles == 0
                    ? mesh_scenes::scene_of_boxes(kBoxes)
                    : mesh_scenes::scene_of(mesh_scenes::surface(scene.triangles, scene.shading));
    }
    return *built;
}

const aiScene& peer_scene(const Scene& scene) {
    static std::map<const Scene*, std::unique_ptr<aiScene>> scenes;
    auto& built = scenes[&scene];
    if (!built) {
        built =
            scene.triangles == 0
                ? mesh_scenes::peer_scene_of_boxes(kBoxes)
                : mesh_scenes::peer_scene_of(mesh_scenes::surface(scene.triangles, scene.shading));
    }
    return *built;
}

void run_export(benchmark::State& state, const Scene& scene) {
    const std::string path = scratch_path("mesh.vsq");
    memhost::SceneBuilder& built = host_scene(scene);
    for (auto _ : state) {
        export_scene(built, path);
    }
    std::remove(path.c_str());
}

void run_peer(benchmark::State& state, const Scene& scene, const char* format) {
    const std::string path = scratch_path(std::string("mesh.") + format);
    const aiScene& built = peer_scene(scene);
    for (auto _ : state) {
        Assimp::Exporter exporter;
        if (exporter.Export(&built, format, path) != aiReturn_SUCCESS) {
            throw std::runtime_error(exporter.GetErrorString());
        }
    }
    std::remove(path.c_str());
}

std::vector<char> exported_bytes(const Scene& scene, const std::string& path) {
    export_scene(host_scene(scene), path);
    std::FILE* file = std::fopen(path.c_str(), "rb");
    std::fseek(file, 0, SEEK_END);
    std::vector<char> bytes(static_cast<size_t>(std::ftell(file)));
    std::rewind(file);
    if (std::fread(bytes.data(), 1, bytes.size(), file) != bytes.size()) {
        throw std::runtime_error("the exported file can't be read back");
    }
    std::fclose(file);
    return bytes;
}

// The least time that an export of the same bytes can take.
void run_fwrite(benchmark::State& state, const Scene& scene) {
    const std::string path = scratch_path("mesh.bin");
    const std::vector<char> bytes = exported_bytes(scene, path);
    for (auto _ : state) {
        write_in_one_go(path, bytes.data(), bytes.size());
    }
    std::remove(path.c_str());
}

float angle_between(const Point3& a, const Point3& b) {
    return std::acos(std::min(std::max(a % b, -1.0f), 1.0f));
}

// The normals of all vertices, each face weighted by its angle there. Knows no groups.
void plain_normals(const Mesh& mesh, std::vector<Point3>& normals) {
    normals.assign(static_cast<size_t>(mesh.numVerts), Point3(0, 0, 0));
    for (int f = 0; f < mesh.numFaces; ++f) {
        const DWORD* const v = mesh.faces[f].v;
        const Point3 sides[] = {mesh.verts[v[1]] - mesh.verts[v[0]],
                                mesh.verts[v[2]] - mesh.verts[v[1]],
                                mesh.verts[v[0]] - mesh.verts[v[2]]};
        const Point3 normal = sides[0] ^ sides[1];
        Point3 directions[3];
        for (int i = 0; i < 3; ++i) {
            directions[i] = sides[i] * (1 / sides[i].Length());
        }
        for (int i = 0; i < 3; ++i) {
            normals[v[i]] += normal * angle_between(directions[i], directions[(i + 2) % 3]);
        }
    }
    for (Point3& normal : normals) {
        normal = normal.Normalize();
    }
}

// What any exporter must do: one pass for the normals, a copy of the arrays and one fwrite of them.
// Boxes have so few faces that only the latter two count.
void run_limit(benchmark::State& state, const Scene& scene) {
    const std::string path = scratch_path("mesh.bin");
    const std::vector<char> bytes = exported_bytes(scene, path);
    const Mesh mesh =
        scene.triangles == 0 ? Mesh() : mesh_scenes::surface(scene.triangles, scene.shading);
    for (auto _ : state) {
        std::vector<Point3> normals;
        if (scene.triangles > 0) {
            plain_normals(mesh, normals);
            benchmark::DoNotOptimize(normals.data());
        }
        const std::vector<char> copy(bytes);
        write_in_one_go(path, copy.data(), copy.size());
    }
    std::remove(path.c_str());
}

bool register_all() {
    const auto add = [](const std::string& name, auto run) {
        benchmark::RegisterBenchmark(name.c_str(), run)
            ->Unit(benchmark::kMillisecond)
            ->MinTime(0.1);
    };
    for (const Scene& scene : kScenes) {
        const std::string ours = benchmark_name(scene, "");
        add(ours, [&scene](benchmark::State& state) { run_export(state, scene); });
        add(ours + ", fwrite", [&scene](benchmark::State& state) { run_fwrite(state, scene); });
        compare({ours + " against one fwrite of its bytes", ours, ours + ", fwrite", 0});
        if (scene.against_limit > 0) {
            add(ours + ", limit", [&scene](benchmark::State& state) { run_limit(state, scene); });
            compare(
                {ours + " against the least work", ours, ours + ", limit", scene.against_limit});
        }
        if (scene.against_peers == 0) {
            continue;
        }
        for (const char* format : {"plyb", "assbin", "glb2"}) {
            if (scene.triangles == 0 && std::string(format) != "plyb") {
                continue;  // the other peers need minutes for so many nodes
            }
            const std::string peer = ours + ", " + format;
            add(peer,
                [&scene, format](benchmark::State& state) { run_peer(state, scene, format); });
            compare({ours + " against " + format, ours, peer,
                     std::string(format) == "glb2" ? 0 : scene.against_peers});
        }
    }
    compare({"10 million triangles against 1 million", "mesh/10 million", "mesh/smooth", 14});
    compare({"explicit normals against smooth", "mesh/explicit normals", "mesh/smooth", 1.5});
    return compare(
        {"no smoothing groups against smooth", "mesh/no smoothing groups", "mesh/smooth", 3});
}

const bool kRegistered = register_all();

}  // namespace
