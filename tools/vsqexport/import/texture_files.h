#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vsqexport {

/// Finds the image files that a model names. Such names come from other machines and systems: with
/// backslashes, in other letter case, with the folders of whoever made the model, or escaped as in
/// a URL.
class TextureFiles {
public:
    explicit TextureFiles(std::filesystem::path model_folder)
        : model_folder_(std::move(model_folder)) {}

    /// First the file as it is named; then, below the model's folder and in any letter case, as
    /// much of the end of the name as there is; then the bare file name in the folders where
    /// textures usually lie. Nothing if all fails.
    std::optional<std::filesystem::path> find(const std::string& name_utf8);

private:
    using Entry = std::pair<std::string, std::filesystem::path>;  // folded name, path

    const std::vector<Entry>& entries_of(const std::filesystem::path& folder);
    std::optional<std::filesystem::path> find_below(const std::filesystem::path& folder,
                                                    const std::vector<std::string>& parts,
                                                    std::size_t first);
    std::optional<std::filesystem::path> find_plain(const std::string& name);

    std::filesystem::path model_folder_;
    std::map<std::filesystem::path, std::vector<Entry>> listed_;  // folders that were looked into
};

}  // namespace vsqexport
