#pragma once

#include <string>

namespace vsqexport {

/// The paths of an animation's files, derived from the one that the user chose. All are UTF-8.
///
///     AnimationFiles files("film/shot.vsq");
///     files.frame(7);    // film/shot0007.vsq
///     files.script();    // film/shot.py
class AnimationFiles {
public:
    /// Throws `std::invalid_argument` with one line unless `target` ends in ".vsq".
    explicit AnimationFiles(const std::string& target);

    /// The scene file of a frame, counted from 0 at the start of the animation range.
    std::string frame(int number) const;

    /// The script that renders the frames.
    std::string script() const { return base_ + ".py"; }

    /// The script that renders one of several pieces: "film/shot.3-of-20.py".
    std::string script_of_piece(int piece, int pieces) const;

    /// Whether `path` is that of a script or of any frame.
    bool include(const std::string& path) const;

    /// Throws `std::runtime_error` unless the script exists, is complete, and renders the frames 1
    /// to `last_frame` of these files.
    void check_script(int last_frame) const;

    /// Whether the file `script` is whole and renders the frames of these files from `first` to
    /// `last`.
    bool are_rendered_by(const std::string& script, int first, int last) const;

    /// What the script of these files does if it renders those of `other` instead: every `step`-th
    /// frame from `first` to `last`. Throws as `check_script` does.
    std::string script_for(const AnimationFiles& other, int last_frame, int first, int last,
                           int step) const;

private:
    std::string prefix_in_script() const;
    std::string path_in_script() const;
    std::string checked_script(int last_frame) const;

    std::string base_;  // the path without ".vsq"
};

}  // namespace vsqexport
