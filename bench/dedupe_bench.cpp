#include <benchmark/benchmark.h>
#include <meshoptimizer.h>

#include <vector>

#include "bench/bench_table.h"
#include "bench/mesh_scenes.h"
#include "plugins/3dsmax/export/mesh_part.h"

// Measures the search for the distinct vertices of a million triangles, from the same corners. The
// product compares the host's vertices, normals and coordinates, and the peer whole vertices. Both
// produce an index for each corner and the arrays of the distinct vertices.

namespace {

using mesh_scenes::Shading;

constexpr int kTriangles = 1'000'000;

struct Corners {
    explicit Corners(Shading shading) : mesh(mesh_scenes::surface(kTriangles, shading)) {
        VertexNormals normals;
        const CopiedMesh copy(mesh);
        normals.compute(copy);
        const UVVert* coordinates = mesh.mapVerts(1);
        const TVFace* faces = mesh.mapFaces(1);
        for (int f = 0; f < mesh.numFaces; ++f) {
            for (int corner = 0; corner < 3; ++corner) {
                const UVVert& uv = coordinates[faces[f].t[corner]];
                host_vertices.push_back(mesh.faces[f].v[corner]);
                keys.push_back({normals.normal(f, corner, normals.record(f, corner)), uv.x, uv.y});
                places.push_back(mesh.verts[mesh.faces[f].v[corner]]);
            }
        }
    }

    Mesh mesh;
    std::vector<DWORD> host_vertices;
    std::vector<VertexKey> keys;
    std::vector<Point3> places;
};

const Corners& corners_of(Shading shading) {
    static const Corners smooth(Shading::kSmooth);
    static const Corners hard(Shading::kHard);
    return shading == Shading::kSmooth ? smooth : hard;
}

void find_by_host_vertex(benchmark::State& state, Shading shading) {
    const Corners& corners = corners_of(shading);
    const size_t count = corners.keys.size();
    VertexKeyTable table;
    for (auto _ : state) {
        const size_t vertices = static_cast<size_t>(corners.mesh.numVerts);
        table.begin(corners.mesh, Matrix3(), count, vertices, true);
        std::vector<int> indices(count);
        for (size_t i = 0; i < count; ++i) {
            indices[i] = table.find_or_add(corners.host_vertices[i], corners.keys[i]);
        }
        const std::vector<float> places = table.take_positions();
        benchmark::DoNotOptimize(indices.data());
        benchmark::DoNotOptimize(places.data());
    }
}

void find_by_remap(benchmark::State& state, Shading shading) {
    struct Vertex {
        Point3 place;
        VertexKey key;
    };
    const Corners& corners = corners_of(shading);
    const size_t count = corners.keys.size();
    std::vector<Vertex> vertices;
    for (size_t i = 0; i < count; ++i) {
        vertices.push_back({corners.places[i], corners.keys[i]});
    }
    for (auto _ : state) {
        std::vector<unsigned> remap(count);
        const size_t distinct = meshopt_generateVertexRemap(remap.data(), nullptr, count,
                                                            vertices.data(), count, sizeof(Vertex));
        std::vector<unsigned> indices(count);
        meshopt_remapIndexBuffer(indices.data(), nullptr, count, remap.data());
        std::vector<Vertex> kept(distinct);
        meshopt_remapVertexBuffer(kept.data(), vertices.data(), count, sizeof(Vertex),
                                  remap.data());
        benchmark::DoNotOptimize(indices.data());
        benchmark::DoNotOptimize(kept.data());
    }
}

bool register_both(const std::string& name, Shading shading) {
    const auto add = [shading](const std::string& full_name, auto run) {
        benchmark::RegisterBenchmark(full_name.c_str(), [run, shading](benchmark::State& state) {
            run(state, shading);
        })->Unit(benchmark::kMillisecond);
    };
    add(name, find_by_host_vertex);
    add(name + ", remap", find_by_remap);
    return compare({name + " against generateVertexRemap", name, name + ", remap", 0.5});
}

const bool kRegistered = register_both("dedupe/smooth", Shading::kSmooth) &&
                         register_both("dedupe/hard edges", Shading::kHard);

}  // namespace
