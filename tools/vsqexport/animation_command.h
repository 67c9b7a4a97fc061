#pragma once

#include <string>
#include <vector>

#include "standins/host/memory/memory_host.h"
#include "tools/vsqexport/animation_files.h"
#include "tools/vsqexport/animation_plan.h"
#include "tools/vsqexport/export_report.h"
#include "tools/vsqexport/plugin_commands.h"
#include "tools/vsqexport/watched_command.h"

namespace vsqexport {

/// Export Animation of some frames of the host's animation range.
///
/// The plug-in numbers the frames of each of its commands from 0, and a later frame holds only
/// those meshes that change at its tick. So each run of frames is written beside its place, and
/// each file gets its number when the plug-in has gone on to the next one.
class AnimationCommand {
public:
    /// Throws `std::invalid_argument` with one line if the options leave no frames.
    AnimationCommand(memhost::MemoryHost& host, PluginCommands& plugin, const std::string& target,
                     const AnimationOptions& options);
    AnimationCommand(const AnimationCommand&) = delete;
    AnimationCommand& operator=(const AnimationCommand&) = delete;
    ~AnimationCommand();

    ExportReport run();

private:
    bool is_whole(int number) const;
    bool changes_since(int number) const;
    void write(const FrameRun& run);
    void finish_frames(const FrameRun& run, std::size_t end);
    void write_script(const std::vector<int>& numbers);
    WrittenAnimation written(const std::vector<int>& numbers) const;
    [[noreturn]] void end_early();

    memhost::MemoryHost& host_;
    PluginCommands& plugin_;
    AnimationOptions options_;
    AnimationFiles files_;
    AnimationFiles unfinished_;
    Interval range_;
    int ticks_per_frame_;
    std::vector<int> numbers_;
    std::size_t finished_ = 0;  // frames of the current run whose files are in their places
    int last_in_script_ = 0;    // of the script that the plug-in has written
    int last_whole_ = -1;       // the number of the frame that was finished at last
    double seconds_ = 0;
};

}  // namespace vsqexport
