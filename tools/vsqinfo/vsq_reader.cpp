#include "tools/vsqinfo/vsq_reader.h"

#include <filesystem>
#include <fstream>
#include <system_error>

#include "tools/vsqinfo/vsq_parser.h"

namespace vsqinfo {

VsqSummary read_vsq(std::istream& stream, VsqListener* listener) {
    return VsqParser(stream, listener).read();
}

VsqSummary read_vsq_file(const std::string& path, VsqListener* listener) {
    const std::filesystem::path file = std::filesystem::u8path(path);
    std::error_code error;
    if (std::filesystem::is_directory(file, error))
        throw UnreadableFile("is a folder");
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw UnreadableFile(std::filesystem::exists(file, error) ? "can't be opened"
                                                                  : "does not exist");
    return read_vsq(stream, listener);
}

}  // namespace vsqinfo
