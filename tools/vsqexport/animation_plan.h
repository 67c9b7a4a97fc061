#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vsqexport {

/// Which frames of an animation are exported, and how.
struct AnimationOptions {
    int piece = 0;  ///< from 0 to `pieces` - 1
    int pieces = 1;
    int step = 1;               ///< every n-th frame
    bool only_missing = false;  ///< only frames whose files aren't there or aren't whole
    bool clean = false;         ///< remove the mesh files of earlier exports to the same target

    /// Takes "K/N". Throws `std::invalid_argument` with one line.
    void set_piece(const std::string& text);
};

/// Frames that the plug-in writes one after the other.
struct FrameRun {
    std::vector<int> numbers;
    /// The first frame is only there for the second to hold nothing but what has changed.
    bool drops_first = false;
};

/// The numbers of a piece's frames in the whole range, counted from 0. Throws
/// `std::invalid_argument` with one line if the piece has none.
std::vector<int> frames_of_piece(int frames_in_range, const AnimationOptions& options);

/// Joins the wanted ones of these frames to runs. A frame that `needs_whole` says can't hold only
/// what has changed since the one before begins a run. Both functions take a place in `numbers`.
std::vector<FrameRun> runs_of(const std::vector<int>& numbers,
                              const std::function<bool(std::size_t)>& is_wanted,
                              const std::function<bool(std::size_t)>& needs_whole);

}  // namespace vsqexport
