#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz/fuzz_input.h"

// Runs the target once for each file in a folder, without a fuzzer, and for the empty input.
int main(int argc, char** argv) {
    namespace fs = std::filesystem;
    LLVMFuzzerTestOneInput(nullptr, 0);
    std::error_code ignored;
    const auto files = fs::directory_iterator(argc > 1 ? argv[1] : ".", ignored);
    for (const auto& entry : files) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<char> bytes(std::istreambuf_iterator<char>(file), {});
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    return 0;
}
