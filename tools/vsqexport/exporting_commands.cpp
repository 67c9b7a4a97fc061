#include "tools/vsqexport/exporting_commands.h"

#include <chrono>
#include <functional>
#include <map>

#include "tools/vsqexport/export_target.h"
#include "tools/vsqexport/progress_bar.h"
#include "tools/vsqexport/terminal.h"

namespace vsqexport {

namespace {

using velmora::RunningRenderer;

// Shows how far the host's export is while it lives.
class ShownProgress {
public:
    explicit ShownProgress(memhost::MemoryHost& host) : host_(host) {
        host_.on_progress(
            [this](int percent, const std::wstring& title) { bar_.update(percent, title); });
    }
    ShownProgress(const ShownProgress&) = delete;
    ShownProgress& operator=(const ShownProgress&) = delete;
    ~ShownProgress() { host_.on_progress({}); }

private:
    memhost::MemoryHost& host_;
    ProgressBar bar_{error_output_is_terminal()};
};

// In seconds. `prefix` stands before what the plug-in tells of a failure.
double carry_out(memhost::MemoryHost& host, const std::string& prefix,
                 const std::function<std::vector<std::string>()>& command) {
    const auto start = std::chrono::steady_clock::now();
    std::vector<std::string> told;
    {
        const ShownProgress shown(host);
        told = command();
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    throw_if_told(told, prefix);
    return taken.count();
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
    std::map<std::int64_t, std::uint64_t> scenes_before;  // by the renderer's process id
    for (const RunningRenderer& renderer : velmora::list_running_renderers()) {
        scenes_before[renderer.process_id] = renderer.scene_number;
    }
    const double seconds = carry_out(
        host, "", [&] { return sending == Sending::kRender ? plugin.render() : plugin.update(); });
    if (interruption.happened()) {
        throw Cancelled("cancelled, the renderer holds only a part of the scene");
    }
    for (const RunningRenderer& renderer : velmora::list_running_renderers()) {
        const auto known = scenes_before.find(renderer.process_id);
        const bool was_started = known == scenes_before.end();
        if (renderer.scene_number > (was_started ? 0 : known->second)) {
            return {renderer, was_started, report_on_file(renderer.scene_file, seconds)};
        }
    }
    throw std::runtime_error("no running renderer says that the whole scene has come");
}

}  // namespace vsqexport
