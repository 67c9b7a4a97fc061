#pragma once

#include <string>
#include <unordered_set>

#include "tools/vsqinfo/checks/file_search.h"
#include "tools/vsqinfo/checks/scene_check.h"

namespace vsqinfo {

/// Checks that the files which a scene names are there, and that its mesh files are whole. Each
/// path is looked for once.
class FileCheck final : public SceneCheck {
public:
    FileCheck(const BlockPath& path, Findings& findings, FileSearch search)
        : SceneCheck(path, findings), search_(std::move(search)) {}

    void parameter(const VsqParameter& parameter) override;

private:
    void check_texture(const std::string& file, FilePlace place);
    void check_mesh_file(const std::string& file, FilePlace place);

    FileSearch search_;
    std::unordered_set<std::string> seen_;
};

}  // namespace vsqinfo
