#include <sstream>

#include "fuzz/fuzz_input.h"
#include "tools/vsqinfo/checks/mesh_file_check.h"
#include "tools/vsqinfo/malformed_file.h"
#include "tools/vsqinfo/qort_reader.h"

// The reader of mesh files takes any bytes.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::istringstream stream(std::string(reinterpret_cast<const char*>(data), size));
    try {
        vsqinfo::Findings findings;
        vsqinfo::MeshFileCheck check(findings);
        check.file_ends(vsqinfo::read_qort(stream, &check));
    } catch (const vsqinfo::MalformedFile& error) {
        require(error.what()[0] != '\0', "an error without a text");
    }
    return 0;
}
