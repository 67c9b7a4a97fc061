#include <gmock/gmock.h>

#include <optional>
#include <sstream>
#include <string>

#include "tests/support/qort_bytes.h"
#include "tools/vsqinfo/qort_reader.h"

namespace {

using namespace qort_bytes;

vsqinfo::QortSummary read(const std::string& bytes) {
    std::istringstream stream(bytes);
    return vsqinfo::read_qort(stream);
}

// The offset of the fault that the reader finds; nothing if it accepts the file.
std::optional<std::uint64_t> fault_at(const std::string& bytes) {
    try {
        read(bytes);
        return std::nullopt;
    } catch (const vsqinfo::MalformedFile& error) {
        return error.offset();
    }
}

const std::vector<float> kBox = {0, 0, 0, 1, 2, 3};

// One triangle in two frames. Blocks begin at 64, 152, 172, 252 and 332.
std::string library() {
    return header(true, kBox, 64 + 80 + 12 + 72 + 72 + 24) +
           block(9, frame(3, 0.099f, {0, 1, 0, 3, 0, 3, 0, 3}) +
                        frame(5, 0.165f, {0, 1, 3, 3, 3, 3, 0, 3})) +
           block(1, words({0, 1, 2})) +
           block(2, floats({0, 0, 0, 1, 0, 0, 0, 2, 0, 0, 0, 3, 1, 0, 3, 0, 2, 3})) +
           block(3, floats(std::vector<float>(18, 0.5f))) + block(5, floats({0, 0, 1, 0, 0, 1}));
}

// Has all blocks that a file with frames can't have. They begin at 64, 84, 128, 148, 168, 192, 212.
std::string mesh() {
    return header(false, kBox, 64) + block(1, words({0, 1, 2})) +
           block(2, floats({0, 0, 0, 1, 0, 0, 0, 2, 3})) + block(3, floats({0, 0, 1})) +
           block(4, words({0, 0, 0})) + block(5, floats({0, 0, 1, 0})) +
           block(6, words({0, 1, 0})) + block(7, floats({1, 1, 1, 0, 0, 0, 1, 0, 0}));
}

std::string interleaved() {
    return header(true, kBox, 64 + 40 + 12 + 36) + block(9, frame(0, 0, {0, 1, 0, 3, 0, 0, 0, 0})) +
           block(1, words({0, 1, 2})) + block(8, floats(std::vector<float>(24, 0.25f)));
}

TEST(QortReader, SummarisesAFile) {
    EXPECT_EQ(vsqinfo::summary_text(read(library())),
              "size          364 bytes\n"
              "format        mesh, version 3, separate arrays\n"
              "frames        2  (numbers 3 to 5 with gaps, times 0.099 to 0.165 s)\n"
              "triangles     1\n"
              "vertices      6\n"
              "normals       6\n"
              "uvs           3\n"
              "colours       0\n"
              "box           0 0 0 to 1 2 3\n");
    EXPECT_THAT(vsqinfo::summary_text(read(mesh())),
                testing::HasSubstr("frames        none\n"
                                   "triangles     1\n"
                                   "vertices      3\n"
                                   "normals       1  (1 index triples)\n"
                                   "uvs           2  (1 index triples)\n"
                                   "colours       3\n"));
    EXPECT_THAT(vsqinfo::summary_text(read(interleaved())),
                testing::HasSubstr("interleaved\nframes        1  "));
    // NaN counts as inside the box.
    EXPECT_FALSE(fault_at(library().replace(180, 4, words({0x7fc00000}))));
}

TEST(QortReader, RefusesAFileCutAtAnyByte) {
    for (const std::string& file : {library(), interleaved()}) {
        for (size_t length = 0; length < file.size(); ++length) {
            EXPECT_EQ(fault_at(file.substr(0, length)), length);
        }
    }
    // Without frames the header doesn't announce the arrays, so a mesh with fewer of them is whole.
    std::vector<size_t> whole;
    for (size_t length = 0; length < mesh().size(); ++length) {
        const auto fault = fault_at(mesh().substr(0, length));
        EXPECT_LE(fault.value_or(0), length);
        if (!fault) {
            whole.push_back(length);
        }
    }
    EXPECT_EQ(whole, (std::vector<size_t>{128, 168, 212}));
}

TEST(QortReader, ReportsTheOffsetOfTheFault) {
    const struct {
        const char* what;
        std::string file;
        size_t at;          // the offset of the change
        std::string bytes;  // the new bytes there
        std::uint64_t offset;
    } cases[] = {
        {"magic", library(), 3, "t", 3},
        {"version", library(), 4, words({4}), 4},
        {"offset of frames", library(), 12, words({72}), 12},
        {"offset without frames", mesh(), 12, words({64}), 12},
        {"box too small", library(), 32, floats({1.5f}), 208},
        {"NaN in the box", library(), 16, words({0x7fc00000}), 180},
        {"box of interleaved vertices", interleaved(), 28, floats({0.125f}), 140},
        {"data ends early", library(), 40, words({300}), 332},
        {"data ends late", library(), 40, words({325}), 364},
        {"data ends beyond 32 bits", mesh(), 44, words({1}), 40},
        {"reserved", library(), 63, "\1", 63},
        {"unknown tag", library(), 152, words({10}), 152},
        {"another block instead of frames", library(), 64, words({7, 72}), 64},
        {"triangles missing", mesh(), 64, words({3}), 64},
        {"a block twice", mesh(), 212, words({2}), 212},
        {"indices without an array", mesh().erase(128, 20), 0, "q", 128},
        {"size not of whole triangles", library(), 156, words({16}), 156},
        {"size beyond the end", library(), 336, words({32}), 364},
        {"triangles of a frame", library(), 80, words({1}), 80},
        {"vertices of a frame", library(), 128, words({4}), 128},
        {"vertices that wrap around", library(), 128, words({0xfffffffe}), 128},
        {"normals of a frame", library(), 136, words({4}), 136},
        {"fewer normals than vertices", library(), 100, words({2}), 100},
        {"texture coordinates of a frame", library(), 104, words({1}), 104},
        {"vertex of another frame", library(), 168, words({3}), 168},
        {"vertex index", mesh(), 76, words({3}), 76},
        {"vertex index, interleaved", interleaved(), 124, words({3}), 124},
        {"normal index", mesh(), 160, words({1}), 160},
        {"index of texture coordinates", mesh(), 204, words({2}), 204},
        {"fewer colours than vertices", mesh().replace(212, 44, block(7, floats({1, 1, 1}))), 0,
         "q", 216},
        {"bytes after a library", library() + "a", 0, "q", 364},
        {"bytes after colours", mesh() + mesh(), 0, "q", 256},
    };
    for (const auto& test : cases) {
        std::string file = test.file;
        file.replace(test.at, test.bytes.size(), test.bytes);
        EXPECT_EQ(fault_at(file), test.offset) << test.what;
    }
}

}  // namespace
