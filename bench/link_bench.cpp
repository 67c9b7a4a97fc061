#include <benchmark/benchmark.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

#include "bench/bench_table.h"
#include "bench/mesh_scenes.h"
#include "bench/scratch_file.h"
#include "plugins/3dsmax/export/scene_exporter.h"
#include "tests/support/installation_entries.h"
#include "tests/support/velmora_process.h"

// Measures a Render of a large mesh to a running renderer, which writes it to a file in memory.

namespace {

constexpr int kTriangles = 1'000'000;

// A renderer for this benchmark, with its installation.
class RunningRenderer {
public:
    RunningRenderer() {
        set_environment("VELMORA_SCENES", scratch_path("scenes"));
        process_ = std::make_unique<VelmoraProcess>(VELMORA_PROGRAM);
    }
    ~RunningRenderer() { std::filesystem::remove_all(scratch_path("scenes")); }

    size_t bytes_received() const {
        return std::filesystem::file_size(process_->newest_scene().file);
    }

private:
    RendererFolder folder_;
    TemporaryFolder resources_;
    RegistryEntries registry_{installation_entries(
        "HKEY_LOCAL_MACHINE", "Velmora 11", VELMORA_PROGRAM,
        std::filesystem::path(VELMORA_PROGRAM).parent_path().string(), resources_.path().string())};
    std::unique_ptr<VelmoraProcess> process_;
};

memhost::SceneBuilder& scene() {
    static const auto the_scene =
        mesh_scenes::scene_of(mesh_scenes::surface(kTriangles, mesh_scenes::Shading::kSmooth));
    return *the_scene;
}

void run_exporter(const std::string& path, bool to_file) {
    memhost::MemoryHost& host = scene().host();
    SceneExporter exporter(&host, host.GetRootNode(), std::make_shared<Qor::Options>(&host), {});
    exporter.Run(path, false, to_file, false);
}

void render(benchmark::State& state) {
    const RunningRenderer renderer;
    for (auto _ : state) {
        run_exporter("", false);
    }
    state.counters["MB"] = static_cast<double>(renderer.bytes_received()) / 1e6;
}

void export_to_file(benchmark::State& state) {
    const std::string path = scratch_path("link.vsq");
    for (auto _ : state) {
        run_exporter(path, true);
    }
    std::remove(path.c_str());
}

void throw_if(bool failed) {
    if (failed) {
        throw std::runtime_error("the loopback socket failed");
    }
}

// Sends the bytes to a peer that reads them all and then answers.
void send_through_socket(const std::vector<char>& bytes) {
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    throw_if(bind(listener, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
             listen(listener, 1) != 0 ||
             getsockname(listener, reinterpret_cast<sockaddr*>(&address), &size) != 0);
    std::thread peer([listener, total = bytes.size()] {
        const int connection = accept(listener, nullptr, nullptr);
        std::vector<char> buffer(1 << 18);
        size_t received = 0;
        ssize_t chunk = 0;
        while (received < total && (chunk = read(connection, buffer.data(), buffer.size())) > 0) {
            received += static_cast<size_t>(chunk);
        }
        throw_if(write(connection, "", 1) != 1);
        close(connection);
    });
    const int connection = socket(AF_INET, SOCK_STREAM, 0);
    throw_if(connect(connection, reinterpret_cast<sockaddr*>(&address), size) != 0);
    for (size_t sent = 0; sent < bytes.size();) {
        const ssize_t chunk = write(connection, bytes.data() + sent, bytes.size() - sent);
        throw_if(chunk <= 0);
        sent += static_cast<size_t>(chunk);
    }
    char answer = 0;
    throw_if(read(connection, &answer, 1) != 1);
    peer.join();
    close(connection);
    close(listener);
}

void send_as_many_bytes(benchmark::State& state) {
    const std::string path = scratch_path("link.vsq");
    run_exporter(path, true);
    const std::vector<char> bytes(std::filesystem::file_size(path), 1);
    std::remove(path.c_str());
    for (auto _ : state) {
        send_through_socket(bytes);
    }
}

BENCHMARK(render)->Name("link/render")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(export_to_file)->Name("link/export")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(send_as_many_bytes)
    ->Name("link/plain socket")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

const bool kCompared =
    compare({"a Render of 1 million triangles against its bytes through a socket", "link/render",
             "link/plain socket", 0}) &&
    compare({"a Render against an Export", "link/render", "link/export", 0});

}  // namespace
