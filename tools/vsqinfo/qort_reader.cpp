#include "tools/vsqinfo/qort_reader.h"

#include "tools/vsqinfo/input_file.h"
#include "tools/vsqinfo/qort_parser.h"

namespace vsqinfo {

QortSummary read_qort(std::istream& stream, QortListener* listener) {
    return QortParser(stream, listener).read();
}

QortSummary read_qort_file(const std::string& path, QortListener* listener) {
    std::ifstream stream = open_input_file(path);
    return read_qort(stream, listener);
}

bool begins_as_qort(std::istream& stream) {
    return stream.peek() == 'q';
}

}  // namespace vsqinfo
