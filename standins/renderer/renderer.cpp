#include "standins/renderer/renderer.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "importers/sceneapi/dev/installation.h"
#include "platform/files.h"
#include "standins/renderer/client_session.h"
#include "standins/renderer/operating_system.h"
#include "standins/renderer/received_scene.h"
#include "standins/renderer/scene_files.h"

namespace velmora {

namespace {

using asio::ip::tcp;

// The registered ports count only for installed versions in this range.
constexpr int kMinPortVersion = 5;
constexpr int kMaxPortVersion = 20;

// The pause before accepting again after a failure, such as a lack of file handles.
constexpr std::chrono::milliseconds kPauseAfterFailure(100);

constexpr int kEndingSignals[] = {
    SIGINT,
    SIGTERM,
#ifdef SIGHUP
    SIGHUP,
#endif
#ifdef SIGBREAK
    SIGBREAK,
#endif
};

bool listen_on(tcp::acceptor& acceptor, std::int32_t port) {
    asio::error_code error;
    acceptor.close(error);
    acceptor.open(tcp::v4(), error);
#ifndef _WIN32
    // Without this a port stays taken for a while after its last connections have closed. On
    // Windows the option would let several programs share a port.
    acceptor.set_option(tcp::acceptor::reuse_address(true), error);
#endif
    acceptor.bind({asio::ip::address_v4::loopback(), static_cast<std::uint16_t>(port)}, error);
    if (!error) {
        acceptor.listen(tcp::acceptor::max_listen_connections, error);
    }
    return !error;
}

}  // namespace

Renderer::Renderer(RendererSettings settings) : settings_(std::move(settings)) {
    // Scenes in the default folder stay after the renderer ends, for anyone who wants to look at
    // them. The next renderer removes them when it starts.
    if (settings_.scene_folder.empty()) {
        settings_.scene_folder = default_scene_folder();
        remove_old_scenes(settings_.scene_folder);
    }
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::u8path(settings_.scene_folder), error);
    if (!platform::is_folder(settings_.scene_folder)) {
        throw std::runtime_error("can't create the folder " + settings_.scene_folder);
    }
    for (const int signal : kEndingSignals) {
        signals_.add(signal);
    }
    signals_.async_wait([this](const asio::error_code&, int) { stop(); });
    listen();
    if (!settings_.is_silent) {
        RunningRenderer self;
        self.process_id = own_process_id();
        self.version_major = settings_.version_major;
        self.version_minor = settings_.version_minor;
        self.port = port();
        announcement_.emplace(self);
    }
    accept();
}

// Takes the first free port of the registered range, or any free port if there is none.
void Renderer::listen() {
    std::int32_t first = -1;
    std::int32_t last = -1;
    qor::Installation::get().live_link_ports(kMinPortVersion, kMaxPortVersion, first, last);
    for (std::int32_t port = first; port >= 1 && port <= last && port <= 0xffff; ++port) {
        if (listen_on(acceptor_, port)) {
            return;
        }
    }
    if (!listen_on(acceptor_, 0)) {
        throw std::runtime_error("there is no free port to listen on");
    }
}

void Renderer::accept() {
    acceptor_.async_accept([this](const asio::error_code& error, tcp::socket socket) {
        if (error) {
            pause_.expires_after(kPauseAfterFailure);
            pause_.async_wait([this](const asio::error_code&) { accept(); });
            return;
        }
        std::make_shared<ClientSession>(*this, std::move(socket))->start();
        accept();
    });
}

std::unique_ptr<ReceivedScene> Renderer::begin_scene() {
    return std::make_unique<ReceivedScene>(settings_.scene_folder + platform::kSeparator +
                                           scene_file_name(++begun_scenes_) + ".part");
}

void Renderer::take_over(const ReceivedScene& scene) {
    if (scene.is_whole()) {
        groups_.children.clear();
    }
    groups_.add(scene.groups());
}

bool Renderer::keep_scene(ReceivedScene& scene, std::int64_t sender) {
    const std::string file =
        settings_.scene_folder + platform::kSeparator + scene_file_name(whole_scenes_ + 1) + ".vsq";
    if (!scene.finish(file)) {
        return false;
    }
    ++whole_scenes_;
    take_over(scene);
    if (announcement_) {
        announcement_->add_scene({sender, whole_scenes_, file});
    }
    return true;
}

}  // namespace velmora
