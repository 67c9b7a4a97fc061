#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "bench/bench_table.h"
#include "bench/peak_memory.h"

// Runs the benchmarks several times in turn, and prints medians and their ratios. Times vary from
// run to run, so only figures of one run can be compared.
//
// Without arguments, each family runs in a process of its own: the peers' scenes make many millions
// of small allocations, which would leave a fragmented heap and slow down the next family.

namespace {

constexpr const char* kFamilies[] = {
    "^(array|text|tree)/",
    "^motion/",
    "^(stage|dedupe|crowded)/",
    "^hair/",
    "^deforming/",
    "^link/",
    "^notes/",
    "^picture/",
    "^mesh/20,000 boxes",
    "^mesh/hard edges",
    "^mesh/(smooth|explicit normals|no smoothing groups|10 million)",
};

constexpr char kRepetitions[] = "--benchmark_repetitions=7";
// Other load on the machine then affects all benchmarks equally.
constexpr char kInterleaved[] = "--benchmark_enable_random_interleaving=true";

std::vector<BenchRatio>& ratios() {
    static std::vector<BenchRatio> the_ratios;
    return the_ratios;
}

class MedianReporter final : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Aggregate || run.aggregate_name != "median") {
                continue;
            }
            const std::string name = run.run_name.function_name;
            median_ms[name] = run.GetAdjustedRealTime();
            std::printf("%-44s %10.3f ms", name.c_str(), run.GetAdjustedRealTime());
            for (const auto& [counter, value] : run.counters) {
                std::printf("   %s %.4g", counter.c_str(), value.value);
            }
            std::printf("\n");
        }
    }

    std::map<std::string, double> median_ms;
};

}  // namespace

bool compare(BenchRatio ratio) {
    ratios().push_back(std::move(ratio));
    return true;
}

int main(int argc, char** argv) {
    if (argc == 2 && std::string(argv[1]) == "memory") {
        print_peak_memory();
        return 0;
    }
    if (argc == 1) {
        for (const char* family : kFamilies) {
            std::fflush(stdout);
            const std::string command =
                std::string("'") + argv[0] + "' '--benchmark_filter=" + family + "'";
            if (std::system(command.c_str()) != 0) {
                return 1;
            }
        }
        print_peak_memory();
        return 0;
    }

    std::vector<char*> arguments(argv, argv + argc);
    std::string repetitions = kRepetitions;
    std::string interleaved = kInterleaved;
    arguments.insert(arguments.begin() + 1, {repetitions.data(), interleaved.data()});
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 2;
    }

    MedianReporter reporter;
    std::printf("Medians\n");
    benchmark::RunSpecifiedBenchmarks(&reporter);

    std::printf("\n%-60s %8s %8s\n", "Ratios", "is", "at most");
    for (const BenchRatio& ratio : ratios()) {
        const auto ours = reporter.median_ms.find(ratio.ours);
        const auto peer = reporter.median_ms.find(ratio.peer);
        if (ours == reporter.median_ms.end() || peer == reporter.median_ms.end()) {
            continue;
        }
        std::printf("%-60s %8.3f", ratio.what.c_str(), ours->second / peer->second);
        if (ratio.at_most > 0) {
            std::printf(" %8.3f", ratio.at_most);
        }
        std::printf("\n");
    }
    std::printf("\n");
    return 0;
}
