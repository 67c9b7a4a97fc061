#include "tools/vsqinfo/vsq_summary.h"

#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/summary_table.h"

namespace vsqinfo {
namespace {

std::string quoted(const std::string& name) {
    return "\"" + display_text(name) + "\"";
}

}  // namespace

std::string summary_text(const VsqSummary& s) {
    SummaryTable table;
    table.row("size", std::to_string(s.file_size) + " bytes");
    table.row("format", "version " + std::to_string(s.version) +
                            (s.has_header ? ", id " + std::to_string(s.header_id)
                                          : ", received over the live link"));
    if (!s.banner.empty()) {
        table.row("written by", display_text(s.banner));
    }
    for (const VsqModule& module : s.modules) {
        table.row("module", quoted(module.name));
        for (const auto& [name, value] : module.options) {
            table.row("", display_text(name) + " " + display_text(value));
        }
    }
    table.row("root group",
              quoted(s.root_name) +
                  (s.root_flags ? ", flags " + std::to_string(*s.root_flags) : "") +
                  (s.root_groups > 1 ? ", the first of " + std::to_string(s.root_groups) : ""));

    table.count("groups", s.groups, {{s.definitions, "definitions"}});
    table.count("objects", s.objects,
                {{s.instances, "instances"}, {s.library_files, "with triangles in a library"}});
    for (const std::string& path : s.library_paths) {
        table.row("library", display_text(path));
    }
    table.count("triangles", s.triangles, {{s.vertices, "vertices"}});
    table.count("curves", s.curves, {{s.curve_points, "points"}});
    table.count("materials", s.materials,
                {{s.material_blocks, "blocks"},
                 {s.material_references, "references"},
                 {s.shaders, "shaders"}});
    table.count("textures", s.textures, {{s.environments, "environments"}});
    table.count("lights", s.lights);
    table.count("cameras", s.cameras);
    table.count("animations", s.animations, {{s.animation_keys, "keys"}});
    table.count("matrices", s.node_matrices + s.other_matrices,
                {{s.other_matrices, "outside of groups"}});
    if (s.matrices_not_finite != 0) {
        table.count("not finite", s.matrices_not_finite);
    }

    table.count("errors", s.errors);
    for (const std::string& text : s.error_texts) {
        table.row("", display_text(text));
    }
    if (s.errors > s.error_texts.size()) {
        table.row("", "...");
    }
    return table.take();
}

}  // namespace vsqinfo
