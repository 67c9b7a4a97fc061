#include "tools/vsqexport/export_target.h"

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "tools/vsqexport/animation_files.h"
#include "tools/vsqinfo/display_text.h"

namespace vsqexport {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void refuse(const std::string& target, const std::string& reason) {
    throw std::runtime_error(vsqinfo::display_text(target) + ": cannot be written: " + reason);
}

std::string start_of(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string start(64, '\0');
    file.read(&start[0], static_cast<std::streamsize>(start.size()));
    start.resize(static_cast<std::size_t>(file.gcount()));
    return start;
}

bool starts_with(const std::string& text, const std::string& start) {
    return text.compare(0, start.size(), start) == 0;
}

bool is_scene(const std::string& start) {
    return starts_with(start, "//---quoria:dal:");
}

bool is_script(const std::string& start) {
    return starts_with(start, "import os\ndef cleanExt(ext):\n") ||
           starts_with(start, "import os\r\ndef cleanExt(ext):\r\n");
}

// An empty file holds nothing that could get lost.
void check_is_replaceable(const fs::path& path, bool (*is_ours)(const std::string& start),
                          const char* kind) {
    std::error_code ignored;
    if (!fs::is_regular_file(path, ignored)) {
        return;
    }
    if (const std::string start = start_of(path); !start.empty() && !is_ours(start)) {
        refuse(path.u8string(),
               std::string("it is not a ") + kind + " of an earlier export (--force replaces it)");
    }
}

}  // namespace

void check_export_target(const std::string& target, const std::string& source, bool force) {
    if (is_standard_output(target)) {
        return;
    }
    if (target.empty()) {
        throw std::runtime_error("the name of the scene file is empty");
    }
    const fs::path path = fs::u8path(target);
    std::error_code ignored;
    if (fs::is_directory(path, ignored)) {
        refuse(target, "it is a folder");
    }
    const fs::path folder = path.parent_path();
    if (!folder.empty() && !fs::is_directory(folder, ignored)) {
        refuse(target, "there is no folder " + vsqinfo::display_text(folder.u8string()));
    }
    if (fs::equivalent(path, fs::u8path(source), ignored)) {
        refuse(target, "it is the scene to be exported");
    }
    // A pipe isn't probed: its reader would take the end of the probe for the end of the scene.
    const fs::file_status status = fs::status(path, ignored);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        return;
    }
    if (!force) {
        check_is_replaceable(path, is_scene, "scene");
    }
    // The probe appends, so that an existing file keeps its contents. A new file is removed again,
    // so that nothing is left behind if the export never starts.
    const bool is_new = !fs::exists(fs::symlink_status(path, ignored));
    errno = 0;
    std::ofstream probe(path, std::ios::binary | std::ios::app);
    if (!probe) {
        refuse(target, std::generic_category().message(errno));
    }
    probe.close();
    const std::string reason = probe ? "" : std::generic_category().message(errno);
    if (is_new) {
        fs::remove(path, ignored);
    }
    if (!reason.empty()) {
        refuse(target, reason);
    }
}

bool holds_a_scene(const std::string& path) {
    std::error_code ignored;
    return fs::is_regular_file(fs::u8path(path), ignored) && is_scene(start_of(fs::u8path(path)));
}

void check_animation_target(const std::string& target, const std::string& source, bool force) {
    const AnimationFiles files(target);
    check_export_target(files.frame(0), source, force);
    if (force) {
        return;
    }
    const fs::path folder = fs::u8path(target).parent_path();
    std::error_code error;
    for (fs::directory_iterator i(folder.empty() ? fs::path(".") : folder, error), end;
         !error && i != end; i.increment(error)) {
        if (files.include(i->path().u8string())) {
            const bool holds_script = i->path().extension() == ".py";
            check_is_replaceable(i->path(), holds_script ? is_script : is_scene,
                                 holds_script ? "script" : "scene");
        }
    }
}

std::ofstream wait_for_reader(const std::string& target) {
    const fs::path path = fs::u8path(target);
    std::error_code ignored;
    return fs::is_fifo(path, ignored) ? std::ofstream(path) : std::ofstream();
}

bool is_standard_output(const std::string& target) {
    constexpr char kDevice[] = "/dev/stdout";
    std::error_code ignored;
    return target == kStandardOutput || target == kDevice ||
           fs::equivalent(fs::u8path(target), kDevice, ignored);
}

}  // namespace vsqexport
