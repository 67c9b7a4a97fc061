#pragma once

#include <asio.hpp>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "standins/renderer/group_tree.h"
#include "standins/renderer/renderer_settings.h"
#include "standins/renderer/running_renderers.h"

namespace velmora {

class ReceivedScene;

/// The renderer: takes connections, keeps each scene that comes over one as a file, and says what
/// it holds. All of it runs on one thread, in `run`.
class Renderer {
public:
    /// Listens from now on, and is announced. Throws `std::runtime_error` if there is no port to
    /// be had or the folders can't be written.
    explicit Renderer(RendererSettings settings);
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    int port() const { return acceptor_.local_endpoint().port(); }

    /// Returns when the renderer was told to end, by a signal or a client.
    void run() { io_.run(); }

    // For the connections.
    const RendererSettings& settings() const { return settings_; }
    std::string scene_tree() const { return groups_.as_xml(); }
    std::unique_ptr<ReceivedScene> begin_scene();
    /// False if the scene isn't whole. `sender` is the id of the process that it comes from.
    bool keep_scene(ReceivedScene& scene, std::int64_t sender);
    /// Holds the groups that have come of a scene.
    void take_over(const ReceivedScene& scene);
    /// Leaves a connection open that isn't served any more.
    void leave_open(std::shared_ptr<void> connection) { stalled_.push_back(std::move(connection)); }
    void stop() { io_.stop(); }

private:
    void listen();
    void accept();

    RendererSettings settings_;
    std::optional<Announcement> announcement_;  // goes last, when the port is free again
    asio::io_context io_;
    asio::ip::tcp::acceptor acceptor_{io_};
    asio::steady_timer pause_{io_};
    asio::signal_set signals_{io_};
    std::vector<std::shared_ptr<void>> stalled_;
    GroupTree groups_;
    std::uint64_t begun_scenes_ = 0;
    std::uint64_t whole_scenes_ = 0;
};

}  // namespace velmora
