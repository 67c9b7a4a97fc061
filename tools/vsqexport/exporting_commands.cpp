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

// Shows the progress of the host's export during its lifetime.
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

struct Outcome {
    std::vector<std::string> told;  // texts about failures
    bool is_cancelled;
    double seconds;
};

// A cancel counts only if the plug-in has polled for it. Where the plug-in doesn't poll, it writes
// the whole scene.
Outcome carry_out(memhost::MemoryHost& host,
                  const std::function<std::vector<std::string>()>& command) {
    const ShownProgress shown(host);
    const int cancels_before = host.answered_cancels();
    const auto start = std::chrono::steady_clock::now();
    Outcome outcome;
    outcome.told = command();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    outcome.seconds = taken.count();
    outcome.is_cancelled = host.answered_cancels() > cancels_before;
    return outcome;
}

// The number of the newest scene that this process has sent to the renderer, or 0.
std::uint64_t newest_own_scene(const RunningRenderer& renderer) {
    const velmora::AnnouncedScene* const scene = renderer.own_scene();
    return scene != nullptr ? scene->number : 0;
}

}  // namespace

std::optional<ExportReport> export_scene(memhost::MemoryHost& host, PluginCommands& plugin,
                                         const std::string& target) {
    const bool to_standard_output = is_standard_output(target);
    const std::ofstream kept_open = wait_for_reader(target);
    const Outcome outcome = carry_out(
        host, [&] { return plugin.export_to(to_standard_output ? kStandardOutput : target); });
    throw_if_told(outcome.told, target + ": ");
    if (outcome.is_cancelled) {
        throw Cancelled("cancelled, " + target + " holds only a part of the scene");
    }
    if (to_standard_output || !can_be_read_back(target)) {
        return std::nullopt;
    }
    return report_on_file(target, outcome.seconds);
}

ExportReport export_animation(memhost::MemoryHost& host, PluginCommands& plugin,
                              const std::string& target) {
    const AnimationFiles files(target);
    const Interval range = host.GetAnimRange();
    if (range.End() < range.Start()) {
        throw std::runtime_error("the animation range ends before it starts");
    }
    const int last_frame = (range.End() - range.Start()) / host.ticks_per_frame();
    const int times_set_before = host.times_set();
    const Outcome outcome = carry_out(host, [&] { return plugin.export_animation_to(target); });

    // The plug-in sets the host's time before it opens the file of a frame, and never sets it back,
    // so the time tells which frame was reached.
    const bool has_begun = host.times_set() > times_set_before;
    const std::string reached =
        has_begun ? files.frame((host.time() - range.Start()) / host.ticks_per_frame()) : target;
    throw_if_told(outcome.told, reached + ": ");
    if (outcome.is_cancelled) {
        throw Cancelled(has_begun ? "cancelled, " + reached +
                                        " is the last frame written and may hold only a part"
                                  : "cancelled, no frame was written");
    }
    return report_on_animation(files, last_frame, outcome.seconds);
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
