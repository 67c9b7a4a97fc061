#include "tools/vsqinfo/vsq_summary.h"

#include <initializer_list>
#include <utility>

#include "tools/vsqinfo/display_text.h"

namespace vsqinfo {
namespace {

class Table {
public:
    void row(const std::string& title, const std::string& value) {
        text_ += title;
        text_.append(title.size() < kWidth ? kWidth - title.size() : 1, ' ');
        text_ += value;
        text_ += '\n';
    }

    // `details` are further counts behind the first; those of 0 are left out.
    struct Detail {
        std::uint64_t count;
        const char* what;
    };
    void count(const std::string& title, std::uint64_t number,
               std::initializer_list<Detail> details = {}) {
        std::string value = std::to_string(number);
        const char* separator = "  (";
        for (const Detail& detail : details) {
            if (detail.count == 0)
                continue;
            value += separator + std::to_string(detail.count) + " " + detail.what;
            separator = ", ";
        }
        row(title, value + (separator[0] == ',' ? ")" : ""));
    }

    std::string take() { return std::move(text_); }

private:
    static constexpr std::size_t kWidth = 14;
    std::string text_;
};

std::string quoted(const std::string& name) {
    return "\"" + display_text(name) + "\"";
}

}  // namespace

std::string summary_text(const VsqSummary& s) {
    Table table;
    table.row("size", std::to_string(s.file_size) + " bytes");
    table.row("format", "version " + std::to_string(s.version) +
                            (s.has_header ? ", id " + std::to_string(s.header_id)
                                          : ", received over the live link"));
    if (!s.banner.empty())
        table.row("written by", display_text(s.banner));
    for (const VsqModule& module : s.modules) {
        table.row("module", quoted(module.name));
        for (const auto& [name, value] : module.options)
            table.row("", display_text(name) + " " + display_text(value));
    }
    table.row("root group",
              quoted(s.root_name) +
                  (s.root_flags ? ", flags " + std::to_string(*s.root_flags) : "") +
                  (s.root_groups > 1 ? ", the first of " + std::to_string(s.root_groups) : ""));

    table.count("groups", s.groups, {{s.definitions, "definitions"}});
    table.count("objects", s.objects,
                {{s.instances, "instances"}, {s.library_files, "with triangles in a library"}});
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
    if (s.matrices_not_finite != 0)
        table.count("not finite", s.matrices_not_finite);

    table.count("errors", s.errors);
    for (const std::string& text : s.error_texts)
        table.row("", display_text(text));
    if (s.errors > s.error_texts.size())
        table.row("", "...");
    return table.take();
}

}  // namespace vsqinfo
