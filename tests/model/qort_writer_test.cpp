#include "model/qort_writer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "platform/files.h"
#include "tests/support/qort_bytes.h"
#include "tests/support/temporary_folder.h"

namespace {

using namespace qort_bytes;
using qor::QorTFrame;
using qor::QorTMesh;

const float kNan = std::nanf("");

struct Arrays {
    std::vector<std::uint32_t> triangles = {0, 1, 2};
    std::vector<float> vertices = {0, 0, 0, 1, 0, 0, 0, 2, 0};
    std::vector<float> normals;
    std::vector<std::uint32_t> normal_indices;
    std::vector<float> uvs;
    std::vector<std::uint32_t> uv_indices;
    std::vector<float> colours;
    std::vector<QorTFrame> frames;
};

// A mesh with pointers to arrays that it doesn't own.
struct LentMesh : QorTMesh {
    explicit LentMesh(const Arrays& all = {}) : arrays(all) {
        const auto lend = [](auto& array, auto*& pointer) {
            pointer = array.empty() ? nullptr : array.data();
            return static_cast<std::uint32_t>(array.size());
        };
        triangle_count = lend(arrays.triangles, triangles) / 3;
        vertex_count = lend(arrays.vertices, vertices) / 3;
        normal_count = lend(arrays.normals, normals) / 3;
        uv_count = lend(arrays.uvs, uvs) / 2;
        frame_count = lend(arrays.frames, frames);
        lend(arrays.normal_indices, normal_indices);
        lend(arrays.uv_indices, uv_indices);
        lend(arrays.colours, colours);
    }

