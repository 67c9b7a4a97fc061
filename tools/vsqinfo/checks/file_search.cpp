#include "tools/vsqinfo/checks/file_search.h"

#include <filesystem>

#include "tools/vsqinfo/display_text.h"
#include "tools/vsqinfo/input_file.h"
#include "tools/vsqinfo/malformed_file.h"

namespace vsqinfo {
namespace {

// A path of Windows counts as absolute everywhere: it is not to be looked for in a folder.
bool is_absolute(const std::string& path) {
    const bool has_drive = path.size() > 1 && path[1] == ':';
    return has_drive || (!path.empty() && (path[0] == '/' || path[0] == '\\'));
}

}  // namespace

FileSearch FileSearch::beside(const std::string& path) {
    const std::string folder = std::filesystem::u8path(path).parent_path().u8string();
    return folder.empty() ? FileSearch({""}) : FileSearch({folder, ""});
}

std::optional<std::filesystem::path> FileSearch::find(const std::string& bytes) const {
    const std::vector<std::string> folders =
        is_absolute(bytes) ? std::vector<std::string>{""} : folders_;
    for (const std::string& folder : folders) {
        const std::string path = folder.empty() ? bytes : folder + "/" + bytes;
        try {
            open_input_file(path);
            return input_path(path);
        } catch (const UnreadableFile&) {
            // The next folder may have it.
        }
    }
    return std::nullopt;
}

std::optional<std::ifstream> FileSearch::open(const std::string& bytes) const {
    const std::optional<std::filesystem::path> path = find(bytes);
    return path ? std::optional(std::ifstream(*path, std::ios::binary)) : std::nullopt;
}

std::string FileSearch::missing_text(const std::string& bytes) const {
    std::string text = "\"" + display_text(bytes) + "\"";
    if (is_absolute(bytes)) {
        return text + " can't be opened";
    }
    const char* separator = " isn't in ";
    for (const std::string& folder : folders_) {
        text += separator + (folder.empty() ? std::string("the current folder")
                                            : "\"" + display_text(folder) + "\"");
        separator = " or ";
    }
    return text;
}

}  // namespace vsqinfo
