#include "tools/vsqinfo/checks/file_report.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>

#include "tools/vsqinfo/checks/file_search.h"
#include "tools/vsqinfo/checks/mesh_file_check.h"
#include "tools/vsqinfo/checks/scene_checks.h"
#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/input_file.h"
#include "tools/vsqinfo/qort_reader.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace vsqinfo {
namespace {

using Json = nlohmann::ordered_json;

// Increased once readers of the JSON could misread it.
constexpr int kJsonVersion = 1;

void read_into(FileReport& report, std::istream& stream, VsqListener* listener) {
    report.is_mesh = begins_as_qort(stream);
    if (report.is_mesh) {
        MeshFileCheck check(report.findings);
        const QortSummary summary = read_qort(stream, &check);
        check.file_ends(summary);
        report.mesh = summary;
    } else {
        const FileSearch search =
            report.file == "-" ? FileSearch({""}) : FileSearch::beside(report.file);
        SceneChecks checks(report.findings, &search, listener);
        const VsqSummary summary = read_vsq(stream, &checks);
        checks.scene_ends(summary);
        report.scene = summary;
    }
}

std::string counted(std::uint64_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string place_text(FilePlace place) {
    return (place.line == 0 ? "" : "line " + std::to_string(place.line) + ", ") + "offset " +
           std::to_string(place.offset);
}

std::string findings_text(const Findings& findings) {
    constexpr std::size_t kListed = 5;  // of each check
    std::string text = "findings      " + counted(findings.count(Severity::kError), "error") +
                       ", " + counted(findings.count(Severity::kWarning), "warning") + ", " +
                       counted(findings.count(Severity::kHint), "hint") + "\n";
    for (const Check check : findings.checks()) {
        const CheckRow& row = check_row(check);
        const std::vector<Finding>& kept = findings.kept(check);
        const std::size_t listed = std::min(kept.size(), kListed);
        const std::string start =
            std::string(severity_word(row.severity)) + " " + std::string(row.code) + ": ";
        for (std::size_t i = 0; i < listed; ++i) {
            text += start + place_text(kept[i].place) + ": " + kept[i].text + "\n";
        }
        if (findings.count(check) > listed) {
            text += start + std::to_string(findings.count(check) - listed) + " more\n";
        }
    }
    return text;
}

Json summary_json(const VsqSummary& s) {
    Json json = {{"bytes", s.file_size},
                 {"version", s.version},
                 {"root group", display_text(s.root_name)},
                 {"groups", s.groups},
                 {"objects", s.objects},
                 {"definitions", s.definitions},
                 {"instances", s.instances},
                 {"triangles", s.triangles},
                 {"vertices", s.vertices},
                 {"curves", s.curves},
                 {"curve points", s.curve_points},
                 {"materials", s.materials},
                 {"shaders", s.shaders},
                 {"textures", s.textures},
                 {"environments", s.environments},
                 {"lights", s.lights},
                 {"cameras", s.cameras},
                 {"animations", s.animations},
                 {"keys", s.animation_keys},
                 {"matrices", s.node_matrices + s.other_matrices},
                 {"mesh files", Json::array()}};
    for (const std::string& path : s.library_paths) {
        json["mesh files"].push_back(display_text(path));
    }
    return json;
}

Json summary_json(const QortSummary& s) {
    return {{"bytes", s.file_size},         {"version", s.version},   {"frames", s.frames.size()},
            {"triangles", s.triangles},     {"vertices", s.vertices}, {"normals", s.normals},
            {"texture coordinates", s.uvs}, {"colours", s.colours}};
}

Json findings_json(const Findings& findings) {
    Json list = Json::array();
    for (const Check check : findings.checks()) {
        const CheckRow& row = check_row(check);
        for (const Finding& finding : findings.kept(check)) {
            const bool has_line = finding.place.line != 0;
            list.push_back({{"code", row.code},
                            {"severity", severity_word(row.severity)},
                            {"offset", finding.place.offset},
                            {"line", has_line ? Json(finding.place.line) : Json()},
                            {"text", finding.text}});
        }
    }
    return list;
}

Json counts_json(const Findings& findings) {
    Json counts = Json::object();
    for (const Check check : findings.checks()) {
        counts[std::string(check_row(check).code)] = findings.count(check);
    }
    return counts;
}

Json report_json(const FileReport& report) {
    Json json = {{"file", display_text(report.file)}, {"kind", report.is_mesh ? "mesh" : "scene"}};
    json["summary"] = report.scene  ? summary_json(*report.scene)
                      : report.mesh ? summary_json(*report.mesh)
                                    : Json();
    json["counts"] = counts_json(report.findings);
    json["findings"] = findings_json(report.findings);
    if (!report.failure.empty()) {
        json["failure"] = report.failure;
    }
    return json;
}

}  // namespace

FileReport report_on_file(const std::string& path, VsqListener* listener) {
    FileReport report;
    report.file = path;
    try {
        if (path == "-") {
            read_into(report, std::cin, listener);
        } else {
            std::ifstream stream = open_input_file(path);
            read_into(report, stream, listener);
        }
    } catch (const MalformedFile& error) {
        report.findings.add(error.check(), error.place(), error.reason());
        report.failure = error.what();
    } catch (const std::exception& error) {
        report.failure = error.what();
    }
    return report;
}

std::string report_text(const FileReport& report) {
    std::string text;
    if (report.scene || report.mesh) {
        text = report.scene ? summary_text(*report.scene) : summary_text(*report.mesh);
    }
    return report.findings.checks().empty() ? text : text + findings_text(report.findings);
}

std::string reports_json(const std::vector<FileReport>& reports) {
    Json files = Json::array();
    for (const FileReport& report : reports) {
        files.push_back(report_json(report));
    }
    const Json json = {{"report", "vsqinfo"}, {"version", kJsonVersion}, {"files", files}};
    return json.dump(1, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string list_of_checks() {
    std::string text;
    for (const Severity severity : {Severity::kError, Severity::kWarning, Severity::kHint}) {
        text += (text.empty() ? "" : "\n") + std::string(severity_word(severity)) + "s\n";
        for (std::size_t i = 0; i < static_cast<std::size_t>(Check::kCount); ++i) {
            const CheckRow& row = check_row(static_cast<Check>(i));
            if (row.severity == severity) {
                text += "  " + std::string(row.code);
                text.append(28 - row.code.size(), ' ');
                text += std::string(row.sentence) + "\n";
            }
        }
    }
    return text;
}

}  // namespace vsqinfo
