#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/image_file.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/temporary_folder.h"

using namespace memhost;

namespace {

constexpr Pixel kRed = {255, 0, 0, 255};
constexpr Pixel kClear = {0, 0, 255, 0};

std::wstring host_path(const std::string& path_utf8) {
    return units_from_utf8(path_utf8);
}

TEST(Bitmaps, GoFromAMapToAFileAndBack) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    auto& map = scene.make<ProceduralMap>(checker(kRed, kClear, 2)).channel(3);
    const std::wstring path = host_path(folder / "\xe6\xa4\x85 T\xc3\xbcr.PNG");

    BitmapInfo info;
    info.SetName(path.c_str());
    info.SetType(BMM_TRUE_32);
    info.SetWidth(6);
    info.SetHeight(4);
    Bitmap* bitmap = TheManager->Create(&info);
    ASSERT_NE(bitmap, nullptr);
    map.RenderBitmap(0, bitmap, 1.0f, FALSE);
    EXPECT_NE(bitmap->Write(&info, BMM_SINGLEFRAME), BMMRES_SUCCESS) << "no output is open";
    EXPECT_EQ(bitmap->OpenOutput(&info), BMMRES_SUCCESS);
    EXPECT_EQ(bitmap->Write(&info, BMM_SINGLEFRAME), BMMRES_SUCCESS);
    EXPECT_EQ(bitmap->Close(&info, BMM_CLOSE_COMPLETE), BMMRES_SUCCESS);
    EXPECT_EQ(scene.host().bitmaps().record().alive, 1);
    bitmap->DeleteThis();
    EXPECT_EQ(scene.host().bitmaps().record().alive, 0);
    EXPECT_EQ(scene.host().bitmaps().record().written, 1);
    EXPECT_EQ(map.renders(), 1);

    // The first field is in the lower left.
    const std::optional<Image> image = read_image(path);
    ASSERT_TRUE(image);
    ASSERT_EQ(image->width, 6);
    ASSERT_EQ(image->height, 4);
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 6; ++column) {
            const bool is_first = (row >= 2) == (column < 3);
            EXPECT_EQ(image->at(column, row), is_first ? kRed : kClear) << column << " " << row;
        }
    }

    BitmapInfo found(path.c_str());
    found.SetCurrentFrame(0);
    EXPECT_EQ(scene.bitmap(path).GetBitmap(0)->Manager()->GetImageInfo(&found, nullptr),
              BMMRES_SUCCESS);
    EXPECT_EQ(found.Width(), 6);
    EXPECT_EQ(found.Height(), 4);
    EXPECT_EQ(found.GetPathEx().GetResolvedAbsolutePath().GetCStr(), path);
}

struct FileCase {
    const char* name;
    std::string content;
    bool is_image;
};

TEST(Bitmaps, AreNoneWhereTheFileIsNoImage) {
    const TemporaryFolder folder;
    const FileCase cases[] = {
        {"prose.png", "Once upon a time there was a file.", false},
        {"empty.png", "", false},
        {"short.jpg", "\xff\xd8\xff", false},
        {"head.png", std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16), false},
        {"surface.dds", "DDS and so on", true},
        {"scan.tif", std::string("II*\0 and so on", 13), true},
    };
    SceneBuilder scene;
    for (const FileCase& file : cases) {
        std::ofstream(std::filesystem::u8path(folder / file.name), std::ios::binary)
            << file.content;
        EXPECT_EQ(scene.bitmap(folder / file.name).GetBitmap(0) != nullptr, file.is_image)
            << file.name;
        BitmapInfo info(host_path(folder / file.name).c_str());
        EXPECT_EQ(TheManager->GetImageInfo(&info) == BMMRES_SUCCESS, file.is_image) << file.name;
    }
    EXPECT_EQ(scene.bitmap(folder / "missing.png").GetBitmap(0), nullptr);
    EXPECT_EQ(scene.bitmap(folder / "").GetBitmap(0), nullptr) << "a folder";
    EXPECT_EQ(scene.host().bitmaps().record().asked, 6);
}

TEST(Bitmaps, FailAsTheHostsDo) {
    const TemporaryFolder folder;
    SceneBuilder scene;
    BitmapInfo info(host_path(folder / "no such folder/a.png").c_str());
    info.SetWidth(1);
    info.SetHeight(1);
    Bitmap* bitmap = TheManager->Create(&info);
    bitmap->OpenOutput(&info);
    EXPECT_NE(bitmap->Write(&info), BMMRES_SUCCESS);
    BitmapInfo unknown(host_path(folder / "a.xyz").c_str());
    EXPECT_NE(bitmap->OpenOutput(&unknown), BMMRES_SUCCESS);
    bitmap->DeleteThis();

    scene.host().bitmaps().refuse_bitmaps();
    EXPECT_EQ(TheManager->Create(&info), nullptr);
    {
        SceneBuilder other;
        EXPECT_EQ(TheManager, &other.host().bitmaps());
    }
    EXPECT_EQ(TheManager, &scene.host().bitmaps());
}

TEST(Maps, DrawWhatTheySay) {
    Image image(4, 2);
    gradient({0, 100, 0, 255}, {90, 100, 0, 255})(image);
    EXPECT_EQ(image.at(0, 1), (Pixel{0, 100, 0, 255}));
    EXPECT_EQ(image.at(1, 0), (Pixel{30, 100, 0, 255}));
    EXPECT_EQ(image.at(3, 0), (Pixel{90, 100, 0, 255}));

    // Twice as wide, half as high.
    Image small(2, 4);
    small.at(0, 0) = kRed;
    small.at(1, 2) = kClear;
    picture([&] { return std::optional<Image>(small); })(image);
    EXPECT_EQ(image.at(0, 0), kRed);
    EXPECT_EQ(image.at(1, 0), kRed);
    EXPECT_EQ(image.at(2, 0), Pixel());
    EXPECT_EQ(image.at(3, 1), kClear);
    picture([] { return std::optional<Image>(); })(image);
    EXPECT_EQ(image.at(0, 0), kRed) << "without an image nothing is drawn";
}

TEST(Maps, TurnCoordinatesByTilingThenOffset) {
    SceneBuilder scene;
    Texmap& map = scene.bitmap(L"any.png").tiling(2, 3, 0.5f, 0.25f).channel(2);
    Matrix3 matrix;
    map.GetUVTransform(matrix);
    const Point3 uv = Point3(1, 1, 0) * matrix;
    EXPECT_EQ(uv.x, 2.5f);
    EXPECT_EQ(uv.y, 3.25f);
    EXPECT_EQ(map.GetMapChannel(), 2);
    scene.make<ProceduralMap>(solid({})).GetUVTransform(matrix);
    EXPECT_EQ(matrix.GetTrans().x, 0);
}

}  // namespace
