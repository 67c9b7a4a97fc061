#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace velmora {

/// A scene that has arrived completely.
struct AnnouncedScene {
    std::int64_t sender = 0;   ///< the process id of its client
    std::uint64_t number = 0;  ///< counts the renderer's scenes from 1
    std::string file;          ///< UTF-8
};

/// What a running renderer announces about itself.
struct RunningRenderer {
    std::int64_t process_id = 0;
    int version_major = 0;
    int version_minor = 0;
    int port = 0;  ///< on the loopback interface
    /// The latest scene of each client, in order of their numbers. Clients that had ended when the
    /// newest scene arrived are left out.
    std::vector<AnnouncedScene> scenes;

    /// The latest scene from the calling process, or null.
    const AnnouncedScene* own_scene() const;
};

/// The user's running renderers, in order of their process ids. Removes the files that crashed
/// renderers have left behind.
std::vector<RunningRenderer> list_running_renderers();

/// The running renderer with that process id, if there is one.
std::optional<RunningRenderer> find_running_renderer(std::int64_t process_id);

/// Keeps a renderer in the list of running renderers while this object exists.
///
/// Every renderer has a file in the folder `quoria/running` below the user's data. Updates replace
/// the whole file, so that a reader never sees half of one.
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
