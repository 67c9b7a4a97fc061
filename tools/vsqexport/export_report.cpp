#include "tools/vsqexport/export_report.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <numeric>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/qort_reader.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace vsqexport {

namespace {

using Json = nlohmann::ordered_json;

struct Counted {
    std::uint64_t vsqinfo::VsqSummary::*count;
    const char* one;
    const char* many;
};

constexpr Counted kCounted[] = {
    {&vsqinfo::VsqSummary::groups, "group", "groups"},
    {&vsqinfo::VsqSummary::objects, "object", "objects"},
    {&vsqinfo::VsqSummary::triangles, "triangle", "triangles"},
    {&vsqinfo::VsqSummary::curves, "curve", "curves"},
    {&vsqinfo::VsqSummary::materials, "material", "materials"},
    {&vsqinfo::VsqSummary::textures, "texture", "textures"},
    {&vsqinfo::VsqSummary::lights, "light", "lights"},
    {&vsqinfo::VsqSummary::cameras, "camera", "cameras"},
    {&vsqinfo::VsqSummary::animations, "animation", "animations"},
};

std::string counted(std::uint64_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string size_text(std::uint64_t bytes) {
    if (bytes < 1000) {
        return counted(bytes, "byte", "bytes");
    }
    constexpr const char* kUnits[] = {"kB", "MB", "GB", "TB"};
    double size = static_cast<double>(bytes) / 1000;
    size_t unit = 0;
    while (size >= 999.95 && unit + 1 < std::size(kUnits)) {
        size /= 1000;
        ++unit;
    }
    char text[64];
    std::snprintf(text, sizeof text, "%.1f %s", size, kUnits[unit]);
    return text;
}

std::string size_and_time_text(std::uint64_t bytes, double seconds) {
    char time[64];
    std::snprintf(time, sizeof time, "%.2f s", seconds);
    return size_text(bytes) + " in " + time;
}

std::string contents_text(const vsqinfo::VsqSummary& summary) {
    std::string text;
    for (const Counted& entry : kCounted) {
        text += (text.empty() ? "" : ", ") + counted(summary.*entry.count, entry.one, entry.many);
    }
    return text;
}

Json contents_json(const vsqinfo::VsqSummary& summary) {
    Json contents;
    for (const Counted& entry : kCounted) {
        contents[entry.many] = summary.*entry.count;
    }
    return contents;
}

// Paths can hold bytes that aren't UTF-8.
std::string dumped(const Json& json) {
    return json.dump(1, ' ', false, Json::error_handler_t::replace);
}

vsqinfo::VsqSummary read_scene(const std::string& path, const std::string& shown) {
    try {
        return vsqinfo::read_vsq_file(path);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(shown + ": " + error.what());
    }
}

// A line for each mesh file of the scene. Adds the same to `json`.
std::string read_libraries(const std::string& scene_path, const vsqinfo::VsqSummary& scene,
                           Json& json) {
    std::string lines;
    for (const std::string& path : scene.library_paths) {
        const std::string shown = vsqinfo::display_text(path);
        try {
            const vsqinfo::QortSummary mesh = vsqinfo::read_qort_file(path);
            lines += "  " + shown + ": " + size_text(mesh.file_size) + ", " +
                     counted(mesh.frames.size(), "frame", "frames") + ", " +
                     counted(mesh.triangles, "triangle", "triangles") + "\n";
            json.push_back({{"file", path},
                            {"bytes", mesh.file_size},
                            {"frames", mesh.frames.size()},
                            {"triangles", mesh.triangles}});
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(scene_path + ": its mesh file " + shown + ": " + error.what());
        }
    }
    return lines;
}

std::vector<std::string> warnings_of(const vsqinfo::VsqSummary& summary) {
    std::vector<std::string> warnings;
    if (summary.matrices_not_finite > 0) {
        warnings.push_back(counted(summary.matrices_not_finite, "matrix holds", "matrices hold") +
                           " a number that is not finite");
    }
    for (const std::string& error : summary.error_texts) {
        warnings.push_back("the scene reports an error: " + vsqinfo::display_text(error));
    }
    return warnings;
}

}  // namespace

ExportReport report_on_file(const std::string& path, double seconds,
                            const std::string& shown_path) {
    const std::string& shown = shown_path.empty() ? path : shown_path;
    const vsqinfo::VsqSummary summary = read_scene(path, shown);
    ExportReport report;
    Json mesh_files = Json::array();
    report.summary = shown + ": " + size_and_time_text(summary.file_size, seconds) + "\n  " +
                     contents_text(summary) + "\n" + read_libraries(shown, summary, mesh_files);
    report.json = dumped({{"file", shown},
                          {"bytes", summary.file_size},
                          {"seconds", seconds},
                          {"contents", contents_json(summary)},
                          {"mesh_files", std::move(mesh_files)}});
    report.mesh_files.assign(summary.library_paths.begin(), summary.library_paths.end());
    report.brief = counted(summary.objects, "object", "objects") + ", " +
                   counted(summary.cameras, "camera", "cameras") + ", " +
                   counted(summary.node_matrices, "matrix of a node", "matrices of nodes");
    for (const std::string& warning : warnings_of(summary)) {
        report.warnings += warning + "\n";
    }
    return report;
}

WrittenAnimation whole_animation(const AnimationFiles& files, int last_frame) {
    files.check_script(last_frame);
    std::vector<int> numbers(static_cast<std::size_t>(last_frame) + 1);
    std::iota(numbers.begin(), numbers.end(), 0);
    return {files, std::move(numbers), 1, files.script()};
}

ExportReport report_on_animation(const WrittenAnimation& written, double seconds) {
    std::uint64_t size = 0;
    std::string first_contents;
    Json first_contents_json;
    Json mesh_files = Json::array();
    std::set<std::string> files;
    std::map<std::string, int> frames_with_warning;
    for (const int number : written.numbers) {
        const std::string path = written.files.frame(number);
        const vsqinfo::VsqSummary summary = read_scene(path, path);
        size += summary.file_size;
        if (number == written.numbers.front()) {
            first_contents = contents_text(summary);
            first_contents_json = contents_json(summary);
        }
        read_libraries(path, summary, mesh_files);
        files.insert(summary.library_paths.begin(), summary.library_paths.end());
        for (const std::string& warning : warnings_of(summary)) {
            ++frames_with_warning[warning];
        }
    }

    ExportReport report;
    report.mesh_files.assign(files.begin(), files.end());
    const std::string first_file = written.files.frame(written.numbers.front());
    const std::string last_file = written.files.frame(written.numbers.back());
    const std::string names =
        first_file + (written.numbers.size() > 1 ? " to " + last_file : std::string());
    const std::string frames = counted(written.numbers.size(), "frame", "frames");
    const bool renders_some = written.first_rendered <= written.numbers.back();
    report.summary = names + ": " + frames + ", " + size_and_time_text(size, seconds) +
                     "\n  the first: " + first_contents + "\n  " + written.script + ": renders " +
                     (renders_some ? "the frames " + std::to_string(written.first_rendered) +
                                         " to " + std::to_string(written.numbers.back())
                                   : "none, since no frame follows the first") +
                     "\n";
    report.json = dumped({{"file", first_file},
                          {"last_file", last_file},
                          {"frames", written.numbers.size()},
                          {"script", written.script},
                          {"bytes", size},
                          {"seconds", seconds},
                          {"contents", first_contents_json},
                          {"mesh_files", std::move(mesh_files)}});
    report.brief = frames + ", " + names + ", and the script " + written.script;
    for (const auto& [warning, count] : frames_with_warning) {
        report.warnings += warning + " (in " +
                           counted(static_cast<std::uint64_t>(count), "frame", "frames") + ")\n";
    }
    return report;
}

bool can_be_read_back(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(std::filesystem::u8path(path), ignored);
}

}  // namespace vsqexport
