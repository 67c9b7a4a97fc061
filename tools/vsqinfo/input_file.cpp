#include "tools/vsqinfo/input_file.h"

#include <filesystem>
#include <system_error>
#include <type_traits>

#include "tools/vsqinfo/malformed_file.h"
#include "tools/vsqinfo/utf8_length.h"

namespace vsqinfo {

namespace fs = std::filesystem;

// A mesh file can be named after a node, whose name need not be UTF-8. Where file names are bytes,
// the file has exactly that name; on Windows such a byte becomes the character of its number.
fs::path input_path(const std::string& bytes) {
    if constexpr (std::is_same_v<fs::path::value_type, char>) {
        return bytes;
    }
    std::string utf8;
    for (std::size_t i = 0; i < bytes.size();) {
        const std::size_t length = utf8_length(bytes, i);
        if (length != 0) {
            utf8.append(bytes, i, length);
        } else {
            const auto character = static_cast<unsigned char>(bytes[i]);
            utf8 += static_cast<char>(0xc0 | character >> 6);
            utf8 += static_cast<char>(0x80 | (character & 0x3f));
        }
        i += length != 0 ? length : 1;
    }
    return fs::u8path(utf8);
}

std::ifstream open_input_file(const std::string& path) {
    const fs::path file = input_path(path);
    std::error_code error;
    if (fs::is_directory(file, error)) {
        throw UnreadableFile("is a folder");
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        throw UnreadableFile(fs::exists(file, error) ? "can't be opened" : "does not exist");
    }
    return stream;
}

void remove_file(const std::string& path) {
    std::error_code ignored;
    fs::remove(input_path(path), ignored);
}

}  // namespace vsqinfo
