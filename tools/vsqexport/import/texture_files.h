#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vsqexport {

/// Finds the image files that a model names. The names come from other machines and systems: with
/// backslashes, in other letter case, with folders of the model's author, or escaped as in a URL.
class TextureFiles {
public:
    explicit TextureFiles(std::filesystem::path model_folder)
        : model_folder_(std::move(model_folder)) {}

    /// Tries the name as it is; then, below the model's folder and in any letter case, the name
    /// with ever more of its first folders removed; then the bare file name in folders where
    /// textures usually are. Nothing if all of that fails.
    std::optional<std::filesystem::path> find(const std::string& name_utf8);

private:
    using Entry = std::pair<std::string, std::filesystem::path>;  // folded name, path

    const std::vector<Entry>& entries_of(const std::filesystem::path& folder);
    std::optional<std::filesystem::path> find_below(const std::filesystem::path& folder,
                                                    const std::vector<std::string>& parts,
                                                    std::size_t first);
    std::optional<std::filesystem::path> find_plain(const std::string& name);

    std::filesystem::path model_folder_;
    std::map<std::filesystem::path, std::vector<Entry>> listed_;  // contents of folders so far
};

}  // namespace vsqexport
