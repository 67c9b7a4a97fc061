#include "standins/host/app/export_target.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace app {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void refuse(const std::string& target, const std::string& reason) {
    throw std::runtime_error(target + ": cannot be written: " + reason);
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
        refuse(target, "there is no folder " + folder.u8string());
    }
    if (fs::equivalent(path, fs::u8path(source), ignored)) {
        refuse(target, "it is the scene to be exported");
    }
    // An empty file may stay behind if the export never starts; the old contents of one that was
    // there are kept until then.
    errno = 0;
    const std::ofstream probe(path, std::ios::binary | std::ios::app);
    if (!probe) {
        refuse(target, std::generic_category().message(errno));
    }
}

bool is_standard_output(const std::string& target) {
    return target == "-";
}

}  // namespace app
