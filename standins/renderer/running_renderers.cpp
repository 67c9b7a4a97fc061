#include "standins/renderer/running_renderers.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "importers/sceneapi/dev/decimal_text.h"
#include "standins/renderer/operating_system.h"

namespace velmora {

namespace {

namespace fs = std::filesystem;

constexpr char kEnding[] = ".renderer";
constexpr char kUnfinishedEnding[] = ".new";  // appended to `kEnding`

// On Windows a file can't be replaced while it is being read, or read while it is being replaced.
// Both are short, so it is worth trying again.
constexpr int kMostAttempts = 100;
constexpr std::chrono::milliseconds kTimeBetweenAttempts(5);

fs::path running_folder() {
    return fs::u8path(user_data_folder()) / "quoria" / "running";
}

fs::path announcement_of(std::int64_t process_id) {
    return running_folder() / (std::to_string(process_id) + kEnding);
}

// Returns a stream that isn't open if the file is gone.
std::ifstream open_announcement(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    for (int attempt = 1; !file && attempt < kMostAttempts; ++attempt) {
        fs::path unfinished = path;
        unfinished += kUnfinishedEnding;
        std::error_code ignored;
        if (!fs::exists(path, ignored) && !fs::exists(unfinished, ignored)) {
            break;
        }
        std::this_thread::sleep_for(kTimeBetweenAttempts);
        file.open(path, std::ios::binary);
    }
    return file;
}

// Parses the client's process id, the scene's number and its file, as in "4711 3
// /home/user/scene.vsq".
AnnouncedScene parse_scene(const std::string& text) {
    AnnouncedScene scene;
    std::istringstream fields(text);
    fields >> scene.sender >> scene.number;
    fields.ignore();
    std::getline(fields, scene.file);
    return scene;
}

// The file consists of `key=value` lines. Returns `nullopt` if the renderer or its file is gone.
std::optional<RunningRenderer> read_announcement(const fs::path& path) {
    RunningRenderer renderer;
    std::ifstream file = open_announcement(path);
    std::string line;
    while (std::getline(file, line)) {
        const size_t equals = line.find('=');
        if (equals == std::string::npos) {
            continue;
        }
        const std::string key = line.substr(0, equals);
        const std::string value = line.substr(equals + 1);
        if (key == "process_id") {
            renderer.process_id = decimal_number_64(value);
        } else if (key == "version_major") {
            renderer.version_major = decimal_number(value);
        } else if (key == "version_minor") {
            renderer.version_minor = decimal_number(value);
        } else if (key == "port") {
            renderer.port = decimal_number(value);
        } else if (key == "scene") {
            renderer.scenes.push_back(parse_scene(value));
        }
    }
    file.close();
    if (process_is_running(renderer.process_id)) {
        return renderer;
    }
    if (renderer.process_id > 0) {
        std::error_code ignored;
        fs::remove(path, ignored);  // the renderer crashed and left it behind
    }
    return std::nullopt;
}

bool replace_file(const fs::path& path, const fs::path& by) {
    std::error_code error;
    fs::rename(by, path, error);
    for (int attempt = 1; error && attempt < kMostAttempts; ++attempt) {
        std::this_thread::sleep_for(kTimeBetweenAttempts);
        fs::rename(by, path, error);
    }
    return !error;
}

}  // namespace

std::vector<RunningRenderer> list_running_renderers() {
    std::set<fs::path> announcements;
    std::error_code no_folder;
    for (fs::directory_iterator file(running_folder(), no_folder), end; !no_folder && file != end;
         file.increment(no_folder)) {
        // While a file is being replaced, only its unfinished successor may exist.
        fs::path path = file->path();
        if (path.extension() == kUnfinishedEnding) {
            path.replace_extension();
        }
        if (path.extension() == kEnding) {
            announcements.insert(path);
        }
    }
    std::vector<RunningRenderer> renderers;
    for (const fs::path& path : announcements) {
        if (std::optional<RunningRenderer> renderer = read_announcement(path)) {
            renderers.push_back(std::move(*renderer));
        }
    }
    std::sort(renderers.begin(), renderers.end(),
              [](const RunningRenderer& a, const RunningRenderer& b) {
                  return a.process_id < b.process_id;
              });
    return renderers;
}

std::optional<RunningRenderer> find_running_renderer(std::int64_t process_id) {
    return read_announcement(announcement_of(process_id));
}

const AnnouncedScene* RunningRenderer::own_scene() const {
    for (const AnnouncedScene& scene : scenes) {
        if (scene.sender == own_process_id()) {
            return &scene;
        }
    }
    return nullptr;
}

Announcement::Announcement(RunningRenderer renderer) : renderer_(std::move(renderer)) {
    write();
}

Announcement::~Announcement() {
    std::error_code ignored;
    fs::remove(announcement_of(renderer_.process_id), ignored);
}

void Announcement::add_scene(const AnnouncedScene& scene) {
    std::vector<AnnouncedScene>& scenes = renderer_.scenes;
    scenes.erase(std::remove_if(scenes.begin(), scenes.end(),
                                [&](const AnnouncedScene& old) {
                                    return old.sender == scene.sender ||
                                           !process_is_running(old.sender);
                                }),
                 scenes.end());
    scenes.push_back(scene);
    write();
}

void Announcement::write() const {
    const fs::path path = announcement_of(renderer_.process_id);
    fs::path unfinished = path;
    unfinished += kUnfinishedEnding;
    std::error_code ignored;
    fs::create_directories(path.parent_path(), ignored);
    std::ofstream file(unfinished, std::ios::binary);
    file << "process_id=" << renderer_.process_id << "\nversion_major=" << renderer_.version_major
         << "\nversion_minor=" << renderer_.version_minor << "\nport=" << renderer_.port << "\n";
    for (const AnnouncedScene& scene : renderer_.scenes) {
        file << "scene=" << scene.sender << ' ' << scene.number << ' ' << scene.file << "\n";
    }
    file.close();
    if (!file || !replace_file(path, unfinished)) {
        fs::remove(unfinished, ignored);
        throw std::runtime_error("can't write " + path.u8string());
    }
}

}  // namespace velmora
