#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmora {

/// What a running renderer tells about itself.
struct RunningRenderer {
    std::int64_t process_id = 0;
    int version_major = 0;
    int version_minor = 0;
    int port = 0;                    ///< on the loopback interface
    std::uint64_t scene_number = 0;  ///< how many scenes have arrived as a whole
    std::string scene_file;          ///< the last of them, as UTF-8; empty before the first one
};

/// The user's running renderers, by their process ids. Those that died without a word are left out,
/// and their files removed.
std::vector<RunningRenderer> list_running_renderers();

/// The one of that process, if it is among them.
std::optional<RunningRenderer> find_running_renderer(std::int64_t process_id);

/// Keeps a renderer in that list while it lives.
///
/// Every renderer has a file in the folder `quoria/running` below the user's data. It is replaced
/// as a whole, so that a reader never meets half of one.
class Announcement {
public:
    /// Throws `std::runtime_error` if the file can't be written; so does `set_scene`.
    explicit Announcement(RunningRenderer renderer);
    Announcement(const Announcement&) = delete;
    Announcement& operator=(const Announcement&) = delete;
    ~Announcement();

    void set_scene(const std::string& file, std::uint64_t number);

private:
    void write() const;

    RunningRenderer renderer_;
};

}  // namespace velmora
