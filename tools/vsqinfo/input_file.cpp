#include "tools/vsqinfo/input_file.h"

#include <filesystem>
#include <system_error>

#include "tools/vsqinfo/malformed_file.h"

namespace vsqinfo {

std::ifstream open_input_file(const std::string& path) {
    const std::filesystem::path file = std::filesystem::u8path(path);
    std::error_code error;
    if (std::filesystem::is_directory(file, error))
        throw UnreadableFile("is a folder");
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw UnreadableFile(std::filesystem::exists(file, error) ? "can't be opened"
                                                                  : "does not exist");
    return stream;
}

}  // namespace vsqinfo
