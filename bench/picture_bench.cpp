#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "bench/bench_table.h"
#include "bench/mesh_scenes.h"
#include "bench/scratch_file.h"
#include "plugins/3dsmax/export/scene_exporter.h"
#include "tools/vsqinfo/checks/file_report.h"
#include "tools/vsqinfo/vsq_reader.h"
#include "tools/vsqpicture/picture_session.h"

// Measures what it costs to read, to check and to draw a mesh of a million triangles.

namespace {

constexpr int kTriangles = 1'000'000;

const std::string& scene_file() {
    static const std::string path = [] {
        const auto scene =
            mesh_scenes::scene_of(mesh_scenes::surface(kTriangles, mesh_scenes::Shading::kSmooth));
        scene->host().root().children().front()->set_material(nullptr);  // its picture is missing
        std::string file = scratch_path("picture.vsq");
        SceneExporter exporter(&scene->host(), scene->host().GetRootNode(),
                               std::make_shared<Qor::Options>(&scene->host()), {});
        exporter.Run(file, false, true, false);
        return file;
    }();
    return path;
}

void read_only(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(vsqinfo::read_vsq_file(scene_file()).triangles);
    }
}
BENCHMARK(read_only)->Name("picture/read by vsqinfo's reader")->Unit(benchmark::kMillisecond);

void check(benchmark::State& state) {
    for (auto _ : state) {
        benchmark::DoNotOptimize(vsqinfo::report_on_file(scene_file()).has_errors());
    }
}
BENCHMARK(check)->Name("picture/read and check, as vsqinfo")->Unit(benchmark::kMillisecond);

void build_scene(benchmark::State& state) {
    for (auto _ : state) {
        vsqpicture::SceneBuilder builder;
        builder.add(scene_file());
        benchmark::DoNotOptimize(builder.scene().nodes.size());
    }
}
BENCHMARK(build_scene)->Name("picture/read into a scene")->Unit(benchmark::kMillisecond);

void draw(benchmark::State& state) {
    vsqpicture::SceneBuilder builder;
    builder.add(scene_file());
    vsqpicture::PictureRequest request;
    request.options.width = 960;
    request.options.height = 540;
    request.options.samples = 16;
    for (auto _ : state) {
        benchmark::DoNotOptimize(vsqpicture::draw(builder.scene(), "", request).image.pixels[0]);
    }
}
BENCHMARK(draw)->Name("picture/draw 960 x 540, 16 samples")->Unit(benchmark::kMillisecond);

const bool kCompared =
    compare({"a scene to draw against vsqinfo", "picture/read into a scene",
             "picture/read and check, as vsqinfo", 3}) &&
    compare({"checks against reading alone", "picture/read and check, as vsqinfo",
             "picture/read by vsqinfo's reader", 0});

}  // namespace
