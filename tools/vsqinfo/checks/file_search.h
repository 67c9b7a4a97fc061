#pragma once

#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

namespace vsqinfo {

/// Finds the files that a scene names.
class FileSearch {
public:
    /// `folders` are searched in order for a path that isn't absolute. They are UTF-8; an empty one
    /// is the current folder.
    explicit FileSearch(std::vector<std::string> folders) : folders_(std::move(folders)) {}

    /// For the scene file at `path`: its own folder, then the current one.
    static FileSearch beside(const std::string& path);

    /// Opens the file that a scene names by those bytes; nothing if there is none.
    std::optional<std::ifstream> open(const std::string& bytes) const;

    /// The path of what `open` opens; nothing if there is none.
    std::optional<std::filesystem::path> find(const std::string& bytes) const;

    /// Why `open` gave nothing, in one line: the path, and the folders that were searched.
    std::string missing_text(const std::string& bytes) const;

private:
    std::vector<std::string> folders_;
};

}  // namespace vsqinfo
