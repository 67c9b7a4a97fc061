#include <sstream>

#include "fuzz/fuzz_input.h"
#include "tools/vsqinfo/checks/scene_checks.h"
#include "tools/vsqinfo/vsq_reader.h"

// The reader of scene files takes any bytes: a scene or an error, with nothing in between. With the
// checks attached it reads on after some errors, but misses none.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    bool is_sound = true;
    try {
        std::istringstream stream(bytes);
        const vsqinfo::VsqSummary summary = vsqinfo::read_vsq(stream);
        require(summary.file_size == size, "the size of a scene file");
    } catch (const vsqinfo::MalformedFile& error) {
        require(error.what()[0] != '\0', "an error without a text");
        is_sound = false;
    }

    vsqinfo::Findings findings;
    vsqinfo::SceneChecks checks(findings, nullptr, nullptr);
    try {
        std::istringstream stream(bytes);
        checks.scene_ends(vsqinfo::read_vsq(stream, &checks));
        require(is_sound || findings.count(vsqinfo::Severity::kError) != 0, "an error missed");
    } catch (const vsqinfo::MalformedFile&) {
        require(!is_sound, "a sound file refused by the checks");
    }
    return 0;
}
