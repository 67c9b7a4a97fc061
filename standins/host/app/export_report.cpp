#include "standins/host/app/export_report.h"

#include <cstdint>
#include <cstdio>
#include <filesystem>

#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace app {

namespace {

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

}  // namespace

ExportReport report_on_file(const std::string& path, double seconds) {
    const vsqinfo::VsqSummary summary = vsqinfo::read_vsq_file(path);

    char time[64];
    std::snprintf(time, sizeof time, "%.2f s", seconds);
    ExportReport report;
    report.summary = path + ": " + size_text(summary.file_size) + " in " + time + "\n";
    std::string separator = "  ";
    for (const Counted& entry : kCounted) {
        report.summary += separator + counted(summary.*entry.count, entry.one, entry.many);
        separator = ", ";
    }
    report.summary += "\n";

    report.brief = counted(summary.objects, "object", "objects") + ", " +
                   counted(summary.cameras, "camera", "cameras") + ", " +
                   counted(summary.node_matrices, "matrix of a node", "matrices of nodes");

    if (summary.matrices_not_finite > 0) {
        report.warnings += counted(summary.matrices_not_finite, "matrix holds", "matrices hold") +
                           " a number that is not finite\n";
    }
    for (const std::string& error : summary.error_texts) {
        report.warnings += "the scene tells of an error: " + vsqinfo::display_text(error) + "\n";
    }
    return report;
}

bool can_be_read_back(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(std::filesystem::u8path(path), ignored);
}

}  // namespace app
