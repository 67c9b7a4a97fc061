#include <benchmark/benchmark.h>

#include <numeric>
#include <vector>

#include "bench/bench_table.h"
#include "bench/scratch_file.h"
#include "importers/sceneapi/dev/light_file_factory.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"

// Measures the writing of binary arrays, of which meshes consist.

namespace {

constexpr size_t kElements = 10'000'000;

template <typename Number>
const std::vector<Number>& numbers() {
    static const std::vector<Number> the_numbers = [] {
        std::vector<Number> made(kElements);
        std::iota(made.begin(), made.end(), Number(0));
        return made;
    }();
    return the_numbers;
}

template <typename Number>
void write_array(benchmark::State& state) {
    const std::string path = scratch_path("array.vsq");
    const std::vector<Number>& values = numbers<Number>();
    for (auto _ : state) {
        qor::LightFileFactory factory(path);
        qor::qorSceneapi_oo scene(factory);
        scene.set_array("numbers", values);
    }
    std::remove(path.c_str());
}

template <typename Number>
void write_bytes(benchmark::State& state) {
    const std::string path = scratch_path("array.bin");
    const std::vector<Number>& values = numbers<Number>();
    for (auto _ : state) {
        write_in_one_go(path, values.data(), values.size() * sizeof(Number));
    }
    std::remove(path.c_str());
}

BENCHMARK(write_array<float>)->Name("array/floats")->Unit(benchmark::kMillisecond);
BENCHMARK(write_bytes<float>)->Name("array/floats, fwrite")->Unit(benchmark::kMillisecond);
BENCHMARK(write_array<int>)->Name("array/ints")->Unit(benchmark::kMillisecond);
BENCHMARK(write_bytes<int>)->Name("array/ints, fwrite")->Unit(benchmark::kMillisecond);

const bool kCompared =
    compare(
        {"10 million floats against one fwrite", "array/floats", "array/floats, fwrite", 1.2}) &&
    compare({"10 million ints against one fwrite", "array/ints", "array/ints, fwrite", 1.2});

}  // namespace
