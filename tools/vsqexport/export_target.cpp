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

}  // namespace

void check_export_target(const std::string& target, const std::string& source) {
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

void check_animation_target(const std::string& target, const std::string& source) {
    check_export_target(AnimationFiles(target).frame(0), source);
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
