#include "tools/vsqinfo/vsq_reader.h"

#include "tools/vsqinfo/input_file.h"
#include "tools/vsqinfo/vsq_parser.h"

namespace vsqinfo {

VsqSummary read_vsq(std::istream& stream, VsqListener* listener) {
    return VsqParser(stream, listener).read();
}

VsqSummary read_vsq_file(const std::string& path, VsqListener* listener) {
    std::ifstream stream = open_input_file(path);
    return read_vsq(stream, listener);
}

}  // namespace vsqinfo
