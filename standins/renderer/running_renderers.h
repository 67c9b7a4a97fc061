#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmora {

/// A scene that has arrived as a whole.
struct AnnouncedScene {
    std::int64_t sender = 0;   ///< the id of the process that it came from
    std::uint64_t number = 0;  ///< counts all scenes of the renderer, from 1 on
    std::string file;          ///< UTF-8
};

/// What a running renderer tells about itself.
struct RunningRenderer {
    std::int64_t process_id = 0;
    int version_major = 0;
    int version_minor = 0;
    int port = 0;  ///< on the loopback interface
    /// The last scene of each sender that ran when the newest came, in the order of their numbers.
    std::vector<AnnouncedScene> scenes;

    /// The last one from the calling process, or null.
    const AnnouncedScene* own_scene() const;
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
    /// Throws `std::runtime_error` if the file can't be written; so does `add_scene`.
    explicit Announcement(RunningRenderer renderer);
    Announcement(const Announcement&) = delete;
    Announcement& operator=(const Announcement&) = delete;
    ~Announcement();

    void add_scene(const AnnouncedScene& scene);

private:
    void write() const;

    RunningRenderer renderer_;
};

}  // namespace velmora
