#include <benchmark/benchmark.h>

#include <memory>

#include "bench/bench_table.h"
#include "bench/mesh_scenes.h"
#include "bench/scratch_file.h"
#include "plugins/3dsmax/export/scene_exporter.h"

// Measures what it costs to note losses in a scene that loses nothing.

namespace {

constexpr int kBoxes = 20'000;
constexpr int kNodes = 100'000;
constexpr int kChildrenOfANode = 5;
constexpr int kTriangles = 1'000'000;

// The scene is built once, for both benchmarks of it.
using Scene = memhost::SceneBuilder& (*)();

memhost::SceneBuilder& boxes() {
    static const auto scene = mesh_scenes::scene_of_boxes(kBoxes);
    return *scene;
}

// Nodes with a name and a matrix, and nothing else.
memhost::SceneBuilder& nodes() {
    static const auto scene = [] {
        auto made = std::make_unique<memhost::SceneBuilder>();
        std::vector<memhost::NodeBuilder> all = {made->node(L"Node0")};
        for (int i = 1; i < kNodes; ++i) {
            all.push_back(all[static_cast<std::size_t>((i - 1) / kChildrenOfANode)]
                              .child(L"Node" + std::to_wstring(i))
                              .at(static_cast<float>(i), 1, 2));
        }
        return made;
    }();
    return *scene;
}

memhost::SceneBuilder& surface() {
    static const auto scene = [] {
        auto made =
            mesh_scenes::scene_of(mesh_scenes::surface(kTriangles, mesh_scenes::Shading::kSmooth));
        made->host().root().children().front()->set_material(nullptr);  // its picture is missing
        return made;
    }();
    return *scene;
}

void export_scene(benchmark::State& state, Scene scene, bool with_notes) {
    const std::string path = scratch_path("notes.vsq");
    memhost::MemoryHost& host = scene().host();
    const auto options = std::make_shared<Qor::Options>(&host);
    for (auto _ : state) {
        ExportNotes notes;
        SceneExporter exporter(&host, host.GetRootNode(), options, {},
                               with_notes ? &notes : nullptr);
        exporter.Run(path, false, true, false);
        if (!notes.empty()) {
            state.SkipWithError(KindOf(notes.sorted().front().note).code);
        }
    }
    std::remove(path.c_str());
}

BENCHMARK_CAPTURE(export_scene, boxes_on, boxes, true)
    ->Name("notes/20,000 boxes, on")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(export_scene, boxes_off, boxes, false)
    ->Name("notes/20,000 boxes, off")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(export_scene, nodes_on, nodes, true)
    ->Name("notes/100,000 bare nodes, on")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(export_scene, nodes_off, nodes, false)
    ->Name("notes/100,000 bare nodes, off")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(export_scene, surface_on, surface, true)
    ->Name("notes/a million triangles, on")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(export_scene, surface_off, surface, false)
    ->Name("notes/a million triangles, off")
    ->Unit(benchmark::kMillisecond);

constexpr double kNothingMeasurable = 1.03;

const bool kCompared =
    compare({"20,000 boxes with notes against without", "notes/20,000 boxes, on",
             "notes/20,000 boxes, off", kNothingMeasurable}) &&
    compare({"100,000 bare nodes with notes against without", "notes/100,000 bare nodes, on",
             "notes/100,000 bare nodes, off", kNothingMeasurable}) &&
    compare({"a million triangles with notes against without", "notes/a million triangles, on",
             "notes/a million triangles, off", kNothingMeasurable});

}  // namespace
