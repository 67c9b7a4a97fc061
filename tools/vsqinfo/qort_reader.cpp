#include "tools/vsqinfo/qort_reader.h"

#include "tools/vsqinfo/input_file.h"
#include "tools/vsqinfo/qort_parser.h"

namespace vsqinfo {

QortSummary read_qort(std::istream& stream) {
    return QortParser(stream).read();
}

QortSummary read_qort_file(const std::string& path) {
    std::ifstream stream = open_input_file(path);
    return read_qort(stream);
}

bool begins_as_qort(std::istream& stream) {
    return stream.peek() == 'q';
}

}  // namespace vsqinfo
