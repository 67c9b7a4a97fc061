#include "tools/vsqexport/animation_command.h"

#include <algorithm>
#include <cerrno>
#include <exception>
#include <filesystem>
#include <fstream>
#include <map>
#include <stdexcept>
#include <system_error>

#include "tools/vsqexport/exporting_commands.h"
#include "tools/vsqexport/unfinished_file.h"
#include "tools/vsqinfo/vsq_reader.h"

namespace vsqexport {

namespace {

int frames_in(const Interval& range, int ticks_per_frame) {
    if (range.End() < range.Start()) {
        throw std::runtime_error("the animation range ends before it starts");
    }
    return (range.End() - range.Start()) / ticks_per_frame + 1;
}

}  // namespace

AnimationCommand::AnimationCommand(memhost::MemoryHost& host, PluginCommands& plugin,
                                   const std::string& target, const AnimationOptions& options)
    : host_(host),
      plugin_(plugin),
      options_(options),
      files_(target),
      unfinished_(unfinished_path(target)),
      range_(host.GetAnimRange()),
      ticks_per_frame_(host.ticks_per_frame()),
      numbers_(frames_of_piece(frames_in(range_, ticks_per_frame_), options)) {}

AnimationCommand::~AnimationCommand() {
    host_.on_time({});
    host_.set_animation_range(range_);
    host_.set_ticks_per_frame(ticks_per_frame_);
    remove_file(unfinished_.script());
}

ExportReport AnimationCommand::run() {
    const std::vector<FrameRun> runs = runs_of(
        numbers_,
        [this](std::size_t i) { return !options_.only_missing || !is_whole(numbers_[i]); },
        [this](std::size_t i) { return options_.step > 1 && changes_since(numbers_[i]); });
    for (const FrameRun& run : runs) {
        write(run);
    }
    if (!runs.empty()) {
        write_script(numbers_);
    }
    return report_on_animation(written(numbers_), seconds_);
}

bool AnimationCommand::is_whole(int number) const {
    try {
        vsqinfo::read_vsq_file(files_.frame(number));
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

// Whether a mesh changes at a frame that is left out and then rests: the plug-in writes only those
// that change at the very tick of a frame.
bool AnimationCommand::changes_since(int number) const {
    const TimeValue t = range_.Start() + number * ticks_per_frame_;
    const TimeValue before = t - options_.step * ticks_per_frame_;
    const auto& nodes = host_.nodes();
    return std::any_of(nodes.begin(), nodes.end(), [&](const auto& node) {
        Object* const object = node->EvalWorldState(t).obj;
        if (!object) {
            return false;
        }
        const TimeValue start = object->ObjectValidity(t).Start();
        return start > before && start < t;
    });
}

void AnimationCommand::write(const FrameRun& run) {
    const int step = options_.step * ticks_per_frame_;
    const auto time_of = [this](int number) { return range_.Start() + number * ticks_per_frame_; };
    host_.set_animation_range(Interval(time_of(run.numbers.front()), time_of(run.numbers.back())));
    host_.set_ticks_per_frame(step);

    std::map<std::string, std::string> names = {{unfinished_.script(), files_.script()}};
    for (std::size_t i = 0; i < run.numbers.size(); ++i) {
        names[unfinished_.frame(static_cast<int>(i))] = files_.frame(run.numbers[i]);
    }
    plugin_.show_as(std::move(names));

    // The plug-in sets the host's time before it opens the file of a frame, and never sets it back.
    std::size_t reached = 0;  // the frames that were begun
    finished_ = 0;
    std::exception_ptr failure;  // mustn't pass through the plug-in
    host_.on_time([&](TimeValue t) {
        try {
            const TimeValue start = time_of(run.numbers.front());
            finish_frames(run, static_cast<std::size_t>((t - start) / step));
            reached = finished_ + 1;
        } catch (...) {
            failure = failure ? failure : std::current_exception();
            host_.request_cancel();
        }
    });
    last_in_script_ = static_cast<int>(run.numbers.size()) - 1;
    const std::string target = unfinished_.script().substr(0, unfinished_.script().size() - 3);
    const Outcome outcome =
        carry_out(host_, [&] { return plugin_.export_animation_to(target + ".vsq"); });
    host_.on_time({});
    seconds_ += outcome.seconds;
    const bool is_done = outcome.told.empty() && !outcome.is_cancelled && !failure;
    for (std::size_t i = finished_; !is_done && i < run.numbers.size(); ++i) {
        remove_file(unfinished_.frame(static_cast<int>(i)));
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
    throw_if_told(outcome.told,
                  (reached > 0 ? files_.frame(run.numbers[reached - 1]) : files_.script()) + ": ");
    if (outcome.is_cancelled) {
        end_early();
    }
    finish_frames(run, run.numbers.size());
}

// Moves the frames before `end` to their places.
void AnimationCommand::finish_frames(const FrameRun& run, std::size_t end) {
    for (; finished_ < end; ++finished_) {
        const std::string file = unfinished_.frame(static_cast<int>(finished_));
        if (run.drops_first && finished_ == 0) {
            remove_file(file);
        } else {
            finish_file(file, files_.frame(run.numbers[finished_]));
            last_whole_ = run.numbers[finished_];
        }
    }
}

WrittenAnimation AnimationCommand::written(const std::vector<int>& numbers) const {
    // The first frame of the whole range is opened by hand, as the plug-in has it.
    const int first = options_.piece > 0 ? numbers.front() : numbers.front() + options_.step;
    return {files_, numbers, first,
            options_.pieces > 1 ? files_.script_of_piece(options_.piece, options_.pieces)
                                : files_.script()};
}

// The plug-in's own script is for the frames of its last run.
void AnimationCommand::write_script(const std::vector<int>& numbers) {
    const WrittenAnimation animation = written(numbers);
    const std::string text = unfinished_.script_for(
        files_, last_in_script_, animation.first_rendered, numbers.back(), options_.step);
    UnfinishedFile script(animation.script);
    errno = 0;
    std::ofstream file(std::filesystem::u8path(script.path()));
    file << text;
    file.close();
    if (!file) {
        throw std::runtime_error(animation.script + ": the script was not written: " +
                                 std::generic_category().message(errno));
    }
    script.finish();
}

// The script ends at the last frame up to which all are whole.
void AnimationCommand::end_early() {
    std::vector<int> whole;
    for (const int number : numbers_) {
        if (number > last_whole_) {
            break;
        }
        whole.push_back(number);
    }
    if (whole.empty()) {
        throw Cancelled("cancelled, no frame was written");
    }
    write_script(whole);
    throw Cancelled("cancelled, " + files_.frame(last_whole_) + " is the last frame that is whole");
}

}  // namespace vsqexport
