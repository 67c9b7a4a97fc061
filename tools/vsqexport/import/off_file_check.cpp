#include "tools/vsqexport/import/off_file_check.h"

#include <cstdint>
#include <string>

namespace vsqexport {
namespace {

// Reads the next word and skips comments. False at the end of the file.
bool read_word(std::istream& file, std::string& word) {
    while (file >> word) {
        if (word.front() != '#') {
            return true;
        }
        std::getline(file, word);
    }
    return false;
}

// Text that isn't a number counts as 0; assimp can report what is wrong with it.
std::uint64_t count_in(const std::string& word) {
    constexpr std::size_t kMostDigits = 18;
    if (word.find_first_not_of("0123456789") != std::string::npos) {
        return 0;
    }
    return word.size() > kMostDigits ? UINT64_MAX : std::stoull(word);
}

}  // namespace

bool off_counts_fit_file(std::istream& file) {
    file.seekg(0, std::ios::end);
    const std::uint64_t file_size = static_cast<std::uint64_t>(file.tellg());
    file.seekg(0);

    // Prefixes of "OFF" say what belongs to a vertex; after "nOFF" comes the number of dimensions.
    constexpr std::size_t kMagicLength = 3;
    char head[16] = {};
    file.read(head, sizeof(head));
    file.clear();
    const std::string start(head, sizeof(head));
    const std::size_t magic = start.find("OFF");
    if (magic == std::string::npos || magic > 4) {
        return true;
    }
    file.seekg(static_cast<std::streamoff>(magic + kMagicLength));

    // Every vertex and every face takes more than a byte of text.
    std::string vertices;
    std::string faces;
    if (!read_word(file, vertices) || !read_word(file, faces)) {
        return true;
    }
    return count_in(vertices) <= file_size && count_in(faces) <= file_size;
}

}  // namespace vsqexport
