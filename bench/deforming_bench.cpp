#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>

#include "bench/bench_table.h"
#include "bench/mesh_scenes.h"
#include "bench/scratch_file.h"
#include "plugins/3dsmax/export/scene_exporter.h"
#include "tests/support/exported_libraries.h"

// Measures a deforming mesh: each frame is captured, and all frames go into one library.

namespace {

constexpr int kTriangles = 100'000;
constexpr int kFrames = 100;
constexpr int kTicksPerFrame = 160;

// Never destroyed, since the host must not outlive the host library's list of hosts.
memhost::MemoryHost& host() {
    static auto& scene = *mesh_scenes::deforming_scene(kTriangles, kFrames).release();
    return scene.host();
}

void export_scene(const std::string& path, bool deformable) {
    const auto options = std::make_shared<Qor::Options>(&host());
    options->Deformable = deformable;
    SceneExporter exporter(&host(), host().GetRootNode(), options, {});
    exporter.Run(path, false, true, false);
}

void export_frames(benchmark::State& state) {
    const std::string path = scratch_path("deforming.vsq");
    const ExportedLibraries libraries;
    for (auto _ : state) {
        export_scene(path, true);
        state.PauseTiming();
        std::filesystem::remove_all(libraries.animations() / "3ds max");
        state.ResumeTiming();
    }
    std::remove(path.c_str());
}

void write_bytes(benchmark::State& state) {
    const std::string path = scratch_path("deforming.bin");
    std::string bytes;
    {
        const ExportedLibraries libraries;
        export_scene(path, true);
        bytes = file_contents(path) + file_contents(libraries.paths().front());
    }
    state.counters["MB"] = static_cast<double>(bytes.size()) / 1e6;
    for (auto _ : state) {
        write_in_one_go(path, bytes.data(), bytes.size());
        state.PauseTiming();
        std::remove(path.c_str());
        state.ResumeTiming();
    }
}

void export_stills(benchmark::State& state) {
    const std::string path = scratch_path("still.vsq");
    for (auto _ : state) {
        for (int frame = 0; frame < kFrames; ++frame) {
            host().SetTime(frame * kTicksPerFrame, FALSE);
            export_scene(path, false);
        }
    }
    host().SetTime(0, FALSE);
    std::remove(path.c_str());
}

constexpr char kOurs[] = "deforming/100 frames of 100,000 triangles";
constexpr char kFwrite[] = "deforming/100 frames of 100,000 triangles, fwrite";
constexpr char kStills[] = "deforming/100 frames of 100,000 triangles, stills";

bool register_all() {
    // Libraries go to memory-backed storage, like all other files that are measured here.
    setenv("TMPDIR", std::filesystem::path(scratch_path("")).parent_path().c_str(), 1);
    for (const auto& [name, run] :
         {std::pair{kOurs, export_frames}, {kFwrite, write_bytes}, {kStills, export_stills}}) {
        benchmark::RegisterBenchmark(name, run)->Unit(benchmark::kMillisecond);
    }
    compare({"deforming mesh against one fwrite of its bytes", kOurs, kFwrite, 0});
    return compare({"deforming mesh against as many stills", kOurs, kStills, 1.1});
}

const bool kRegistered = register_all();

}  // namespace
