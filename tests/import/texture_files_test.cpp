#include "standins/host/import/texture_files.h"

#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/temporary_folder.h"

namespace fs = std::filesystem;

namespace {

struct NameCase {
    const char* name;
    const char* found;  // below the folder of the case, or empty
};

TEST(TextureFiles, AreFoundUnderTheNamesOfOtherSystems) {
    const TemporaryFolder folder;
    for (const char* file :
         {"model/a.png", "model/Wood Planks.PNG", "model/textures/b.png", "model/Maps/Deep/c.png",
          "textures/d.png", "e.png", "model/T\xc3\xbcr.png", "model/100%25.png", "model/x.png",
          "model/textures/x.png", "model/x.png.dir/y.png"}) {
        fs::create_directories(fs::u8path(folder / file).parent_path());
        std::ofstream(fs::u8path(folder / file)) << "bytes";
    }
    const std::string absolute = folder / "e.png";
    const NameCase cases[] = {
        {"a.png", "model/a.png"},
        {"./a.png", "model/a.png"},
        {"A.PNG", "model/a.png"},
        {"file:///C:/models/a.png", "model/a.png"},
        {"C:\\Users\\me\\a.png", "model/a.png"},
        {"\\\\server\\share\\a.png", "model/a.png"},
        {"/home/me/models/a.png", "model/a.png"},
        {"Wood%20Planks.png", "model/Wood Planks.PNG"},
        {"100%25.png", "model/100%25.png"},
        {"b.png", "model/textures/b.png"},
        {"D:\\x\\MAPS\\deep\\C.png", "model/Maps/Deep/c.png"},
        {"d.png", "textures/d.png"},
        {"..\\e.png", "e.png"},
        {absolute.c_str(), "e.png"},
        {"t\xc3\xbcr.png", "model/T\xc3\xbcr.png"},
        {"textures/x.png", "model/textures/x.png"},
        {"x.png", "model/x.png"},
        {"missing.png", ""},
        {"textures", ""},
        {"", ""},
        {"/", ""},
        {"..", ""},
        {"%zz%2", ""},
    };
    memhost::TextureFiles files(fs::u8path(folder / "model"));
    for (const NameCase& expected : cases) {
        const auto found = files.find(expected.name);
        ASSERT_EQ(found.has_value(), *expected.found != 0) << expected.name;
        if (found) {
            EXPECT_TRUE(fs::equivalent(*found, fs::u8path(folder / expected.found)))
                << expected.name << ": " << *found;
        }
    }
    EXPECT_FALSE(files.find(std::string(10000, 'x')));
}

}  // namespace
