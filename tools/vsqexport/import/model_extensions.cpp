#include "tools/vsqexport/import/model_extensions.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include <assimp/Importer.hpp>

namespace vsqexport {

bool is_model_name(const std::string& path_utf8) {
    static const Assimp::Importer importer;
    const std::filesystem::path name = std::filesystem::u8path(path_utf8).filename();
    std::string extension = name.extension().u8string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (extension == ".xml") {
        return name.stem().extension() == ".mesh";
    }
    return !extension.empty() && importer.IsExtensionSupported(extension);
}

}  // namespace vsqexport
