#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>

#include "bench/bench_table.h"
#include "bench/scratch_file.h"
#include "plugins/3dsmax/export/scene_exporter.h"
#include "standins/host/memory/scene_builder.h"
#include "standins/host/memory/splines.h"

// Measures the export of hair, which the host has already converted to splines, to a file in
// memory.

namespace {

constexpr int kStrands = 100'000;
constexpr int kSegments = 8;

// Never destroyed, since the host must not outlive the host library's list of hosts.
memhost::SceneBuilder& hairy() {
    static memhost::SceneBuilder& the_scene = *[] {
        memhost::HairModifier hair;
        hair.strands = kStrands;
        hair.segments = kSegments;
        auto splines = std::make_shared<memhost::SplineObject>(
            memhost::grow_hair(hair, memhost::sphere_mesh(10, 48, 24), Matrix3()));
        splines->attribute(L"velmora_hair_and_fur_data")
            .number(1, L"velmora_end_radius", hair.tip_thickness)
            .color(3, L"velmora_root_color", hair.root_color);
        auto* scene = new memhost::SceneBuilder;
        scene->node(L"Hair").object(std::move(splines));
        return scene;
    }();
    return the_scene;
}

void export_to(const std::string& path) {
    memhost::MemoryHost& host = hairy().host();
    SceneExporter exporter(&host, host.GetRootNode(), std::make_shared<Qor::Options>(&host), {});
    exporter.Run(path, false, true, false);
}

void export_hair(benchmark::State& state) {
    const std::string path = scratch_path("hair.vsq");
    for (auto _ : state) {
        export_to(path);
    }
    std::remove(path.c_str());
}

// The host's share of the time: it measures the splines and returns a copy.
void ask_host(benchmark::State& state) {
    INode* node = hairy().host().GetRootNode()->GetChildNode(0);
    auto* shape = static_cast<ShapeObject*>(node->EvalWorldState(0).obj);
    for (auto _ : state) {
        Box3 box;
        shape->GetWorldBoundBox(0, node, nullptr, box);
        shape->GetLocalBoundBox(0, node, nullptr, box);
        BezierShape copy;
        shape->MakeBezier(0, copy);
        benchmark::DoNotOptimize(copy.GetSpline(0));
    }
}

void write_as_many_bytes(benchmark::State& state) {
    const std::string path = scratch_path("hair.bin");
    export_to(path);
    const std::vector<char> bytes(std::filesystem::file_size(path), 1);
    for (auto _ : state) {
        write_in_one_go(path, bytes.data(), bytes.size());
    }
    state.counters["MB"] = static_cast<double>(bytes.size()) / 1e6;
    std::remove(path.c_str());
}

BENCHMARK(export_hair)->Name("hair/100,000 strands")->Unit(benchmark::kMillisecond);
BENCHMARK(ask_host)->Name("hair/100,000 strands, the host's part")->Unit(benchmark::kMillisecond);
BENCHMARK(write_as_many_bytes)->Name("hair/100,000 strands, fwrite")->Unit(benchmark::kMillisecond);

const bool kCompared = compare({"100,000 strands of hair against one fwrite of their bytes",
                                "hair/100,000 strands", "hair/100,000 strands, fwrite", 0});

}  // namespace
