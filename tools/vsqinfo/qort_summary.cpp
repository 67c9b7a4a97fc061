#include "tools/vsqinfo/qort_summary.h"

#include <cstdio>

#include "tools/vsqinfo/summary_table.h"

namespace vsqinfo {
namespace {

std::string number_text(float number) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", static_cast<double>(number));
    return text;
}

std::string point_text(const std::array<float, 3>& point) {
    return number_text(point[0]) + " " + number_text(point[1]) + " " + number_text(point[2]);
}

std::string frames_text(const std::vector<QortFrame>& frames) {
    bool is_unbroken = true;
    for (std::size_t i = 1; i < frames.size(); ++i) {
        is_unbroken = is_unbroken && frames[i].number == frames[i - 1].number + 1;
    }
    const QortFrame& first = frames.front();
    const QortFrame& last = frames.back();
    return std::to_string(frames.size()) + "  (numbers " + std::to_string(first.number) + " to " +
           std::to_string(last.number) + (is_unbroken ? "" : " with gaps") + ", times " +
           number_text(first.time) + " to " + number_text(last.time) + " s)";
}

}  // namespace

std::string summary_text(const QortSummary& s) {
    SummaryTable table;
    table.row("size", std::to_string(s.file_size) + " bytes");
    table.row("format", "mesh, version " + std::to_string(s.version) +
                            (s.is_interleaved ? ", interleaved" : ", separate arrays"));
    table.row("frames", s.frames.empty() ? "none" : frames_text(s.frames));
    table.count("triangles", s.triangles);
    table.count("vertices", s.vertices);
    if (!s.is_interleaved) {
        table.count("normals", s.normals, {{s.normal_indices, "index triples"}});
        table.count("uvs", s.uvs, {{s.uv_indices, "index triples"}});
        table.count("colours", s.colours);
    }
    table.row("box", point_text(s.box_minimum) + " to " + point_text(s.box_maximum));
    return table.take();
}

}  // namespace vsqinfo
