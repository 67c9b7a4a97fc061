#include <chrono>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "importers/sceneapi/dev/decimal_text.h"
#include "standins/renderer/link_connection.h"
#include "standins/renderer/operating_system.h"
#include "standins/renderer/renderer.h"

namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kMisused = 2;

// How long each renderer may take to end after it was told to.
constexpr std::chrono::seconds kTimeToEnd(5);

// How long the system may take to notice that a renderer has died.
constexpr std::chrono::seconds kTimeToVanish(1);
constexpr std::chrono::milliseconds kTimeBetweenLooks(20);

constexpr char kHelp[] =
    "velmora               runs a renderer that makes no pictures: it saves each scene that\n"
    "                      arrives over the live link to a .vsq file. Ctrl-C ends it.\n"
    "velmora --stop [PID]  ends the user's running renderers, or only the one with that id\n"
    "velmora --version     prints the version of this program; it stands in for Velmora 11\n";

// A renderer removes its announcement last, so it has ended once that is gone.
bool stop(const velmora::RunningRenderer& renderer) {
    velmora::LinkConnection connection;
    const bool is_told = connection.open("127.0.0.1", renderer.port) &&
                         connection.process_id() == renderer.process_id &&
                         connection.ask_number(velmora::operation::kStop);
    const auto deadline = std::chrono::steady_clock::now() + (is_told ? kTimeToEnd : kTimeToVanish);
    while (std::chrono::steady_clock::now() < deadline) {
        if (!velmora::find_running_renderer(renderer.process_id)) {
            return true;
        }
        std::this_thread::sleep_for(kTimeBetweenLooks);
    }
    return false;
}

int stop_renderers(const std::vector<velmora::RunningRenderer>& renderers) {
    int result = kDone;
    if (renderers.empty()) {
        std::puts("no renderer is running");
    }
    for (const velmora::RunningRenderer& renderer : renderers) {
        const auto process_id = static_cast<long long>(renderer.process_id);
        if (stop(renderer)) {
            std::printf("stopped Velmora %d.%d (process %lld, port %d)\n", renderer.version_major,
                        renderer.version_minor, process_id, renderer.port);
        } else {
            std::fprintf(stderr, "velmora: the renderer with process id %lld doesn't end\n",
                         process_id);
            result = kFailed;
        }
    }
    return result;
}

int stop_renderer(std::int64_t process_id) {
    const auto renderer = velmora::find_running_renderer(process_id);
    if (!renderer) {
        std::fprintf(stderr, "velmora: process %lld isn't a running renderer\n",
                     static_cast<long long>(process_id));
        return kFailed;
    }
    return stop_renderers({*renderer});
}

int run_renderer() {
    velmora::Renderer renderer(velmora::settings_from_environment());
    std::printf("velmora %d.%d listens on port %d, process %lld\n",
                renderer.settings().version_major, renderer.settings().version_minor,
                renderer.port(), static_cast<long long>(velmora::own_process_id()));
    std::fflush(stdout);
    renderer.run();
    return kDone;
}

int run(const std::vector<std::string>& arguments) {
    if (arguments.empty()) {
        return run_renderer();
    }
    if (arguments.size() == 1 && (arguments[0] == "--help" || arguments[0] == "-h")) {
        std::printf("%s\n%s", kHelp, velmora::kSettingsHelp);
        return kDone;
    }
    if (arguments.size() == 1 && arguments[0] == "--version") {
        std::puts("velmora " VSQ_VERSION);
        return kDone;
    }
    if (arguments[0] == "--stop" && arguments.size() == 1) {
        return stop_renderers(velmora::list_running_renderers());
    }
    if (arguments[0] == "--stop" && arguments.size() == 2) {
        const std::int64_t process_id = decimal_number_64(arguments[1]);
        if (process_id > 0) {
            return stop_renderer(process_id);
        }
    }
    throw std::invalid_argument("no such command (see --help)");
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run({argv + 1, argv + argc});
    } catch (const std::invalid_argument& error) {
        std::fprintf(stderr, "velmora: %s\n", error.what());
        return kMisused;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "velmora: %s\n", error.what());
        return kFailed;
    }
}
