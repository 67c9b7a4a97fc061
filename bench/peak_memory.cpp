#include "bench/peak_memory.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <string>

#include "bench/mesh_scenes.h"
#include "bench/scratch_file.h"
#include "plugins/3dsmax/export/scene_exporter.h"
#include "tests/support/exported_libraries.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace {

using mesh_scenes::Shading;

constexpr double kMebibyte = 1024.0 * 1024.0;

// A value in the status of this process, in bytes.
double status_value(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, name.size() + 1, name + ":") == 0) {
            return std::stod(line.substr(name.size() + 1)) * 1024.0;
        }
    }
    return 0;
}

// What an export uses beyond what is in use before it, in bytes.
struct Peak {
    double resident;
    double reserved;  // address space, which some systems count even if it is never touched
};

Peak peak_of_export(memhost::SceneBuilder& scene, const std::string& path) {
    malloc_trim(0);
    const double resident = status_value("VmRSS");
    // The export can take what was freed before, so that doesn't count as in use.
    const double reserved = status_value("VmSize") - static_cast<double>(mallinfo2().fordblks);
    std::ofstream("/proc/self/clear_refs") << "5";  // resets the peak of resident memory
    memhost::MemoryHost& host = scene.host();
    {
        SceneExporter exporter(&host, host.GetRootNode(), std::make_shared<Qor::Options>(&host),
                               {});
        exporter.Run(path, false, true, false);
    }
    return {status_value("VmHWM") - resident, status_value("VmPeak") - reserved};
}

double bytes_of_mesh(const Mesh& mesh) {
    const double normals = mesh.numFaces;
    Mesh copy(mesh);
    const MeshNormalSpec* spec = copy.GetSpecifiedNormals();
    return 12.0 * mesh.numVerts + 20.0 * mesh.numFaces + 12.0 * mesh.getNumMapVerts(1) +
           12.0 * mesh.numFaces +
           (spec == nullptr ? 0.0 : 12.0 * normals + 13.0 * spec->GetNumNormals());
}

// Runs `work` in a process of its own, so that earlier work leaves no memory in use.
void in_a_process(const std::function<void()>& work) {
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        work();
        std::fflush(stdout);
        _exit(0);
    }
    waitpid(child, nullptr, 0);
}

// Measures an export in a process that begins with the scene: the peak of address space can't be
// reset, and building the scene needs more.
void in_a_process_with(const std::function<std::unique_ptr<memhost::SceneBuilder>()>& build,
                       const std::function<void(memhost::SceneBuilder&)>& work) {
    in_a_process([&] {
        const auto scene = build();
        in_a_process([&] { work(*scene); });
    });
}

constexpr double kReservedAtMost = 1.6;  // times the resident memory

void print_row(const std::string& name, double is, double at_most, const Peak& peak) {
    std::printf("%-60s %8.3f %8.3f   (%.0f MiB)\n", name.c_str(), is, at_most,
                peak.resident / kMebibyte);
    std::printf("%-60s %8.3f %8.3f\n", (name + ", address space to that").c_str(),
                peak.reserved / peak.resident, kReservedAtMost);
}

void print_surface(const char* name, int triangles, Shading shading, double at_most) {
    const auto build = [=] {
        return mesh_scenes::scene_of(mesh_scenes::surface(triangles, shading));
    };
    in_a_process_with(build, [=](memhost::SceneBuilder& scene) {
        const std::string path = scratch_path("memory.vsq");
        const Peak peak = peak_of_export(scene, path);
        const double arrays = static_cast<double>(vsqinfo::read_vsq_file(path).file_size);
        const double mesh = bytes_of_mesh(mesh_scenes::surface(triangles, shading));
        std::remove(path.c_str());
        print_row(name, peak.resident / (mesh + arrays), at_most, peak);
    });
}

void print_boxes(const char* name, int count, double at_most) {
    const auto build = [=] { return mesh_scenes::scene_of_boxes(count); };
    in_a_process_with(build, [=](memhost::SceneBuilder& scene) {
        const std::string path = scratch_path("memory.vsq");
        const Peak peak = peak_of_export(scene, path);
        std::remove(path.c_str());
        print_row(name, peak.resident / kMebibyte, at_most, peak);
    });
}

void print_deforming(const char* name, int triangles, int frames, double at_most) {
    const auto build = [=] { return mesh_scenes::deforming_scene(triangles, frames); };
    in_a_process_with(build, [=](memhost::SceneBuilder& scene) {
        const std::string path = scratch_path("memory.vsq");
        const ExportedLibraries libraries;
        const Peak peak = peak_of_export(scene, path);
        const double held = static_cast<double>(
            std::filesystem::file_size(std::filesystem::u8path(libraries.paths().front())));
        std::remove(path.c_str());
        print_row(name, peak.resident / held, at_most, peak);
    });
}

}  // namespace

void print_peak_memory() {
    std::printf("\n%-60s %8s %8s\n", "Peak memory beyond the scene, to copy and arrays", "is",
                "at most");
    print_surface("smooth", 1'000'000, Shading::kSmooth, 1.8);
    print_surface("10 million", 10'000'000, Shading::kSmooth, 1.8);
    print_surface("hard edges", 1'000'000, Shading::kHard, 2.6);
    print_surface("4 million with one hard edge", 4'000'000, Shading::kOneHard, 1.8);
    print_surface("explicit normals", 1'000'000, Shading::kExplicit, 1.6);
    print_deforming("deforming, to the frames that it holds", 100'000, 100, 1.3);
    print_boxes("20,000 boxes, in MiB", 20'000, 8);
    print_boxes("40,000 boxes, in MiB", 40'000, 8);
}
