#pragma once

#include <string>

namespace vsqexport {

/// Whether a new file can take the place of what is there: not of a pipe or a device.
bool can_be_replaced(const std::string& target);

/// The path of a file beside `target` that no other process uses: a hidden file of the same ending.
/// It holds what is being written, so that the target always is a whole file. Paths are UTF-8.
std::string unfinished_path(const std::string& target);

/// Moves a file that is complete to its place, and replaces what is there. Throws
/// `std::runtime_error` with one line that names the target.
void finish_file(const std::string& unfinished, const std::string& target);

void remove_file(const std::string& path);

/// A file that is written beside its target and takes the target's place when it's complete.
/// Otherwise nothing is left of it. A pipe or a device can't be replaced and is written directly.
class UnfinishedFile {
public:
    explicit UnfinishedFile(const std::string& target);
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;
    ~UnfinishedFile();

    /// Where to write.
    const std::string& path() const { return path_; }

    /// Throws as `finish_file` does.
    void finish();

private:
    std::string target_;
    std::string path_;
};

}  // namespace vsqexport
