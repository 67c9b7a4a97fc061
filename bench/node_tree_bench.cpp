#include <benchmark/benchmark.h>

#include <memory>

#include "bench/bench_table.h"
#include "bench/scratch_file.h"
#include "plugins/3dsmax/export/narrow_name.h"
#include "plugins/3dsmax/export/scene_exporter.h"
#include "plugins/3dsmax/export/scene_matrix.h"
#include "standins/host/memory/scene_builder.h"

// Measures many small statements: a tree of nodes that have only names and matrices.

namespace {

constexpr int kNodes = 20'000;
constexpr int kChildrenOfANode = 5;
// The beginning and the end of a group, and its matrix.
constexpr int kStatementsOfANode = 3;

memhost::SceneBuilder& tree() {
    static const std::unique_ptr<memhost::SceneBuilder> the_tree = [] {
        auto scene = std::make_unique<memhost::SceneBuilder>();
        std::vector<memhost::NodeBuilder> nodes = {scene->node(L"Node00000")};
        for (int i = 1; i < kNodes; ++i) {
            std::wstring number = std::to_wstring(i);
            number.insert(0, 5 - number.size(), L'0');
            const float turn = static_cast<float>(i);
            nodes.push_back(nodes[static_cast<size_t>((i - 1) / kChildrenOfANode)]
                                .child(L"Node" + number)
                                .transform(memhost::rotation_z(turn) *
                                           memhost::translation(turn * 0.37f, 1, turn)));
        }
        return scene;
    }();
    return *the_tree;
}

void report_statements(benchmark::State& state) {
    state.counters["ns per statement"] = benchmark::Counter(
        static_cast<double>(kNodes * kStatementsOfANode) / 1e9,
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void export_tree(benchmark::State& state) {
    const std::string path = scratch_path("tree.vsq");
    memhost::MemoryHost& host = tree().host();
    const auto options = std::make_shared<Qor::Options>(&host);
    for (auto _ : state) {
        SceneExporter exporter(&host, host.GetRootNode(), options, {});
        exporter.Run(path, false, true, false);
    }
    report_statements(state);
    std::remove(path.c_str());
}

// Prints the same text from the same host without the product.
class PlainPrinter {
public:
    void print(INode* node) {
        used_ +=
            std::snprintf(next(), kRoom, "\ngroup \"%s\" {\n", NarrowName(node->GetName()).c_str());
        for (int i = 0; i < node->NumberOfChildren(); ++i) {
            print(node->GetChildNode(i));
        }
        const Matrix3 matrix = node->GetNodeTM(0) * Inverse(node->GetParentNode()->GetNodeTM(0));
        const auto& m = ToSceneMatrix(matrix).m;
        used_ += std::snprintf(
            next(), kRoom, "transform %g %g %g %g %g %g %g %g %g %g %g %g %g %g %g %g\n}\n",
            m[0][0], m[0][1], m[0][2], m[0][3], m[1][0], m[1][1], m[1][2], m[1][3], m[2][0],
            m[2][1], m[2][2], m[2][3], m[3][0], m[3][1], m[3][2], m[3][3]);
    }
    void write(const std::string& path) {
        write_in_one_go(path, text_.data(), used_);
        used_ = 0;
    }

private:
    static constexpr size_t kRoom = 1024;

    char* next() {
        if (text_.size() < used_ + kRoom) {
            text_.resize(2 * text_.size() + kRoom);
        }
        return text_.data() + used_;
    }

    std::vector<char> text_;
    size_t used_ = 0;
};

void print_tree(benchmark::State& state) {
    const std::string path = scratch_path("tree.txt");
    INode* root = tree().host().GetRootNode();
    PlainPrinter printer;
    for (auto _ : state) {
        for (int i = 0; i < root->NumberOfChildren(); ++i) {
            printer.print(root->GetChildNode(i));
        }
        printer.write(path);
    }
    report_statements(state);
    std::remove(path.c_str());
}

BENCHMARK(export_tree)->Name("tree/20,000 nodes")->Unit(benchmark::kMillisecond);
BENCHMARK(print_tree)->Name("tree/20,000 nodes, printf")->Unit(benchmark::kMillisecond);

const bool kCompared = compare({"20,000 nodes against the same text through printf and one fwrite",
                                "tree/20,000 nodes", "tree/20,000 nodes, printf", 0});

}  // namespace
