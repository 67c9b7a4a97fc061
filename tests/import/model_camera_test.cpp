#include <fstream>
#include <string>
#include <tuple>

#include <gmock/gmock.h>

#include "tests/import/imported_model.h"
#include "tests/support/temporary_folder.h"

namespace {

struct Lens {
    float fov_degrees;
    float near_plane;  // 0 if the camera doesn't clip
};

// `seen` is a point on the camera's axis.
void expect_camera(const std::string& file, const std::string& name, const Point3& place,
                   const Point3& seen, const Point3& up, const Lens& lens) {
    SCOPED_TRACE(file);
    ImportedModel scene(kModels + file);
    CameraState state;
    Interval valid = FOREVER;
    scene.object<CameraObject>(name).EvalCameraState(0, valid, &state);
    EXPECT_NEAR(state.fov * 57.29578f, lens.fov_degrees, 1e-2f);
    EXPECT_EQ(state.manualClip ? state.hither : 0, lens.near_plane);

    const Matrix3 world = scene.find(name).GetNodeTM(0);
    EXPECT_LT((world.GetTrans() - place).Length(), 1e-3f);
    EXPECT_LT((world.GetRow(2).Normalize() - (place - seen).Normalize()).Length(), 1e-3f)
        << "direction";
    EXPECT_LT((world.GetRow(1).Normalize() - up).Length(), 1e-3f);
}

// Positions, targets and angles are those of the files, rotated to Z up.
TEST(ModelCamera, HasThePositionDirectionAndAngleOfTheFile) {
    SKIP_WITHOUT_MODELS();
    expect_camera("3DS/CameraRollAnim.3ds", "Camera01", {-153.0771f, 3.272f, 22.7776f},
                  {-37.228f, -0.2205f, 22.7776f}, {0, 0.0009f, 1}, {45, 0});
    expect_camera("Collada/cameras.dae", "Camera", {10, 0, 0}, {}, {0, 1, 0}, {49.13434f, 0.1f});
    expect_camera("glTF2/cameras/Cameras.gltf", "nodes[1]", {0.5f, -3, 0.5f}, {0.5f, 0, 0.5f},
                  {0, 0, 1}, {40.107f, 0.01f});
    expect_camera("FBX/spider.fbx", "Camera", {748.113f, -650.764f, 534.367f},
                  {93.251f, -40.098f, 89.122f}, {-0.3174f, 0.3125f, 0.8953f}, {49.134f, 10});
    expect_camera("NFF/NFF/WithCamera.nff", "<NFF_Camera>", {0, -10, 3}, {}, {0, 0.2873f, 0.9578f},
                  {60, 0});
    expect_camera("LWS/move_x.lws", "Camera_(30000000)", {-0.1f, -6.384f, 0.95f}, {-0.1f, 0, 0.95f},
                  {0, 0, 1}, {45, 0});
    expect_camera("OpenGEX/camera.ogex", "Camera", {7.4811f, -5.3437f, -6.5076f},
                  {0.9325f, -0.8912f, -0.4010f}, {-0.3174f, -0.8953f, 0.3125f}, {49.134f, 0.1f});
}

// The angle from bottom to top and the aspect make the one from side to side.
TEST(ModelCamera, HasTheLensOfAGltfFileForAnyAspect) {
    const std::tuple<const char*, float> cases[] = {
        {"\"yfov\":0.6,\"aspectRatio\":2,", 63.488f},
        {"\"yfov\":0.6,\"aspectRatio\":0.5,", 17.584f},
        {"\"yfov\":1.2,\"aspectRatio\":2.5,", 119.372f},
        {"\"yfov\":0.6,", 34.377f},
    };
    for (const auto& [lens, degrees] : cases) {
        const TemporaryFolder folder;
        std::ofstream(folder / "camera.gltf")
            << R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],
                "nodes":[{"name":"View","camera":0}],
                "cameras":[{"type":"perspective","perspective":{)"
            << lens << R"("znear":0.1}}]})";
        ImportedModel scene(folder / "camera.gltf");
        CameraState state;
        Interval valid = FOREVER;
        scene.object<CameraObject>("View").EvalCameraState(0, valid, &state);
        EXPECT_NEAR(state.fov * 57.29578f, degrees, 1e-2f) << lens;
    }
}

// COLLADA gives one angle or both, or an angle and the aspect; Irrlicht the angle from bottom to
// top in radians.
TEST(ModelCamera, HasTheLensOfOtherFormats) {
    const std::string dae_start = R"(<?xml version="1.0"?><COLLADA version="1.4.1"
        xmlns="http://www.collada.org/2005/11/COLLADASchema"><asset><up_axis>Z_UP</up_axis></asset>
        <library_cameras><camera id="c"><optics><technique_common>)";
    const std::string dae_end = R"(</technique_common></optics></camera></library_cameras>
        <library_visual_scenes><visual_scene id="s"><node id="View" name="View"><instance_camera
        url="#c"/></node></visual_scene></library_visual_scenes><scene><instance_visual_scene
        url="#s"/></scene></COLLADA>)";
    const auto dae = [&](const std::string& kind, const std::string& lens) {
        return dae_start + "<" + kind + ">" + lens + "<znear>0.5</znear><zfar>90</zfar></" + kind +
               ">" + dae_end;
    };
    const std::tuple<std::string, std::string, float, bool> cases[] = {
        {"a.dae", dae("perspective", "<xfov>50</xfov>"), 50, false},
        {"b.dae", dae("perspective", "<yfov sid='y'>40</yfov>"), 40, false},
        {"c.dae", dae("perspective", "<yfov>40</yfov><aspect_ratio>2</aspect_ratio>"), 72.105f,
         false},
        {"d.dae", dae("orthographic", "<xmag>3</xmag><ymag>2</ymag>"), 45, true},
    };
    for (const auto& [name, text, degrees, is_orthographic] : cases) {
        SCOPED_TRACE(name);
        const TemporaryFolder folder;
        std::ofstream(folder / name) << text;
        ImportedModel scene(folder / name);
        CameraState state;
        Interval valid = FOREVER;
        scene.object<CameraObject>("View").EvalCameraState(0, valid, &state);
        EXPECT_NEAR(state.fov * 57.29578f, degrees, 1e-2f);
        EXPECT_EQ(state.manualClip ? state.hither : 0, 0.5f);
        EXPECT_EQ(state.isOrtho != FALSE, is_orthographic);
    }
}

