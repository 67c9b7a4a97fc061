#include "importers/sceneapi/dev/light_file_factory.h"

#include <gtest/gtest.h>

#include "importers/sceneapi/dev/build_time.h"
#include "importers/sceneapi/dev/parameter_codes.h"
#include "importers/sceneapi/dev/qorscene_api.h"
#include "importers/sceneapi/dev/qorsceneapi_oo.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/thrown_text.h"

namespace qor {
namespace {

std::string opening_lines(const std::string& id_line) {
    return "//---quoria:dal:7---\n//---import:dal:1---\n" + id_line +
           "\n// This is a Velmora scene file\n\n#print \"Velmora SceneApi oo 11.2.0  (built " +
           build_time() + ")\"\nversion 9\n\n";
}

// The file's name has Latin, Greek and 32-bit characters, to test that it is read as UTF-8.
TEST(LightFileFactory, WritesTheOpeningLinesToTheFileNamed) {
    const std::pair<std::uint32_t, const char*> ids[] = {
        {0, "//---id:1---"},
        {1, "//---id:2469134---"},
        {4000, "//---id:644535271---"},
    };
    for (const auto& [id, line] : ids) {
        const TemporaryFolder folder;
        const std::string path = folder / "sz\xc3\xa9n\xc3\xa1k \xce\xa9 \xf0\x9f\x98\x80.vsq";
        {
            LightFileFactory factory(path);
            factory.set_id(id);
            const qorSceneapi_oo scene(factory);
        }
        EXPECT_EQ(file_contents(path), opening_lines(line)) << id;
    }
}

TEST(LightFileFactory, ClosesOnceAndForGood) {
    const TemporaryFolder folder;
    LightFileFactory factory(folder / "f");
    EXPECT_NE(factory.get_api(), nullptr);
    factory.get_api()->write_text("text\n");
    factory.close();
    EXPECT_EQ(factory.get_api(), nullptr);
    EXPECT_EQ(file_contents(folder / "f"), "text\n");
    factory.close();
}

TEST(LightFileFactory, NamesThePathThatCantBeOpened) {
    const TemporaryFolder folder;
    const std::string path = folder / "missing" + "/scene.vsq";
    EXPECT_EQ(thrown_text([&path] { const LightFileFactory factory(path); }),
              "could not open file: \"" + path + "\"");
}

// The head of a binary array has 32 bits for the count of numbers. The elements are never read.
TEST(LightFileFactory, ReportsAnArrayTooLargeForItsHead) {
    for (const std::uint32_t count : {0u, 1431655766u}) {
        const TemporaryFolder folder;
        LightFileFactory factory(folder / "f");
        const qorArray array = {nullptr, count};
        factory.get_api()->set_parameter("p", parameter_code::kArray | parameter_code::kColor,
                                         &array);
        EXPECT_EQ(thrown_text([&factory] { factory.close(); }),
                  count == 0 ? "" : "could not close file");
    }
}

#ifndef _WIN32
// The device accepts data and then reports that it is full. With little text, this happens only
// when the stream is closed.
TEST(LightFileFactory, ReportsAFullDisk) {
    for (const size_t size : {size_t{10}, size_t{5000000}}) {
        LightFileFactory factory("/dev/full");
        const std::string text(size, 'x');
        for (size_t sent = 0; sent < size; sent += 1000000) {
            factory.get_api()->write_text("%s", text.c_str());
        }
        errno = EACCES;  // as if left by another call in between
        testing::internal::CaptureStderr();
        EXPECT_EQ(thrown_text([&factory] { factory.close(); }), "could not close file");
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "closing file: No space left on device\n");
        EXPECT_EQ(factory.get_api(), nullptr);
    }
    const LightFileFactory dropped("/dev/full");  // its destructor must not throw
}
#endif

}  // namespace
}  // namespace qor
