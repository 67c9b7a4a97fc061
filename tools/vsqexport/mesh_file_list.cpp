#include "tools/vsqexport/mesh_file_list.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
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

constexpr char kFirstLine[] = "mesh files of vsqexport, version 1";

std::string list_beside(const std::string& target) {
    const fs::path path = fs::u8path(target);
    const std::string name = "." + path.filename().u8string() + ".meshes";
    return (path.parent_path() / fs::u8path(name)).u8string();
}

// 0 unless the path is that of a sound mesh file.
std::uint64_t size_of_mesh_file(const std::string& path) {
    try {
        return vsqinfo::read_qort_file(path).file_size;
    } catch (const std::runtime_error&) {
        return 0;
    }
}

}  // namespace

MeshFileList::MeshFileList(const std::string& target) : path_(list_beside(target)) {
    std::ifstream list(fs::u8path(path_), std::ios::binary);
    std::string line;
    if (!std::getline(list, line) || line != kFirstLine) {
        return;
    }
    std::uint64_t size = 0;
    while (list >> size && list.get() == ' ' && std::getline(list, line)) {
        sizes_[line] = size;
    }
}

void MeshFileList::update(const std::vector<std::string>& new_files, bool clean) {
    const std::map<std::string, std::uint64_t> earlier = std::move(sizes_);
    sizes_.clear();
    for (const auto& [file, size] : earlier) {
        const bool is_new = std::find(new_files.begin(), new_files.end(), file) != new_files.end();
        if (is_new || size_of_mesh_file(file) != size) {
            continue;
        }
        if (clean) {
            vsqinfo::remove_file(file);
        } else {
            sizes_[file] = size;
        }
    }
    for (const std::string& file : new_files) {
        if (file.find('\n') == std::string::npos) {
            sizes_[file] = size_of_mesh_file(file);
        }
    }
    if (sizes_.empty()) {
        remove_file(path_);
        return;
    }
    UnfinishedFile unfinished(path_);
    errno = 0;
    std::ofstream list(fs::u8path(unfinished.path()), std::ios::binary);
    list << kFirstLine << '\n';
    for (const auto& [file, size] : sizes_) {
        list << size << ' ' << file << '\n';
    }
    list.close();
    if (!list) {
        throw std::runtime_error(vsqinfo::display_text(path_) +
                                 ": cannot be written: " + std::generic_category().message(errno));
    }
    unfinished.finish();
}

}  // namespace vsqexport