TEST(ModelLight, BecomesAnOmniLightWithItsColourAndIntensity) {
    SKIP_WITHOUT_MODELS();
    const std::tuple<const char*, const char*, Point3, float, Point3> cases[] = {
        // file, name, position, intensity, colour
        {"ASE/anim2.ASE", "Sky01", {-38.5409f, -85.6864f, 74.871f}, 1, {0.95f, 0.95f, 1}},
        {"BLEND/box.blend", "Light", {4.0762f, 1.0055f, 5.9039f}, 1000, {1, 1, 1}},
        {"LWS/move_x_oldformat_56.lws", "Light_(20000000)", {-2, -2, 2}, 1, {1, 1, 1}},
        {"NFF/NFF/ManyEarthsNotJustOne.nff", "<NFF_Light1>", {1, -4, -4}, 1, {1, 1, 1}},
    };
    for (const auto& [file, name, place, intensity, color] : cases) {
        SCOPED_TRACE(file);
        ImportedModel scene(kModels + file);
        GenLight& light = scene.object<GenLight>(name);
        EXPECT_EQ(light.Type(), OMNI_LIGHT);
        EXPECT_EQ(light.GetIntensity(0), intensity);
        EXPECT_LT((light.GetRGBColor(0) - color).Length(), 1e-4f);
        EXPECT_LT((scene.find(name).GetNodeTM(0).GetTrans() - place).Length(), 1e-3f);
    }
}

TEST(ModelLight, OfAnotherKindIsTheHostsLightOfThatKind) {
    const TemporaryFolder folder;
    std::ofstream(folder / "lights.gltf")
        << R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0,1]}],
            "extensionsUsed":["KHR_lights_punctual"],"extensions":{"KHR_lights_punctual":{"lights":[
            {"type":"spot","color":[1,0.5,0.25],"intensity":8,"spot":{}},{"type":"directional"}]}},
            "nodes":[{"name":"Down","rotation":[-0.70710678,0,0,0.70710678],
            "extensions":{"KHR_lights_punctual":{"light":0}}},
            {"name":"Ahead","extensions":{"KHR_lights_punctual":{"light":1}}}]})";
    ImportedModel scene(folder / "lights.gltf");
    constexpr int kDirectional = 2, kSpot = 3;
    const std::tuple<const char*, int, float, Point3, Point3> cases[] = {
        // name, type, intensity, colour, and the direction in which it shines with Z up
        {"Down", kSpot, 8, {1, 0.5f, 0.25f}, {0, 0, -1}},
        {"Ahead", kDirectional, 1, {1, 1, 1}, {0, 1, 0}},
    };
    for (const auto& [name, type, intensity, colour, direction] : cases) {
        SCOPED_TRACE(name);
        GenLight& light = scene.object<GenLight>(name);
        EXPECT_EQ(light.Type(), type);
        EXPECT_FLOAT_EQ(light.GetIntensity(0), intensity);
        EXPECT_LT((light.GetRGBColor(0) - colour).Length(), 1e-5f);
        const Point3 back = scene.find(name).GetNodeTM(0).GetRow(2);
        EXPECT_LT((back.Normalize() + direction).Length(), 1e-5f);
    }
    SKIP_WITHOUT_MODELS();
    EXPECT_THAT(ImportedModel(kModels + "Collada/lights.dae").warnings,
                testing::ElementsAre(testing::AllOf(testing::HasSubstr("import-light: "),
                                                    testing::HasSubstr("it is ambient"))));
}

}  // namespace
