#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "bench/bench_table.h"
#include "bench/scratch_file.h"
#include "importers/sceneapi/dev/light_file_factory.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"

// Measures text arrays: the motion of nodes, with sixteen numbers for each key.

namespace {

constexpr size_t kMatrices = 100'000;
constexpr int kNumbersOfAMatrix = 16;

// Typical matrices of a scene: arbitrary rotations and translations, with three zeros and a one in
// the last column.
const std::vector<qorMatrix>& matrices() {
    static const std::vector<qorMatrix> the_matrices = [] {
        std::mt19937 random(1);
        std::uniform_real_distribution<float> turn(-1, 1);
        std::uniform_real_distribution<float> place(-1000, 1000);
        std::vector<qorMatrix> made(kMatrices);
        for (qorMatrix& matrix : made) {
            for (int row = 0; row < 4; ++row) {
                for (int column = 0; column < 3; ++column) {
                    matrix.m[row][column] = row < 3 ? turn(random) : place(random);
                }
                matrix.m[row][3] = row < 3 ? 0 : 1;
            }
        }
        return made;
    }();
    return the_matrices;
}

void report_numbers(benchmark::State& state) {
    state.counters["million numbers/s"] =
        benchmark::Counter(static_cast<double>(kMatrices * kNumbersOfAMatrix) / 1e6,
                           benchmark::Counter::kIsIterationInvariantRate);
}

void write_matrices(benchmark::State& state) {
    const std::string path = scratch_path("matrices.vsq");
    const std::vector<qorMatrix>& values = matrices();
    for (auto _ : state) {
        qor::LightFileFactory factory(path);
        qor::qorSceneapi_oo scene(factory);
        scene.set_array("matrices", values);
    }
    report_numbers(state);
    std::remove(path.c_str());
}

void print_matrices(benchmark::State& state) {
    const std::string path = scratch_path("matrices.txt");
    const std::vector<qorMatrix>& values = matrices();
    std::vector<char> text(kMatrices * kNumbersOfAMatrix * 16);
    for (auto _ : state) {
        char* end = text.data();
        for (const qorMatrix& matrix : values) {
            for (const auto& row : matrix.m) {
                for (const double number : row) {
                    end += std::snprintf(end, 32, "%g ", number);
                }
            }
            *end++ = ',';
            *end++ = '\n';
        }
        write_in_one_go(path, text.data(), static_cast<size_t>(end - text.data()));
    }
    report_numbers(state);
    std::remove(path.c_str());
}

BENCHMARK(write_matrices)->Name("text/matrices")->Unit(benchmark::kMillisecond);
BENCHMARK(print_matrices)->Name("text/matrices, snprintf")->Unit(benchmark::kMillisecond);

const bool kCompared = compare({"100,000 matrices as text against snprintf and one fwrite",
                                "text/matrices", "text/matrices, snprintf", 1.0 / 3});

}  // namespace
