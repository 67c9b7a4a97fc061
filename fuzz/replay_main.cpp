#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz/fuzz_input.h"

// Runs the target once for each file in a folder, without a fuzzer, and for the empty input.
int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    const std::uint8_t nothing = 0;
    LLVMFuzzerTestOneInput(&nothing, 0);
    // Throws if there is no such folder.
    for (const auto& entry : fs::directory_iterator(argc > 1 ? argv[1] : ".")) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
        LLVMFuzzerTestOneInput(
            bytes.empty() ? &nothing : reinterpret_cast<const std::uint8_t*>(bytes.data()),
            bytes.size());
    }
    return 0;
}
