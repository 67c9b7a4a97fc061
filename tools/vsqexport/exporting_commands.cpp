#include "tools/vsqexport/exporting_commands.h"

#include <map>

#include "tools/vsqexport/animation_command.h"
#include "tools/vsqexport/export_target.h"
#include "tools/vsqexport/mesh_file_list.h"
#include "tools/vsqexport/unfinished_file.h"
#include "tools/vsqexport/watched_command.h"

namespace vsqexport {

namespace {

using velmora::RunningRenderer;

// The number of the newest scene that this process has sent to the renderer, or 0.
std::uint64_t newest_own_scene(const RunningRenderer& renderer) {
    const velmora::AnnouncedScene* const scene = renderer.own_scene();
    return scene != nullptr ? scene->number : 0;
}

}  // namespace

std::optional<ExportReport> export_scene(memhost::MemoryHost& host, PluginCommands& plugin,
                                         const std::string& target, bool clean) {
    if (is_standard_output(target) || !can_be_replaced(target)) {
        const std::ofstream kept_open = wait_for_reader(target);
        const Outcome outcome = carry_out(host, [&] {
            return plugin.export_to(is_standard_output(target) ? kStandardOutput : target);
        });
        throw_if_told(outcome.told, target + ": ");
        if (outcome.is_cancelled) {
            throw Cancelled("cancelled, " + target + " holds only a part of the scene");
        }
        return std::nullopt;
    }
    UnfinishedFile unfinished(target);
    plugin.show_as({{unfinished.path(), target}});
    const Outcome outcome = carry_out(host, [&] { return plugin.export_to(unfinished.path()); });
    throw_if_told(outcome.told, target + ": ");
    if (outcome.is_cancelled) {
        throw Cancelled("cancelled, " + target + " was not written");
    }
    ExportReport report = report_on_file(unfinished.path(), outcome.seconds, target);
    unfinished.finish();
    MeshFileList(target).update(report.mesh_files, clean);
    return report;
}

ExportReport export_animation(memhost::MemoryHost& host, PluginCommands& plugin,
                              const std::string& target, const AnimationOptions& options) {
    ExportReport report = AnimationCommand(host, plugin, target, options).run();
    // Pieces are exported at the same time, so each has a list of its own.
    const std::string listed =
        options.pieces > 1 ? AnimationFiles(target).script_of_piece(options.piece, options.pieces)
                           : target;
    MeshFileList(listed).update(report.mesh_files, options.clean);
    return report;
}

std::string SentScene::renderer_text() const {
    return "Velmora " + std::to_string(renderer.version_major) + "." +
           std::to_string(renderer.version_minor) + " (process " +
           std::to_string(renderer.process_id) + ", port " + std::to_string(renderer.port) + ")";
}

// The plug-in doesn't say which renderer it chose. It is the one that now has a newer scene from
// this process; other processes may send scenes at the same time.
SentScene send_scene(memhost::MemoryHost& host, PluginCommands& plugin, Sending sending) {
    std::map<std::int64_t, std::uint64_t> scenes_before;  // by the renderer's process id
    for (const RunningRenderer& renderer : velmora::list_running_renderers()) {
        scenes_before[renderer.process_id] = newest_own_scene(renderer);
    }
    const Outcome outcome = carry_out(
        host, [&] { return sending == Sending::kRender ? plugin.render() : plugin.update(); });
    throw_if_told(outcome.told);
    if (outcome.is_cancelled) {
        throw Cancelled("cancelled, the renderer holds only a part of the scene");
    }
    for (const RunningRenderer& renderer : velmora::list_running_renderers()) {
        const auto known = scenes_before.find(renderer.process_id);
        const bool was_started = known == scenes_before.end();
        if (newest_own_scene(renderer) > (was_started ? 0 : known->second)) {
            return {renderer, was_started,
                    report_on_file(renderer.own_scene()->file, outcome.seconds),
                    renderer.own_scene()->file};
        }
    }
    throw std::runtime_error("no running renderer has received the whole scene");
}

}  // namespace vsqexport
