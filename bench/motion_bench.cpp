#include <benchmark/benchmark.h>

#include <cstdint>
#include <map>
#include <memory>

#include "bench/bench_table.h"
#include "bench/scratch_file.h"
#include "plugins/3dsmax/export/scene_exporter.h"
#include "plugins/3dsmax/export/scene_matrix.h"
#include "standins/host/memory/scene_builder.h"

// Measures moving nodes, which are sampled at every frame and have a key there.

namespace {

constexpr int kNodes = 10'000;
constexpr int kFrames = 100;
constexpr int kTicksPerFrame = 160;
constexpr int kNumbersOfAKey = 16;
constexpr int kFramesOfAChain = 50;

// The nodes have no geometry, so that only matrices are written. A light of an unknown kind writes
// nothing, but counts as content of its node.
memhost::SceneBuilder& moving_nodes() {
    static const std::unique_ptr<memhost::SceneBuilder> the_nodes = [] {
        auto scene = std::make_unique<memhost::SceneBuilder>();
        scene->animation_frames(0, kFrames - 1);
        // The matrices are computed in advance, so that the host's part costs little.
        const auto turns = std::make_shared<std::vector<Matrix3>>();
        for (int frame = 0; frame < kFrames; ++frame) {
            turns->push_back(memhost::rotation_z(3.7 * frame) * memhost::rotation_x(1.3 * frame));
        }
        const auto light = std::make_shared<memhost::PlainObject>(LIGHT_CLASS_ID);
        for (int i = 0; i < kNodes; ++i) {
            const float place = static_cast<float>(i) * 0.37f;
            scene->node(L"Node" + std::to_wstring(i)).object(light).motion([=](TimeValue t) {
                return (*turns)[static_cast<size_t>(t / kTicksPerFrame)] *
                       memhost::translation(place, 1, static_cast<float>(t) * 0.01f);
            });
        }
        return scene;
    }();
    return *the_nodes;
}

// A chain of nodes, each below the one before. Only the last has content.
memhost::SceneBuilder& chain_of(int nodes) {
    static auto& scenes = *new std::map<int, std::unique_ptr<memhost::SceneBuilder>>;
    auto& scene = scenes[nodes];
    if (!scene) {
        scene = std::make_unique<memhost::SceneBuilder>();
        scene->animation_frames(0, kFramesOfAChain - 1);
        const auto light = std::make_shared<memhost::PlainObject>(LIGHT_CLASS_ID);
        const auto turn = [](TimeValue t) {
            return memhost::translation(1, 0, static_cast<float>(t) * 1e-4f);
        };
        memhost::NodeBuilder last = scene->node(L"Node").motion(turn);
        for (int i = 1; i < nodes; ++i) {
            last = last.child(L"Node").motion(turn);
        }
        last.object(light);
    }
    return *scene;
}

void export_chain(benchmark::State& state, int nodes) {
    const std::string path = scratch_path("chain.vsq");
    memhost::MemoryHost& host = chain_of(nodes).host();
    const auto options = std::make_shared<Qor::Options>(&host);
    for (auto _ : state) {
        SceneExporter exporter(&host, host.GetRootNode(), options, {});
        exporter.Run(path, false, true, false);
    }
    std::remove(path.c_str());
}

void report_numbers(benchmark::State& state) {
    state.counters["million numbers/s"] =
        benchmark::Counter(static_cast<double>(kNodes) * kFrames * kNumbersOfAKey / 1e6,
                           benchmark::Counter::kIsIterationInvariantRate);
}

void export_motion(benchmark::State& state) {
    const std::string path = scratch_path("motion.vsq");
    memhost::MemoryHost& host = moving_nodes().host();
    const auto options = std::make_shared<Qor::Options>(&host);
    const std::uint64_t changes = host.time_changes();
    const std::uint64_t evaluations = host.evaluations();
    for (auto _ : state) {
        SceneExporter exporter(&host, host.GetRootNode(), options, {});
        exporter.Run(path, false, true, false);
    }
    report_numbers(state);
    const auto runs = static_cast<double>(state.iterations());
    state.counters["changes of time"] = static_cast<double>(host.time_changes() - changes) / runs;
    state.counters["evaluations"] = static_cast<double>(host.evaluations() - evaluations) / runs;
    std::remove(path.c_str());
}

char* print_key(char* out, const Matrix3& change) {
    const qorMatrix matrix = ToSceneMatrix(change);
    for (const auto& row : matrix.m) {
        for (const double number : row) {
            out += std::snprintf(out, 32, "%g ", number);
        }
    }
    *out++ = ',';
    *out++ = '\n';
    return out;
}

// Prints the same numbers from the same host without the product.
void print_motion(benchmark::State& state) {
    const std::string path = scratch_path("motion.txt");
    INode* root = moving_nodes().host().GetRootNode();
    std::vector<char> text(static_cast<size_t>(kNodes) * kFrames * kNumbersOfAKey * 14);
    for (auto _ : state) {
        char* end = text.data();
        for (int i = 0; i < root->NumberOfChildren(); ++i) {
            INode* node = root->GetChildNode(i);
            const Matrix3 inverse_base = Inverse(node->GetNodeTM(0));
            for (TimeValue t = 0; t < kFrames * kTicksPerFrame; t += kTicksPerFrame) {
                const Matrix3 local = node->GetNodeTM(t) * Inverse(root->GetNodeTM(t));
                end = print_key(end, local * inverse_base);
            }
        }
        write_in_one_go(path, text.data(), static_cast<size_t>(end - text.data()));
    }
    report_numbers(state);
    std::remove(path.c_str());
}

void export_chain_of_1000(benchmark::State& state) {
    export_chain(state, 1000);
}

void export_chain_of_2000(benchmark::State& state) {
    export_chain(state, 2000);
}

BENCHMARK(export_chain_of_1000)->Name("motion/chain of 1,000")->Unit(benchmark::kMillisecond);
BENCHMARK(export_chain_of_2000)->Name("motion/chain of 2,000")->Unit(benchmark::kMillisecond);
BENCHMARK(export_motion)->Name("motion/10,000 nodes")->Unit(benchmark::kMillisecond);
BENCHMARK(print_motion)->Name("motion/10,000 nodes, snprintf")->Unit(benchmark::kMillisecond);

const bool kCompared = compare({"10,000 nodes over 100 frames against snprintf and one fwrite",
                                "motion/10,000 nodes", "motion/10,000 nodes, snprintf", 1.0 / 3});

const bool kChainsCompared = compare({"a chain of 2,000 moving nodes against 1,000",
                                      "motion/chain of 2,000", "motion/chain of 1,000", 2.5});

}  // namespace
