#include <gmock/gmock.h>

#include <cmath>
#include <string>
#include <vector>

#include "plugins/3dsmax/export/scene_exporter.h"
#include "standins/host/memory/image_file.h"
#include "standins/host/memory/scene_builder.h"
#include "tests/support/exported_libraries.h"
#include "tests/support/temporary_folder.h"
#include "tools/vsqpicture/id_picture.h"
#include "tools/vsqpicture/picture_session.h"

// Scenes of the host with known answers are exported and drawn, and the pictures are looked at.

namespace {

using namespace memhost;
using vsqpicture::Image;
using vsqpicture::PictureRequest;

// The camera's axes in the scene are the rows: to the right, up, and backwards.
Matrix3 looking_along_y(float y) {
    return Matrix3({1, 0, 0}, {0, 0, 1}, {0, -1, 0}, {0, y, 0});
}

constexpr float kRightAngle = 1.5707963f;

void add_camera(SceneBuilder& scene, float y) {
    scene.node(L"Camera")
        .transform(looking_along_y(y))
        .make_object<MemoryCamera>()
        .fov(kRightAngle);
}

void export_to(SceneBuilder& scene, const std::string& path, bool is_animation = false) {
    SceneExporter exporter(&scene.host(), scene.host().GetRootNode(),
                           std::make_shared<Qor::Options>(&scene.host()), {});
    ASSERT_TRUE(exporter.Run(path, false, true, is_animation));
}

PictureRequest small_picture() {
    PictureRequest request;
    request.options.width = 96;
    request.options.height = 64;
    request.options.samples = 16;
    return request;
}

Image drawn(SceneBuilder& scene, const PictureRequest& request = small_picture()) {
    const TemporaryFolder folder;
    export_to(scene, folder / "scene.vsq");
    vsqpicture::SceneBuilder builder;
    builder.add(folder / "scene.vsq");
    return vsqpicture::draw(builder.scene(), "", request).image;
}

// The mean of a block of 5 x 5 pixels around a place, as linear red, green and blue.
std::vector<double> colour_at(const Image& image, int x, int y) {
    std::vector<double> sum(3);
    for (int dy = -2; dy <= 2; ++dy) {
        for (int dx = -2; dx <= 2; ++dx) {
            for (int i = 0; i < 3; ++i) {
                const double shown = image.at(x + dx, y + dy)[i] / 255.0;
                sum[static_cast<size_t>(i)] +=
                    (shown <= 0.04045 ? shown / 12.92 : std::pow((shown + 0.055) / 1.055, 2.4)) /
                    25;
            }
        }
    }
    return sum;
}

double brightness_at(const Image& image, int x, int y) {
    return colour_at(image, x, y)[1];
}

// How much two pictures differ on average, from 0 to 255.
double difference(const Image& a, const Image& b) {
    double sum = 0;
    for (size_t i = 0; i < a.pixels.size(); ++i) {
        sum += std::abs(a.pixels[i] - b.pixels[i]);
    }
    return sum / static_cast<double>(a.pixels.size());
}

// A square in the plane y = 0 from -1 to 1, seen from the front, whose texture coordinates go from
// 0 at the lower left to 1.
Mesh poster() {
    return MeshBuilder({{-1, 0, -1}, {1, 0, -1}, {1, 0, 1}, {-1, 0, 1}}, {{0, 1, 2}, {0, 2, 3}})
        .map(1, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {{0, 1, 2}, {0, 2, 3}});
}

TEST(Picture, ShowsWhatTheHostsCameraSees) {
    SceneBuilder scene;
    add_camera(scene, -10);
    // With a right angle, 10 units to each side are seen at the distance 10, and 2/3 of that above.
    const struct {
        const char* name;
        float x, z;
        int column, row;
    } markers[] = {{"middle", 0, 0, 48, 32},
                   {"right", 8, 0, 86, 32},
                   {"above", 0, 5, 48, 8},
                   {"left below", -7.5f, -5, 12, 56}};
    for (const auto& marker : markers) {
        scene.node(marker.name).at(marker.x, 0, marker.z).mesh(sphere_mesh(0.2f, 12, 8));
    }
    scene.node(L"behind").at(0, -12, 0).mesh(sphere_mesh(1, 12, 8));
    PictureRequest request = small_picture();
    request.ids = true;
    const Image image = drawn(scene, request);
    for (size_t i = 0; i < 4; ++i) {
        double x = 0, y = 0, count = 0;
        for (int row = 0; row < image.height; ++row) {
            for (int column = 0; column < image.width; ++column) {
                const std::uint8_t* const p = image.at(column, row);
                const std::uint32_t colour = std::uint32_t{p[0]} << 16 | p[1] << 8 | p[2];
                const bool is_own = colour == vsqpicture::id_colour(i);
                x += is_own ? column + 0.5 : 0;
                y += is_own ? row + 0.5 : 0;
                count += is_own ? 1 : 0;
            }
        }
        ASSERT_GT(count, 0) << markers[i].name;
        EXPECT_NEAR(x / count, markers[i].column, 1) << markers[i].name;
        EXPECT_NEAR(y / count, markers[i].row, 1) << markers[i].name;
    }
}

TEST(Picture, HasTexturesTheRightWayUpAndScaled) {
    const TemporaryFolder folder;
    memhost::Image corners(2, 2);
    corners.pixels = {{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}};  // top row first
    ASSERT_TRUE(write_png(std::filesystem::path(folder / "corners.png").wstring(), corners));
    for (const int tiles : {1, 2}) {
        SceneBuilder scene;
        add_camera(scene, -1.5f);
        scene.node(L"Poster").mesh(poster()).material(
            scene.make<StandardMaterial>(L"Corners")
                .map(kDiffuseSlot,
                     &scene.bitmap(folder / "corners.png").tiling(static_cast<float>(tiles), 1)));
        const Image image = drawn(scene);
        // The poster covers columns 16 to 80 and all rows.
        for (int tile = 0; tile < tiles; ++tile) {
            const int left = 16 + 64 * tile / tiles + 16 / tiles;
            const int right = left + 32 / tiles;
            const std::vector<double> upper_left = colour_at(image, left, 12);
            const std::vector<double> upper_right = colour_at(image, right, 12);
            const std::vector<double> lower_left = colour_at(image, left, 52);
            const std::vector<double> lower_right = colour_at(image, right, 52);
            EXPECT_GT(upper_left[0], 4 * upper_left[1]) << tiles;
            EXPECT_GT(upper_right[1], 4 * upper_right[0]) << tiles;
            EXPECT_GT(lower_left[2], 4 * lower_left[0]) << tiles;
            EXPECT_GT(lower_right[0], 0.5 * lower_right[2]) << tiles;
        }
    }
}

// Half opaque is a grey of 128, not what a screen shows as half as bright.
TEST(Picture, LetsThroughWhatTheOpacityMapSays) {
    const ExportedLibraries installation;
    const TemporaryFolder folder;
    memhost::Image thirds(48, 1);
    for (int i = 16; i < 48; ++i) {
        const std::uint8_t grey = i < 32 ? 128 : 255;
        thirds.at(i, 0) = {grey, grey, grey};
    }
    ASSERT_TRUE(write_png(std::filesystem::path(folder / "thirds.png").wstring(), thirds));
    SceneBuilder scene;
    add_camera(scene, -1.5f);
    scene.node(L"Cut").mesh(poster()).material(
        scene.make<StandardMaterial>(L"Cut")
            .diffuse({0.1f, 0.8f, 0.1f})
            .map(kOpacitySlot, &scene.bitmap(folder / "thirds.png")));
    scene.node(L"Behind").at(0, 1, 0).mesh(poster()).material(
        scene.make<StandardMaterial>(L"Red").diffuse({0.8f, 0.1f, 0.1f}));
    PictureRequest request = small_picture();
    request.options.samples = 256;
    const Image image = drawn(scene, request);
    EXPECT_GT(colour_at(image, 32, 32)[0], 3 * colour_at(image, 32, 32)[1]) << "seen through";
    EXPECT_GT(colour_at(image, 64, 32)[1], 3 * colour_at(image, 64, 32)[0]) << "covered";
    const std::vector<double> half = colour_at(image, 48, 32);
    EXPECT_NEAR(half[1] / half[0], 1, 0.2) << half[0] << " " << half[1];
}

void add_lamp(SceneBuilder& scene, const Point3& place, float lumens,
              LightscapeLight::LightTypes type = LightscapeLight::POINT_TYPE) {
    scene.node(L"Lamp")
        .transform(Matrix3({1, 0, 0}, {0, 0, 1}, {0, -1, 0}, place))  // a flat one faces along y
        .make_object<PhotometricLight>(type)
        .radius(2.0f)
        .lumens(lumens);
}

// With an exposure that is set, brightness can be compared between pictures.
Image lit(SceneBuilder& scene, double exposure) {
    PictureRequest request = small_picture();
    request.options.samples = 64;
    request.options.exposure = exposure;
    return drawn(scene, request);
}

TEST(Picture, IsLitFromWhereTheLightIs) {
    for (const bool is_mirrored : {false, true}) {
        SceneBuilder scene;
        add_camera(scene, -10);
        add_lamp(scene, {-40, -20, 0}, 1000);
        const Matrix3 mirror({-1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {0, 0, 0});
        scene.node(L"Ball")
            .transform(is_mirrored ? mirror : Matrix3())
            .mesh(sphere_mesh(5, 32, 16));
        const Image image = lit(scene, -6);
        EXPECT_GT(brightness_at(image, 32, 32), 4 * brightness_at(image, 64, 32)) << is_mirrored;
        EXPECT_GT(brightness_at(image, 32, 32), 0.05) << is_mirrored;
    }
}

// A wall, lit by a lamp in front of its middle.
double wall_brightness(float distance, float lumens, LightscapeLight::LightTypes type) {
    SceneBuilder scene;
    add_camera(scene, -1.5f);
    add_lamp(scene, {0, -distance, 0}, lumens, type);
    scene.node(L"Wall").mesh(poster());
    return brightness_at(lit(scene, -8), 40, 32);
}

TEST(Picture, IsAsBrightAsPowerAndDistanceSay) {
    constexpr auto kPoint = LightscapeLight::POINT_TYPE;
    const double once = wall_brightness(20, 1000, kPoint);
    EXPECT_NEAR(wall_brightness(20, 2000, kPoint) / once, 2, 0.1);
    EXPECT_NEAR(wall_brightness(40, 4000, kPoint) / once, 1, 0.05);
    EXPECT_NEAR(wall_brightness(20, 1000, LightscapeLight::SPHERE_TYPE) / once, 1, 0.1);
    // A flat light gives nothing sideways, so twice as much ahead and behind.
    EXPECT_NEAR(wall_brightness(200, 100000, LightscapeLight::AREA_TYPE) / once, 2, 0.1);
}

TEST(Picture, HasAStepAtAHardEdgeOnly) {
    const auto step = [](DWORD second_group) {
        SceneBuilder scene;
        add_camera(scene, -1.5f);
        add_lamp(scene, {-60, -90, 0}, 100000);
        // A ridge towards the camera.
        scene.node(L"Ridge").mesh(
            MeshBuilder(
                {{-1, 0.5f, -1}, {0, 0, -1}, {0, 0, 1}, {-1, 0.5f, 1}, {1, 0.5f, -1}, {1, 0.5f, 1}},
                {{0, 1, 2}, {0, 2, 3}, {1, 4, 5}, {1, 5, 2}})
                .groups({1, 1, second_group, second_group}));
        const Image image = lit(scene, -12);
        return brightness_at(image, 44, 32) / brightness_at(image, 52, 32);
    };
    EXPECT_GT(step(2), 1.5);
    EXPECT_LT(step(1), 1.3);
}

// A track at the time of a key, and the frames of an animation one after the other, show what a
// still at that time shows.
TEST(Picture, OfATrackAndOfAFrameIsThatOfTheStill) {
    const ExportedLibraries libraries;
    const TemporaryFolder folder;
    constexpr int kFrame = kDefaultTicksPerFrame;
    SceneBuilder scene;
    add_camera(scene, -10);
    scene.node(L"Hidden").mesh(sphere_mesh(9, 12, 8)).hidden();
    scene.node(L"Ball")
        .motion([](TimeValue t) { return translation(static_cast<float>(t) / kFrame - 4, 0, 2); })
        .child(L"Bump")
        .at(2, 0, 0)
        .mesh(box_mesh(2, 2, 2));
    const auto grow = [](TimeValue t, const Mesh& at_rest, Mesh& mesh) {
        for (int v = 0; v < mesh.numVerts; ++v) {
            mesh.verts[v].z = at_rest.verts[v].z * (1 + static_cast<float>(t) / kFrame / 3);
        }
    };
    scene.node(L"Flag").at(-4, 0, -5).deforming(DeformingMesh(box_mesh(4, 1, 2)).moves(grow));
    scene.animation_frames(0, 6);
    export_to(scene, folder / "tracks.vsq");
    vsqpicture::SceneBuilder tracks;
    tracks.add(folder / "tracks.vsq");
    export_to(scene, folder / "shot.vsq", true);
    vsqpicture::SceneBuilder frames;
    for (int frame = 0; frame <= 6; ++frame) {
        frames.add(folder / ("shot000" + std::to_string(frame) + ".vsq"));
        scene.time(frame * kFrame);
        scene.animation_frames(frame, frame);
        const Image still = drawn(scene);
        PictureRequest request = small_picture();
        request.frame = frame;
        EXPECT_LT(difference(vsqpicture::draw(frames.scene(), "", request).image, still), 0.3);
        EXPECT_LT(difference(vsqpicture::draw(tracks.scene(), "", request).image, still), 0.3);
        request.frame = frame == 0 ? 3 : 0;
        EXPECT_GT(difference(vsqpicture::draw(tracks.scene(), "", request).image, still), 0.9);
    }
}

}  // namespace
