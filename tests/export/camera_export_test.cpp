#include <gtest/gtest.h>

#include <cmath>

#include "standins/host/memory/host_text.h"
#include "standins/host/memory/image_file.h"
#include "tests/support/exported_scene.h"
#include "tests/support/readable_arrays.h"

namespace {

using namespace memhost;

constexpr int kFrame = 160;  // ticks at 30 frames a second

const std::string kDegrees57 = "57.2958";  // one radian
const std::string kStill = "transform 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1\n";
const std::string kUnitRows = "1 0 0 0 0 1 0 0 0 0 1 0 ";

std::string track(const std::string& duration, const std::string& times,
                  const std::string& matrices) {
    return "animation \"fbx_animation_2\" \"3ds_animation\" {\n\"start_time\" 0,\n\"duration\" " +
           duration + ",\n\"timestamps\" [ " + times + "] ,\n\"matrices\" [ " + matrices +
           "] ,\n\"interpolate\" on,\n\"folder\" \"\",\n}\n";
}

Matrix3 slide(TimeValue t) {
    return translation(static_cast<float>(t) / kFrame, 0, 0);
}

const Matrix3 kSheared({2, 0, 0}, {3, 4, 0}, {0, 3, 4}, {7, 8, 9});
const std::string kShearedKey = "2 0 0 0 3 4 0 0 0 3 4 0 7 8 9 1 ";
const std::string kSquared = "transform 2 0 0 0 0 5 0 0 0 0 5 0 7 8 9 1\n";
// The second row is parallel to the first, and the third has no length.
const Matrix3 kSingular({2, 0, 0}, {4, 0, 0}, {0, 0, 0}, {});
const Interval kThreeFrames(0, 2 * kFrame);

struct MotionCase {
    const char* what;
    LocalTransform place;
    std::string written;
    Interval range = kThreeFrames;
    TimeValue time = 0;
};

const MotionCase kMotionCases[] = {
    {"still: loses shear, keeps lengths", LocalTransform(kSheared), kSquared},
    {"singular", LocalTransform(kSingular), "transform 2 0 0 0 0 4 0 0 0 0 0 0 0 0 0 1\n"},
    {"NaN", LocalTransform(translation(NAN, 1, 2)), "transform " + kUnitRows + "nan nan nan 1\n"},
    {"moving: writes every frame and keeps shear",
     LocalTransform({{0, kSheared}, {2 * kFrame, Matrix3()}}),
     track("0.099", "0 33 66 ",
           kShearedKey + ",\n" + kShearedKey + ",\n" + kUnitRows + "0 0 0 1 \n"),
     kThreeFrames, kFrame},
    {"one frame", LocalTransform(slide), track("0.033", "0 ", kUnitRows + "2 0 0 1 \n"),
     Interval(320, 320)},
    {"ends before it starts", LocalTransform(slide), track("0", "", ""), Interval(kFrame, 0),
     kFrame + 1},
    {"moves outside of the range only",
     LocalTransform({{-1, Matrix3()}, {0, kSheared}, {3 * kFrame, Matrix3()}}), kSquared},
};

std::string camera_of(const std::string& text) {
    const size_t start = text.find("\ncamera ");
    return with_readable_integers(text.substr(start, text.find("\ngroup ", start) - start));
}

const std::string kStock =
    "reflection map \"qor_envmap\" {\n\"texture\" \"startup.hdr\",\n\"format\" 3,\n"
    "\"radius\" 25,\n}\n";

std::string camera_text(const std::string& rest, const std::string& environment = kStock,
                        const std::string& fov = kDegrees57) {
    return "\ncamera \"c\" {\nprojection \"perspective\"\nfov " + fov + "\n" + environment +
           "position 0 0 0\ndirection 0 0 -1\nup 0 1 0\n" + rest + "}\n";
}

TEST(CameraExport, WritesTheNodesMatrixOrMotion) {
    for (const MotionCase& wanted : kMotionCases) {
        SceneBuilder scene;
        scene.time(wanted.time).animation_ticks(wanted.range.Start(), wanted.range.End());
        const NodeBuilder node = scene.node(L"c").hidden();
        node.node().set_local_transform(wanted.place);
        node.camera().fov(1.0f);
        EXPECT_EQ(camera_of(exported(scene)), camera_text(wanted.written)) << wanted.what;
    }
}

TEST(CameraExport, WritesPlacesInWorldSpace) {
    SceneBuilder scene;
    scene.animation_frames(0, 1).time(kFrame);
    scene.node(L"p").motion(slide).child(L"c").at(0, 5, 0).camera().fov(1.0f);
    Qor::Options options(&scene.host());
    const std::string last_key = kUnitRows + "1 5 0 1";
    EXPECT_EQ(camera_of(exported(scene, options)),
              camera_text(track("0.066", "0 33 ", kUnitRows + "0 5 0 1 ,\n" + last_key + " \n")));
    options.CameraAnimations = false;
    EXPECT_EQ(camera_of(exported(scene, options)), camera_text("transform " + last_key + "\n"));
}

// The lens is read at the host's time. Orthographic cameras are written like others.
TEST(CameraExport, WritesTheLens) {
    const struct {
        float fov;
        bool manual_clip;
        float near_plane, far_plane;
        const char* fov_written;
        const char* clipping_written;
    } lenses[] = {
        {1, true, 2, 10, "57.2958", "clipping 2 10\n"},
        {1, true, std::nextafter(1.0f, 2.0f), 10, "57.2958", "clipping 1 10\n"},
        {1, true, 1, 10, "57.2958", ""},
        {1, true, 0, 10, "57.2958", ""},
        {1, true, 10, 5, "57.2958", ""},
        {1, false, 2, 10, "57.2958", ""},
        {0, false, 2, 10, "0", ""},
    };
    for (const auto& lens : lenses) {
        SceneBuilder scene;
        scene.time(kFrame);
        scene.node(L"c")
            .camera()
            .fov([&lens](TimeValue t) { return lens.fov * static_cast<float>(t) / kFrame; })
            .planes(lens.near_plane, lens.far_plane)
            .manual_clip(lens.manual_clip)
            .orthographic();
        EXPECT_EQ(camera_of(exported(scene)),
                  camera_text(lens.clipping_written + kStill, kStock, lens.fov_written));
    }
}

// Cameras come before lights and meshes, so the first pass knows neither the picture nor the size.
TEST(CameraExport, TakesTheSkyLightsPictureOfThePassBefore) {
    const std::pair<float, std::string> lengths_and_radii[] = {
        {0.0f, "0"},             // no mesh
        {12.0f, "52"},           // four times 13, the diagonal of 3, 4 and 12
        {1.5e9f, "1705032704"},  // four times the diagonal wraps
        {3e9f, "0"},             // the diagonal does not fit 32 bits
    };
    const TemporaryFolder folder;
    const std::string picture = folder / "sky.png";
    write_png(units_from_utf8(picture), Image(1, 1));
    for (const auto& [length, radius] : lengths_and_radii) {
        SceneBuilder scene;
        scene.node(L"c").camera().fov(1.0f);
        scene.node(L"sky").make_object<SkyLight>().map(&scene.bitmap(picture));
        if (length > 0) {
            scene.node(L"box").mesh(box_mesh(3, 4, length));
        }
        SceneExporter exporter(&scene.host(), scene.host().GetRootNode(),
                               std::make_shared<Qor::Options>(&scene.host()), {});
        const auto next_pass = [&] {
            exporter.Run(folder / "scene.vsq", false, true, false);
            return camera_of(file_contents(folder / "scene.vsq"));
        };
        EXPECT_EQ(next_pass(), camera_text(kStill));
        const std::string environment =
            "flags 16\nreflection map \"qor_envmap\" {\n\"texture\" \"" + picture +
            "\",\n\"ground_size\" 50,\n\"direct_visibility\" on,\n\"faded_color\" 0.1 0.1 0.1,\n"
            "\"background_mode\" 1,\n\"radius\" " +
            radius + ",\n}\n";
        EXPECT_EQ(next_pass(), camera_text(kStill, environment)) << length;
    }
}

}  // namespace
