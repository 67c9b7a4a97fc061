#include "tools/vsqexport/mesh_file_list.h"

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "tools/vsqexport/unfinished_file.h"
#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/input_file.h"
#include "tools/vsqinfo/qort_reader.h"

namespace vsqexport {

namespace {

namespace fs = std::filesystem;

constexpr char kFirstLine[] = "mesh files of vsqexport, version 2";

std::string list_beside(const std::string& target) {
    const fs::path path = fs::u8path(target);
    const std::string name = "." + path.filename().u8string() + ".meshes";
    return (path.parent_path() / fs::u8path(name)).u8string();
}

std::string absolute(const std::string& path) {
    return fs::absolute(vsqinfo::input_path(path)).lexically_normal().u8string();
}

// Where the plug-in writes mesh files.
bool is_in_a_resource_folder(const std::string& path) {
    const fs::path folder = vsqinfo::input_path(path).parent_path();
    return folder.filename() == "3ds max" && folder.parent_path().filename() == "Animations" &&
           path == absolute(path);
}

// What tells a mesh file from another one that has its path later. Empty unless the path is that of
// a sound mesh file in a resource folder.
std::string mark_of(const std::string& path) {
    std::error_code ignored;
    if (!is_in_a_resource_folder(path) ||
        !fs::is_regular_file(fs::symlink_status(vsqinfo::input_path(path), ignored))) {
        return {};
    }
    try {
        vsqinfo::read_qort_file(path);
    } catch (const std::runtime_error&) {
        return {};
    }
    std::uint64_t hash = 0xCBF29CE484222325u;  // FNV-1a
    std::uint64_t size = 0;
    std::ifstream file(vsqinfo::input_path(path), std::ios::binary);
    for (std::istreambuf_iterator<char> c(file), end; c != end; ++c, ++size) {
        hash = (hash ^ static_cast<unsigned char>(*c)) * 0x100000001B3u;
    }
    const auto changed =
        fs::last_write_time(vsqinfo::input_path(path), ignored).time_since_epoch().count();
    return std::to_string(size) + "-" + std::to_string(hash) + "-" + std::to_string(changed);
}

}  // namespace

MeshFileList::MeshFileList(const std::string& target) : path_(list_beside(target)) {
    std::ifstream list(fs::u8path(path_), std::ios::binary);
    std::string line;
    if (!std::getline(list, line) || line != kFirstLine) {
        return;
    }
    std::string mark;
    while (list >> mark && list.get() == ' ' && std::getline(list, line)) {
        marks_[line] = mark;
    }
}

void MeshFileList::update(const std::vector<std::string>& new_files, bool clean) {
    const std::map<std::string, std::string> earlier = std::move(marks_);
    marks_.clear();
    std::set<std::string> now;
    for (const std::string& file : new_files) {
        now.insert(absolute(file));
    }
    for (const auto& [file, mark] : earlier) {
        if (now.count(file) > 0 || mark_of(file) != mark) {
            continue;
        }
        if (clean) {
            vsqinfo::remove_file(file);
        } else {
            marks_[file] = mark;
        }
    }
    for (const std::string& file : now) {
        const std::string mark = file.find('\n') == std::string::npos ? mark_of(file) : "";
        if (!mark.empty()) {
            marks_[file] = mark;
        }
    }
    if (marks_.empty()) {
        remove_file(path_);
        return;
    }
    UnfinishedFile unfinished(path_);
    errno = 0;
    std::ofstream list(fs::u8path(unfinished.path()), std::ios::binary);
    list << kFirstLine << '\n';
    for (const auto& [file, mark] : marks_) {
        list << mark << ' ' << file << '\n';
    }
    list.close();
    if (!list) {
        throw std::runtime_error(vsqinfo::display_text(path_) +
                                 ": cannot be written: " + std::generic_category().message(errno));
    }
    unfinished.finish();
}

}  // namespace vsqexport