    Arrays arrays;
};

Arrays arrays_of(void (*change)(Arrays&)) {
    Arrays arrays;
    change(arrays);
    return arrays;
}

const QorTFrame kFrame = {4, 0.132f, 0, 1, 0, 3, 0, 3, 0, 0};
const std::vector<float> kZ3 = {0, 0, 1, 0, 0, 1, 0, 0, 1};
const std::vector<float> kBox = {0, 0, 0, 1, 2, 0};
const std::string kTriangle = block(1, words({0, 1, 2}));
const std::string kPositions = block(2, floats({0, 0, 0, 1, 0, 0, 0, 2, 0}));

TEST(QorTWriter, WritesTheExactBytesOfEveryForm) {
    const std::string frame_0 = frame(4, 0.132f, {0, 1, 0, 3, 0, 3, 0, 0});
    const struct {
        const char* what;
        std::uint32_t flags;
        Arrays arrays;
        std::string bytes;
    } cases[] = {
        {"everything there is", 0, arrays_of([](Arrays& a) {
             a.normals = {0, 0, 1};
             a.normal_indices = {0, 0, 0};
             a.uvs = {0.5f, 1, 0, 0};
             a.uv_indices = {0, 1, 0};
             a.colours = {1, 1, 1, 0, 0, 0, 1, 0, 0};
             a.frames = {kFrame};
         }),
         header(true, kBox, 64 + 40 + 12 + 36 + 12 + 12 + 16 + 12 + 36) + block(9, frame_0) +
             kTriangle + kPositions + block(3, floats({0, 0, 1})) + block(4, words({0, 0, 0})) +
             block(5, floats({0.5f, 1, 0, 0})) + block(6, words({0, 1, 0})) +
             block(7, floats({1, 1, 1, 0, 0, 0, 1, 0, 0}))},
        {"indices without their arrays", 0, arrays_of([](Arrays& a) {
             a.normal_indices = {0, 0, 0};
             a.uv_indices = {0, 1, 0};
         }),
         header(false, kBox, 64) + kTriangle + kPositions},
        {"NaN, which the box ignores", 0,
         arrays_of([](Arrays& a) { a.vertices = {kNan, 5, kNan, 3, -1, kNan, 2, 0, kNan}; }),
         header(false, {2, -1, 1e20f, 3, 5, -1e20f}, 64) + kTriangle +
             block(2, floats({kNan, 5, kNan, 3, -1, kNan, 2, 0, kNan}))},
        {"interleaved without indices", qor::kWriteInterleaved, arrays_of([](Arrays& a) {
             a.normals = kZ3;
             a.uvs = {1, 2, 3, 4, 5, 6};
             a.colours = kZ3;
             a.frames = {kFrame};
         }),
         header(true, kBox, 64 + 40 + 12 + 36 + 36 + 24 + 36) + block(9, frame_0) + kTriangle +
             block(8, floats({0, 0, 0, 0, 0, 1, 1, 2, 1, 0, 0, 0,
                              0, 1, 3, 4, 0, 2, 0, 0, 0, 1, 5, 6}))},
        {"unrolled by the indices of normals", qor::kWriteInterleaved, arrays_of([](Arrays& a) {
             a.triangles = {2, 1, 0, 0, 1, 2};
             a.normals = {0, 0, 1, 0, 0, -1};
             a.normal_indices = {0, 0, 0, 1, 1, 1};
         }),
         header(false, kBox, 64) + block(1, words({0, 1, 2, 3, 4, 5})) +
             block(8, floats({0, 2, 0, 0, 0, 1,  0, 0, 1, 0, 0, 0, 0, 1,  0, 0,
                              0, 0, 0, 0, 0, 1,  0, 0, 0, 0, 0, 0, 0, -1, 0, 0,
                              1, 0, 0, 0, 0, -1, 0, 0, 0, 2, 0, 0, 0, -1, 0, 0}))},
        {"unrolled by the indices of texture coordinates", qor::kWriteInterleaved,
         arrays_of([](Arrays& a) {
             a.normals = {1, 0, 0, 0, 1, 0, 0, 0, 1};
             a.uvs = {7, 8};
             a.uv_indices = {0, 0, 0};
             a.frames = {kFrame};
         }),
         header(true, kBox, 64 + 40 + 12 + 36 + 36 + 8 + 12) + block(9, frame_0) + kTriangle +
             block(8, floats({0, 0, 0, 1, 0, 0, 7, 8, 1, 0, 0, 0,
                              1, 0, 7, 8, 0, 2, 0, 0, 0, 1, 7, 8}))},
    };
    const TemporaryFolder folder;
    for (const auto& test : cases) {
        LentMesh mesh(test.arrays);
        EXPECT_TRUE(qor::write_qort_file(mesh, (folder / "m.qorT").c_str(), test.flags));
        EXPECT_EQ(file_contents(folder / "m.qorT"), test.bytes) << test.what;
    }
}

TEST(QorTWriter, ReportsWhyItCantWriteAndKeepsTheOldFile) {
    const TemporaryFolder folder;
    const std::string there = folder / "m.qorT";
    const std::string nowhere = folder / "none" + "/m.qorT";
    std::ofstream(std::filesystem::u8path(there)) << "old";
    const std::string no_vertices = "Cannot write qorT triangle mesh without vertices\n";
    const std::string no_triangles = "Cannot write qorT triangle mesh without triangles\n";
    const struct {
        void (*change)(QorTMesh&);
        std::string path;
        std::string told;
    } cases[] = {
        {[](QorTMesh& m) { m.vertices = nullptr; }, there, no_vertices},
        {[](QorTMesh& m) { m.vertex_count = m.triangle_count = 0; }, there, no_vertices},
        {[](QorTMesh& m) { m.triangles = nullptr; }, there, no_triangles},
        {[](QorTMesh& m) { m.triangle_count = 0; }, there, no_triangles},
        {[](QorTMesh&) {}, nowhere, "Failed opening \"" + nowhere + "\" for writing!\n"},
    };
    for (const auto& test : cases) {
        LentMesh mesh;
        test.change(mesh);
        testing::internal::CaptureStderr();
        EXPECT_FALSE(qor::write_qort_file(mesh, test.path.c_str(), 0));
        EXPECT_EQ(testing::internal::GetCapturedStderr(), test.told);
    }
    EXPECT_EQ(file_contents(there), "old");
}

// The head has 32 bits for the size. The data is never read.
TEST(QorTWriter, RefusesABlockTooLargeForItsHead) {
    const TemporaryFolder folder;
    const QorTMesh mesh;
    std::FILE* file = platform::open_file(folder / "m", "wb");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(qor::write_tag(mesh, "", 2, std::uint64_t{1} << 32, file));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Failed writing tag data {2}\n");
    std::fclose(file);
    EXPECT_EQ(file_contents(folder / "m"), "");
}

#ifndef _WIN32
TEST(QorTWriter, StopsAtTheFirstFailedWrite) {
    const struct {
        size_t room;  // in bytes
        const char* told;
    } cases[] = {
        {63, "Failed writing header to \"m.qorT\"\n"}, {67, "Failed writing tag data [1]\n"},
        {71, "Failed writing tag data (1)\n"},         {83, "Failed writing tag data {1}\n"},
        {87, "Failed writing tag data [2]\n"},
    };
    for (const auto& test : cases) {
        LentMesh mesh;
        std::string room(test.room, '\0');
        std::FILE* file = fmemopen(&room[0], room.size(), "wb");
        std::setvbuf(file, nullptr, _IONBF, 0);
        testing::internal::CaptureStderr();
        EXPECT_FALSE(qor::write_qort_stream(mesh, file, "m.qorT", 0));
        EXPECT_EQ(testing::internal::GetCapturedStderr(), test.told) << test.room;
        std::fclose(file);
    }

    // A failure to flush the stream's buffer is reported as well.
    LentMesh mesh;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(qor::write_qort_file(mesh, "/dev/full", 0));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Failed writing tag data {2}\n");
}
#endif

// The sanitizers find wrong and missing frees.
TEST(QorTMesh, FreesOwnedAndInterleavedArrays) {
    const auto owned = [](const auto& array) {
        const size_t size = array.size() * sizeof array[0];
        void* copy = std::malloc(size);
        std::memcpy(copy, array.data(), size);
        return static_cast<std::remove_cv_t<std::remove_reference_t<decltype(array[0])>>*>(copy);
    };
    for (const bool owns : {true, false}) {
        LentMesh mesh(arrays_of([](Arrays& a) {
            a.uvs = {1, 2};
            a.uv_indices = {0, 0, 0};
            a.frames.resize(2);
        }));
        if (owns) {
            mesh.ownership = qor::kOwnsArrays;
            mesh.triangles = owned(mesh.arrays.triangles);
            mesh.vertices = owned(mesh.arrays.vertices);
            mesh.uvs = owned(mesh.arrays.uvs);
            mesh.uv_indices = owned(mesh.arrays.uv_indices);
            mesh.frames = owned(mesh.arrays.frames);
        }
        EXPECT_EQ(qor::interleave(mesh), qor::interleave(mesh));
        EXPECT_EQ(mesh.ownership, qor::kOwnsArrays | qor::kOwnsInterleaved);
        EXPECT_EQ(mesh.vertices, nullptr);
        EXPECT_EQ(mesh.uvs, nullptr);
        EXPECT_EQ(mesh.vertex_count, 3u);
    }
}

}  // namespace
