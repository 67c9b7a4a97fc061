#include "standins/renderer/scene_files.h"

#include <filesystem>

#include "importers/sceneapi/dev/decimal_text.h"
#include "standins/renderer/operating_system.h"

namespace velmora {

namespace {

namespace fs = std::filesystem;

// The renderer's process id and the scene's number follow, as in "scene-4711-1".
const std::string kStart = "scene-";

}  // namespace

std::string default_scene_folder() {
    return (fs::u8path(user_data_folder()) / "quoria" / "scenes").u8string();
}

std::string scene_file_name(std::uint64_t number) {
    return kStart + std::to_string(own_process_id()) + "-" + std::to_string(number);
}

void remove_old_scenes(const std::string& folder) {
    std::error_code error;
    for (fs::directory_iterator file(fs::u8path(folder), error), end; !error && file != end;
         file.increment(error)) {
        const std::string name = file->path().filename().u8string();
        if (name.rfind(kStart, 0) != 0) {
            continue;
        }
        const std::int64_t process_id = decimal_number_64(name.substr(kStart.size()));
        if (process_id > 0 && !process_is_running(process_id)) {
            std::error_code ignored;
            fs::remove(file->path(), ignored);
        }
    }
}

}  // namespace velmora
