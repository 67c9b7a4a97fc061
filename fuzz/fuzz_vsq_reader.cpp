#include <sstream>

#include "fuzz/fuzz_input.h"
#include "tools/vsqinfo/vsq_reader.h"

// The reader of scene files takes any bytes: a scene or an error, with nothing in between.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream stream(std::string(reinterpret_cast<const char*>(data), size));
    try {
        const vsqinfo::VsqSummary summary = vsqinfo::read_vsq(stream);
        require(summary.file_size == size, "the size of a scene file");
    } catch (const vsqinfo::MalformedFile& error) {
        require(error.what()[0] != '\0', "an error without a text");
    }
    return 0;
}
