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

/// The renderer: accepts connections, saves each scene that it receives to a file, and reports the
/// groups that it holds. Everything runs on one thread, in `run`.
class Renderer {
public:
    /// Starts to listen and, unless silent, announces the renderer. Throws `std::runtime_error` if
    /// there is no free port or a folder can't be written.
    explicit Renderer(RendererSettings settings);
    Renderer(const Renderer&) = delete;
    Renderer& operator=(const Renderer&) = delete;

    int port() const { return acceptor_.local_endpoint().port(); }

    /// Returns once a signal or a client has stopped the renderer.
    void run() { io_.run(); }

    // Used by the connections.
    const RendererSettings& settings() const { return settings_; }
    std::string scene_tree() const { return groups_.as_xml(); }
    std::unique_ptr<ReceivedScene> begin_scene();
    /// False if the scene couldn't be saved completely. `sender` is the process id of the client.
    bool keep_scene(ReceivedScene& scene, std::int64_t sender);
    /// Adds the scene's groups to those that the renderer holds. A whole scene replaces them.
    void take_over(const ReceivedScene& scene);
    /// Keeps a connection open without serving it any more.
    void leave_open(std::shared_ptr<void> connection) { stalled_.push_back(std::move(connection)); }
    void stop() { io_.stop(); }

private:
    void listen();
    void accept();

    RendererSettings settings_;
    std::optional<Announcement> announcement_;  // destroyed last, once the port is free again
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
