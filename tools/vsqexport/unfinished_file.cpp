#include "tools/vsqexport/unfinished_file.h"

#include <filesystem>
#include <random>
#include <stdexcept>
#include <system_error>

#include "tools/vsqinfo/display_text.h"

namespace vsqexport {

namespace fs = std::filesystem;

namespace {

// Links stay links: the file that they lead to is replaced.
fs::path real_path(const fs::path& path) {
    std::error_code error;
    const fs::path real = fs::canonical(path, error);
    return error ? path : real;
}

}  // namespace

bool can_be_replaced(const std::string& target) {
    std::error_code ignored;
    const fs::file_status status = fs::status(fs::u8path(target), ignored);
    return !fs::exists(status) || fs::is_regular_file(status);
}

std::string unfinished_path(const std::string& target) {
    constexpr std::size_t kLongest = 200;  // of a name; no system allows more than 255 bytes
    const fs::path path = real_path(fs::u8path(target));
    const std::string name = path.stem().u8string().substr(0, kLongest);
    const std::string mark = std::to_string(std::random_device()());
    return (path.parent_path() / fs::u8path("." + name + "." + mark + ".part"))
        .concat(path.extension().native())
        .u8string();
}

void finish_file(const std::string& unfinished, const std::string& target) {
    std::error_code error;
    fs::rename(fs::u8path(unfinished), real_path(fs::u8path(target)), error);
    if (error) {
        throw std::runtime_error(vsqinfo::display_text(target) +
                                 ": cannot be written: " + error.message());
    }
}

void remove_file(const std::string& path) {
    std::error_code ignored;
    fs::remove(fs::u8path(path), ignored);
}

UnfinishedFile::UnfinishedFile(const std::string& target)
    : target_(target), path_(can_be_replaced(target) ? unfinished_path(target) : target) {}

UnfinishedFile::~UnfinishedFile() {
    if (path_ != target_) {
        remove_file(path_);
    }
}

void UnfinishedFile::finish() {
    if (path_ != target_) {
        finish_file(path_, target_);
        path_ = target_;
    }
}

}  // namespace vsqexport
