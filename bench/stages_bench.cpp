#include <benchmark/benchmark.h>

#include "bench/mesh_scenes.h"
#include "bench/scratch_file.h"
#include "importers/sceneapi/dev/light_file_factory.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "model/triangle_object.h"
#include "plugins/3dsmax/export/material_table.h"
#include "plugins/3dsmax/export/mesh_part.h"

// Measures each stage of the export of one smooth mesh of a million triangles.

namespace {

struct Prepared {
    Prepared()
        : scene(mesh_scenes::scene_of(
              mesh_scenes::surface(1'000'000, mesh_scenes::Shading::kSmooth))),
          node(scene->host().GetRootNode()->GetChildNode(0)),
          copy(static_cast<TriObject*>(node->EvalWorldState(0).obj)->GetMesh()),
          table(make_material_table(copy.mesh, node, 0)) {}

    std::unique_ptr<memhost::SceneBuilder> scene;
    INode* node;
    CopiedMesh copy;
    MaterialTable table;
};

// Never destroyed, since the host must not outlive the host library's list of hosts.
Prepared& prepared() {
    static auto& the_one = *new Prepared;
    return the_one;
}

void copy_mesh(benchmark::State& state) {
    for (auto _ : state) {
        const Mesh copied(prepared().copy.mesh);
        benchmark::DoNotOptimize(copied.verts);
    }
}

void compute_normals(benchmark::State& state) {
    for (auto _ : state) {
        VertexNormals normals;
        normals.compute(prepared().copy);
        benchmark::DoNotOptimize(normals.record(0, 0));
    }
}

void split_vertices(benchmark::State& state) {
    MeshPartBuilder parts;
    parts.begin(prepared().copy, prepared().table);
    for (auto _ : state) {
        qor::TriangleObject object("surface");
        parts.build(0, Matrix3(), object);
        benchmark::DoNotOptimize(object.vertices().data());
    }
}

void write_object(benchmark::State& state) {
    const std::string path = scratch_path("stage.vsq");
    MeshPartBuilder parts;
    parts.begin(prepared().copy, prepared().table);
    qor::TriangleObject object("surface");
    parts.build(0, Matrix3(), object);
    for (auto _ : state) {
        qor::LightFileFactory factory(path);
        qor::qorSceneapi_oo scene(factory);
        object.emit(scene);
    }
    std::remove(path.c_str());
}

BENCHMARK(copy_mesh)->Name("stage/copy of the mesh")->Unit(benchmark::kMillisecond);
BENCHMARK(compute_normals)->Name("stage/normals")->Unit(benchmark::kMillisecond);
BENCHMARK(split_vertices)->Name("stage/dedupe and arrays")->Unit(benchmark::kMillisecond);
BENCHMARK(write_object)->Name("stage/writing")->Unit(benchmark::kMillisecond);

}  // namespace
