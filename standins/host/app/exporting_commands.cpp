#include "standins/host/app/exporting_commands.h"

#include <chrono>
#include <functional>

#include "standins/host/app/arguments.h"
#include "standins/host/app/export_target.h"
#include "standins/host/app/progress_bar.h"

namespace app {

namespace {

using velmora::RunningRenderer;

// In seconds. `prefix` stands before what the plug-in tells of a failure.
double carry_out(memhost::MemoryHost& host, const std::string& prefix,
                 const std::function<std::vector<std::string>()>& command) {
    const auto start = std::chrono::steady_clock::now();
    std::vector<std::string> told;
    {
        ProgressBar bar(error_output_is_terminal());
        host.on_progress(
            [&bar](int percent, const std::wstring& title) { bar.update(percent, title); });
        told = command();
        host.on_progress({});
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;

    std::string failure;
    for (const std::string& text : told) {
        failure += (failure.empty() ? "" : "\n") + prefix + text;
    }
    if (!failure.empty()) {
        throw std::runtime_error(failure);
    }
    return taken.count();
}

std::uint64_t scenes_of(const std::vector<RunningRenderer>& renderers, std::int64_t process_id) {
    for (const RunningRenderer& renderer : renderers) {
        if (renderer.process_id == process_id) {
            return renderer.scene_number;
        }
    }
    return 0;
}

bool holds(const std::vector<RunningRenderer>& renderers, std::int64_t process_id) {
    for (const RunningRenderer& renderer : renderers) {
        if (renderer.process_id == process_id) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::optional<ExportReport> export_scene(memhost::MemoryHost& host, PluginCommands& plugin,
                                         const Interruption& interruption,
                                         const std::string& target) {
    const double seconds = carry_out(host, target + ": ", [&] { return plugin.export_to(target); });
    if (interruption.happened()) {
        throw Cancelled("cancelled, " + target + " holds only a part of the scene");
    }
    if (is_standard_output(target) || !can_be_read_back(target)) {
        return std::nullopt;
    }
    return report_on_file(target, seconds);
}

ExportReport export_animation(memhost::MemoryHost& host, PluginCommands& plugin,
                              const Interruption& interruption, const std::string& target) {
    const AnimationFiles files(target);
    const Interval range = host.GetAnimRange();
    if (range.End() < range.Start()) {
        throw std::runtime_error("the animation range ends before it starts");
    }
    const int last_frame = (range.End() - range.Start()) / host.ticks_per_frame();
    const std::size_t updates_before = host.progress().percents.size();
    const double seconds =
        carry_out(host, target + ": ", [&] { return plugin.export_animation_to(target); });
    if (interruption.happened()) {
        // The host's time stays where the last frame has put it.
        const bool has_begun = host.progress().percents.size() > updates_before;
        const int reached = (host.time() - range.Start()) / host.ticks_per_frame();
        throw Cancelled(has_begun ? "cancelled, " + files.frame(reached) +
                                        " is the last frame written and may hold only a part"
                                  : "cancelled, no frame was written");
    }
    return report_on_animation(files, last_frame, seconds);
}

std::string SentScene::renderer_text() const {
    return "Velmora " + std::to_string(renderer.version_major) + "." +
           std::to_string(renderer.version_minor) + " (process " +
           std::to_string(renderer.process_id) + ", port " + std::to_string(renderer.port) + ")";
}

// The plug-in doesn't say which renderer it chose: it is the one that has a scene more than before.
SentScene send_scene(memhost::MemoryHost& host, PluginCommands& plugin,
                     const Interruption& interruption, Sending sending) {
    const std::vector<RunningRenderer> before = velmora::list_running_renderers();
    const double seconds = carry_out(
        host, "", [&] { return sending == Sending::kRender ? plugin.render() : plugin.update(); });
    if (interruption.happened()) {
        throw Cancelled("cancelled, the renderer holds only a part of the scene");
    }
    for (const RunningRenderer& renderer : velmora::list_running_renderers()) {
        if (renderer.scene_number > scenes_of(before, renderer.process_id)) {
            return {renderer, !holds(before, renderer.process_id),
                    report_on_file(renderer.scene_file, seconds)};
        }
    }
    throw std::runtime_error("no running renderer says that the whole scene has come");
}

}  // namespace app
